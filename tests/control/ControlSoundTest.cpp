#include <gtest/gtest.h>

#include <QCoreApplication>

#include <support/Analysis.h>
#include <support/Recorder.h>
#include <support/SoundFile.h>

#include "ControlHouse.h"

using namespace sfx_test;
using namespace std::chrono_literals;
using vemo::audio::CustomAudioParameters;
using vemo::audio::SfxPlayer;
using vemo::audio::SfxPlayerController;

namespace {

class ControlSound : public ::testing::Test {
protected:
    /// URL of a file of the user's with half a second of 1 kHz, by its ending.
    QString UserFile(const QString& name) {
        const std::string path = folder_.filePath(name).toStdString();
        const Pcm tone = MakeTone({.ms = 500, .frequency = 1000, .level = 0.8, .rate = 44100});
        if (name.endsWith("ogg"))
            WriteBytes(path, EncodeVorbis(tone, 0.9F));
        else if (name.endsWith("flac"))
            WriteSoundFile(path, tone, SF_FORMAT_FLAC | SF_FORMAT_PCM_16);
        else
            WriteSoundFile(path, tone);
        return QString::fromStdString(FileUrl(QString::fromStdString(path)));
    }
    static CustomAudioParameters::Builder Custom(const QString& file) {
        return CustomAudioParameters::builder().file(file).volume(0.5).pan(0.5);
    }
    /// What is heard until it is silent again.
    static Pcm Hear(const std::function<void()>& play) {
        Recorder recorder;
        play();
        EXPECT_TRUE(recorder.WaitForSound());
        EXPECT_TRUE(recorder.WaitForSilence());
        return recorder.Stop();
    }
    /// One clean tone of that level on a channel.
    static void ExpectTone(const Pcm& heard, int channel, double level, double frequency = 1000) {
        const auto stretch = Heard(heard, channel);
        ASSERT_TRUE(stretch);
        EXPECT_NEAR(stretch->Ms(heard.rate), 500, 20);
        EXPECT_NEAR(ToneLevel(heard, channel, *stretch, frequency), level, 0.1 * level);
        // Noise, or floats taken for integers, would put more into the rest than into the tone.
        EXPECT_NEAR(Rms(heard, channel, *stretch) * std::sqrt(2.0), level, 0.1 * level);
    }

    PulseServer& server_ = PulseServer::Shared();
    QTemporaryDir folder_;
};

} // namespace

TEST_F(ControlSound, theFirstPlayOfAUserFileSoundsWithItsPan) {
    ControlHouse house;
    const Pcm left =
        Hear([&] { house.Controller().play(Custom(UserFile("a.wav")).pan(0.0).build()); });
    ExpectTone(left, 0, 0.4);
    EXPECT_EQ(HeardMs(left, 1), 0);
    // Vorbis decodes to float.
    const Pcm right =
        Hear([&] { house.Controller().play(Custom(UserFile("b.ogg")).pan(0.75).build()); });
    ExpectTone(right, 0, 0.1);
    ExpectTone(right, 1, 0.3);
}

TEST_F(ControlSound, aFloatUserFileIsCleanWithReverb) {
    ControlHouse house;
    const QString file = UserFile("a.ogg");
    const Pcm heard = Hear([&] { house.Controller().play(Custom(file).reverb(0.5).build()); });
    const auto stretch = Heard(heard, 0);
    ASSERT_TRUE(stretch);
    const double tone = ToneLevel(heard, 0, *stretch, 1000);
    EXPECT_GT(tone, 0.2);
    EXPECT_NEAR(Rms(heard, 0, *stretch) * std::sqrt(2.0), tone, 0.25 * tone);
}

TEST_F(ControlSound, aUserFileSoundsFromAControllerOnAWorkerThread) {
    const QString file = UserFile("a.flac");
    std::atomic<SfxPlayerController*> controller = nullptr;
    std::atomic<bool> leave = false;
    const std::unique_ptr<QThread> thread(QThread::create([&] {
        ControlHouse house;
        controller = &house.Controller();
        while (!leave)
            QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
    }));
    thread->start();
    ASSERT_TRUE(WaitFor([&] { return controller != nullptr; }));
    const Pcm heard = Hear([&] { controller.load()->play(Custom(file).build()); });
    ExpectTone(heard, 0, 0.4);
    leave = true;
    thread->wait();
}

TEST_F(ControlSound, aControllerThreadThatWaitsForItsUserFileHearsIt) {
    ControlHouse house;
    const QString file = UserFile("a.wav");
    Recorder recorder;
    house.Controller().play(Custom(file).build());
    house.Controller().WaitUntilDone(0); // no event loop runs here meanwhile
    ASSERT_TRUE(recorder.WaitForSilence());
    ExpectTone(recorder.Stop(), 1, 0.4);
}

TEST_F(ControlSound, anInstalledEffectPlaysFromAnyThreadAndFollowsItsRecord) {
    ControlHouse house(500);
    auto& controller = house.Controller();
    ASSERT_TRUE(house.Load({Event("sfx.1", "low.sfx").build()}));
    const Pcm loud = Hear([&] { OnAnotherThread([&] { controller.play("cue sfx.1"); }); });
    ExpectTone(loud, 0, 0.5, 440);
    ASSERT_TRUE(house.Load({Event("sfx.1", "low.sfx").volume(0.25F).build()}));
    const Pcm soft = Hear([&] { EXPECT_EQ(controller.play("sfx.1"), 0U); });
    ExpectTone(soft, 0, 0.125, 440);
    const Pcm proxied = Hear([&] {
        OnAnotherThread([] {
            SfxPlayer player(Event("", "low.sfx").volume(0.5F).build());
            player.Play();
            while (!player.Done())
                QThread::msleep(10);
        });
    });
    ExpectTone(proxied, 1, 0.25, 440);
}

TEST_F(ControlSound, aRecordDeletedWhileItPlaysSoundsToItsEnd) {
    ControlHouse house(500);
    ASSERT_TRUE(house.Load({Event("sfx.1", "low.sfx").build()}));
    const Pcm heard = Hear([&] {
        house.Controller().play("sfx.1");
        EXPECT_TRUE(house.Load({}));
        EXPECT_FALSE(house.Holds(0));
    });
    ExpectTone(heard, 0, 0.5, 440);
}

TEST_F(ControlSound, everyStopReachesAPlayerWhoseRecordWasDeleted) {
    ControlHouse house;
    auto& controller = house.Controller();
    const std::function<void()> stops[] = {
        [&] { controller.stop(); }, [&] { controller.stop("cue sfx.1"); },
        [&] { controller.stop("sfx.1"); }, [&] { controller.stop(std::uint64_t{3}); }};
    for (const auto& stop : stops) {
        ASSERT_TRUE(house.Load({Event("sfx.1", "low.sfx").repeats(-1).fadeOut(60).build()}));
        Recorder recorder;
        controller.play("sfx.1");
        ASSERT_TRUE(recorder.WaitForSound());
        ASSERT_TRUE(house.Load({}));
        ASSERT_TRUE(recorder.WaitForMore(700ms));
        EXPECT_FALSE(recorder.WaitForSilence(300ms, 0ms)) << "it plays on";
        stop();
        EXPECT_TRUE(recorder.WaitForSilence());
    }
}
