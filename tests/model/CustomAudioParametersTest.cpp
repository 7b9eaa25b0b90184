#include <gtest/gtest.h>

#include <tuple>

#include <sfx/model/CustomAudioParameters.h>

using vemo::audio::CustomAudioCommand;
using vemo::audio::CustomAudioParameters;

namespace {

auto Fields(const CustomAudioParameters& p) {
    return std::tuple(p.name(), p.file(), p.outputPath(), p.networkPatch(), p.repeats(), p.fadeIn(),
                      p.fadeOut(), p.volume(), p.reverb(), p.pan(), p.command());
}

} // namespace

TEST(CustomAudioParameters, buildKeepsTheDefaultsOfWhatIsNotSet) {
    const auto built =
        CustomAudioParameters::builder().name("n").file("file:///f.wav").volume(0.5).build();
    EXPECT_EQ(Fields(built), std::tuple("n", "file:///f.wav", QString(), QString(), 0, 0U, 0U, 0.5,
                                        0.0, 0.0, CustomAudioCommand{0}));
    EXPECT_EQ(Fields(CustomAudioParameters::builder().build()), Fields(CustomAudioParameters()));
}

TEST(CustomAudioParameters, everyWayToSetAFieldSetsThatField) {
    constexpr auto Command = CustomAudioCommand{7};
    const CustomAudioParameters whole("n", "f", "o", "p", -1, 1, 2, 0.3, 0.4, 0.5, Command);
    EXPECT_EQ(Fields(whole), std::tuple("n", "f", "o", "p", -1, 1U, 2U, 0.3, 0.4, 0.5, Command));
    EXPECT_EQ(Fields(whole), Fields(CustomAudioParameters::builder()
                                        .name("n")
                                        .file("f")
                                        .outputPath("o")
                                        .networkPatch("p")
                                        .repeats(-1)
                                        .fadeIn(1)
                                        .fadeOut(2)
                                        .volume(0.3)
                                        .reverb(0.4)
                                        .pan(0.5)
                                        .command(Command)
                                        .build()));
    auto set = CustomAudioParameters::builder().name("n").build();
    set.file("f");
    set.outputPath("o");
    set.networkPatch("p");
    set.repeats(-1);
    set.fadeIn(1);
    set.fadeOut(2);
    set.volume(0.3);
    set.reverb(0.4);
    set.pan(0.5);
    set.commandIndex(Command);
    EXPECT_EQ(Fields(set), Fields(whole));

    CustomAudioParameters assigned;
    assigned = whole;
    EXPECT_EQ(Fields(assigned), Fields(whole));
    assigned = CustomAudioParameters();
    EXPECT_EQ(Fields(assigned), Fields(CustomAudioParameters()));
}
