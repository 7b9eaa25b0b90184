#pragma once

#include <atomic>
#include <condition_variable>
#include <cstdint>
#include <memory>
#include <mutex>

#include <QFuture>

#include <sfx/player/PlayerState.h>
#include <sfx/player/SfxPlayerImpl.h>
#include <sfx/player/SinkLink.h>

namespace vemo::audio {

class PullDevice;
class SinkStage;

/// One playback of a player, from Play() to the end. It comes into being on the caller's thread
/// and is known to the player at once, so that no stop or fade that follows Play() is lost, and
/// runs on a thread of the playback pool, where sink, stream and event loop live (SinkStage).
///
/// It ends exactly once: sfxFinished is emitted, then the player's count goes down, whoever ends
/// it: its own thread, a stop before that thread has come, or the supervisor when the audio
/// system holds the thread for ever.
class Playback : public std::enable_shared_from_this<Playback> {
public:
    /// Counts itself in. `keeper` owns the player, if anyone does.
    static std::shared_ptr<Playback> Create(SfxPlayerImpl& player, PlayerState& state,
                                            std::shared_ptr<SfxPlayerImpl> keeper);
    Playback(SfxPlayerImpl& player, PlayerState& state, std::shared_ptr<SfxPlayerImpl> keeper);
    Playback(const Playback&) = delete;
    Playback& operator=(const Playback&) = delete;
    ~Playback();

    /// The whole playback, on a pool thread.
    void Run();
    /// Ends without a fade. Any thread.
    void EndAtOnce();

    /// The player's signals, on whatever thread emits them.
    void OnStop(bool urgent);
    void OnFadeRequested(VolumeType volume, FadeType duration, bool stopAfterFade);
    void OnFade(void (QFuture<void>::*control)());

    /// Counts up as long as the playback's thread is alive and well. Any thread.
    std::uint64_t Beat() const { return beat_.load(std::memory_order_relaxed); }
    void CountBeat() { beat_.fetch_add(1, std::memory_order_relaxed); }
    bool IsOver() const;
    /// Ends the playback without its thread, which hangs. On the supervisor's thread.
    void Abandon();

private:
    friend class SinkStage;

    enum class Phase { Queued, Preparing, Playing, Finished, Over };

    void StartStopTask(bool urgent);
    /// False when a stop came before the sink could start.
    bool EnterPlaying(const std::shared_ptr<SinkLink>& link, PullDevice& device);
    /// True when the supervisor has ended the playback: the player may be gone.
    bool WasAbandoned() const;
    /// The fade-in is under way; carries out the stop that came while the sink was opened, which
    /// the fade-in would have cancelled.
    void EnterStarted();
    bool StopCameEarly() const;
    void ForgetDevice();
    /// Announces the end; only the first call does.
    void Finish();
    /// Waits for fades and stop work, then takes leave of the player; only the first call does.
    void Leave();
    void TaskEnds();

    SfxPlayerImpl& player_;
    PlayerState& state_;
    std::shared_ptr<SfxPlayerImpl> keeper_;
    QThreadPool* pool_;

    mutable std::mutex mutex_;
    std::condition_variable tasksOver_;
    Phase phase_ = Phase::Queued;
    bool started_ = false;
    bool stopEarly_ = false;
    bool leaving_ = false;
    bool abandoned_ = false;
    int tasks_ = 0;
    QFuture<void> fade_;
    std::shared_ptr<SinkLink> link_;
    PullDevice* device_ = nullptr;
    std::atomic<std::uint64_t> beat_ = 0;
};

} // namespace vemo::audio
