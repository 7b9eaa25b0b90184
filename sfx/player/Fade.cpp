#include <sfx/player/Fade.h>

#include <chrono>

#include <QString>

#include <sfx/player/FadeCurve.h>

namespace vemo::audio {

namespace {

QString VolumeText(const SinkLink& sink) {
    return QString::number(sink.Volume(), 'g', 6);
}

enum class Outcome { Cancelled, Stepped, NoStep };

Outcome RunSteps(QPromise<void>& promise, SinkLink& sink, VolumeType volume, FadeType duration) {
    promise.setProgressRange(0, 100);
    promise.setProgressValueAndText(0, VolumeText(sink));
    FadeCurve curve(sink.Volume(), volume, duration);
    for (unsigned int i = 0; i < curve.Steps(); ++i) {
        promise.suspendIfRequested();
        if (!sink.Alive())
            break;
        if (promise.isCanceled()) {
            sink.SetVolume(0.0);
            sink.ReportStopped(SinkLink::Stop::AtOnce);
            return Outcome::Cancelled;
        }
        sink.SetVolume(static_cast<double>(curve.Next(sink.Volume())));
        promise.setProgressValueAndText(curve.Progress(i), VolumeText(sink));
        if (!sink.SleepFor(std::chrono::milliseconds(FadeCurve::StepMilliseconds)))
            break;
    }
    return curve.Steps() == 0 ? Outcome::NoStep : Outcome::Stepped;
}

} // namespace

void RunFade(QPromise<void>& promise, const std::weak_ptr<SinkLink>& sink, VolumeType volume,
             FadeType duration, bool stopAfterFade, const std::function<void()>& finished) {
    auto outcome = Outcome::NoStep;
    if (const auto link = sink.lock(); link && link->Alive())
        outcome = RunSteps(promise, *link, volume, duration);
    if (outcome == Outcome::Cancelled || !stopAfterFade)
        return;
    // The last steps are still in the sink's buffer; without a step there is nothing to wait for.
    if (const auto link = sink.lock())
        link->ReportStopped(outcome == Outcome::Stepped ? SinkLink::Stop::AfterBuffer
                                                        : SinkLink::Stop::AtOnce);
    finished();
}

} // namespace vemo::audio
