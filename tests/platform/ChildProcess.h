#pragma once

#include <cstdio>
#include <exception>
#include <functional>

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

/// A program beside the test, forked from it while no show is open. Failures in it fail the test.
class ChildProcess {
public:
    explicit ChildProcess(const std::function<void()>& work) {
        std::fflush(nullptr);
        id_ = fork();
        if (id_ == 0) {
            try {
                work();
            } catch (const std::exception& error) {
                ADD_FAILURE() << error.what();
            }
            std::fflush(nullptr);
            _exit(::testing::Test::HasFailure() ? 1 : 0);
        }
    }
    ~ChildProcess() {
        int status = -1;
        EXPECT_EQ(waitpid(id_, &status, 0), id_);
        EXPECT_EQ(status, 0);
    }
    ChildProcess(const ChildProcess&) = delete;
    ChildProcess& operator=(const ChildProcess&) = delete;

private:
    pid_t id_ = -1;
};
