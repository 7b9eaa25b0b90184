#include <QCoreApplication>
#include <QEventLoop>
#include <QMetaMethod>

#include <thread>

#include <gmock/gmock.h>

#include <sfx/control/GetSfxPlayer.h>
#include <sfx/control/SfxPlayerControllerImpl.h>
#include <sfx/model/SfxException.h>

#include "ControlHouse.h"

using namespace sfx_test;
using namespace std::chrono_literals;
using vemo::audio::SfxException;
using vemo::audio::SfxPlayer;
using vemo::audio::SfxPlayerConnectionMediator;

namespace {

template <typename Fault>
void ExpectThrowsSoon(const std::string& part, const std::function<void()>& call) {
    const auto start = std::chrono::steady_clock::now();
    try {
        call();
        ADD_FAILURE() << "nothing was thrown";
    } catch (const Fault& fault) {
        EXPECT_THAT(fault.what(), testing::HasSubstr(part));
    }
    EXPECT_LT(std::chrono::steady_clock::now() - start, 1s);
}

void ExpectQueriesThrow(SfxPlayer& player, const std::string& part) {
    const auto record = Event("", "").build();
    ExpectThrowsSoon<SfxException>(part, [&] { player.GetDuration(); });
    ExpectThrowsSoon<SfxException>(part, [&] { player.Volume(); });
    ExpectThrowsSoon<SfxException>(part, [&] { player.Done(); });
    ExpectThrowsSoon<SfxException>(part, [&] { player.PlaysSameSfx(record); });
    ExpectThrowsSoon<SfxException>(part, [&] { static_cast<void>(player.SfxData()); });
}

} // namespace

TEST(Frame, aPlayerNeedsAController) {
    const auto record = Event("", "low.sfx").build();
    const std::string text = "No sound effect player controller registered";
    ExpectThrowsSoon<std::runtime_error>(text, [&] { const SfxPlayer player(record); });
    ExpectThrowsSoon<std::runtime_error>(text, [&] { vemo::audio::sfx::GetSfxPlayer(record); });
    OnAnotherThread([&] {
        ExpectThrowsSoon<std::runtime_error>(text, [&] { const SfxPlayer player(record); });
    });
}

TEST(Frame, aMovedFromPlayerThrowsFromEveryOperation) {
    ControlHouse house;
    SfxPlayer first(Event("", "low.sfx").volume(0.3F).build());
    SfxPlayer player(std::move(first));
    EXPECT_FLOAT_EQ(player.Volume(), 0.3F);
    const std::string text = "No SFX Implementation Available";
    SfxPlayer& empty = first; // NOLINT(bugprone-use-after-move)
    ExpectThrowsSoon<SfxException>(text, [&] { empty.Play(); });
    ExpectThrowsSoon<SfxException>(text, [&] { empty.Stop(true); });
    ExpectThrowsSoon<SfxException>(text, [&] { empty.WaitUntilDone(); });
    ExpectQueriesThrow(empty, text);
    empty = std::move(player);
    EXPECT_FLOAT_EQ(empty.Volume(), 0.3F);
}

TEST(Frame, aPlayerIsDrivenFromAnyThreadInOrder) {
    ControlHouse house;
    ASSERT_TRUE(house.Load({Event("sfx.1", "low.sfx").build()}));
    const auto drive = [] {
        SfxPlayer player(Event("", "low.sfx").volume(0.1F).build());
        EXPECT_NEAR(player.GetDuration(), 0.6, 1e-3);
        player.SetVolume(0.5F);
        player.SetPan(0.25F);
        player.SetReverb(0.75F);
        player.SetSfxPath("elsewhere");
        EXPECT_FLOAT_EQ(player.Volume(), 0.5F);
        const auto* const record = player.SfxData();
        EXPECT_FLOAT_EQ(record->pan(), 0.25F);
        EXPECT_FLOAT_EQ(record->reverb(), 0.75F);
        EXPECT_EQ(record->effectPath(), "elsewhere");
        auto other = Event("", "low.sfx").name("other").build();
        player.ReplaceSfxData(other);
        EXPECT_TRUE(player.PlaysSameSfx(other));
        EXPECT_TRUE(player.Done());
        EXPECT_FLOAT_EQ(record->pan(), 0.25F) << "what was handed out does not change";
    };
    drive();
    OnAnotherThread(drive);
}

TEST(Frame, aPrunedPlayersCallsEnd) {
    ControlHouse house;
    SfxPlayer here(Event("sfx.1", "low.sfx").build());
    SignalLog<QString, QString, QString> errors(&ControlHouse::Mediator(),
                                                &SfxPlayerConnectionMediator::soundEffectError);
    OnAnotherThread([&] {
        SfxPlayer there(Event("sfx.2", "low.sfx").build());
        house.Repository().Set({});
        // Reached through the event loop of the main thread.
        ControlHouse::Mediator().onSoundEffectsChanged();
        while (house.Holds(0) || house.Holds(1))
            QThread::msleep(1);
        ExpectQueriesThrow(there, "was removed");
        there.Play();
        there.Stop();
        there.WaitUntilDone();
    });
    EXPECT_TRUE(errors.WaitForCount(8)) << "five queries and three commands were too late";
    for (const auto& [priority, message, what] : errors.All()) {
        EXPECT_EQ(priority, "error");
        EXPECT_EQ(message, "invalid unordered_map<K, T> key");
        EXPECT_EQ(what, message);
    }
    ExpectQueriesThrow(here, "was removed");
    ExpectThrowsSoon<std::out_of_range>("invalid unordered_map<K, T> key", [&] { here.Play(); });
}

TEST(Frame, aControllerWhoseThreadHasEndedAnswersWithAnException) {
    SfxPlayerConnectionMediator::instance(); // lives here, the controller there
    std::unique_ptr<ControlHouse> house;
    std::atomic<bool> ready = false;
    std::atomic<bool> leave = false;
    auto thread = std::unique_ptr<QThread>(QThread::create([&] {
        house = std::make_unique<ControlHouse>();
        ready = true;
        while (!leave)
            QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
    }));
    thread->start();
    ASSERT_TRUE(WaitFor([&] { return ready.load(); }));
    SfxPlayer player(Event("", "low.sfx").volume(0.3F).build());
    EXPECT_FLOAT_EQ(player.Volume(), 0.3F);
    leave = true;
    thread->wait();
    thread.reset();
    ExpectQueriesThrow(player, "has ended");
    ExpectThrowsSoon<SfxException>("has ended",
                                   [] { const SfxPlayer late(Event("", "low.sfx").build()); });
    EXPECT_FLOAT_EQ(house->Controller().Volume(0), 0.3F) << "direct calls need no event loop";
}

TEST(Frame, aControllerWhoseThreadWasNotOfQtAnswersWithAnExceptionToo) {
    SfxPlayerConnectionMediator::instance();
    std::unique_ptr<ControlHouse> house;
    std::thread([&] { house = std::make_unique<ControlHouse>(); }).join();
    ExpectThrowsSoon<SfxException>("has ended",
                                   [] { const SfxPlayer late(Event("", "low.sfx").build()); });
}

TEST(Frame, aBusyControllerIsWaitedFor) {
    ControlHouse house;
    std::atomic<bool> asked = false;
    std::atomic<bool> answered = false;
    const std::unique_ptr<QThread> thread(QThread::create([&] {
        SfxPlayer player(Event("", "low.sfx").volume(0.3F).build());
        asked = true;
        EXPECT_FLOAT_EQ(player.Volume(), 0.3F);
        answered = true;
    }));
    thread->start();
    ASSERT_TRUE(WaitFor([&] { return asked.load(); }));
    QThread::sleep(2); // as long as a host may wait for a player here
    EXPECT_TRUE(WaitFor([&] { return answered.load(); }));
    thread->wait();
}

// Hosts connect to these by name.
TEST(Frame, listsTheSignalsOfControllerAndMediatorInTheirOrder) {
    const auto signalsOf = [](const QMetaObject& meta) {
        QStringList texts;
        for (int i = meta.methodOffset(); i < meta.methodCount(); ++i) {
            const QMetaMethod method = meta.method(i);
            if (method.methodType() == QMetaMethod::Signal)
                texts << method.name() + "(" + method.parameterNames().join(",") + ")";
        }
        return texts.join(" ").toStdString();
    };
    EXPECT_EQ(signalsOf(vemo::audio::SfxPlayerControllerImpl::staticMetaObject),
              "sfxPlayerControllerImplCreated(impl) sfxPlayerImplCreated() duration(,) volume(,) "
              "done(,) playsSameSfx(,) sfxData(,) initialize() sfxIsReady(effectId) "
              "soundEffectError(priority,message,what)");
    EXPECT_EQ(signalsOf(SfxPlayerConnectionMediator::staticMetaObject),
              "createSfxPlayer(,,playerCreated) soundEffectsChanged() onSfxIsReady(effectId) "
              "activeSfxRepositoryRequested(promise) preloadCustomAudio(file) "
              "soundEffectError(priority,message,what) fadeRequested(,volume,duration)");
}
