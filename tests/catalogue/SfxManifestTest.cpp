#include <memory>
#include <optional>
#include <string>

#include <QStandardPaths>
#include <gtest/gtest.h>
#include <sfx/catalogue/SfxManifest.h>

#include "BareInstall.h"

namespace {

using vemo::sfx::SfxManifest;

constexpr const char* kNone = "No SFX Manifest Found. Returning with no SFX in Manager.\n";

TEST(SfxManifest, answersIdsPathsTypesAndNames) {
    const BareInstall install;
    install.Write(u8"door.sfx");
    install.Write(u8"sub/Tür.sfx");
    install.Write(u8"rain.sfx");
    install.WriteManifest(R"({
        "metadata": {"version": "1.1", "count": 7, "ambientCount": 1},
        "sfx": [{"id": "door", "name": "Door", "path": "door.sfx"},
                {"id": "both", "name": "Second", "path": "sub/Tür.sfx"},
                {"id": "door", "name": "Again", "path": "rain.sfx"}],
        "ambient": [{"id": "rain", "name": "Rain", "path": "rain.sfx"},
                    {"id": "both", "name": "First", "path": "rain.sfx"}]})");
    SfxManifest manifest;

    const auto primary = manifest.SoundEffects();
    EXPECT_EQ(primary.Count(), 3U);
    EXPECT_EQ(primary.Capacity(), 7U);
    EXPECT_STREQ(primary.Get(2), "door");
    EXPECT_STREQ(primary.GetPath(2), install.Text("rain.sfx").c_str());
    EXPECT_EQ(manifest.AmbientEffects().Count(), 2U);
    EXPECT_EQ(manifest.AmbientEffects().Capacity(), 2U);

    EXPECT_EQ(manifest.path("door"), install.Text("door.sfx"));
    EXPECT_EQ(manifest.displayName("door"), "Door");
    EXPECT_EQ(manifest.path("both"), install.Text("sub/Tür.sfx"));
    EXPECT_EQ(manifest.type("both"), vemo::audio::PRIMARY);
    EXPECT_EQ(manifest.displayName("both"), "First"); // the ambient list is read first
    EXPECT_EQ(manifest.type("rain"), vemo::audio::AMBIENT);
    EXPECT_EQ(manifest.path("rain"), install.Text("rain.sfx"));

    const auto copy = std::make_unique<SfxManifest>(manifest);
    EXPECT_TRUE(copy->HasEffectId("rain"));
    EXPECT_FALSE(copy->HasEffectId("Rain"));
    EXPECT_EQ(manifest.path("Rain"), std::nullopt);
    EXPECT_EQ(manifest.type("Rain"), std::nullopt);
    EXPECT_EQ(manifest.displayName("Rain"), std::nullopt);
}

TEST(SfxManifest, isEmptyAndSaysSoForEachListWhenThereIsNone) {
    const BareInstall install;
    testing::internal::CaptureStdout();
    const SfxManifest manifest;
    EXPECT_EQ(testing::internal::GetCapturedStdout(), std::string(kNone) + kNone);
    EXPECT_EQ(manifest.SoundEffects().Count(), 0U);
    EXPECT_EQ(manifest.AmbientEffects().Capacity(), 5U);
    EXPECT_FALSE(manifest.HasEffectId(""));
}

#ifndef _WIN32
TEST(SfxManifest, isEmptyWhenThePlatformNamesOneLocationOnly) {
    const BareInstall install;
    install.WriteManifest("not even JSON");
    qputenv("XDG_DATA_DIRS", "relative/paths/do/not/count");
    ASSERT_EQ(QStandardPaths::standardLocations(QStandardPaths::GenericDataLocation).size(), 1);
    testing::internal::CaptureStdout();
    const SfxManifest manifest;
    EXPECT_EQ(testing::internal::GetCapturedStdout(), std::string(kNone) + kNone);
}
#endif

} // namespace
