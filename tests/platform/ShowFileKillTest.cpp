#include <cstdlib>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "ChildProcess.h"
#include "ShowHouse.h"

namespace {

using Random = std::minstd_rand;

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

// More runs: SFX_KILL_RUNS=500.
TEST(ShowFile, losesNoEditThatHadReturnedWhenKilled) {
    const char* const wanted = std::getenv("SFX_KILL_RUNS"); // NOLINT(concurrency-mt-unsafe)
    const int runs = wanted == nullptr ? 10 : std::atoi(wanted);
    int edits = 0;
    int inFlight = 0;
    for (int run = 0; run < runs; ++run) {
        const ShowHouse house;
        const std::string path = house.Path("a.show");
        const unsigned int seed = std::random_device()();
        SCOPED_TRACE("seed " + std::to_string(seed));
        Random moment(seed);
        int returned = 0;
        {
            ChildProcess child([&](const ChildProcess& self) {
                CL::OpenShow(path);
                for (Random random(seed);;) {
                    EditOnce(random, path);
                    self.Report();
                }
            });
            for (auto left = moment() % 100; left > 0 && child.NextReport(); --left) {
                ++returned;
            }
            usleep(static_cast<useconds_t>(moment() % 4000)); // anywhere within an edit
            child.Kill();
            while (child.NextReport()) {
                ++returned;
            }
        }

        Random random(seed);
        for (int i = 0; i < returned; ++i) {
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
        edits += returned;
        inFlight += kept == atLeast ? 0 : 1;
    }
    RecordProperty("edits", edits);
    RecordProperty("keptInFlight", inFlight);
}

} // namespace
