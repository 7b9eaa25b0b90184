#include <sstream>
#include <string>

#include <gtest/gtest.h>
#include <sfx/model/SfxDto.h>

namespace {

using vemo::audio::SfxType;
using vemo::audio::SongInterval;
using vemo::audio::sfx::SfxDto;

template <typename Value>
std::string Printed(const Value& value) {
    std::ostringstream out;
    out << value;
    return out.str();
}

TEST(SfxTypeText, userProvidedFallsThrough) {
    EXPECT_EQ(Printed(vemo::audio::AMBIENT), "SFX::AMBIENT");
    EXPECT_EQ(Printed(vemo::audio::PRIMARY), "SFX::PRIMARY");
    EXPECT_EQ(Printed(vemo::audio::USER_PROVIDED), "SFX::USER_PROVIDEDError: Unknown SFX type");
    EXPECT_EQ(Printed(static_cast<SfxType>(7)), "Error: Unknown SFX type");
}

TEST(SfxDtoText, keepsTrailingCommaLeavesOutEventAndShowsDefaults) {
    EXPECT_EQ(Printed(SfxDto::builder().eventId("hidden").build()),
              "SfxDto{'name': '', 'outputPath': '', 'effectId': '', 'effectPath': '', "
              "'activeIntervals': , 'type': SFX::PRIMARY, 'effectIdIndex': 0, 'repeats': 0, "
              "'fadeIn': 0, 'fadeOut': 0, 'volume': 1, 'reverb': 0, 'pan': 0.5}");
    const SfxDto dto = SfxDto::builder()
                           .name("n")
                           .outputPath("o")
                           .effectId("i")
                           .effectPath("p")
                           .type(vemo::audio::AMBIENT)
                           .addActiveInterval(SongInterval("A", 10, 4000000000U))
                           .addActiveInterval(SongInterval())
                           .build();
    EXPECT_EQ(Printed(dto),
              "SfxDto{'name': 'n', 'outputPath': 'o', 'effectId': 'i', 'effectPath': 'p', "
              "'activeIntervals': { 'index': 'A', 'start': 10, 'end': 4000000000 }, "
              "{ 'index': '', 'start': 0, 'end': 0 }, , 'type': SFX::AMBIENT, "
              "'effectIdIndex': 0, 'repeats': -1, 'fadeIn': 0, 'fadeOut': 0, 'volume': 1, "
              "'reverb': 0, 'pan': 0.5}");
}

} // namespace
