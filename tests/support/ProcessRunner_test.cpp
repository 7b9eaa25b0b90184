#include <csignal>
#include <stdexcept>

#include <gtest/gtest.h>

#include "ProcessRunner.h"

using namespace sfx_test;
using namespace std::chrono_literals;

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
