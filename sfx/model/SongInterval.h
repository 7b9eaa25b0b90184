#pragma once

#include <iosfwd>
#include <string>

#include <sfx/export.h>
#include <sfx/model/IntervalInterface.h>

namespace vemo::audio {

/// A stretch of one song, both ends inclusive. Nothing is validated: an end before the start is
/// stored as it is. A plain value: one interval is used by one thread at a time.
class SFX_EXPORT SongInterval : public IntervalInterface {
public:
    /// Empty index, 0 to 0.
    SongInterval();
    SongInterval(std::string index, unsigned int start, unsigned int end);
    SongInterval(const SongInterval& other);
    SongInterval(SongInterval&& other) noexcept;
    SongInterval& operator=(const SongInterval& other);
    SongInterval& operator=(SongInterval&& other) noexcept;
    ~SongInterval() override;

    /// Identifier of the song; compared byte by byte.
    void index(const std::string& index);
    std::string index() const;
    /// First position of the stretch.
    void start(unsigned int start);
    unsigned int start() const;
    /// Last position of the stretch, inclusive.
    void end(unsigned int end);
    unsigned int end() const;
    void type(IntervalType type) override;
    /// `SONG` unless it was set otherwise; copies carry the kind with them.
    IntervalType type() override;

private:
    std::string index_;
    unsigned int start_ = 0;
    unsigned int end_ = 0;
    IntervalType type_ = IntervalType::SONG;
};

/// Writes the text form, for example "{ 'index': 'A', 'start': 10, 'end': 20 }". Any thread.
SFX_EXPORT std::ostream& operator<<(std::ostream& out, const SongInterval& interval);

} // namespace vemo::audio
