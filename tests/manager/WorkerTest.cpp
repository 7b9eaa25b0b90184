#include <algorithm>
#include <stdexcept>
#include <system_error>

#include <gtest/gtest.h>

#include <sfx/manager/ManagedSfxPlayer.h>
#include <sfx/manager/SfxWorkerVolume.h>
#include <support/LogCatcher.h>
#include <support/Waiting.h>

#include "LoggingPlayer.h"

using namespace sfx_test;
using vemo::audio::ManagedSfxPlayer;
using vemo::audio::SfxPlayerInterface;
using vemo::audio::SfxWorker;
using vemo::audio::SfxWorkerVolume;

namespace {

std::unique_ptr<SfxPlayerInterface> MakePlayer(const std::shared_ptr<CallLog>& log,
                                               float volume = 1.0F) {
    return std::make_unique<LoggingPlayer>(
        vemo::audio::sfx::SfxDto::builder().volume(volume).build(), log);
}

class Worker : public ::testing::Test {
protected:
    std::string Ramp(SfxWorkerVolume::Kind kind, unsigned int duration, float from, float to,
                     bool stopped = false) {
        log_->Clear();
        SfxWorkerVolume worker(kind, duration, from, to, &player_, 0.7F, &gate_);
        if (stopped)
            worker.RequestStop();
        worker.Start();
        worker.Join();
        return log_->Text();
    }

    std::shared_ptr<CallLog> log_ = std::make_shared<CallLog>();
    std::unique_ptr<SfxPlayerInterface> player_ = MakePlayer(log_);
    std::recursive_timed_mutex gate_;
};

} // namespace

TEST_F(Worker, rampsInStepsOf20MsBetweenPlayAndStop) {
    using enum SfxWorkerVolume::Kind;
    EXPECT_EQ(Ramp(FadeIn, 90, 0.0F, 1.0F), "0 play 0.2 0.4 0.6 0.8 1");
    EXPECT_EQ(Ramp(FadeOut, 80, 1.0F, 0.0F), "0.75 0.5 0.25 0 stop 0.7");
    EXPECT_EQ(Ramp(FadeIn, 40, 0.5F, 3.0F), "0.5 play 1 1") << "no more than full volume";
    EXPECT_EQ(Ramp(FadeIn, 0, 0.5F, 1.0F), "0.5 play");
    EXPECT_EQ(Ramp(FadeOut, 0, 0.5F, 0.0F), "stop 0.7");
    EXPECT_EQ(Ramp(FadeIn, 100, 0.0F, 1.0F, true), "") << "stopped before it began";
    EXPECT_EQ(Ramp(FadeOut, 0, 1.0F, 0.0F, true), "");
}

TEST_F(Worker, aCancelledFadeOutLeavesThePlayerPlayingAtTheLevelItReached) {
    SfxWorkerVolume worker(SfxWorkerVolume::FadeOut, 60'000, 1.0F, 0.0F, &player_, 0.7F, &gate_);
    worker.Start();
    ASSERT_TRUE(WaitFor([this] { return log_->Count() >= 2; }));
    worker.RequestStop();
    worker.Join();
    EXPECT_EQ(log_->Text().find("stop"), std::string::npos);
    EXPECT_LT(player_->Volume(), 1.0F);
    EXPECT_GT(player_->Volume(), 0.5F);
}

TEST_F(Worker, joiningIsForAnotherThreadAndOnce) {
    struct SelfJoiner : SfxWorker {
        ~SelfJoiner() override { End(); }
        void Work() override {
            try {
                Join();
            } catch (const std::system_error& fault) {
                caught = fault.code() == std::errc::resource_deadlock_would_occur;
            }
        }
        std::atomic<bool> caught = false;
    } worker;
    EXPECT_FALSE(worker.IsRunning());
    EXPECT_THROW(worker.Join(), std::system_error);
    worker.Start();
    EXPECT_TRUE(WaitFor([&] { return worker.caught.load(); }));
    EXPECT_TRUE(worker.IsRunning()) << "held until it is joined";
    worker.Join();
    EXPECT_FALSE(worker.IsRunning());
}

TEST_F(Worker, anExceptionOfAHostsPlayerEndsTheFadeAlone) {
    struct Broken : SfxWorker {
        ~Broken() override { End(); }
        void Work() override { throw std::runtime_error("no such player"); }
    } worker;
    const LogCatcher log;
    worker.Start();
    worker.Join();
    EXPECT_NE(log.Last().find("no such player"), std::string::npos) << log.Last();
}

TEST(ManagedPlayer, aPlayWithoutAFadeIsImmediateAndAStopRestoresTheVolume) {
    const auto log = std::make_shared<CallLog>();
    ManagedSfxPlayer managed(MakePlayer(log, 0.4F));
    managed.Stop(0);
    EXPECT_EQ(log->Text(), "") << "done already";
    managed.Play(0);
    managed.Stop(0);
    EXPECT_EQ(log->Text(), "play 1 stop");
}

TEST(ManagedPlayer, aFadeInStartsAtTheVolumeThePlayerHas) {
    const auto log = std::make_shared<CallLog>();
    ManagedSfxPlayer managed(MakePlayer(log, 0.4F));
    managed.Play(40);
    managed.WaitUntilDone();
    EXPECT_EQ(log->Text(), "0.4 play 0.7 1 wait");
}

TEST(ManagedPlayer, aStopReachesAFadeInThatHasYetToPlay) {
    for (int i = 0; i < 100; ++i) {
        const auto log = std::make_shared<CallLog>();
        ManagedSfxPlayer managed(MakePlayer(log));
        managed.Play(20);
        managed.Stop(0);
        managed.WaitUntilDone();
        ASSERT_TRUE(log->done) << log->Text();
    }
}

TEST(ManagedPlayer, aNewFadeCancelsTheOneThatRunsAndStartsWhereItWas) {
    const auto log = std::make_shared<CallLog>();
    ManagedSfxPlayer managed(MakePlayer(log, 0.0F));
    managed.Play(60'000);
    ASSERT_TRUE(WaitFor([&] { return log->Count() >= 4; }));
    // It holds the volume gate, which the worker waits for by then, while it joins the worker.
    log->slowness = std::chrono::milliseconds(10);
    for (int i = 0; i < 5; ++i)
        managed.Stop(60'000);
    managed.Stop(40);
    managed.WaitUntilDone();
    const auto calls = log->All();
    EXPECT_EQ(std::count(calls.begin(), calls.end(), "play"), 1);
    ASSERT_GE(calls.size(), 4U);
    EXPECT_EQ(calls[calls.size() - 4], "0");
    EXPECT_EQ(calls[calls.size() - 3], "stop");
    EXPECT_EQ(calls[calls.size() - 2], "1");
}
