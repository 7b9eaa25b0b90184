#include <sfx/catalogue/SfxVector.h>

#include <algorithm>
#include <cstring>
#include <limits>
#include <stdexcept>
#include <string>
#include <utility>

namespace vemo::audio::sfx {

namespace {

constexpr std::size_t kInitialCapacity = 5;
constexpr std::size_t kAbsent = std::numeric_limits<std::size_t>::max();

using Guard = std::lock_guard<std::recursive_mutex>;

// The copy belongs to nobody: hosts keep the pointers they were given.
char* KeptCopy(const char* text) {
    if (text == nullptr) {
        return nullptr;
    }
    const std::size_t size = std::strlen(text) + 1;
    return static_cast<char*>(std::memcpy(new char[size], text, size));
}

bool SameText(const char* left, const char* right) {
    if (left == nullptr || right == nullptr) {
        return left == right;
    }
    return std::strcmp(left, right) == 0;
}

} // namespace

SfxVector::SfxVector() {
    Resize(kInitialCapacity);
}

SfxVector::SfxVector(const SfxVector& other) {
    const Guard guard(other.lock_);
    Resize(other.capacity_);
    sfxCount_ = other.sfxCount_;
    std::transform(other.names_.get(), other.names_.get() + sfxCount_, names_.get(), KeptCopy);
    std::transform(other.paths_.get(), other.paths_.get() + sfxCount_, paths_.get(), KeptCopy);
}

SfxVector::SfxVector(SfxVector&& other) noexcept {
    const Guard guard(other.lock_);
    TakeFrom(other);
}

SfxVector& SfxVector::operator=(const SfxVector& other) {
    SfxVector copy(other);
    const Guard guard(lock_);
    std::swap(sfxCount_, copy.sfxCount_);
    std::swap(capacity_, copy.capacity_);
    names_.swap(copy.names_);
    paths_.swap(copy.paths_);
    return *this;
}

SfxVector& SfxVector::operator=(SfxVector&& other) noexcept {
    if (this != &other) {
        const std::scoped_lock both(lock_, other.lock_);
        TakeFrom(other);
    }
    return *this;
}

SfxVector::~SfxVector() = default;

void SfxVector::TakeFrom(SfxVector& other) {
    sfxCount_ = std::exchange(other.sfxCount_, 0);
    capacity_ = std::exchange(other.capacity_, 0);
    names_ = std::move(other.names_);
    paths_ = std::move(other.paths_);
}

bool SfxVector::operator==(const SfxVector& other) const {
    const std::scoped_lock both(lock_, other.lock_);
    return std::equal(cbegin(), cend(), other.cbegin(), other.cend(), SameText);
}

const char* SfxVector::operator[](std::size_t index) const {
    const Guard guard(lock_);
    return names_[index];
}

void SfxVector::Add(const char* name) {
    const Guard guard(lock_);
    if (sfxCount_ == capacity_) {
        Resize(capacity_ == 0 ? kInitialCapacity : 2 * capacity_);
    }
    names_[sfxCount_] = KeptCopy(name);
    ++sfxCount_;
}

std::size_t SfxVector::Capacity() const {
    const Guard guard(lock_);
    return capacity_;
}

std::size_t SfxVector::Count() const {
    const Guard guard(lock_);
    return sfxCount_;
}

void SfxVector::Clear() {
    const Guard guard(lock_);
    std::fill(begin(), end(), nullptr);
    sfxCount_ = 0;
}

std::size_t SfxVector::Find(const char* name) const {
    const Guard guard(lock_);
    const auto found = std::find_if(
        cbegin(), cend(), [name](const char* candidate) { return SameText(candidate, name); });
    return found == cend() ? kAbsent : static_cast<std::size_t>(found - cbegin());
}

const char* SfxVector::Get(std::size_t index) const {
    const Guard guard(lock_);
    if (index >= sfxCount_) {
        throw std::out_of_range("Index out of range from SfxVector::Get(const size_t) const");
    }
    return names_[index];
}

char* SfxVector::GetPath(std::size_t index) const {
    const Guard guard(lock_);
    if (index >= sfxCount_) {
        throw std::out_of_range("Index out of range from SfxVector::GetPath(" +
                                std::to_string(index) + ") const with an sfxCount_ of " +
                                std::to_string(sfxCount_));
    }
    return paths_[index];
}

void SfxVector::SetPath(std::size_t index, const char* path) {
    const Guard guard(lock_);
    if (index >= sfxCount_) {
        throw std::out_of_range("Index out of range from SfxVector::SetPath(const size_t, char*)");
    }
    paths_[index] = KeptCopy(path);
}

void SfxVector::Remove(const char* name) {
    const Guard guard(lock_);
    const std::size_t index = Find(name);
    if (index == kAbsent) {
        throw std::invalid_argument("Sfx not found");
    }
    Remove(index);
}

void SfxVector::Remove(std::size_t index) {
    const Guard guard(lock_);
    if (index >= sfxCount_) {
        throw std::out_of_range("Index out of range from SfxVector::Remove(const size_t)");
    }
    // Meant: only the names move up. A path stays with its slot.
    std::copy(begin() + index + 1, end(), begin() + index);
    --sfxCount_;
    names_[sfxCount_] = nullptr;
}

void SfxVector::Remove(int index) {
    Remove(static_cast<std::size_t>(index));
}

void SfxVector::Resize(std::size_t newCapacity) {
    if (newCapacity == std::numeric_limits<std::size_t>::max()) {
        throw std::invalid_argument("Size is too large");
    }
    const Guard guard(lock_);
    newCapacity = std::max(newCapacity, sfxCount_);
    Slots names = std::make_unique<char*[]>(newCapacity);
    Slots paths = std::make_unique<char*[]>(newCapacity);
    std::copy(names_.get(), names_.get() + sfxCount_, names.get());
    std::copy(paths_.get(), paths_.get() + sfxCount_, paths.get());
    names_ = std::move(names);
    paths_ = std::move(paths);
    capacity_ = newCapacity;
}

void SfxVector::ShrinkToFit() {
    const Guard guard(lock_);
    Resize(sfxCount_);
}

char** SfxVector::begin() {
    const Guard guard(lock_);
    return names_.get();
}

const char* const* SfxVector::cbegin() const {
    const Guard guard(lock_);
    return names_.get();
}

char** SfxVector::end() {
    const Guard guard(lock_);
    return names_.get() + sfxCount_;
}

const char* const* SfxVector::cend() const {
    const Guard guard(lock_);
    return names_.get() + sfxCount_;
}

} // namespace vemo::audio::sfx
