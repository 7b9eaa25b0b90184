#include "PlayTest.h"

#include <csignal>

#include <QUrl>

namespace {

using namespace sfx_test;
using testing::HasSubstr;

class ShowPlay : public PlayTest {
protected:
    std::string add(std::vector<std::string> arguments, const std::string& show = "a.show") const {
        arguments.insert(arguments.begin(), {"show", at(show), "add"});
        arguments.insert(arguments.end(), {"--install", at("out")});
        return run(arguments).out.trimmed().toStdString();
    }
    std::vector<std::string> playShow(std::vector<std::string> arguments,
                                      const std::string& show = "a.show") {
        arguments.insert(arguments.begin(), "play");
        arguments.insert(arguments.end(), {"--show", at(show), "--install", onStage("out")});
        return arguments;
    }
};

/// A console that takes what is written to it.
class Console : public ShowPlay {
protected:
    std::unique_ptr<ProcessRunner> start() {
        auto console = std::make_unique<ProcessRunner>(
            toolPath(), list({"console", at("a.show"), "--install", onStage("out")}));
        EXPECT_TRUE(console->WaitForOutput(" loaded"));
        return console;
    }
};

} // namespace

TEST_F(ShowPlay, playsAnEventByNameIdAndPlayer) {
    add({"low", "--pan", "0", "--name", "left"});
    const std::string right = add({"high", "--pan", "1", "--volume", "0.5"});
    const Pcm byName = hearCommand(playShow({"left"}));
    EXPECT_NEAR(soundingMs(byName, 0), 600, 15);
    EXPECT_EQ(HeardMs(byName, 1), 0);
    for (const std::string& cue : {right, std::string("1")}) {
        const Pcm heard = hearCommand(playShow({cue}));
        EXPECT_NEAR(soundingMs(heard, 1), 600, 15) << cue;
        EXPECT_EQ(HeardMs(heard, 0), 0) << cue;
        EXPECT_NEAR(level(heard, 1, HIGH), 0.25, 0.03) << cue;
    }
    EXPECT_THAT(run(playShow({"left", "nobody"})), failedWith(4, "no cue 'nobody'"));
    EXPECT_THAT(run(playShow({"99999999999999999999"})), failedWith(4, "no cue '9999"));
}

TEST_F(ShowPlay, twoProgramsPlaySideBySide) {
    add({"long", "--fade-out", "0"}, "a.show");
    add({"high"}, "b.show");
    Recorder recorder;
    ProcessRunner other(toolPath(), list(playShow({"Long"}, "a.show")));
    ASSERT_TRUE(recorder.WaitForSound());
    const Result result = run(playShow({"High"}, "b.show"));
    EXPECT_EQ(result.exitCode, 0) << result.err.toStdString();
    const std::size_t ended = recorder.Frames();
    ASSERT_TRUE(recorder.WaitForMore(std::chrono::milliseconds(500)));
    other.SendSignal(SIGINT);
    EXPECT_EQ(other.Finish().exitCode, 130);
    const Pcm heard = recorder.Stop();
    // Half of full scale for 0.6 s, however long its program took to start and to end.
    const double seconds = static_cast<double>(ended) / heard.rate;
    EXPECT_NEAR(ToneLevel(heard, 0, {0, ended}, HIGH) * seconds, 0.3, 0.1);
    EXPECT_NEAR(ToneLevel(heard, 0, {ended, ended + FramesOf(500, heard.rate)}, LOW), 0.5, 0.1);
}

TEST_F(ShowPlay, playFileTakesEveryNameAndFormat) {
    const Pcm tone = MakeTone({.ms = 400, .frequency = LOW});
    const std::string odd = at(ON_WINDOWS ? "ü 100% #1 a+b.wav" : "ü 100% #1 a+b?.wav");
    WriteSoundFile(pathOf(odd), tone, SF_FORMAT_WAV | SF_FORMAT_FLOAT);
    WriteSoundFile(dir() / "a.flac", tone, SF_FORMAT_FLAC | SF_FORMAT_PCM_16);
    WriteBytes(dir() / "a.oga", EncodeVorbis(tone));
    const std::string url =
        QUrl::fromLocalFile(QString::fromStdString(at("a.flac"))).toString().toStdString();
    for (const std::string& file : {odd, at("a.flac"), at("a.oga"), url}) {
        const Pcm heard = hearCommand({"play-file", file, "--pan", "1", "--volume", "0.5"});
        EXPECT_EQ(HeardMs(heard, 0), 0) << file;
        EXPECT_NEAR(soundingMs(heard, 1), 400, 15) << file;
        EXPECT_NEAR(level(heard, 1, LOW), 0.25, 0.03) << file;
    }
}

TEST_F(ShowPlay, playFileNamesAFileThatItCannotPlay) {
    writeText("bad.wav", "no sound");
    EXPECT_THAT(run({"play-file", at("bad.wav")}), failedWith(1, at("bad.wav")));
    EXPECT_THAT(run({"play-file", at("none.wav")}), failedWith(1, at("none.wav")));
}

TEST_F(Console, playsFadesStopsAndEditsWhileItRuns) {
    add({"long", "--name", "bed", "--fade-out", "100"});
    add({"high", "--name", "one"});
    Recorder recorder;
    const auto console = start();
    console->Write("play bed\nstatus\n");
    ASSERT_TRUE(console->WaitForOutput("playing bed ("));
    ASSERT_TRUE(console->WaitForOutput("player 0  volume 1"));
    ASSERT_TRUE(recorder.WaitForSound());
    console->Write("fade bed 0.2 60\n");
    ASSERT_TRUE(console->WaitForOutput("fading bed to 0.2 in 60 ms"));
    ASSERT_TRUE(recorder.WaitForMore(std::chrono::milliseconds(1000)));
    const std::size_t faded = recorder.Frames();
    EXPECT_NEAR(ToneLevel(recorder.Heard(), 0, {faded - FramesOf(200, 48000), faded}, LOW), 0.1,
                0.02);

    // The event is edited while its player is loaded: it plays the new effect.
    console->Write("stop bed\nedit one --effect low --pan 0\nplay one\n");
    ASSERT_TRUE(console->WaitForOutput("stopped bed"));
    ASSERT_TRUE(console->WaitForOutput(" changed"));
    ASSERT_TRUE(console->WaitForOutput("finished one"));
    ASSERT_TRUE(recorder.WaitForSilence());
    const std::size_t end = recorder.Frames();
    const Pcm heard = recorder.Stop();
    const Stretch last{end - FramesOf(600, 48000), end};
    EXPECT_GT(ToneLevel(heard, 0, last, LOW), 0.01);
    EXPECT_LT(ToneLevel(heard, 0, last, HIGH), 0.001);
    EXPECT_EQ(Peak(heard, 1, last), 0);
    console->CloseInput();
    EXPECT_EQ(console->Finish().exitCode, 0);
}

TEST_F(Console, answersEveryLineOfAPipe) {
    writeText("bad.wav", "no sound");
    const auto console = start();
    const std::vector<std::pair<std::string, std::string>> dialogue{
        {"sing", "error: no command 'sing'"},
        {"play nobody", "error: no cue and no file 'nobody'"},
        {"play \"open", "error: a quote is not closed"},
        {"fade bed 2 10", "'2' is not a number from 0 to 1"},
        {"stop 0", "error: no cue '0'"},
        {"status", "nothing plays"},
        {"list", "no events"},
        {"add low --name \"a b\"", "sfx.1 added"},
        {"stop \"a b\"", "error: a b does not play"},
        {"remove \"a b\"", "sfx.1 removed"},
        {"play " + at("bad.wav"), "failed: " + at("bad.wav")},
        {"help", "fades what plays"},
    };
    for (const auto& [line, answer] : dialogue) {
        console->Write(QByteArray::fromStdString(line + "\n"));
        EXPECT_TRUE(console->WaitForOutput(QByteArray::fromStdString(answer))) << line;
    }
    console->Write("add low --name last\n");
    ASSERT_TRUE(console->WaitForOutput("sfx.2 added"));
    // Without a newline; the end of the input waits for what plays.
    console->Write("play last");
    console->CloseInput();
    const Result result = console->Finish();
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_THAT(result.out.toStdString(), HasSubstr("finished last"));
}

TEST_F(Console, quitAndInterruptFadeWhatPlays) {
    add({"long", "--name", "bed", "--fade-out", "300"});
    for (const bool interrupt : {false, true}) {
        Recorder recorder;
        const auto console = start();
        console->Write("play bed\n");
        ASSERT_TRUE(recorder.WaitForSound());
        if (interrupt) {
            console->SendSignal(SIGINT);
        } else {
            console->Write("quit\n");
        }
        const Result result = console->Finish();
        EXPECT_EQ(result.exitCode, interrupt ? 130 : 0);
        EXPECT_THAT(result.out.toStdString(), HasSubstr("stopped bed"));
        ASSERT_TRUE(recorder.WaitForSilence());
        const Pcm heard = recorder.Stop();
        const auto stretch = Heard(heard, 0);
        ASSERT_TRUE(stretch);
        const auto levels = Envelope(heard, 0, *stretch, 50);
        EXPECT_LT(levels.back(), 0.1 * levels.front());
    }
}
