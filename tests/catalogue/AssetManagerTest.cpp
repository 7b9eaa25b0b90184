#include <string>
#include <utility>

#include <gtest/gtest.h>
#include <sfx/catalogue/AssetManager.h>

#include "AssetFolder.h"

namespace {

using vemo::AssetManager;

TEST(AssetManager, loadsDescriptionsAndBytes) {
    const AssetFolder folder;
    const std::string bytes("\x00\r\n\xff\x1a", 5);
    folder.Write(u8"base/bild/Tür.png", bytes);
    folder.Write(u8"base/empty", "");
    AssetManager manager = folder.Load(Described(
        R"({"type": "image", "id": "tür", "group": "doors", "name": "Die Tür", "more": [1],
            "filename": "bild/Tür.png"}, )" +
        OneAsset("e", "empty")));

    const vemo::Asset& door = manager.GetAsset("tür");
    EXPECT_EQ(door.Descriptor().Type(), "image");
    EXPECT_EQ(door.Descriptor().Id(), "tür");
    EXPECT_EQ(door.Descriptor().Group(), "doors");
    EXPECT_EQ(door.Descriptor().Name(), "Die Tür");
    EXPECT_EQ(door.Descriptor().SourceFilename(), "bild/Tür.png");
    EXPECT_EQ(door.Bytes(), bytes);
    EXPECT_EQ(manager.GetAsset("e").Descriptor().Id(), "e");

    AssetManager moved = std::move(manager);
    EXPECT_EQ(&moved.GetAsset("tür"), &door);
}

TEST(AssetManager, keepsTheFirstOfTwoAssetsWithOneId) {
    const AssetFolder folder;
    folder.Write(u8"base/a", "first");
    folder.Write(u8"base/b", "second");
    AssetManager manager = folder.Load(Described(OneAsset("x", "a") + "," + OneAsset("x", "b")));
    EXPECT_EQ(manager.GetAsset("x").Bytes(), "first");
    EXPECT_EQ(manager.GetAsset("x").Descriptor().SourceFilename(), "a");
}

TEST(AssetManager, getAssetKeepsAnEmptyAssetForAnUnknownId) {
    const AssetFolder folder;
    folder.Write(u8"base/a");
    AssetManager manager = folder.Load(Described(OneAsset("a", "a")));
    const vemo::Asset& empty = manager.GetAsset("A");
    EXPECT_EQ(empty.Descriptor().Id() + empty.Descriptor().SourceFilename(), "");
    EXPECT_EQ(empty.Bytes(), "");
    EXPECT_EQ(manager.GetAsset("a").Bytes(), "sound");
    for (int i = 0; i < 10000; ++i) {
        manager.GetAsset(std::to_string(i));
    }
    EXPECT_EQ(&manager.GetAsset("A"), &empty);
}

TEST(AssetManager, tellsVersionsByTheLowByteOfEachNumber) {
    const AssetFolder folder;
    folder.Write(u8"base/a");
    const auto loads = [&](const std::string& version) {
        return folder.Load(Described(OneAsset("a", "a"), version)).GetAsset("a").Bytes() == "sound";
    };
    for (const char* version : {"1.0", "0.7", "0.255", "256.0", "257.256", "-255.0", " +1. 0",
                                "1.0.9", "1.0b", "79228162514264337593543950336.3"}) {
        EXPECT_TRUE(loads(version)) << version;
    }
    for (const char* version : {"1.1", "2.0", "255.0", "-1.0", "1.-1", "258.0", "", "1", "1.", ".0",
                                "0 .0", "x.0", "+.0"}) {
        EXPECT_FALSE(loads(version)) << version;
    }
    // Nothing else of it is read.
    EXPECT_EQ(folder.Fault(R"({"filetype": "vemo_assets", "version": "2.0", "assets": 7})"), "");
}

TEST(AssetManager, readsOnlyBelowTheBaseFolder) {
    const AssetFolder folder;
    folder.Write(u8"secret");
    folder.Write(u8"base/..a/b");
    folder.Write(u8"base/c");
    const auto fault = [&](const std::string& filename) {
        return folder.Fault(Described(OneAsset("a", filename)));
    };
    for (const char* inside : {"c", "./c", "..a/b", "..a/../c", "gone/../c"}) {
        EXPECT_EQ(fault(inside), "") << inside;
    }
    EXPECT_EQ(fault("../secret"), folder.Unreadable(u8"../secret"));
    const std::u8string absolute = folder.Path(u8"secret").generic_u8string();
    EXPECT_EQ(fault({absolute.begin(), absolute.end()}), folder.Unreadable(absolute));
    for (const char* outside :
         {"..", "../base/c", "..a/../../secret", "..\\\\secret", "/etc/hosts", "\\\\c", "C:c",
          "C:/Windows/win.ini", "//server/share/c", "\\\\\\\\?\\\\C:\\\\c", "", "."}) {
        EXPECT_TRUE(fault(outside).starts_with("Unable to read file ")) << outside;
    }
#ifndef _WIN32
    // Behind the link, ".." would be the root.
    std::filesystem::create_directory_symlink("/usr", folder.Path(u8"base/usr"));
    EXPECT_EQ(fault("usr/../etc/passwd").substr(0, 20), "Unable to read file ");
#endif
}

} // namespace
