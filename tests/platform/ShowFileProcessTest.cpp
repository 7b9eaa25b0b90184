#include <cstdlib>
#include <iostream>
#include <random>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include <QCoreApplication>

#include <gmock/gmock.h>

#include "ShowHouse.h"
#include "support/ProcessRunner.h"

namespace {

using Random = std::minstd_rand;
using Strings = std::vector<std::string>;
using ::testing::AllOf;
using ::testing::HasSubstr;

// The same edits for the same seed. Without a path they go into memory alone.
void EditOnce(Random& random, const std::string& path) {
    CL::Editor editor;
    const std::vector<CL::Sfx> events = Events();
    const auto kind = random() % 12;
    const auto place = random();
    const std::string name = std::to_string(random());
    if (kind < 5 || events.empty()) {
        Add("sfx." + std::to_string(editor.PreviewNextSfxEventId() + place % 2), name);
    } else if (kind < 7) {
        editor.GetNextSfxEventIdSuffix();
    } else if (kind < 9) {
        editor.EditSoundEffectSFXPropertyValues(events[place % events.size()], Named(name));
    } else if (kind < 11) {
        editor.DeleteEvent(events[place % events.size()]);
    } else if (!path.empty()) {
        CL::CloseShow();
        CL::OpenShow(path);
    }
}

std::pair<std::vector<std::string>, std::uint64_t> State() {
    return {Lines(), CL::Editor().PreviewNextSfxEventId()};
}

void Edit(const std::string& show) {
    Random random(qEnvironmentVariable("SFX_TEST_SEED").toUInt());
    CL::OpenShow(show);
    for (int edits = 1;; ++edits) {
        EditOnce(random, show);
        std::cout << "edit " << edits << ';' << std::flush;
    }
}

void Hold(const std::string& show) {
    CL::OpenShow(show);
    CL::OpenShow(show);
    RefusalOf([&] { CL::OpenShow(show + "/no/b.show"); });
    Add("sfx.1", "a");
    std::cout << "holds" << std::endl;
    std::string line;
    std::getline(std::cin, line);
    Add("sfx.2", "b");
    CL::CloseShow();
}

/// This program once more, which then does that with a show, and no tests.
class OtherProgram : public sfx_test::ProcessRunner {
public:
    OtherProgram(const char* what, const std::string& show, unsigned int seed = 0)
        : ProcessRunner(QCoreApplication::applicationFilePath(), {},
                        {{"SFX_TEST_OTHER", what},
                         {"SFX_TEST_SHOW", QString::fromStdString(show)},
                         {"SFX_TEST_SEED", QString::number(seed)}}) {}

    static bool Is() {
        const std::string show = qEnvironmentVariable("SFX_TEST_SHOW").toStdString();
        if (const QByteArray what = qgetenv("SFX_TEST_OTHER"); !what.isEmpty()) {
            what == "edit" ? Edit(show) : Hold(show);
            std::_Exit(0);
        }
        return false;
    }
};

const bool isOther = OtherProgram::Is();

} // namespace

TEST(ShowFile, refusesAShowThatIsOpenInAnotherProgram) {
    const ShowHouse house;
    const std::string path = house.Path("a.show");
    OtherProgram other("hold", path);
    ASSERT_TRUE(other.WaitForOutput("holds"));
    const auto before = house.All();
    EXPECT_THAT(RefusalOf([&] { CL::OpenShow(path); }),
                AllOf(HasSubstr(path), HasSubstr("it is open in another program")));
    EXPECT_TRUE(house.All() == before);
    other.Write("\n");
    EXPECT_EQ(other.Finish().exitCode, 0);
    CL::OpenShow(path);
    EXPECT_EQ(Lines(), Strings({"1 sfx.1 a", "2 sfx.2 b"}));
}

// More runs: SFX_KILL_RUNS=500.
TEST(ShowFile, losesNoEditThatHadReturnedWhenKilled) {
    const int wanted = qEnvironmentVariableIntValue("SFX_KILL_RUNS");
    const int runs = wanted > 0 ? wanted : 10;
    int edits = 0;
    int inFlight = 0;
    for (int run = 0; run < runs; ++run) {
        const ShowHouse house;
        const std::string path = house.Path("a.show");
        const unsigned int seed = std::random_device()();
        SCOPED_TRACE("seed " + std::to_string(seed));
        Random moment(seed);
        OtherProgram other("edit", path, seed);
        if (const auto wait = moment() % 100; wait > 0) {
            ASSERT_TRUE(other.WaitForOutput("edit " + QByteArray::number(wait) + ";"));
        }
        // Anywhere within an edit.
        std::this_thread::sleep_for(std::chrono::microseconds(moment() % 4000));
        const auto result = other.Finish(std::chrono::milliseconds(0));
        ASSERT_TRUE(result.timedOut) << "it has ended by itself: " << result.out.toStdString();
        const auto returned = result.out.count(';');

        Random random(seed);
        for (qsizetype i = 0; i < returned; ++i) {
            EditOnce(random, "");
        }
        const auto atLeast = State();
        EditOnce(random, "");
        const auto atMost = State();
        CL::OpenShow(path);
        const auto kept = State();
        EXPECT_TRUE(kept == atLeast || kept == atMost)
            << returned << " edits had returned, " << kept.first.size() << " events are kept, "
            << atLeast.first.size() << " were there";
        edits += static_cast<int>(returned);
        inFlight += kept == atLeast ? 0 : 1;
    }
    RecordProperty("edits", edits);
    RecordProperty("keptInFlight", inFlight);
}
