#include <sfx/model/SongInterval.h>

#include <ostream>
#include <utility>

namespace vemo::audio {

SongInterval::SongInterval() = default;

SongInterval::SongInterval(std::string index, unsigned int start, unsigned int end)
    : index_(std::move(index)), start_(start), end_(end) {}

SongInterval::SongInterval(const SongInterval& other) = default;
SongInterval::SongInterval(SongInterval&& other) noexcept = default;
SongInterval& SongInterval::operator=(const SongInterval& other) = default;
SongInterval& SongInterval::operator=(SongInterval&& other) noexcept = default;
SongInterval::~SongInterval() = default;

void SongInterval::index(const std::string& index) {
    index_ = index;
}
std::string SongInterval::index() const {
    return index_;
}
void SongInterval::start(unsigned int start) {
    start_ = start;
}
unsigned int SongInterval::start() const {
    return start_;
}
void SongInterval::end(unsigned int end) {
    end_ = end;
}
unsigned int SongInterval::end() const {
    return end_;
}
void SongInterval::type(IntervalType type) {
    type_ = type;
}
IntervalType SongInterval::type() {
    return type_;
}

std::ostream& operator<<(std::ostream& out, const SongInterval& interval) {
    return out << "{ 'index': '" << interval.index() << "', 'start': " << interval.start()
               << ", 'end': " << interval.end() << " }";
}

} // namespace vemo::audio
