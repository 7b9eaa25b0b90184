#include <bit>
#include <cstdint>
#include <limits>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sqlite3.h>

#include "ShowHouse.h"

namespace {

using ::testing::AllOf;
using ::testing::HasSubstr;
using Strings = std::vector<std::string>;

// What it changes in a show stays in the log beside the file, as after a kill.
void Sql(const std::string& path, const std::string& sql) {
    sqlite3* database = nullptr;
    ASSERT_EQ(sqlite3_open(path.c_str(), &database), SQLITE_OK);
    sqlite3_db_config(database, SQLITE_DBCONFIG_NO_CKPT_ON_CLOSE, 1, nullptr);
    const std::string all = "PRAGMA locking_mode = EXCLUSIVE; " + sql;
    EXPECT_EQ(sqlite3_exec(database, all.c_str(), nullptr, nullptr, nullptr), SQLITE_OK)
        << sqlite3_errmsg(database);
    sqlite3_close(database);
}

void MakeShow(const std::string& path, int events = 1) {
    CL::OpenShow(path);
    for (int i = 1; i <= events; ++i) {
        Add("sfx." + std::to_string(i), std::string(100, 'x'));
    }
    CL::CloseShow();
}

TEST(ShowFile, keepsEveryEditAcrossRestarts) {
    const ShowHouse house;
    const std::string path = house.Path("a.show");
    house.Write("a.show", ""); // an empty file is a new show too
    Add("sfx.99", "only in memory");
    CL::OpenShow(path);
    EXPECT_EQ(ActiveChangeLogExclusive().Get().ShowFile(), path);
    CL::Editor editor;
    Add("sfx.1", "a");
    Add("sfx.1", "b");
    Add("sfx.40", "c");
    editor.EditSoundEffectSFXPropertyValues(Events()[1], Named("B"));
    editor.DeleteEvent(Events()[2]);
    editor.DeleteEvent(Events()[0]);
    EXPECT_EQ(editor.GetNextSfxEventIdSuffix(), 41U);
    CL::OpenShow(path); // is open already
    EXPECT_EQ(Lines(), Strings({"2 sfx.1 B"}));

    CL::CloseShow();
    EXPECT_EQ(house.All().size(), 1U); // nothing beside the file
    EXPECT_EQ(Lines(), Strings());
    CL::OpenShow(path);
    EXPECT_EQ(editor.PreviewNextSfxEventId(), 42U);
    Add("sfx.42", "d");
    EXPECT_EQ(Lines(), Strings({"2 sfx.1 B", "4 sfx.42 d"}));

    CL::OpenShow(house.Path("b.show"));
    EXPECT_EQ(Lines(), Strings());
    EXPECT_EQ(editor.PreviewNextSfxEventId(), 1U);
}

TEST(ShowFile, keepsValuesExactly) {
    const ShowHouse house;
    using Float = std::numeric_limits<float>;
    const float floats[] = {-0.0F,
                            Float::denorm_min(),
                            -Float::max(),
                            Float::infinity(),
                            Float::epsilon(),
                            Float::quiet_NaN(),
                            std::bit_cast<float>(std::uint32_t{0xFFC12345})};
    CL::SfxProperties low;
    low.setEffectId(std::string("\0\xFF\xC0\x80\0", 5));
    low.setName("\xED\xA0\x80 Bühne");
    low.setOutputPath(std::string(100000, '\0'));
    low.setEffectIdIndex(std::numeric_limits<int>::min());
    low.setRepeats(std::numeric_limits<int>::max());
    low.setFadeIn(0xFFFF);
    low.setFadeOut(0x8000);
    CL::OpenShow(house.Path("a.show"));
    CL::Editor().AddSoundEffect(CL::Sfx(0, std::string("id\0", 3), low));
    for (const float value : floats) {
        CL::SfxProperties properties;
        properties.setVolume(value);
        properties.setPan(value);
        properties.setReverb(value);
        Add("sfx.1");
        CL::Editor().EditSoundEffectSFXPropertyValues(Events().back(), properties);
    }
    CL::CloseShow();

    CL::OpenShow(house.Path("a.show"));
    const std::vector<CL::Sfx> events = Events();
    EXPECT_EQ(events.at(0).EventId(), std::string("id\0", 3));
    EXPECT_EQ(events.at(0).sfx_properties(), low);
    for (std::size_t i = 0; i < std::size(floats); ++i) {
        const CL::SfxProperties& read = events.at(i + 1).sfx_properties();
        for (const float value : {read.volume(), read.pan(), read.reverb()}) {
            EXPECT_EQ(std::bit_cast<std::uint32_t>(value), std::bit_cast<std::uint32_t>(floats[i]));
        }
    }
}

struct Refused {
    const char* name;
    const char* reason;
    void (*make)(const ShowHouse& house, const std::string& path);
};

const Refused kRefused[] = {
    {"text", "it is no show file",
     [](const auto& house, const auto&) { house.Write("x", std::string(5000, 'x')); }},
    {"oneByte", "it is no show file",
     [](const auto& house, const auto&) { house.Write("x", "S"); }},
    {"folder", "it is a folder",
     [](const auto& house, const auto&) {
         std::filesystem::create_directory(house.Folder() / "x");
     }},
    {"databaseWithoutMark", "it is a database of another program",
     [](const auto&, const auto& path) { Sql(path, "CREATE TABLE t (a)"); }},
    {"databaseOfAnother", "it is a database of another program",
     [](const auto&, const auto& path) {
         Sql(path, "PRAGMA application_id = 7; PRAGMA journal_mode = WAL; CREATE TABLE t (a)");
     }},
    {"newer", "it was made by a newer version (format 2, known up to 1)",
     [](const auto& house, const auto& path) {
         MakeShow(path);
         house.Write("x", house.Read("x").replace(63, 1, "\2"));
     }},
    {"newerInTheLog", "it was made by a newer version",
     [](const auto&, const auto& path) {
         MakeShow(path);
         Sql(path, "PRAGMA user_version = 2");
     }},
    {"noFormat", "it is damaged",
     [](const auto& house, const auto& path) {
         MakeShow(path);
         house.Write("x", house.Read("x").replace(63, 1, 1, '\0'));
     }},
    {"cutShort", "it is damaged",
     [](const auto& house, const auto& path) {
         MakeShow(path, 500);
         house.Write("x", house.Read("x").substr(0, 30000));
     }},
    {"headOnly", "it is damaged",
     [](const auto& house, const auto& path) {
         MakeShow(path);
         house.Write("x", house.Read("x").substr(0, 100));
     }},
    {"pageOverwritten", "it is damaged",
     [](const auto& house, const auto& path) {
         MakeShow(path, 500);
         house.Write("x", house.Read("x").replace(5 * 4096, 4096, 4096, 'x'));
     }},
    {"freePagesMiscounted", "it is damaged",
     [](const auto& house, const auto& path) {
         MakeShow(path);
         house.Write("x", house.Read("x").replace(39, 1, "\5"));
     }},
    {"noTable", "it is damaged: no such table: sfx_event",
     [](const auto&, const auto& path) {
         MakeShow(path);
         Sql(path, "DROP TABLE sfx_event");
     }},
    {"noSuffix", "it is damaged",
     [](const auto&, const auto& path) {
         MakeShow(path);
         Sql(path, "DELETE FROM sfx_suffix");
     }},
    {"outOfRange", "it is damaged: a wrong value of fade_in",
     [](const auto&, const auto& path) {
         MakeShow(path);
         Sql(path, "UPDATE sfx_event SET fade_in = 65536");
     }},
};

class RefusedShow : public ::testing::TestWithParam<Refused> {};

TEST_P(RefusedShow, changesNoByteAndLeavesTheOpenShowOpen) {
    const ShowHouse house;
    const std::string path = house.Path("x");
    GetParam().make(house, path);
    const auto before = house.All();
    const ShowHouse other;
    CL::OpenShow(other.Path("open.show"));
    Add("sfx.1", "a");

    EXPECT_THAT(RefusalOf([&] { CL::OpenShow(path); }),
                AllOf(HasSubstr("\"" + path + "\""), HasSubstr(GetParam().reason)));
    EXPECT_TRUE(house.All() == before);
    Add("sfx.2", "b");
    EXPECT_EQ(Lines(), Strings({"1 sfx.1 a", "2 sfx.2 b"}));
    EXPECT_EQ(ActiveChangeLogExclusive().Get().ShowFile(), other.Path("open.show"));
}

INSTANTIATE_TEST_SUITE_P(ShowFile, RefusedShow, ::testing::ValuesIn(kRefused),
                         [](const auto& test) { return std::string(test.param.name); });

TEST(ShowFile, refusesPathsThatLeadNowhere) {
    const ShowHouse house;
    EXPECT_THAT(RefusalOf([&] { CL::OpenShow(house.Path("no/a.show")); }),
                HasSubstr("its folder does not exist"));
    EXPECT_THAT(RefusalOf([&] { CL::OpenShow(""); }), HasSubstr("it is no path of a file"));
    EXPECT_THAT(RefusalOf([&] { CL::OpenShow(house.Path("a") + std::string("\0b", 2)); }),
                HasSubstr("it is no path of a file"));
    EXPECT_TRUE(house.All().empty());
}

} // namespace
