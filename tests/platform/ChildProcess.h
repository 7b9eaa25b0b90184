#pragma once

#include <csignal>
#include <exception>
#include <functional>

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

/// A program beside the test, forked from it while no show is open. Failures in it fail the test.
class ChildProcess {
public:
    explicit ChildProcess(const std::function<void(ChildProcess&)>& work) {
        EXPECT_EQ(pipe(toParent_), 0);
        EXPECT_EQ(pipe(toChild_), 0);
        std::fflush(nullptr);
        id_ = fork();
        if (id_ == 0) {
            close(toParent_[0]);
            close(toChild_[1]);
            try {
                work(*this);
            } catch (const std::exception& error) {
                ADD_FAILURE() << error.what();
            }
            std::fflush(nullptr);
            _exit(::testing::Test::HasFailure() ? 1 : 0);
        }
        close(toParent_[1]);
        close(toChild_[0]);
    }
    ~ChildProcess() {
        close(toChild_[1]); // ends a child that still waits
        if (!killed_) {
            EXPECT_EQ(WaitForEnd(), 0);
        }
        close(toParent_[0]);
    }
    ChildProcess(const ChildProcess&) = delete;
    ChildProcess& operator=(const ChildProcess&) = delete;

    // In the child.
    void Report() const { EXPECT_EQ(write(toParent_[1], "x", 1), 1); }
    void WaitForParent() const {
        char mark = 0;
        EXPECT_GE(read(toChild_[0], &mark, 1), 0);
    }

    // In the parent.
    /// False when the child has ended instead.
    bool NextReport() const {
        char mark = 0;
        return read(toParent_[0], &mark, 1) == 1;
    }
    void Kill() {
        killed_ = true;
        kill(id_, SIGKILL);
        const int status = WaitForEnd();
        EXPECT_TRUE(WIFSIGNALED(status)) << "the child has ended by itself: " << status;
    }

private:
    int WaitForEnd() const {
        int status = -1;
        EXPECT_EQ(waitpid(id_, &status, 0), id_);
        return status;
    }

    int toParent_[2] = {};
    int toChild_[2] = {};
    pid_t id_ = -1;
    bool killed_ = false;
};
