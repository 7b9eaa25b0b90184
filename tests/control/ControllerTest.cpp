#include <gmock/gmock.h>

#include <sfx/model/CustomAudioException.h>
#include <sfx/player/SfxPlayerImpl.h>
#include <support/LogCatcher.h>
#include <support/SoundFile.h>

#include "ControlHouse.h"

using namespace sfx_test;
using namespace std::chrono_literals;
using vemo::audio::CustomAudioParameters;
using vemo::audio::SfxPlayer;
using vemo::audio::SfxPlayerConnectionMediator;
using vemo::audio::SfxPlayerController;

namespace {

std::string TextOf(const std::function<void()>& call) {
    try {
        call();
    } catch (const std::out_of_range& fault) {
        return std::string("out_of_range ") + fault.what();
    } catch (const std::exception& fault) {
        return fault.what();
    }
    return "nothing";
}

constexpr char UnknownId[] = "out_of_range invalid unordered_map<K, T> key";

} // namespace

TEST(Controller, idsRunThroughRecordsCustomPlayersAndProxies) {
    ControlHouse house;
    auto& controller = house.Controller();
    ASSERT_TRUE(
        house.Load({Event("sfx.1", "low.sfx").build(), Event("sfx.2", "high.sfx").build()}));
    EXPECT_EQ(controller.SfxData(0).value()->eventId(), "sfx.1");
    EXPECT_EQ(controller.SfxData(1).value()->eventId(), "sfx.2");

    const SfxPlayer proxy(Event("", "low.sfx").name("proxy").build());
    EXPECT_EQ(controller.SfxData(2).value()->name(), "proxy");

    const auto custom =
        CustomAudioParameters::builder().name("a").file("file:///nowhere.wav").volume(0.1).build();
    controller.play(custom);
    EXPECT_EQ(controller.SfxData(3).value()->name(), "a");
    controller.play(custom);
    EXPECT_FALSE(house.Holds(4)) << "the same parameters have their player";
    CustomAudioParameters louder = custom;
    louder.volume(0.2);
    controller.play(louder);
    EXPECT_FLOAT_EQ(controller.Volume(4), 0.2F);

    const SfxPlayer next(Event("", "low.sfx").build());
    EXPECT_TRUE(house.Holds(5));
    controller.stop(true);
}

TEST(Controller, textRequestsFindNamesEventsAndNumbers) {
    ControlHouse house;
    auto& controller = house.Controller();
    LogCatcher log;
    EXPECT_EQ(controller.play("sfx.1"), 0U) << "no player yet; the records load meanwhile";
    EXPECT_EQ(log.Last(), "Invalid request from OSC: cannot play sound effect player with event id "
                          "sfx.1");

    ASSERT_TRUE(house.Load({Event("sfx.1", "low.sfx").name("door").build(),
                            Event("sfx.2", "high.sfx").name("door").build()}));
    EXPECT_EQ(controller.play("sfx.1"), 0U);
    EXPECT_EQ(controller.play("door"), 1U) << "both play, the last one answers";
    EXPECT_FALSE(controller.Done(0));
    EXPECT_EQ(controller.play("1"), 1U);

    EXPECT_EQ(controller.play(""), 0U);
    EXPECT_EQ(log.Last(),
              "Invalid request from OSC: cannot play sound effect player with event id ");
    EXPECT_EQ(TextOf([&] { controller.play("42"); }), UnknownId);
    EXPECT_THROW(controller.play("99999999999999999999999"), std::out_of_range);

    controller.stop("nobody");
    EXPECT_EQ(log.Last(),
              "Invalid request from OSC: cannot stop sound effect player with id nobody");
    EXPECT_EQ(TextOf([&] { controller.stop("42"); }), UnknownId);
    EXPECT_THROW(controller.stop("99999999999999999999999"), std::out_of_range);
    controller.stop("door");
    EXPECT_TRUE(WaitFor([&] { return controller.Done(0) && controller.Done(1); }));
}

TEST(Controller, anUnknownIdThrowsFromEveryOperation) {
    ControlHouse house;
    auto& it = house.Controller();
    const auto record = Event("", "low.sfx").build();
    for (const std::function<void()>& call : std::vector<std::function<void()>>{
             [&] { it.play(std::uint64_t{7}); }, [&] { it.stop(std::uint64_t{7}); },
             [&] { it.GetDuration(7); }, [&] { it.SetOutputDevice(7, nullptr); },
             [&] { it.SetVolume(7, 1); }, [&] { it.Volume(7); }, [&] { it.SetReverb(7, 1); },
             [&] { it.SetPan(7, 1); }, [&] { it.SetSfxPath(7, ""); }, [&] { it.Done(7); },
             [&] { it.WaitUntilDone(7); }, [&] { it.PlaysSameSfx(7, record); },
             [&] { it.SfxData(7); }, [&] { it.GetPlayer(std::uint64_t{7}); }})
        EXPECT_EQ(TextOf(call), UnknownId);
    EXPECT_FALSE(it.GetPlayer("sfx.7"));
    it.FadeTo("sfx.7", 0.5F, 100);
    it.stop(CustomAudioParameters());
}

TEST(Controller, duplicateEventsKeepTheirOldestPlayer) {
    ControlHouse house;
    auto& controller = house.Controller();
    ASSERT_TRUE(house.Load({Event("sfx.1", "low.sfx").volume(0.1F).build(),
                            Event("sfx.1", "low.sfx").volume(0.2F).build()}));
    EXPECT_FLOAT_EQ(controller.Volume(0), 0.2F) << "the second record came after the first";
    EXPECT_FALSE(house.Holds(1));

    // One event with two effects has two records' players, of which one is kept.
    ASSERT_TRUE(
        house.Load({Event("sfx.1", "low.sfx").build(), Event("sfx.1", "high.sfx").build()}));
    EXPECT_TRUE(house.Holds(0));
    EXPECT_FALSE(house.Holds(1));
    EXPECT_EQ(controller.SfxData(0).value()->effectId(), "low.sfx");
}

TEST(Controller, aChangedEffectGetsANewPlayerThatFollowsItsRecord) {
    ControlHouse house;
    auto& controller = house.Controller();
    ASSERT_TRUE(house.Load({Event("sfx.1", "low.sfx").build()}));
    ASSERT_TRUE(house.Load({Event("sfx.1", "high.sfx").build()}));
    EXPECT_FALSE(house.Holds(0));
    EXPECT_EQ(controller.SfxData(1).value()->effectId(), "high.sfx");

    // The removal of the old player has unmapped the event, so this load makes another one, which
    // goes again in favour of the older.
    ASSERT_TRUE(house.Load({Event("sfx.1", "high.sfx").volume(0.25F).build()}));
    EXPECT_FLOAT_EQ(controller.Volume(1), 0.25F);
    EXPECT_FALSE(house.Holds(2));
    const SfxPlayer proxy(Event("", "low.sfx").build());
    EXPECT_TRUE(house.Holds(3));
}

TEST(Controller, everyEffectIsAnnouncedHoweverFastItDecodes) {
    ControlHouse house(1);
    SignalLog<QString> ready(&ControlHouse::Mediator(), &SfxPlayerConnectionMediator::onSfxIsReady);
    std::list<MemoryRepository::Record> records;
    for (const char* effect : {"low.sfx", "high.sfx"})
        records.push_back(Event(std::string("sfx.") + effect, effect).build());
    ASSERT_TRUE(house.Load(std::move(records)));
    ASSERT_TRUE(ready.WaitForCount(2));
    for (const auto& [path] : ready.All())
        EXPECT_TRUE(path.endsWith(".sfx") && QFileInfo(path).isAbsolute()) << path.toStdString();
    for (const std::uint64_t id : {0U, 1U})
        EXPECT_NEAR(house.Controller().GetDuration(id), 0.002, 1e-5);

    // A proxy for an effect that is there is announced with its id.
    const SfxPlayer proxy(Event("", "low.sfx").build());
    ASSERT_TRUE(ready.WaitForCount(3));
    EXPECT_EQ(std::get<0>(ready.All().back()), "low.sfx");
}

TEST(Controller, anEffectThatIsNotInstalledHoldsNothingElseUp) {
    ControlHouse house;
    auto& controller = house.Controller();
    const auto missing = Event("sfx.1", "missing.sfx").build();
    ASSERT_TRUE(house.Load({missing}));
    EXPECT_EQ(controller.GetDuration(0), -1.0F);
    ASSERT_TRUE(house.Load({missing, Event("sfx.2", "low.sfx").build()}));
    EXPECT_GT(controller.GetDuration(1), 0.0F);
    ASSERT_TRUE(house.Load({missing}));
    EXPECT_FALSE(house.Holds(1));
}

TEST(Controller, aProxyThatLookedForItsEffectElsewhereLeavesNoDeadFileBehind) {
    ControlHouse house;
    const SfxPlayer proxy(Event("", "low.sfx").build());
    QThreadPool::globalInstance()->waitForDone();
    ASSERT_TRUE(house.Load({Event("sfx.1", "low.sfx").build()}));
    EXPECT_GT(house.Controller().GetDuration(1), 0.0F);
}

TEST(Controller, reloadsWithoutARepositoryAndAnswersThatItHasNone) {
    SfxPlayerController controller;
    LogCatcher log;
    auto* const mediator = SfxPlayerConnectionMediator::instance();
    mediator->onSoundEffectsChanged();
    QThreadPool::globalInstance()->waitForDone();
    EXPECT_THAT(log.Last(), testing::HasSubstr("Null pointer for sfx repository"));
    std::promise<vemo::audio::SfxRepository*> promise;
    auto asked = promise.get_future();
    mediator->onActiveSfxRepositoryRequested(&promise);
    EXPECT_EQ(asked.get(), nullptr);

    auto mine = std::unique_ptr<vemo::audio::SfxRepository>(new MemoryRepository);
    const SfxPlayerController second(mine);
    EXPECT_NE(mine, nullptr) << "the controller exists already";
}

TEST(Controller, handsOutItsRepositoryAndItsFiles) {
    ControlHouse house;
    ASSERT_TRUE(house.Load({Event("sfx.1", "low.sfx").build()}));
    std::promise<vemo::audio::SfxRepository*> promise;
    auto asked = promise.get_future();
    ControlHouse::Mediator().onActiveSfxRepositoryRequested(&promise);
    EXPECT_EQ(asked.get(), &house.Repository());

    auto* const player = dynamic_cast<vemo::audio::SfxPlayerImpl*>(
        house.Controller().GetPlayer(std::uint64_t{0}).value());
    ASSERT_NE(player, nullptr);
    for (const auto& [effect, duration] : {std::pair("low.sfx", 0.6F), std::pair("other", -1.0F)}) {
        std::promise<const vemo::audio::SfxFileInterface*> file;
        auto answer = file.get_future();
        Q_EMIT player->sfxFileRequested(effect, file);
        const auto* const got = answer.get();
        EXPECT_NEAR(got == nullptr ? -1.0F : got->Duration(), duration, 1e-3) << effect;
    }
}

TEST(Controller, aUserFileThatDoesNotDecodeIsReportedEachTimeItIsPlayed) {
    ControlHouse house;
    auto& controller = house.Controller();
    SignalLog<QString, QString, QString> errors(&ControlHouse::Mediator(),
                                                &SfxPlayerConnectionMediator::soundEffectError);
    const auto missing =
        CustomAudioParameters::builder().file("file:///nowhere/a.wav").volume(1).build();
    for (const std::size_t times : {1U, 2U}) {
        controller.play(missing);
        ASSERT_TRUE(errors.WaitForCount(times));
        const auto [priority, message, what] = errors.All().back();
        EXPECT_EQ(priority, "warning");
        EXPECT_EQ(message, "Error decoding audio file: 1");
        EXPECT_TRUE(what.startsWith("file:///nowhere/a.wav: ")) << what.toStdString();
    }
    EXPECT_FALSE(house.Holds(1));
    EXPECT_TRUE(WaitFor([&] { return controller.Done(0); }));

    EXPECT_EQ(TextOf([&] { controller.play(CustomAudioParameters()); }),
              "SFX Files Map does not contain the desired file, likely due to an issue loading the "
              "source file.");
    EXPECT_TRUE(house.Holds(1)) << "its player stays";
    Q_EMIT ControlHouse::Mediator().preloadCustomAudio("");
    EXPECT_TRUE(errors.WaitForCount(3));
}

TEST(Controller, aPreloadedUserFileOutlivesReloads) {
    ControlHouse house;
    QTemporaryDir folder;
    const std::string path = folder.filePath("tone.wav").toStdString();
    WriteSoundFile(path, MakeTone({.ms = 500}));
    const std::string url = FileUrl(QString::fromStdString(path));
    Q_EMIT ControlHouse::Mediator().preloadCustomAudio(QString::fromStdString(url));
    ASSERT_TRUE(house.Load({Event("sfx.1", "low.sfx").build()}));
    ASSERT_TRUE(house.Load({}));
    // Whether it was kept shows when it is played after the original has gone.
    auto& controller = house.Controller();
    controller.play(CustomAudioParameters::builder().file(QString::fromStdString(url)).build());
    ASSERT_TRUE(WaitFor([&] { return controller.GetDuration(1) > 0; }));
    ASSERT_TRUE(house.Load({}));
    EXPECT_FALSE(house.Holds(1)) << "a custom player has no record";
    ASSERT_TRUE(folder.remove());
    controller.play(CustomAudioParameters::builder().file(QString::fromStdString(url)).build());
    EXPECT_NEAR(controller.GetDuration(2), 0.5, 0.03);
    controller.stop(true);
}

TEST(Controller, aPruneForgetsTheInstalledFilesThatNoRecordUses) {
    ControlHouse house;
    ASSERT_TRUE(house.Load({Event("sfx.1", "low.sfx").build()}));
    SignalLog<QString> ready(&ControlHouse::Mediator(), &SfxPlayerConnectionMediator::onSfxIsReady);
    ASSERT_TRUE(house.Load({}));
    ASSERT_TRUE(house.Load({Event("sfx.1", "low.sfx").build()}));
    EXPECT_TRUE(ready.WaitForCount(1)) << "it is decoded anew";
}
