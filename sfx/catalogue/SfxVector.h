#pragma once

#include <cstddef>
#include <memory>
#include <mutex>

#include <sfx/export.h>

namespace vemo::audio::sfx {

/// A growable array of effect names, each with an optional file path, as NUL-terminated strings
/// that may cross the library's boundary.
///
/// Any thread may call any operation; each one holds the array's own lock. A pointer that an
/// operation returned is not protected by it.
///
/// Strings are copied in and never freed, so a name or path once handed out stays good to the end
/// of the process. Pointers into the array itself, from begin() and end(), end with the next
/// operation that grows, shrinks, assigns or destroys it.
class SFX_EXPORT SfxVector {
public:
    /// Empty, with room for 5.
    SfxVector();
    /// Copies count, capacity, names and paths, each string afresh.
    SfxVector(const SfxVector& other);
    /// Leaves `other` empty with a capacity of 0; it can be filled again.
    SfxVector(SfxVector&& other) noexcept;
    /// Copies and swaps.
    SfxVector& operator=(const SfxVector& other);
    /// Leaves `other` empty with a capacity of 0; moving onto itself changes nothing.
    SfxVector& operator=(SfxVector&& other) noexcept;
    ~SfxVector();

    /// True if both hold the same names in the same order; paths and capacities take no part.
    bool operator==(const SfxVector& other) const;
    /// The name in the slot. The index is not checked: it must be below Capacity().
    const char* operator[](std::size_t index) const;

    /// Appends a copy of `name`. A full array doubles its capacity, one of capacity 0 grows to 5.
    /// The path of the slot stays what it was: null, unless a removed or cleared entry left one.
    void Add(const char* name);
    std::size_t Capacity() const;
    std::size_t Count() const;
    /// Forgets every name; paths and capacity stay.
    void Clear();
    /// Index of the first equal name, compared byte by byte; the largest size_t if there is none.
    /// Takes time in proportion to the count.
    std::size_t Find(const char* name) const;
    /// Throws std::out_of_range unless `index` is below the count.
    const char* Get(std::size_t index) const;
    /// Null if no path was set. Throws std::out_of_range unless `index` is below the count.
    char* GetPath(std::size_t index) const;
    /// Stores a copy. Throws std::out_of_range unless `index` is below the count.
    void SetPath(std::size_t index, const char* path);
    /// Removes the first equal name. Throws std::invalid_argument "Sfx not found".
    void Remove(const char* name);
    /// Removes a name; later names move up, paths stay in their slots. Throws std::out_of_range
    /// unless `index` is below the count.
    void Remove(std::size_t index);
    /// Lets Remove(0) mean the first slot, not a null name.
    void Remove(int index);
    /// Sets the capacity, but never below the count: no used slot is lost. Throws
    /// std::invalid_argument "Size is too large" for the largest size_t, and what the allocation
    /// throws for any other size that cannot be had; the array is then unchanged.
    void Resize(std::size_t newCapacity);
    void ShrinkToFit();

    /// The name slots in use. Null when the capacity is 0.
    char** begin();
    const char* const* cbegin() const;
    char** end();
    const char* const* cend() const;

private:
    using Slots = std::unique_ptr<char*[]>;

    void TakeFrom(SfxVector& other);

    std::size_t sfxCount_ = 0;
    std::size_t capacity_ = 0;
    mutable std::recursive_mutex lock_;
    Slots names_;
    Slots paths_;
};

} // namespace vemo::audio::sfx
