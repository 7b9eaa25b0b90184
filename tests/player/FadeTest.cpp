#include <algorithm>
#include <atomic>
#include <cmath>
#include <memory>
#include <thread>

#include <gtest/gtest.h>

#include <QAudioSink>
#include <QBuffer>
#include <QFuture>
#include <QMediaDevices>

#include <sfx/player/Fade.h>
#include <sfx/player/FadeCurve.h>
#include <support/PulseServer.h>
#include <support/SignalLog.h>
#include <support/Waiting.h>

using namespace vemo::audio;
using sfx_test::WaitFor;

namespace {

// A real sink on the main thread playing silence, and fades on a thread of their own.
class Fade : public ::testing::Test {
protected:
    Fade() {
        sfx_test::PulseServer::Shared();
        QAudioFormat format;
        format.setSampleRate(48000);
        format.setChannelCount(2);
        format.setSampleFormat(QAudioFormat::Int16);
        silence_.setData(QByteArray(qsizetype{60} * 48000 * 4, '\0'));
        silence_.open(QIODevice::ReadOnly);
        sink_ = std::make_unique<QAudioSink>(QMediaDevices::defaultAudioOutput(), format);
        link_ = std::make_shared<SinkLink>(*sink_);
        states_ = std::make_unique<sfx_test::SignalLog<QAudio::State>>(sink_.get(),
                                                                       &QAudioSink::stateChanged);
        sink_->start(&silence_);
    }
    ~Fade() override {
        Join();
        link_->Cut();
        sink_->stop();
    }

    QFuture<void> Start(float volume, unsigned int duration, bool stopAfterFade = false) {
        auto promise = std::make_shared<QPromise<void>>();
        promise->start();
        auto future = promise->future();
        thread_ = std::thread([this, promise, volume, duration, stopAfterFade] {
            RunFade(*promise, link_, volume, duration, stopAfterFade, [this] { ++finished_; });
            promise->finish();
        });
        return future;
    }
    void Join() {
        if (thread_.joinable())
            thread_.join();
    }
    // Emitted by the fade, while the sink itself plays on.
    bool ReportedStopped() const {
        const auto states = states_->All();
        return std::any_of(states.begin(), states.end(), [](const auto& state) {
            return std::get<0>(state) == QAudio::StoppedState;
        });
    }

    QBuffer silence_;
    std::unique_ptr<QAudioSink> sink_;
    std::shared_ptr<SinkLink> link_;
    std::unique_ptr<sfx_test::SignalLog<QAudio::State>> states_;
    std::thread thread_;
    std::atomic<int> finished_ = 0;
};

} // namespace

TEST_F(Fade, movesTheSinkAlongTheCurveAndReportsEveryStep) {
    const auto fade = Start(0.5F, 300);
    int last = 0; // Qt keeps the text of 0 to itself
    EXPECT_TRUE(WaitFor([&] {
        const int percent = fade.progressValue();
        const QString text = fade.progressText();
        if (percent == fade.progressValue() && percent > last) {
            last = percent;
            FadeCurve curve(1.0, 0.5F, 300);
            double volume = 1.0;
            for (int step = 0; step < percent / 10; ++step)
                volume = static_cast<double>(curve.Next(volume));
            EXPECT_EQ(percent % 10, 0);
            EXPECT_EQ(text, QString::number(volume, 'g', 6));
        }
        return fade.isFinished();
    }));
    EXPECT_EQ(last, 100);
    EXPECT_EQ(fade.progressMinimum(), 0);
    EXPECT_EQ(fade.progressMaximum(), 100);
    EXPECT_TRUE(WaitFor([&] { return std::abs(sink_->volume() - 0.5) < 1e-6; }));
    EXPECT_FALSE(ReportedStopped());
    EXPECT_EQ(finished_, 0);
}

TEST_F(Fade, endsAStoppingFadeAtTheFloorThenReportsTheEnd) {
    const auto fade = Start(0.0F, 150, true);
    EXPECT_TRUE(WaitFor([&] { return fade.isFinished() && ReportedStopped(); }));
    EXPECT_NEAR(sink_->volume(), 0.0001, 1e-8);
    EXPECT_EQ(finished_, 1);
    EXPECT_EQ(link_->LastStop(), SinkLink::Stop::AfterBuffer);
}

TEST_F(Fade, changesNothingUnderOneStepButStillStops) {
    const auto fade = Start(0.0F, 29, true);
    EXPECT_TRUE(WaitFor([&] { return fade.isFinished() && ReportedStopped(); }));
    EXPECT_DOUBLE_EQ(sink_->volume(), 1.0);
    EXPECT_EQ(finished_, 1);
    EXPECT_EQ(link_->LastStop(), SinkLink::Stop::AtOnce);
}

TEST_F(Fade, mutesAndEndsThePlaybackWhenCancelled) {
    auto fade = Start(0.5F, 60000, true);
    ASSERT_TRUE(WaitFor([&] { return link_->Volume() < 1.0; }));
    fade.cancel();
    EXPECT_TRUE(WaitFor([&] { return ReportedStopped(); }));
    Join();
    EXPECT_DOUBLE_EQ(sink_->volume(), 0.0);
    EXPECT_EQ(finished_, 0);
}

TEST_F(Fade, holdsItsVolumeWhileSuspendedAndGoesOnAfterwards) {
    auto fade = Start(0.5F, 600);
    ASSERT_TRUE(WaitFor([&] { return link_->Volume() < 1.0; }));
    fade.suspend();
    ASSERT_TRUE(WaitFor([&] { return fade.isSuspended(); }));
    const double held = link_->Volume();
    EXPECT_GT(held, 0.5);
    // Three steps' time in which a fade that went on would have moved.
    link_->SleepFor(std::chrono::milliseconds(90));
    EXPECT_DOUBLE_EQ(link_->Volume(), held);
    fade.resume();
    EXPECT_TRUE(WaitFor([&] { return fade.isFinished(); }));
    EXPECT_NEAR(link_->Volume(), 0.5, 1e-6);
}

TEST_F(Fade, endsAtOnceWhenTheSinkIsGone) {
    const auto fade = Start(0.5F, 60000, true);
    ASSERT_TRUE(WaitFor([&] { return link_->Volume() < 1.0; }));
    link_->Cut();
    EXPECT_TRUE(WaitFor([&] { return fade.isFinished(); }));
    EXPECT_EQ(finished_, 1);
    EXPECT_FALSE(ReportedStopped());
}
