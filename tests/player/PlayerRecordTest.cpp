#include <gtest/gtest.h>

#include <QMetaMethod>

#include <sfx/player/SfxPlayerImpl.h>
#include <support/FakeFile.h>

using namespace vemo::audio;
using sfx::SfxDto;

namespace {

std::unique_ptr<SfxPlayerImpl> MakePlayer(SfxDto record) {
    return std::make_unique<SfxPlayerImpl>(std::move(record), std::make_shared<QThreadPool>(),
                                           std::make_shared<QThreadPool>(), nullptr);
}

} // namespace

TEST(SfxPlayerImpl, answersTheDurationOfItsFileAsItIsNow) {
    auto player = MakePlayer(SfxDto::builder().build());
    EXPECT_FLOAT_EQ(player->GetDuration(), -1.0F);
    sfx_test::FakeFile file(sfx_test::MakeTone({.ms = 500}), DecodeState::Stage::Decoding, "p.sfx");
    player->SetFile(&file);
    EXPECT_EQ(player->SfxData()->effectPath(), "p.sfx");
    EXPECT_FLOAT_EQ(player->GetDuration(), 0.0F);
    file.SetStage(DecodeState::Stage::Ready);
    EXPECT_FLOAT_EQ(player->GetDuration(), 1.0F);
    EXPECT_TRUE(player->Done());
}

TEST(SfxPlayerImpl, takesOverEveryFieldButTheIntervals) {
    auto player = MakePlayer(
        SfxDto::builder().eventId("sfx.1").addActiveInterval(SongInterval("A", 1, 2)).build());
    const auto other = SfxDto::builder()
                           .name("n")
                           .outputPath("o")
                           .effectId("e")
                           .effectPath("p")
                           .eventId("sfx.2")
                           .addActiveInterval(SongInterval("B", 3, 4))
                           .type(USER_PROVIDED)
                           .effectIdIndex(3)
                           .repeats(4)
                           .fadeIn(5)
                           .fadeOut(6)
                           .volume(0.7F)
                           .reverb(0.8F)
                           .pan(0.9F)
                           .build();
    EXPECT_FALSE(player->PlaysSameSfx(other));
    player->ReplaceSfxData(other);
    EXPECT_TRUE(player->PlaysSameSfx(other));
    EXPECT_EQ(player->SfxData()->eventId(), "sfx.2");
    ASSERT_EQ(player->SfxData()->activeIntervals().size(), 1U);
    EXPECT_TRUE(SfxDto(*player->SfxData()).isActiveInterval("A", 1, 2));

    player->SetVolume(0.1F);
    player->SetReverb(0.2F);
    player->SetPan(0.3F);
    player->SetSfxPath("q");
    EXPECT_FLOAT_EQ(player->Volume(), 0.1F);
    EXPECT_FLOAT_EQ(player->SfxData()->reverb(), 0.2F);
    EXPECT_FLOAT_EQ(player->SfxData()->pan(), 0.3F);
    EXPECT_EQ(player->SfxData()->effectPath(), "q");
}

TEST(SfxPlayerImpl, aRecordThatWasHandedOutStaysAsItWas) {
    std::vector<const SfxDto*> handedOut;
    {
        const auto player = MakePlayer(SfxDto::builder().build());
        for (int i = 0; i < 1000; ++i) {
            player->SetSfxPath(std::string(40, 'x') + std::to_string(i));
            handedOut.push_back(player->SfxData());
        }
        EXPECT_EQ(player->SfxData(), handedOut.back()) << "nothing has changed since";
    }
    for (std::size_t i = 0; i < handedOut.size(); ++i)
        ASSERT_EQ(handedOut[i]->effectPath(), std::string(40, 'x') + std::to_string(i));
}

// Hosts connect to these by name.
TEST(SfxPlayerImpl, listsItsSignalsInTheirOrder) {
    const QMetaObject& meta = SfxPlayerImpl::staticMetaObject;
    EXPECT_STREQ(meta.className(), "vemo::audio::SfxPlayerImpl");
    QStringList signalTexts;
    for (int i = meta.methodOffset(); i < meta.methodCount(); ++i)
        signalTexts << meta.method(i).name() + "(" + meta.method(i).parameterNames().join(",") +
                           ")";
    EXPECT_EQ(signalTexts.join(" ").toStdString(),
              "cancelSfx(isUrgent) sfxFinished() sfxFileRequested(effectId,sfxFile) "
              "fadeRequested(volume,duration,stopAfterFade) fadeSuspensionRequested() "
              "fadeResumeRequested() fadeCancellationRequested()");
}
