#include <gmock/gmock.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include "support/Analysis.h"
#include "support/EffectMaker.h"
#include "support/ProcessRunner.h"
#include "support/Recorder.h"
#include "support/SoundFile.h"

using namespace sfx_test;
using testing::HasSubstr;

namespace {

/// Without the folders of the build: what the program loads is beside it or of Windows.
const std::map<QString, QString> BARE = {
    {"PATH", R"(C:\windows\system32;C:\windows)"}, {"WINEPATH", ""}, {"QT_PLUGIN_PATH", ""}};

const Pcm kTone = MakeTone({.ms = 600, .frequency = 440});

struct Package : testing::Test {
    void SetUp() override {
        install_.AddEffect("tone.sfx", "Tone", kTone);
        install_.Publish();
    }

    /// Runs the program, which plays the tone; returns what it said.
    static std::string PlayTone(const QString& program, const QStringList& arguments) {
        Recorder recorder;
        const auto result = ProcessRunner::Run(program, arguments, BARE);
        EXPECT_EQ(result.exitCode, 0) << result.out.toStdString() << result.err.toStdString();
        EXPECT_TRUE(recorder.WaitForSilence());
        const Pcm heard = recorder.Stop();
        EXPECT_NEAR(HeardMs(heard, 0), 600, 30);
        EXPECT_GT(ToneLevel(heard, 0, Heard(heard, 0).value_or(Stretch{}), 440), 0.1);
        return result.out.toStdString();
    }

    PulseServer server_;
    InstallFolder install_;
    QString program_ = qEnvironmentVariable("SFX_TEST_PROGRAM");
};

} // namespace

TEST_F(Package, toolPlaysWithNothingButItsFolder) {
    const auto list = ProcessRunner::Run(program_, {"list"}, BARE);
    EXPECT_EQ(list.exitCode, 0) << list.err.toStdString();
    EXPECT_THAT(list.out.toStdString(), HasSubstr("tone.sfx"));
    EXPECT_THAT(PlayTone(program_, {"play", "tone"}), HasSubstr("finished tone.sfx"));

    // What decodes a user's file is a plugin.
    const QTemporaryDir folder;
    const QString file = folder.filePath("tone.wav");
    WriteSoundFile(file.toStdString(), kTone);
    PlayTone(program_, {"play-file", file});
}

TEST_F(Package, hostPlaysBesideItsDlls) {
    const QString installed = QDir(qEnvironmentVariable("SFX_TEST_FOLDER")).filePath("host.exe");
    QFile::remove(installed);
    ASSERT_TRUE(QFile::copy(program_, installed)) << installed.toStdString();
    PlayTone(installed, {"tone.sfx"});
}
