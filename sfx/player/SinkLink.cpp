#include <sfx/player/SinkLink.h>

namespace vemo::audio {

SinkLink::SinkLink(QAudioSink& sink) : sink_(&sink), volume_(sink.volume()) {}

double SinkLink::Volume() const {
    const std::lock_guard lock(mutex_);
    return volume_;
}

void SinkLink::SetVolume(double volume) {
    const std::lock_guard lock(mutex_);
    volume_ = qBound(0.0, volume, 1.0);
    if (sink_ == nullptr)
        return;
    QMetaObject::invokeMethod(sink_,
                              [sink = sink_, bounded = volume_] { sink->setVolume(bounded); });
}

void SinkLink::ReportStopped(Stop how) {
    const std::lock_guard lock(mutex_);
    lastStop_ = how;
    if (sink_ == nullptr)
        return;
    // Queued even on the sink's own thread: its receivers take this lock.
    QMetaObject::invokeMethod(
        sink_, [sink = sink_] { Q_EMIT sink->stateChanged(QAudio::StoppedState); },
        Qt::QueuedConnection);
}

SinkLink::Stop SinkLink::LastStop() const {
    const std::lock_guard lock(mutex_);
    return lastStop_;
}

bool SinkLink::SleepFor(std::chrono::milliseconds time) {
    std::unique_lock lock(mutex_);
    return !cut_.wait_for(lock, time, [this] { return sink_ == nullptr; });
}

bool SinkLink::Alive() const {
    const std::lock_guard lock(mutex_);
    return sink_ != nullptr;
}

void SinkLink::Cut() {
    {
        const std::lock_guard lock(mutex_);
        sink_ = nullptr;
    }
    cut_.notify_all();
}

} // namespace vemo::audio
