#include <stdexcept>
#include <thread>

#include <QObject>
#include <QPointer>
#include <QTimer>
#include <gtest/gtest.h>

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
