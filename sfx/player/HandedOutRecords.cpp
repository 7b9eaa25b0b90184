#include <sfx/player/HandedOutRecords.h>

#include <array>
#include <cstddef>
#include <mutex>
#include <utility>

namespace vemo::audio {

namespace {

class Ring {
public:
    void Keep(std::shared_ptr<const sfx::SfxDto> record) {
        const std::lock_guard lock(mutex_);
        std::swap(records_[next_], record);
        next_ = (next_ + 1) % records_.size();
    }

private:
    std::mutex mutex_;
    std::array<std::shared_ptr<const sfx::SfxDto>, 4096> records_;
    std::size_t next_ = 0;
};

} // namespace

void KeepHandedOutRecord(std::shared_ptr<const sfx::SfxDto> record) {
    // Never destroyed: players may go in static destructors.
    static Ring* const ring = new Ring;
    ring->Keep(std::move(record));
}

} // namespace vemo::audio
