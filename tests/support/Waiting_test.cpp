#include <csignal>
#include <stdexcept>
#include <thread>

#include <QObject>
#include <QPointer>
#include <QTimer>
#include <gtest/gtest.h>

#include "support/ProcessRunner.h"
#include "support/SignalLog.h"
#include "support/Waiting.h"

using namespace sfx_test;
using namespace std::chrono_literals;

TEST(WaitFor, runsTheEventLoopUntilThePredicateHolds) {
    bool fired = false;
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, [&] { fired = true; });
    timer.start(5ms);
    QPointer<QObject> later = new QObject;
    later->deleteLater();

    EXPECT_TRUE(WaitFor([&] { return fired && !later; }));
    EXPECT_FALSE(WaitFor([] { return false; }, 20ms));
}

TEST(WaitFor, letsAnExceptionOfASlotThrough) {
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, [] { throw std::runtime_error("slot"); });
    timer.start(0ms);
    EXPECT_THROW(WaitFor([] { return false; }), std::runtime_error);
}

TEST(SignalLog, recordsEmissionsOfSeveralThreads) {
    QObject sender;
    QTimer timer;
    SignalLog destroyed(&sender, &QObject::destroyed);
    SignalLog names(&timer, &QTimer::objectNameChanged);
    constexpr std::size_t kEach = 500;
    const auto emit = [&] {
        for (std::size_t i = 0; i < kEach; ++i) {
            Q_EMIT sender.destroyed(&sender);
        }
    };
    std::thread first(emit);
    std::thread second(emit);
    EXPECT_TRUE(destroyed.WaitForCount(2 * kEach));
    first.join();
    second.join();

    ASSERT_EQ(destroyed.Count(), 2 * kEach);
    EXPECT_EQ(std::get<0>(destroyed.All().back()), &sender);
    EXPECT_FALSE(names.WaitForCount(1, 10ms));
}

TEST(ProcessRunner, returnsOutputAndExitCode) {
    const auto result = ProcessRunner::Run(
        "sh", {"-c", "cat; echo $GREETING; echo oops >&2; exit 3"}, {{"GREETING", "hello"}});
    EXPECT_EQ(result.exitCode, 3);
    EXPECT_EQ(result.out, "hello\n");
    EXPECT_EQ(result.err, "oops\n");
    EXPECT_THROW(ProcessRunner::Run("/nonexistent/program", {}), std::runtime_error);
}

TEST(ProcessRunner, endsAProgramThatDoesNotEnd) {
    const auto result = ProcessRunner::Run("sleep", {"1000"}, {}, 50ms);
    EXPECT_TRUE(result.timedOut);
    EXPECT_EQ(result.exitCode, -1);
}

TEST(ProcessRunner, sendSignalReachesTheProgramThatSaysItIsReady) {
    ProcessRunner runner("sh", {"-c", "trap 'echo bye; exit 7' INT; echo ready; read line"});
    ASSERT_TRUE(runner.WaitForOutput("ready"));
    runner.SendSignal(SIGINT);
    const auto result = runner.Finish();
    EXPECT_EQ(result.exitCode, 7);
    EXPECT_EQ(result.out, "ready\nbye\n");

    ProcessRunner silent("true", {});
    EXPECT_FALSE(silent.WaitForOutput("ready"));
}
