#include <any>
#include <optional>
#include <stdexcept>
#include <string>
#include <utility>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sfx/catalogue/ChangeLogSfxRepository.h>
#include <vemo_core/ActiveChangeLogExclusive.h>

namespace {

using ::testing::ThrowsMessage;
using vemo::audio::ChangeLogSfxRepository;
using vemo::audio::SfxType;
using vemo::audio::sfx::SfxDto;

class Repository : public ::testing::Test {
protected:
    Repository() { CL::CloseShow(); }
    ~Repository() override { CL::CloseShow(); }

    void Save(const std::string& eventId, const std::string& name) {
        repository_.Save(SfxDto::builder().eventId(eventId).name(name).build());
    }
    std::string Names() {
        std::string names;
        for (const SfxDto& record : repository_.Get()) {
            names += record.eventId() + "=" + record.name() + " ";
        }
        return names;
    }

    ChangeLogSfxRepository repository_;
};

std::any Id(const std::string& id) {
    return id;
}

TEST_F(Repository, mapsARecordToAnEventAndBack) {
    const SfxDto record = SfxDto::builder()
                              .name("Door")
                              .outputPath("left wall")
                              .effectId("door")
                              .effectPath("elsewhere.ogg")
                              .type(SfxType::USER_PROVIDED)
                              .effectIdIndex(5)
                              .repeats(-1)
                              .fadeIn(1)
                              .fadeOut(65535)
                              .volume(0.25F)
                              .reverb(0.5F)
                              .pan(0.75F)
                              .eventId("sfx.3")
                              .build();
    repository_.Save(record);
    {
        const ActiveChangeLogExclusive exclusive;
        const CL::Sfx& event = exclusive.Get().SoundEffects().front();
        EXPECT_EQ(event.EventId(), "sfx.3");
        EXPECT_EQ(event.sfx_properties().outputPath(), "left wall");
        EXPECT_EQ(event.sfx_properties().effectIdIndex(), 5);
    }
    SfxDto expected = record;
    expected.setOutputPath("");
    expected.setEffectPath("door.sfx");
    expected.setType(SfxType::PRIMARY);
    expected.setEffectIdIndex(0);
    const std::optional<SfxDto> read = repository_.GetById(Id("sfx.3"));
    ASSERT_TRUE(read);
    EXPECT_EQ(*read, expected);
    EXPECT_EQ(read->eventId(), "sfx.3"); // takes no part in the comparison
    EXPECT_EQ(repository_.Get().front(), expected);
}

TEST_F(Repository, changesTheFirstEventOfAnId) {
    Save("sfx.1", "a");
    Save("sfx.2", "b");
    Save("sfx.1", "c");
    EXPECT_EQ(repository_.GetById(Id("sfx.1"))->name(), "a");
    repository_.Update(Id("sfx.1"), SfxDto::builder().eventId("sfx.9").name("A").build());
    EXPECT_EQ(Names(), "sfx.1=A sfx.2=b sfx.1=c ");
    repository_.Delete(Id("sfx.1"));
    repository_.Delete(Id("sfx.7"));
    repository_.Update(Id("sfx.7"), SfxDto::builder().name("z").build());
    EXPECT_EQ(Names(), "sfx.2=b sfx.1=c ");
    EXPECT_FALSE(repository_.GetById(Id("sfx.7")));
}

TEST_F(Repository, throwsWhenAnIdIsNoText) {
    EXPECT_THAT([&] { repository_.GetById(7); },
                ThrowsMessage<std::invalid_argument>(
                    "ChangeLogSfxRepository::GetById requires a std::string for the event id"));
    EXPECT_THAT([&] { repository_.Delete("sfx.1"); },
                ThrowsMessage<std::invalid_argument>(
                    "ChangeLogSfxRepository::Delete requires a std::string for the event id"));
    EXPECT_NO_THROW(repository_.Update(7, SfxDto::builder().build()));
    Save("sfx.1", "a");
    EXPECT_THROW(repository_.Update(7, SfxDto::builder().build()), std::bad_any_cast);
    EXPECT_EQ(Names(), "sfx.1=a ");
}

TEST_F(Repository, generatesIdsThatPreviewShows) {
    EXPECT_EQ(repository_.PreviewEventId(), "sfx.1");
    EXPECT_EQ(repository_.GenerateEventId(), "sfx.1");
    Save("sfx.12", "a");
    EXPECT_EQ(repository_.PreviewEventId(), "sfx.13");
    EXPECT_EQ(repository_.PreviewEventId(), "sfx.13");
    EXPECT_EQ(repository_.GenerateEventId(), "sfx.13");
}

} // namespace
