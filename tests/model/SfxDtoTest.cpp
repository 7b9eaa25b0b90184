#include <compare>
#include <limits>
#include <list>
#include <memory>
#include <stdexcept>
#include <utility>

#include <gtest/gtest.h>
#include <sfx/model/SfxDto.h>

namespace {

using vemo::audio::SongInterval;
using vemo::audio::sfx::SfxDto;

SfxDto::SfxDtoBuilder Full() {
    return SfxDto::builder()
        .name("n")
        .outputPath("o")
        .effectId("i")
        .effectPath("p")
        .eventId("e")
        .addActiveInterval(SongInterval("A", 10, 20))
        .type(vemo::audio::USER_PROVIDED)
        .effectIdIndex(4)
        .repeats(3)
        .fadeIn(5)
        .fadeOut(6)
        .volume(0.25F)
        .reverb(0.125F)
        .pan(0.75F);
}

// Says SONG without being one.
class Impostor : public IntervalInterface {
public:
    void type(IntervalType) override {}
    IntervalType type() override { return IntervalType::SONG; }
};

TEST(SfxDtoBuilder, repeatsWithoutEndWhenAmbient) {
    EXPECT_EQ(Full().type(vemo::audio::AMBIENT).repeats(3).build().repeats(), -1);
    EXPECT_EQ(Full().repeats(3).build().repeats(), 3);
}

TEST(SfxDtoBuilder, recordsOutliveBuilderAndKeepOwnIntervals) {
    auto builder = std::make_unique<SfxDto::SfxDtoBuilder>(Full());
    SfxDto first = builder->build();
    SfxDto second = builder->build();
    builder.reset();
    ASSERT_EQ(first.activeIntervals().size(), 1U);
    ASSERT_EQ(second.activeIntervals().size(), 1U);
    EXPECT_NE(first.activeIntervals().front().get(), second.activeIntervals().front().get());
    EXPECT_TRUE(second.isActiveInterval("A", 10, 20));
}

TEST(SfxDto, copyAssignmentKeepsOwnEventAndEverythingElseIsTaken) {
    const SfxDto source = Full().build();
    SfxDto target = SfxDto::builder().eventId("mine").build();
    target = source;
    EXPECT_EQ(target.eventId(), "mine");
    EXPECT_EQ(target, source);
    EXPECT_TRUE(target.isActiveInterval("A", 12, 15));
    const SfxDto& self = target;
    target = self;
    EXPECT_EQ(target, source);

    SfxDto copy(source);
    EXPECT_EQ(copy.eventId(), "e");
    target = std::move(copy);
    EXPECT_EQ(target.eventId(), "e");
}

TEST(SfxDto, everyWayInDropsIntervalsThatAreNoSongs) {
    SongInterval song("A", 1, 2);
    SongInterval sequence("B", 1, 2);
    sequence.type(IntervalType::SEQUENCE);
    Impostor impostor;
    std::list<IntervalInterface*> mixed = {&sequence, &song, &impostor, nullptr};
    SfxDto dto("", "", "", "", mixed, vemo::audio::PRIMARY, 0, 0, 0, 0, 1, 0, 0.5F, "");
    dto.addActiveInterval(sequence);
    dto.addActiveInterval(impostor);
    EXPECT_EQ(dto.activeIntervals().size(), 1U);
    EXPECT_TRUE(SfxDto::builder()
                    .addActiveInterval(sequence)
                    .addActiveInterval(impostor)
                    .build()
                    .activeIntervals()
                    .empty());

    dto.addActiveInterval(song);
    dto.activeIntervals().front()->type(IntervalType::SEQUENCE);
    EXPECT_EQ(SfxDto(dto).activeIntervals().size(), 1U);
}

TEST(SfxDto, isActiveIntervalWantsTheWholeStretchInside) {
    SfxDto dto = Full().build();
    EXPECT_TRUE(dto.isActiveInterval("A", 10, 20));
    EXPECT_TRUE(dto.isActiveInterval("A", 12, 15));
    EXPECT_TRUE(dto.isActiveInterval("A", 18, 12)); // only the two bounds count
    EXPECT_FALSE(dto.isActiveInterval("A", 5, 15));
    EXPECT_FALSE(dto.isActiveInterval("A", 15, 25));
    EXPECT_FALSE(dto.isActiveInterval("a", 12, 15));
    EXPECT_FALSE(SfxDto::builder().build().isActiveInterval("A", 0, 0));
}

TEST(SfxDto, isActiveIntervalThrowsOnlyOnReachingSequence) {
    SfxDto dto = Full().addActiveInterval(SongInterval("B", 0, 1)).build();
    dto.activeIntervals().back()->type(IntervalType::SEQUENCE);
    EXPECT_TRUE(dto.isActiveInterval("A", 12, 15));
    try {
        dto.isActiveInterval("A", 1, 2);
        FAIL() << "a sequence was passed over";
    } catch (const std::runtime_error& error) {
        EXPECT_STREQ(error.what(), "IntervalType::SEQUENCE not implemented yet");
    }
}

TEST(SfxDto, comparesFieldsInOrderWithoutEventAndIntervals) {
    const SfxDto base = Full().build();
    EXPECT_EQ(base, Full().eventId("other").addActiveInterval(SongInterval("Z", 1, 1)).build());
    // Every field decides alone, and one greater field outweighs all smaller ones behind it.
    const SfxDto greater[] = {
        Full().name("n2").outputPath("").build(),
        Full().outputPath("o2").effectId("").build(),
        Full().effectId("i2").effectPath("").build(),
        Full().effectPath("\xff").repeats(0).build(),
        Full().effectIdIndex(5).repeats(-9).build(),
        Full().repeats(4).fadeIn(0).build(),
        Full().fadeIn(6).fadeOut(0).build(),
        Full().fadeOut(7).volume(0).build(),
        Full().volume(0.5F).reverb(0).build(),
        Full().reverb(0.5F).pan(0).build(),
        Full().pan(1).build(),
    };
    for (const SfxDto& dto : greater) {
        EXPECT_TRUE((base <=> dto) == std::partial_ordering::less) << dto;
        EXPECT_TRUE((dto <=> base) == std::partial_ordering::greater) << dto;
    }
    EXPECT_LT(Full().type(vemo::audio::PRIMARY).effectIdIndex(9).build(), base);
}

TEST(SfxDto, isUnorderedOnceNanIsReached) {
    const float nan = std::numeric_limits<float>::quiet_NaN();
    const SfxDto dto = Full().volume(nan).build();
    EXPECT_TRUE((dto <=> Full().build()) == std::partial_ordering::unordered);
    EXPECT_FALSE(dto == SfxDto(dto));
    EXPECT_LT(dto, Full().name("z").build());
}

} // namespace
