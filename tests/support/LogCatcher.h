#pragma once

#include <mutex>
#include <string>

#include <QString>
#include <QtGlobal>

namespace sfx_test {

/// Keeps the last message of Qt's log while it lives; there is one at a time. Any thread.
class LogCatcher {
public:
    LogCatcher() : former_(qInstallMessageHandler(Take)) {}
    ~LogCatcher() { qInstallMessageHandler(former_); }
    LogCatcher(const LogCatcher&) = delete;
    LogCatcher& operator=(const LogCatcher&) = delete;

    std::string Last() const {
        const std::lock_guard lock(mutex);
        return last;
    }

private:
    static void Take(QtMsgType, const QMessageLogContext&, const QString& text) {
        const std::lock_guard lock(mutex);
        last = text.toStdString();
    }

    static inline std::mutex mutex;
    static inline std::string last;
    QtMessageHandler former_;
};

} // namespace sfx_test
