#include "LibraryLog.h"

#include <algorithm>
#include <atomic>
#include <cstring>
#include <deque>
#include <iostream>
#include <mutex>

#include <QString>
#include <QtGlobal>

namespace vemo::tool {

namespace {

std::atomic<bool> shown{false};
std::mutex faultMutex;
std::deque<std::string> faults;
std::size_t faultsForgotten = 0;

constexpr std::size_t MOST_FAULTS = 64;

void onMessage(QtMsgType type, const QMessageLogContext& context, const QString& message) {
    if (shown) {
        std::cerr << qFormatLogMessage(type, context, message).toStdString() << '\n';
    }
    const bool fromPlayer = context.category && std::strcmp(context.category, "sfx.player") == 0;
    if (fromPlayer && type == QtWarningMsg) {
        const std::lock_guard lock(faultMutex);
        faults.push_back(message.toStdString());
        if (faults.size() > MOST_FAULTS) {
            faults.pop_front();
            ++faultsForgotten;
        }
    }
}

} // namespace

void takeOverLog() {
    qInstallMessageHandler(onMessage);
}

void showLog() {
    shown = true;
}

std::size_t playbackFaults() {
    const std::lock_guard lock(faultMutex);
    return faultsForgotten + faults.size();
}

std::vector<std::string> playbackFaultsSince(std::size_t count) {
    const std::lock_guard lock(faultMutex);
    const std::size_t first = std::min(count - std::min(count, faultsForgotten), faults.size());
    return {faults.begin() + static_cast<std::ptrdiff_t>(first), faults.end()};
}

} // namespace vemo::tool
