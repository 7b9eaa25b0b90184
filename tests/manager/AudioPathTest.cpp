#include <stdexcept>

#include <gtest/gtest.h>

#include <sfx/sfx.h>

using vemo::audio::AudioDevice;
using vemo::audio::AudioPath;
using vemo::audio::AudioPathManager;

TEST(AudioPathManager, numbersPathsFrom1000AndKnowsNoOthers) {
    const wchar_t id[] = L"{stage}";
    const AudioDevice stage{id, "Stage", "{stage}"};
    AudioPathManager paths;
    EXPECT_EQ(paths.AddPath(AudioPath("main", stage)), 1000);
    EXPECT_EQ(paths.AddPath(AudioPath("main", {L"{foyer}", "Foyer", "{foyer}"})), 1001);

    const AudioPathManager& reader = paths;
    EXPECT_EQ(reader.GetDeviceIdFromPathId(1000), id) << "the pointer itself";
    EXPECT_STREQ(reader.GetDeviceIdFromPathId(1001), L"{foyer}");
    for (const int unknown : {999, 1002, 0, -1}) {
        try {
            reader.GetDeviceIdFromPathId(unknown);
            ADD_FAILURE() << unknown;
        } catch (const std::runtime_error& error) {
            EXPECT_STREQ(error.what(), "Path Id not found.");
        }
    }
}

TEST(AudioPathManager, copiesCountOnByThemselves) {
    AudioPathManager paths;
    const AudioPath path("main", {L"{stage}", "Stage", "{stage}"});
    paths.AddPath(path);
    AudioPathManager copy = paths;
    EXPECT_EQ(copy.AddPath(path), 1001);
    EXPECT_THROW(paths.GetDeviceIdFromPathId(1001), std::runtime_error);
    EXPECT_EQ(paths.AddPath(path), 1001);
}

TEST(AudioPath, keepsItsNameWhenTheDeviceIsReplaced) {
    const wchar_t id[] = L"{foyer}";
    AudioPath path("main", {L"{stage}", "Stage", "{stage}"});
    AudioPathManager paths;
    const int before = paths.AddPath(path);
    path.SetOutputAudioDevice({id, "Foyer", "{foyer}"});
    EXPECT_EQ(path.Name(), "main");
    EXPECT_EQ(path.OutputAudioDevice().id, id);
    EXPECT_EQ(path.OutputAudioDevice().name, "Foyer");
    EXPECT_EQ(path.OutputAudioDevice().idText, "{foyer}");
    EXPECT_STREQ(paths.GetDeviceIdFromPathId(before), L"{stage}");
}
