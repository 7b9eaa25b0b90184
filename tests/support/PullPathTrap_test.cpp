#include <atomic>
#include <chrono>
#include <mutex>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include "support/PullPathTrap.h"

using sfx_test::PullPathTrap;

class PullPathTrapTest : public testing::Test {
protected:
    void SetUp() override {
        if (!PullPathTrap::Available()) {
            GTEST_SKIP() << PullPathTrap::kUnavailable;
        }
    }

    template <typename Action>
    static int Calls(Action action) {
        PullPathTrap trap;
        action();
        trap.Disarm();
        return trap.Count();
    }
};

TEST_F(PullPathTrapTest, countsAllocations) {
    std::vector<int> numbers;
    EXPECT_EQ(Calls([&] { numbers.resize(100); }), 1);
    EXPECT_EQ(Calls([&] { numbers.clear(); }), 0);
    EXPECT_EQ(Calls([&] { std::vector<int>().swap(numbers); }), 1) << "the free";
    struct alignas(64) Wide {
        char bytes[64];
    };
    std::vector<Wide> wide;
    EXPECT_EQ(Calls([&] { wide.resize(1); }), 1);
}

TEST_F(PullPathTrapTest, countsLocksAndSleeps) {
    std::mutex mutex;
    EXPECT_EQ(Calls([&] { const std::lock_guard lock(mutex); }), 1);
    EXPECT_GE(Calls([] { std::this_thread::sleep_for(std::chrono::microseconds(1)); }), 1);
}

TEST_F(PullPathTrapTest, reportNamesTheFunctionAndItsCaller) {
    PullPathTrap trap;
    std::vector<int> numbers(100);
    trap.Disarm();
    EXPECT_NE(trap.Report().find("\nmalloc\n"), std::string::npos) << trap.Report();
    EXPECT_NE(trap.Report().find("libstdc++"), std::string::npos) << trap.Report();
    EXPECT_EQ(numbers.size(), 100U);
}

TEST_F(PullPathTrapTest, leavesOtherThreadsAlone) {
    std::atomic<bool> go = false;
    std::atomic<bool> done = false;
    std::thread other([&] {
        while (!go) {
        }
        const std::vector<int> numbers(100);
        done = numbers.size() == 100;
    });
    PullPathTrap trap;
    go = true;
    while (!done) {
    }
    trap.Disarm();
    other.join();
    EXPECT_EQ(trap.Count(), 0) << trap.Report();
}
