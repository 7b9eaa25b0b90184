#pragma once

#include <chrono>
#include <condition_variable>
#include <mutex>

#include <QAudioSink>

namespace vemo::audio {

/// What a fade holds of a playback's sink. QAudioSink belongs to one thread and a fade runs on
/// another: the link keeps the volume where both can read it and hands every change over to the
/// sink's own thread. A fade may outlive the sink, never the link.
class SinkLink {
public:
    /// How a fade ends its playback.
    enum class Stop {
        AtOnce,     ///< what the sink has buffered is dropped
        AfterBuffer ///< what the sink has buffered, the end of the fade, is still heard
    };

    /// On the sink's thread.
    explicit SinkLink(QAudioSink& sink);

    /// Linear volume the sink has or is about to get. Any thread.
    double Volume() const;
    /// Bounded to 0..1, as the sink does. Any thread.
    void SetVolume(double volume);
    /// Makes the sink report QAudio::StoppedState from its own thread. Any thread.
    void ReportStopped(Stop how);
    /// The stop that was reported last. On the sink's thread.
    Stop LastStop() const;
    /// Sleeps, but not beyond the sink's end; false when the sink is gone. Any thread.
    bool SleepFor(std::chrono::milliseconds time);
    /// False once the sink has gone. Any thread.
    bool Alive() const;
    /// Cuts the link before the sink goes, and wakes who sleeps. Any thread.
    void Cut();

private:
    mutable std::mutex mutex_;
    std::condition_variable cut_;
    QAudioSink* sink_;
    double volume_;
    Stop lastStop_ = Stop::AtOnce;
};

} // namespace vemo::audio
