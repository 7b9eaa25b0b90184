#pragma once

#include <atomic>
#include <memory>
#include <mutex>
#include <vector>

#include <QThreadPool>

#include <QString>
#include <sfx/model/SfxDto.h>
#include <sfx/source/SfxFileInterface.h>

namespace vemo::audio {

class Playback;

/// What a player shares with its playbacks: the record, which setters change while playbacks read
/// it, the file and the pools. Any thread.
class PlayerState {
public:
    PlayerState(sfx::SfxDto sfx, std::shared_ptr<QThreadPool> playbackPool,
                std::shared_ptr<QThreadPool> stopPool);
    ~PlayerState();

    /// A copy of the record as it is now.
    sfx::SfxDto Record() const;
    QString EventId() const;
    const sfx::SfxDto* RawRecord() const { return record_.get(); }

    /// Runs `change` on the record, alone.
    template <typename Editor>
    void Change(const Editor& change) {
        const std::lock_guard lock(mutex_);
        change(*record_);
    }

    SfxFileInterface* File() const { return file_.load(std::memory_order_acquire); }
    void SetFile(SfxFileInterface* file) { file_.store(file, std::memory_order_release); }

    QThreadPool* PlaybackPool() const { return playbackPool_.get(); }
    QThreadPool* StopPool() const { return stopPool_.get(); }

    unsigned short ActivePlaybacks() const { return active_.load(std::memory_order_acquire); }
    void PlaybackBegins(const std::shared_ptr<Playback>& playback);
    /// The playback touches neither player nor state after this.
    void PlaybackIsOver() { active_.fetch_sub(1, std::memory_order_acq_rel); }
    /// The playbacks that are not over.
    std::vector<std::shared_ptr<Playback>> Playbacks() const;

private:
    mutable std::mutex mutex_;
    std::atomic<unsigned short> active_ = 0;
    std::shared_ptr<sfx::SfxDto> record_;
    std::shared_ptr<QThreadPool> playbackPool_;
    std::shared_ptr<QThreadPool> stopPool_;
    std::atomic<SfxFileInterface*> file_ = nullptr;
    std::vector<std::weak_ptr<Playback>> playbacks_;
};

} // namespace vemo::audio
