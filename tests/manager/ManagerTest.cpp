#include <algorithm>
#include <stdexcept>

#include <gmock/gmock.h>

#include <catalogue/BareInstall.h>
#include <sfx/control/SfxPlayerController.h>
#include <sfx/manager/SfxManager.h>

#include <support/Waiting.h>

#include "LoggingPlayer.h"

using namespace sfx_test;
using testing::internal::CaptureStdout;
using testing::internal::GetCapturedStdout;
using vemo::audio::AudioDevice;
using vemo::audio::AudioPath;
using vemo::audio::SfxManager;
using vemo::audio::sfx::SfxDto;

namespace {

constexpr char NoManifest[] = "No SFX Manifest Found. Returning with no SFX in Manager.\n";
constexpr char Failed[] = "The Population of SFX Manager has failed: ";

class Manager : public ::testing::Test {
protected:
    std::shared_ptr<CallLog> Add(SfxManager& manager,
                                 vemo::audio::SfxType type = vemo::audio::PRIMARY) {
        auto log = std::make_shared<CallLog>();
        manager.AddPlayer(
            std::make_unique<LoggingPlayer>(SfxDto::builder().type(type).build(), log));
        return log;
    }
    static auto NamesTheId(const char* id) {
        return testing::ThrowsMessage<std::out_of_range>(testing::HasSubstr(id));
    }

    BareInstall install_;
};

} // namespace

TEST_F(Manager, listsWhatIsInstalledInTheOrderOfTheManifest) {
    install_.WriteManifest(R"({"metadata": {"version": "1.1", "count": 2, "ambientCount": 1},
        "sfx": [{"id": "b", "name": "B", "path": "b.sfx"}, {"id": "a", "name": "A", "path": "x/a"}],
        "ambient": [{"id": "rain", "name": "R", "path": "rain.sfx"}]})");
    SfxManager manager;
    ASSERT_EQ(manager.GetSfxList().Count(), 2U);
    EXPECT_STREQ(manager.GetSfxList().Get(0), "b");
    EXPECT_EQ(manager.GetSfxList().GetPath(1), install_.Text("x/a"));
    ASSERT_EQ(manager.GetAmbientList().Count(), 1U);
    EXPECT_STREQ(manager.GetAmbientList().Get(0), "rain");
}

TEST_F(Manager, livesWithoutAManifestAndLooksForAmbientsAgain) {
    CaptureStdout();
    SfxManager manager;
    EXPECT_EQ(GetCapturedStdout(), NoManifest);
    CaptureStdout();
    EXPECT_EQ(manager.GetSfxList().Count(), 0U);
    EXPECT_EQ(GetCapturedStdout(), "");
    CaptureStdout();
    EXPECT_EQ(manager.GetAmbientList().Count(), 0U);
    EXPECT_EQ(manager.GetAmbientList().Count(), 0U);
    EXPECT_EQ(GetCapturedStdout(), std::string(NoManifest) + NoManifest);
}

TEST_F(Manager, livesWithAManifestThatCannotBeUsedAndSaysWhy) {
    install_.WriteManifest("{");
    CaptureStdout();
    SfxManager manager;
    EXPECT_EQ(GetCapturedStdout(), std::string(Failed) + "Error parsing sound effects manifest\n");
    EXPECT_THROW(manager.GetSfxList(), std::runtime_error);
    // Mended meanwhile: a second try starts from an empty list.
    install_.WriteManifest(R"({"metadata": {"version": "1.1", "count": 1, "ambientCount": 1},
        "sfx": [{"id": "a", "name": "A", "path": "a"}], "ambient": [{"id": "x"}]})");
    EXPECT_EQ(manager.GetSfxList().Count(), 1U);
    EXPECT_THROW(manager.GetAmbientList(), std::runtime_error);
    EXPECT_THROW(manager.GetAmbientList(), std::runtime_error);
    install_.WriteManifest(R"({"metadata": {"version": "1.1", "count": 1, "ambientCount": 1},
        "sfx": [], "ambient": [{"id": "rain", "name": "R", "path": "r"}]})");
    EXPECT_EQ(manager.GetAmbientList().Count(), 1U);
}

TEST_F(Manager, keepsOneAmbientAtATime) {
    SfxManager manager;
    const auto a = Add(manager, vemo::audio::AMBIENT);
    const auto b = Add(manager, vemo::audio::AMBIENT);
    manager.StopAmbient();
    EXPECT_EQ(a->Text(), "") << "none is set";
    manager.SetAmbient(0);
    ASSERT_TRUE(WaitFor([&] { return !a->done; }));
    manager.SetAmbient(0);
    manager.SetAmbient(1);
    EXPECT_TRUE(a->done) << "at once, not in 1000 ms";
    manager.WaitForAllToComplete();
    const auto calls = a->All();
    EXPECT_EQ(std::count(calls.begin(), calls.end(), "play"), 1);
    EXPECT_EQ(b->All().front(), "1");
    EXPECT_EQ(b->Count(), 53U) << "start level, play, 50 steps of 20 ms, wait";
    manager.StopAmbient();
    EXPECT_EQ(b->All().back(), "stop");
    b->Clear();
    manager.SetAmbient(1);
    EXPECT_EQ(b->Text(), "") << "it is the ambient still";
}

TEST_F(Manager, stopsAtOnceWhateverTheFade) {
    SfxManager manager;
    const auto log = Add(manager);
    manager.Play(0, 0);
    manager.Stop(0, 5000);
    manager.Play(-1, 100);
    EXPECT_EQ(log->Text(), "play 1 stop");
}

TEST_F(Manager, stopsByTypeInAscendingOrder) {
    SfxManager manager;
    const auto primary = Add(manager, vemo::audio::PRIMARY);
    const auto ambient = Add(manager, vemo::audio::AMBIENT);
    const auto user = Add(manager, vemo::audio::USER_PROVIDED);
    const auto playAll = [&] {
        manager.ForEachPlayer([&](int id) { manager.Play(id, 0); });
        for (const auto& log : {primary, ambient, user})
            log->Clear();
    };
    playAll();
    manager.StopAmbientEffects();
    EXPECT_EQ(primary->Text() + ambient->Text() + user->Text(), "1 stop");
    EXPECT_EQ(ambient->Count(), 2U);
    manager.StopPrimaryEffects();
    EXPECT_EQ(primary->Text(), "1 stop");
    playAll();
    manager.StopAllEffects();
    EXPECT_EQ(user->Text(), "1 stop");
    EXPECT_THROW(manager.ForEachPlayer({}), std::bad_function_call);
}

TEST_F(Manager, anIdThatWasNeverGivenThrowsAndIsPassedOver) {
    SfxManager manager;
    EXPECT_THAT([&] { manager.Play(7, 0); }, NamesTheId("7"));
    EXPECT_THAT([&] { manager.Stop(8, 0); }, NamesTheId("8"));
    EXPECT_THAT([&] { manager.SetPlayerOutputPath(-9, 1000); }, NamesTheId("-9"));
    EXPECT_THAT([&] { static_cast<void>(manager.GetSfxDto(7)); },
                NamesTheId("invalid map<K, T> key"));
    EXPECT_THAT([&] { static_cast<void>(manager.GetSfxDto(1)); },
                NamesTheId("invalid map<K, T> key"));
    manager.ForEachPlayer([](int id) { ADD_FAILURE() << id; });
    manager.StopAllEffects();
    manager.StopPrimaryEffects();
    manager.WaitForAllToComplete();
    EXPECT_EQ(manager.AddPlayer(SfxDto::builder().effectId("nobody").build()), -1);
    const auto log = Add(manager);
    manager.Play(0, 0);
    EXPECT_EQ(log->Text(), "play");
}

TEST_F(Manager, routesPlayersToPathsByName) {
    SfxManager manager;
    const auto log = Add(manager);
    const AudioDevice device{L"device", "Device", "device"};
    EXPECT_EQ(manager.AddPath(AudioPath("stage", device)), 1000);
    EXPECT_EQ(manager.AddPath(AudioPath("stage", device)), 1001);
    EXPECT_EQ(manager.GetPathIdType(vemo::core::DataVector("stage")), 1001);
    EXPECT_EQ(manager.GetPathIdType(vemo::core::DataVector("foyer")), 0);
    manager.SetPlayerOutputPath(0, 1000);
    manager.SetPlayerOutputPath(0, 999);
    EXPECT_EQ(log->Text(), "device");
}

TEST_F(Manager, addsAnInstalledEffectOnceThroughTheController) {
    install_.WriteManifest(R"({"metadata": {"version": "1.1", "count": 1, "ambientCount": 1},
        "sfx": [{"id": "a", "name": "A", "path": "a"}],
        "ambient": [{"id": "rain", "name": "R", "path": "r"}]})");
    install_.Write(u8"a");
    install_.Write(u8"r");
    SfxManager manager;
    const auto door = SfxDto::builder().effectId("a").volume(0.25F).build();
    EXPECT_THROW(manager.AddPlayer(door), std::runtime_error) << "there is no controller yet";
    const vemo::audio::SfxPlayerController controller;
    EXPECT_EQ(manager.AddPlayer(door), 1) << "the first try took an id";
    EXPECT_EQ(manager.AddPlayer(SfxDto(manager.GetSfxDto(1))), 1);
    EXPECT_EQ(manager.AddPlayer(SfxDto::builder().effectId("rain").build()), -1) << "not PRIMARY";
    EXPECT_EQ(
        manager.AddPlayer(SfxDto::builder().effectId("rain").type(vemo::audio::AMBIENT).build()),
        2);
    EXPECT_FLOAT_EQ(manager.GetSfxDto(1).volume(), 0.25F);
    EXPECT_THROW(manager.Play(3, 0), std::out_of_range);
    EXPECT_EQ(manager.AddPlayer(door), 3);
    EXPECT_THROW(manager.Play(3, 0), std::out_of_range) << "the empty entry stays";
}
