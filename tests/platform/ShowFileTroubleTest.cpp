#include <cerrno>
#include <csignal>
#include <string>
#include <vector>

#include <dlfcn.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>

#include "ChildProcess.h"
#include "ShowHouse.h"

namespace {

int syncs = 0;
bool syncsFail = false;

// In place of the C library's, whatever SQLite was built to call.
int Sync(const char* name, int file) {
    ++syncs;
    if (syncsFail) {
        errno = EIO;
        return -1;
    }
    return reinterpret_cast<int (*)(int)>(dlsym(RTLD_NEXT, name))(file);
}

} // namespace

extern "C" __attribute__((visibility("default"))) int fsync(int file) {
    return Sync("fsync", file);
}
extern "C" __attribute__((visibility("default"))) int fdatasync(int file) {
    return Sync("fdatasync", file);
}

namespace {

using ::testing::AllOf;
using ::testing::HasSubstr;
using Strings = std::vector<std::string>;

// Writes behind this many bytes of a file fail from now on.
void LimitFiles(rlim_t bytes) {
    std::signal(SIGXFSZ, SIG_IGN);
    rlimit limit{};
    ASSERT_EQ(getrlimit(RLIMIT_FSIZE, &limit), 0);
    limit.rlim_cur = bytes;
    ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &limit), 0);
}

TEST(ShowFile, isUnchangedWhenAnEditCannotBeWritten) {
    const ShowHouse house;
    const std::string path = house.Path("a.show");
    const ChildProcess child([&] {
        CL::OpenShow(path);
        CL::Editor editor;
        Add("sfx.1", "a");
        for (const rlim_t room : {rlim_t{1}, rlim_t{house.Read("a.show-wal").size() + 4096}}) {
            LimitFiles(room);
            for (int i = 0; i < 2; ++i) {
                EXPECT_THAT(RefusalOf([] { Add("sfx.5", std::string(20000, 'x')); }),
                            AllOf(HasSubstr(path), HasSubstr("reading or writing it failed")));
            }
            LimitFiles(1);
            EXPECT_NE(RefusalOf([&] { editor.DeleteEvent(Events()[0]); }), "");
            EXPECT_NE(RefusalOf([&] { editor.GetNextSfxEventIdSuffix(); }), "");
            EXPECT_NE(RefusalOf([&] {
                          editor.EditSoundEffectSFXPropertyValues(Events()[0], Named("z"));
                      }),
                      "");
            EXPECT_EQ(Lines().at(0), "1 sfx.1 a");
            LimitFiles(RLIM_INFINITY);
            Add("sfx.2");
            editor.EditSoundEffectSFXPropertyValues(Events().back(), Named("b"));
        }
        LimitFiles(1); // the close cannot tidy up
        CL::CloseShow();
        LimitFiles(RLIM_INFINITY);
        CL::OpenShow(path);
        EXPECT_EQ(Lines(), Strings({"1 sfx.1 a", "2 sfx.2 b", "3 sfx.2 b"}));
        EXPECT_EQ(editor.PreviewNextSfxEventId(), 3U);
        CL::CloseShow();
        EXPECT_EQ(house.All().size(), 1U);
    });
}

TEST(ShowFile, isOnDiskWhenAnEditReturns) {
    const ShowHouse house;
    CL::OpenShow(house.Path("a.show"));
    CL::Editor editor;
    const auto expectSync = [](const auto& edit) {
        const int before = syncs;
        edit();
        EXPECT_GT(syncs, before);
    };
    expectSync([] { Add("sfx.1", "a"); });
    expectSync([&] { editor.EditSoundEffectSFXPropertyValues(Events()[0], Named("b")); });
    expectSync([&] { editor.GetNextSfxEventIdSuffix(); });
    syncsFail = true;
    EXPECT_NE(RefusalOf([] { Add("sfx.3", "c"); }), "");
    syncsFail = false;
    // As a crash would leave them.
    house.Write("b.show", house.Read("a.show"));
    house.Write("b.show-wal", house.Read("a.show-wal"));
    expectSync([&] { editor.DeleteEvent(Events()[0]); });
    CL::OpenShow(house.Path("b.show"));
    EXPECT_EQ(Lines(), Strings({"1 sfx.1 b"}));
}

TEST(ShowFile, leavesNoHalfOfANewShow) {
    for (rlim_t room = 0; room < 20000; room += 500) {
        for (const bool empty : {false, true}) {
            const ShowHouse house;
            if (empty) {
                house.Write("a.show", "");
            }
            const ChildProcess child([&] {
                const auto before = house.All();
                LimitFiles(room);
                const bool refused =
                    !RefusalOf([&] { CL::OpenShow(house.Path("a.show")); }).empty();
                EXPECT_TRUE(refused || room >= 4096);
                EXPECT_EQ(house.All() == before, refused) << room;
            });
        }
    }
}

TEST(ShowFile, refusesWhatCannotBeWritten) {
    const ShowHouse house;
    CL::OpenShow(house.Path("a.show"));
    CL::CloseShow();
    house.Write("empty.show", "");
    const auto before = house.All();
    const auto expect = [&](mode_t folder, mode_t file, const std::string& name,
                            const std::string& reason) {
        chmod(house.Folder().c_str(), folder);
        for (const auto& [each, bytes] : before) {
            chmod((house.Folder() / each).c_str(), file);
        }
        {
            const ChildProcess child([&] {
                if (geteuid() == 0) {
                    ASSERT_EQ(seteuid(65534), 0); // whom every right is checked for
                }
                EXPECT_THAT(RefusalOf([&] { CL::OpenShow(house.Path(name)); }),
                            AllOf(HasSubstr(house.Path(name)), HasSubstr(reason)));
            });
        }
        chmod(house.Folder().c_str(), 0777);
        EXPECT_TRUE(house.All() == before);
    };
    expect(0555, 0666, "a.show", "its folder cannot be written");
    expect(0555, 0666, "empty.show", "its folder cannot be written");
    expect(0555, 0666, "new.show", "it cannot be opened");
    expect(0777, 0444, "a.show", "it cannot be written");
    expect(0777, 0444, "empty.show", "it cannot be written");
    expect(0777, 0000, "a.show", "it cannot be opened: Permission denied");
    expect(0000, 0666, "a.show", "it cannot be reached: Permission denied");
}

TEST(ShowFile, refusesEditsWhileTheFileIsGone) {
    const ShowHouse house;
    CL::OpenShow(house.Path("a.show"));
    Add("sfx.1", "a");
    std::filesystem::rename(house.Path("a.show"), house.Path("b.show"));
    EXPECT_THAT(RefusalOf([] { Add("sfx.2"); }), HasSubstr("it was moved or deleted"));
    std::filesystem::rename(house.Path("b.show"), house.Path("a.show"));
    Add("sfx.2", "b");
    EXPECT_EQ(Lines(), Strings({"1 sfx.1 a", "2 sfx.2 b"}));
}

TEST(ShowFile, refusesWhatIsNoRegularFile) {
    const ShowHouse house;
    ASSERT_EQ(mkfifo(house.Path("a.show").c_str(), 0600), 0);
    EXPECT_THAT(RefusalOf([&] { CL::OpenShow(house.Path("a.show")); }),
                HasSubstr("it is no regular file"));
}

} // namespace
