#include <algorithm>

#include <gmock/gmock.h>

#include <sfx/manager/SfxManager.h>
#include <sfx/model/SfxException.h>

#include "control/ControlHouse.h"
#include "support/Analysis.h"
#include "support/ProcessRunner.h"
#include "support/Recorder.h"

using namespace sfx_test;
using namespace std::chrono_literals;
using vemo::audio::SfxManager;

namespace {

constexpr double kLow = 440;
constexpr double kHigh = 1320;
constexpr double kWindow = 25; // ms
// The tone of an effect at full volume.
constexpr double kFull = 0.5;

/// Level of a tone in each window of what is heard of the whole recording.
std::vector<double> Levels(const Pcm& heard, double frequency) {
    std::vector<double> levels;
    const auto sound = Heard(heard, 0);
    const std::size_t step = FramesOf(kWindow, heard.rate);
    for (std::size_t at = sound ? sound->begin : 0; sound && at + step <= sound->end; at += step) {
        levels.push_back(ToneLevel(heard, 0, {at, at + step}, frequency));
    }
    return levels;
}

/// How many windows it takes from the first to one of at least `share` of the loudest.
std::ptrdiff_t Rise(const std::vector<double>& levels, double share) {
    const double loud = share * *std::max_element(levels.begin(), levels.end());
    return std::find_if(levels.begin(), levels.end(), [=](double it) { return it >= loud; }) -
           levels.begin();
}

/// A fades into B: at first A alone, at last B alone, both for a while, and never a gap.
void ExpectCrossOver(const std::vector<double>& a, const std::vector<double>& b) {
    bool both = false;
    for (std::size_t i = 0; i < a.size(); ++i) {
        both = both || (a[i] > 0.1 * kFull && b[i] > 0.1 * kFull);
    }
    EXPECT_TRUE(both);
    const auto firstB = Rise(b, 0.5);
    const auto lastA = std::ptrdiff_t(a.size()) - Rise({a.rbegin(), a.rend()}, 0.5);
    EXPECT_NEAR(*std::max_element(a.begin(), a.end()), kFull, 0.05);
    EXPECT_NEAR(*std::max_element(b.begin(), b.end()), kFull, 0.05);
    EXPECT_LT(Rise(a, 0.5), firstB);
    EXPECT_LT(lastA, std::ptrdiff_t(a.size()) - Rise({b.rbegin(), b.rend()}, 0.5));
    for (auto i = std::min(lastA, firstB); i < std::max(lastA, firstB); ++i) {
        EXPECT_GT(std::max(a[i], b[i]), 0.03 * kFull) << "a gap at window " << i;
    }
}

class ManagerSound : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(house_.Load({Low().build(), High().build()}));
        ASSERT_EQ(manager_.AddPlayer(Low().build()), 0);
        ASSERT_EQ(manager_.AddPlayer(High().build()), 1);
    }
    using Builder = vemo::audio::sfx::SfxDto::SfxDtoBuilder;
    static Builder Endless(const char* eventId, const char* effectId) {
        return Event(eventId, effectId).repeats(-1).fadeIn(400).fadeOut(2400);
    }
    static Builder Low() { return Endless("sfx.1", "low.sfx"); }
    static Builder High() { return Endless("sfx.2", "high.sfx"); }

    ControlHouse house_{1000};
    SfxManager manager_;
};

} // namespace

TEST_F(ManagerSound, playAndStopFadeAsTheRecordSays) {
    Recorder recorder;
    manager_.Play(0, 100);
    ASSERT_TRUE(recorder.WaitForSound());
    ASSERT_TRUE(recorder.WaitForMore(1000ms));
    manager_.Stop(0, 0);
    ASSERT_TRUE(recorder.WaitForSilence());
    const auto levels = Levels(recorder.Stop(), kLow);
    EXPECT_NEAR(*std::max_element(levels.begin(), levels.end()), kFull, 0.05);
    // Between a tenth and nine tenths lies about one decade of the four that a fade has.
    const auto rise = kWindow * double(Rise(levels, 0.9) - Rise(levels, 0.1));
    const std::vector<double> back(levels.rbegin(), levels.rend());
    const auto fall = kWindow * double(Rise(back, 0.9) - Rise(back, 0.1));
    EXPECT_NEAR(rise, 100, 60);
    EXPECT_NEAR(fall, 573, 120);
}

TEST_F(ManagerSound, setAmbientCrossesOverToTheNext) {
    Recorder recorder;
    manager_.SetAmbient(0);
    ASSERT_TRUE(recorder.WaitForSound());
    ASSERT_TRUE(recorder.WaitForMore(800ms));
    manager_.SetAmbient(1);
    ASSERT_TRUE(recorder.WaitForMore(1500ms));
    manager_.StopAmbient();
    ASSERT_TRUE(recorder.WaitForSilence());
    manager_.WaitForAllToComplete();
    const Pcm heard = recorder.Stop();
    ExpectCrossOver(Levels(heard, kLow), Levels(heard, kHigh));
}

TEST_F(ManagerSound, aStoppedEffectPlaysAtFullVolumeTheNextTime) {
    const int id = manager_.AddPlayer(Low().fadeIn(0).fadeOut(0).volume(0.2F).build());
    for (const double level : {0.2 * kFull, kFull}) {
        Recorder recorder;
        manager_.Play(id, 0);
        ASSERT_TRUE(recorder.WaitForSound());
        ASSERT_TRUE(recorder.WaitForMore(300ms));
        manager_.Stop(id, 0);
        ASSERT_TRUE(recorder.WaitForSilence());
        const auto levels = Levels(recorder.Stop(), kLow);
        EXPECT_NEAR(*std::max_element(levels.begin(), levels.end()), level, 0.05 * level);
    }
}

TEST_F(ManagerSound, aPlayerThatAReloadHasRemovedIsStoppedAndPassedOver) {
    Recorder recorder;
    manager_.Play(0, 0);
    manager_.Play(1, 0);
    ASSERT_TRUE(recorder.WaitForSound());
    ASSERT_TRUE(house_.Load({}));
    manager_.StopPrimaryEffects();
    EXPECT_TRUE(recorder.WaitForSilence());
    manager_.StopAllEffects();
    manager_.WaitForAllToComplete();
    EXPECT_EQ(manager_.AddPlayer(Low().build()), 2);
    EXPECT_THROW(manager_.GetSfxDto(0), vemo::audio::SfxException);
}

TEST(Soundscape, bedsCrossOverWithEffectsOnTop) {
    PulseServer::Shared();
    InstallFolder install;
    install.AddAmbient("low.sfx", "Low", MakeTone({.ms = 900, .frequency = kLow}));
    install.AddAmbient("high.sfx", "High", MakeTone({.ms = 900, .frequency = kHigh}));
    install.AddEffect("bell.sfx", "Bell", MakeTone({.ms = 300, .frequency = 3000}));
    install.Publish();
    Recorder recorder;
    const auto result = ProcessRunner::Run(SOUNDSCAPE, {"3"}, {}, 3 * kDeadline);
    EXPECT_EQ(result.exitCode, 0) << result.err.toStdString();
    EXPECT_EQ(result.out, "bed low.sfx\neffect bell.sfx\nbed high.sfx\neffect bell.sfx\n");
    EXPECT_TRUE(recorder.WaitForSilence());
    const Pcm heard = recorder.Stop();
    const auto low = Levels(heard, kLow);
    ExpectCrossOver(low, Levels(heard, kHigh));
    const auto bell = Levels(heard, 3000);
    const auto first = Rise(bell, 0.5);
    EXPECT_NEAR(bell.at(first + 1), 0.8 * kFull, 0.1);
    EXPECT_GT(low.at(first + 1), 0.5 * kFull);
}
