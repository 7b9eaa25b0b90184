#include <algorithm>

#include <gmock/gmock.h>

#include <sfx/manager/SfxManager.h>
#include <sfx/model/SfxException.h>

#include "CrossOver.h"
#include "control/ControlHouse.h"
#include "support/Recorder.h"

using namespace sfx_test;
using namespace std::chrono_literals;
using vemo::audio::SfxManager;

namespace {

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
