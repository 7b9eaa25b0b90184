#pragma once

#include <cstddef>
#include <memory>
#include <mutex>
#include <tuple>
#include <type_traits>
#include <vector>

#include <QObject>

#include "Waiting.h"

namespace sfx_test {

/// Records every emission of one signal, whichever thread emits it. QSignalSpy records without a
/// lock, so it is of no use for signals of pool threads.
///
///     SignalLog finished(&player, &SfxPlayerImpl::sfxFinished);
///     ASSERT_TRUE(finished.WaitForCount(1));
///     EXPECT_EQ(std::get<0>(finished.All().front()), "sfx.1");
template <typename... Args>
class SignalLog {
public:
    template <typename Sender, typename Class, typename... Params>
    SignalLog(Sender* sender, void (Class::*signal)(Params...))
        : connection_(QObject::connect(sender, signal, [log = log_](const Args&... args) {
              const std::lock_guard lock(log->mutex);
              log->emissions.emplace_back(args...);
          })) {}
    ~SignalLog() { QObject::disconnect(connection_); }
    SignalLog(const SignalLog&) = delete;
    SignalLog& operator=(const SignalLog&) = delete;

    std::size_t Count() const {
        const std::lock_guard lock(log_->mutex);
        return log_->emissions.size();
    }
    std::vector<std::tuple<Args...>> All() const {
        const std::lock_guard lock(log_->mutex);
        return log_->emissions;
    }
    /// Runs the event loop until there are at least `count` emissions.
    bool WaitForCount(std::size_t count, std::chrono::milliseconds deadline = kDeadline) const {
        return WaitFor([&] { return Count() >= count; }, deadline);
    }

private:
    // Shared with the connection, which a pool thread may be running while the log goes away.
    struct Log {
        std::mutex mutex;
        std::vector<std::tuple<Args...>> emissions;
    };
    std::shared_ptr<Log> log_ = std::make_shared<Log>();
    QMetaObject::Connection connection_;
};

template <typename Sender, typename Class, typename... Params>
SignalLog(Sender*, void (Class::*)(Params...)) -> SignalLog<std::decay_t<Params>...>;

} // namespace sfx_test
