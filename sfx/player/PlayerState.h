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

/// What a player shares with its playbacks: the record, which setters change while playbacks and
/// hosts read it, the file and the pools. Any thread.
///
/// A record that others may see is never written to: a change makes a new one.
class PlayerState {
public:
    PlayerState(sfx::SfxDto sfx, std::shared_ptr<QThreadPool> playbackPool,
                std::shared_ptr<QThreadPool> stopPool);
    ~PlayerState();

    /// The record as it is now, and will stay.
    std::shared_ptr<const sfx::SfxDto> Record() const;
    /// The same for a host, which may still read it when it has been replaced.
    const sfx::SfxDto* HandOutRecord();
    QString EventId() const { return QString::fromStdString(Record()->eventId()); }

    /// Runs `change` on a copy of the record, which then is the record.
    template <typename Editor>
    void Change(const Editor& change) {
        const std::lock_guard lock(mutex_);
        auto changed = std::make_shared<sfx::SfxDto>(*record_);
        change(*changed);
        Supersede(std::move(changed));
    }

    std::shared_ptr<SfxFileInterface> File() const;
    void SetFile(std::shared_ptr<SfxFileInterface> file);

    QThreadPool* PlaybackPool() const { return playbackPool_.get(); }
    QThreadPool* StopPool() const { return stopPool_.get(); }

    unsigned short ActivePlaybacks() const { return active_.load(std::memory_order_acquire); }
    void PlaybackBegins(const std::shared_ptr<Playback>& playback);
    /// The playback touches neither player nor state after this.
    void PlaybackIsOver() { active_.fetch_sub(1, std::memory_order_acq_rel); }
    /// The playbacks that are not over.
    std::vector<std::shared_ptr<Playback>> Playbacks() const;

private:
    void Supersede(std::shared_ptr<const sfx::SfxDto> record);

    mutable std::mutex mutex_;
    std::atomic<unsigned short> active_ = 0;
    std::shared_ptr<const sfx::SfxDto> record_;
    bool handedOut_ = false;
    std::shared_ptr<QThreadPool> playbackPool_;
    std::shared_ptr<QThreadPool> stopPool_;
    std::shared_ptr<SfxFileInterface> file_;
    std::vector<std::weak_ptr<Playback>> playbacks_;
};

} // namespace vemo::audio
