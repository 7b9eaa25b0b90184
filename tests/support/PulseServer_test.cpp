#include <algorithm>
#include <csignal>

#include <poll.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QAudioDevice>
#include <QAudioSink>
#include <QBuffer>
#include <QMediaDevices>
#include <gtest/gtest.h>

#include "support/ProcessRunner.h"
#include "support/PulseServer.h"
#include "support/Recorder.h"
#include "support/Waiting.h"

using namespace sfx_test;
using namespace std::chrono_literals;

namespace {

QByteArray BytesOf(const Pcm& pcm) {
    const auto samples = pcm.AsInt16();
    return {reinterpret_cast<const char*>(samples.data()),
            static_cast<qsizetype>(samples.size() * sizeof(samples[0]))};
}

// Plays outside this process; ends when the server has played everything. With its usual buffer
// of two seconds the server has the whole sound before it begins: no load makes gaps.
void Play(const Pcm& pcm, const char* sink = PulseServer::kSink) {
    ProcessRunner pacat("pacat", {"--raw", "--format=s16le", "--rate=" + QString::number(pcm.rate),
                                  "--channels=" + QString::number(pcm.channels),
                                  "--device=" + QString(sink)});
    pacat.Write(BytesOf(pcm));
    pacat.CloseInput();
    const auto result = pacat.Finish();
    ASSERT_EQ(result.exitCode, 0) << result.err.toStdString();
}

bool SinkListed(const QString& name) {
    for (const QAudioDevice& device : QMediaDevices::audioOutputs()) {
        if (device.description() == name) {
            return true;
        }
    }
    return false;
}

} // namespace

TEST(Recorder, hearsATonesLengthAndFrequencyAndNothingElse) {
    PulseServer::Shared();
    for (const double ms : {10.0, 50.0, 500.0}) {
        Recorder recorder;
        ASSERT_TRUE(recorder.WaitForMore(50ms));
        Play(MakeTone({.ms = ms, .frequency = 1000, .level = 0.5}));
        ASSERT_TRUE(recorder.WaitForSilence(200ms));
        const Pcm pcm = recorder.Stop();

        for (const int channel : {0, 1}) {
            const auto stretches = Stretches(pcm, channel);
            ASSERT_EQ(stretches.size(), 1U) << ms;
            EXPECT_NEAR(stretches[0].Ms(pcm.rate), ms, 0.2);
            EXPECT_NEAR(Frequency(pcm, channel, stretches[0]), 1000, 1);
            EXPECT_NEAR(Peak(pcm, channel, Whole(pcm)), 0.5, 0.001);
            EXPECT_GE(stretches[0].begin, FramesOf(50, pcm.rate));
            EXPECT_GE(pcm.Frames() - stretches[0].end, FramesOf(200, pcm.rate));
        }
    }
}

TEST(Recorder, hearsEverySampleExactly) {
    PulseServer::Shared();
    Recorder recorder;
    const Pcm tone = MakeTone({.ms = 100, .frequency = 997, .level = 0.9});
    Play(tone);
    ASSERT_TRUE(recorder.WaitForSilence(200ms));
    const Pcm pcm = recorder.Stop();

    const auto begin = Heard(pcm, 0)->begin - 1; // a sine begins with 0
    const auto expected = tone.AsInt16();
    const auto heard = pcm.AsInt16();
    ASSERT_GE(heard.size(), 2 * begin + expected.size());
    EXPECT_TRUE(std::equal(expected.begin(), expected.end(), heard.begin() + 2 * begin));
}

TEST(Recorder, hearsWhatQtPlays) {
    PulseServer::Shared();
    // The tail is more than the sink buffers: nothing of the tone is lost when it stops on idle.
    Pcm pcm = MakeTone({.ms = 50, .frequency = 500, .rate = 44100});
    pcm += MakeSilence(600, 44100);
    QByteArray bytes = BytesOf(pcm);
    QBuffer device(&bytes);
    device.open(QIODevice::ReadOnly);

    Recorder recorder;
    QAudioFormat format;
    format.setSampleRate(44100);
    format.setChannelCount(2);
    format.setSampleFormat(QAudioFormat::Int16);
    QAudioSink sink(format);
    sink.start(&device);
    ASSERT_TRUE(WaitFor([&] { return sink.state() == QAudio::IdleState; }));
    sink.stop();
    ASSERT_TRUE(recorder.WaitForSilence(200ms));
    EXPECT_NEAR(HeardMs(recorder.Stop(), 0), 50, 1);
}

TEST(Recorder, waitForSilenceGivesUpWhenNothingIsPlayed) {
    PulseServer::Shared();
    Recorder recorder;
    EXPECT_FALSE(recorder.WaitForSilence(10ms, 100ms));
    EXPECT_FALSE(recorder.WaitForSound(0ms));
    EXPECT_THROW(Recorder("no_such_sink"), std::runtime_error);
}

TEST(PulseServer, killEndsEverythingThatUsesIt) {
    PulseServer server;
    Recorder recorder;
    server.Kill();
    EXPECT_FALSE(recorder.WaitForSound()) << "ends with the server, not with the deadline";
    EXPECT_THROW(server.Pactl({"info"}), std::runtime_error);
}

TEST(PulseServer, serversDoNotHearEachOther) {
    PulseServer first;
    Recorder ofFirst;
    PulseServer second;
    Recorder ofSecond;
    Play(MakeTone({.ms = 100}));
    EXPECT_TRUE(ofSecond.WaitForSilence(200ms));
    EXPECT_EQ(HeardMs(ofFirst.Stop(), 0), 0);
    EXPECT_NEAR(HeardMs(ofSecond.Stop(), 0), 100, 0.2);
}

TEST(PulseServer, sinksComeAndGo) {
    auto& server = PulseServer::Shared();
    ASSERT_TRUE(WaitFor([] { return SinkListed(PulseServer::kSink); }));
    server.AddSink("extra", 44100);
    EXPECT_TRUE(WaitFor([] { return SinkListed("extra"); }));
    {
        Recorder main;
        Recorder extra("extra");
        Play(MakeTone({.ms = 100, .rate = 44100}), "extra");
        EXPECT_TRUE(extra.WaitForSilence(200ms));
        EXPECT_NEAR(HeardMs(extra.Stop(), 0), 100, 1);
        EXPECT_EQ(HeardMs(main.Stop(), 0), 0);
    }
    server.RemoveSink("extra");
    EXPECT_TRUE(WaitFor([] { return !SinkListed("extra"); }));
    EXPECT_THROW(server.RemoveSink("extra"), std::invalid_argument);
}

TEST(PulseServer, withoutASinkQtHasNoOutput) {
    const PulseServer server({.withSink = false});
    EXPECT_FALSE(server.Pactl({"info"}).isEmpty());
    EXPECT_TRUE(QMediaDevices::audioOutputs().isEmpty());
}

TEST(PulseServer, diesWithItsProcess) {
    const QTemporaryDir leftovers;
    int ends[2];
    ASSERT_EQ(pipe(ends), 0);
    const pid_t child = fork();
    if (child == 0) {
        qputenv("TMPDIR", leftovers.path().toUtf8());
        const PulseServer server;
        raise(write(ends[1], "s", 1) == 1 ? SIGKILL : SIGTERM);
    }
    // The daemon holds the pipe's end too, so the pipe ends with the last of them.
    close(ends[1]);
    char started = 0;
    EXPECT_EQ(read(ends[0], &started, 1), 1);
    int status = 0;
    waitpid(child, &status, 0);
    EXPECT_EQ(WTERMSIG(status), SIGKILL);
    pollfd end{ends[0], POLLIN, 0};
    ASSERT_EQ(poll(&end, 1, static_cast<int>(kDeadline.count())), 1) << "the daemon lives on";
    EXPECT_EQ(read(ends[0], &started, 1), 0);
    close(ends[0]);
}
