#include <sfx/player/PlayerState.h>

#include <utility>

#include <sfx/player/HandedOutRecords.h>
#include <sfx/player/Playback.h>

namespace vemo::audio {

PlayerState::PlayerState(sfx::SfxDto sfx, std::shared_ptr<QThreadPool> playbackPool,
                         std::shared_ptr<QThreadPool> stopPool)
    : record_(std::make_shared<const sfx::SfxDto>(std::move(sfx))),
      playbackPool_(std::move(playbackPool)),
      stopPool_(std::move(stopPool)) {}

PlayerState::~PlayerState() {
    stopPool_.reset();
    playbackPool_.reset();
    Supersede(nullptr);
}

std::shared_ptr<const sfx::SfxDto> PlayerState::Record() const {
    const std::lock_guard lock(mutex_);
    return record_;
}

const sfx::SfxDto* PlayerState::HandOutRecord() {
    const std::lock_guard lock(mutex_);
    handedOut_ = true;
    return record_.get();
}

void PlayerState::Supersede(std::shared_ptr<const sfx::SfxDto> record) {
    if (std::exchange(handedOut_, false))
        KeepHandedOutRecord(std::move(record_));
    record_ = std::move(record);
}

std::shared_ptr<SfxFileInterface> PlayerState::File() const {
    const std::lock_guard lock(mutex_);
    return file_;
}

void PlayerState::SetFile(std::shared_ptr<SfxFileInterface> file) {
    const std::lock_guard lock(mutex_);
    file_.swap(file);
}

void PlayerState::PlaybackBegins(const std::shared_ptr<Playback>& playback) {
    active_.fetch_add(1, std::memory_order_acq_rel);
    const std::lock_guard lock(mutex_);
    std::erase_if(playbacks_, [](const auto& known) { return known.expired(); });
    playbacks_.push_back(playback);
}

std::vector<std::shared_ptr<Playback>> PlayerState::Playbacks() const {
    std::vector<std::shared_ptr<Playback>> alive;
    const std::lock_guard lock(mutex_);
    for (const auto& known : playbacks_) {
        if (auto playback = known.lock())
            alive.push_back(std::move(playback));
    }
    return alive;
}

} // namespace vemo::audio
