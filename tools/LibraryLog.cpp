#include "LibraryLog.h"

#include <atomic>
#include <cstring>
#include <iostream>
#include <mutex>

#include <QString>
#include <QtGlobal>

namespace vemo::tool {

namespace {

std::atomic<bool> shown{false};
std::mutex faultMutex;
std::string fault;

void onMessage(QtMsgType type, const QMessageLogContext& context, const QString& message) {
    if (shown) {
        std::cerr << qFormatLogMessage(type, context, message).toStdString() << '\n';
    }
    const bool fromPlayer = context.category && std::strcmp(context.category, "sfx.player") == 0;
    if (fromPlayer && type == QtWarningMsg) {
        const std::lock_guard lock(faultMutex);
        fault = message.toStdString();
    }
}

} // namespace

void takeOverLog() {
    qInstallMessageHandler(onMessage);
}

void showLog() {
    shown = true;
}

std::string playbackFault() {
    const std::lock_guard lock(faultMutex);
    return fault;
}

} // namespace vemo::tool
