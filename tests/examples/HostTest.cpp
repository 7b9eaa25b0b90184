#include <gmock/gmock.h>

#include <QTemporaryDir>

#include <support/Analysis.h>
#include <support/EffectMaker.h>
#include <support/ProcessRunner.h>
#include <support/Recorder.h>
#include <support/SoundFile.h>

using namespace sfx_test;
using namespace std::chrono_literals;

TEST(HostExample, runsAShowByLines) {
    const PulseServer server;
    InstallFolder install;
    install.AddEffect("long.sfx", "Long", MakeTone({.ms = 60'000, .frequency = 440}));
    install.Publish();
    const QTemporaryDir folder;
    const QString file = folder.filePath("a b#.wav");
    WriteSoundFile(file.toStdString(), MakeTone({.ms = 300, .frequency = 1320}));

    Recorder recorder;
    ProcessRunner host(HOST, {folder.filePath("a.show")});
    host.Write("add long.sfx\n");
    ASSERT_TRUE(host.WaitForOutput("ready "));
    host.Write("play sfx.1\nlist\n");
    ASSERT_TRUE(host.WaitForOutput("sfx.1 long.sfx plays"));
    ASSERT_TRUE(recorder.WaitForSound());
    host.Write("file " + file.toUtf8() + "\nfile /none.wav\nplay sfx.2\n");
    ASSERT_TRUE(host.WaitForOutput("warning: Error decoding audio file"));
    ASSERT_TRUE(host.WaitForOutput("error: no player for the event 'sfx.2'"));
    ASSERT_TRUE(recorder.WaitForMore(1s));
    host.Write("quit\n");
    EXPECT_EQ(host.Finish().exitCode, 0);
    ASSERT_TRUE(recorder.WaitForSilence());

    const Pcm heard = recorder.Stop();
    const auto stretch = Heard(heard, 0);
    ASSERT_TRUE(stretch);
    EXPECT_GT(ToneLevel(heard, 0, *stretch, 440), 0.1);
    EXPECT_GT(ToneLevel(heard, 0, *stretch, 1320), 0.02);
    const auto levels = Envelope(heard, 0, *stretch, 50);
    EXPECT_LT(levels.back(), 0.1 * levels.front()) << "leaving fades out";

    ProcessRunner again(HOST, {folder.filePath("a.show")});
    again.Write("list\nquit\n");
    EXPECT_THAT(again.Finish().out.toStdString(), testing::HasSubstr("sfx.1 long.sfx"));
}
