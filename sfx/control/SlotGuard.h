#pragma once

#include <exception>

#include <QEvent>
#include <QString>

#include <sfx/model/CustomAudioException.h>

namespace vemo::audio {

/// Runs `handle(event)`, the event handler of a QObject. An exception that a queued slot throws
/// there would leave the host's event loop; it goes to `report(priority, message)` instead.
template <typename Handler, typename Report>
bool KeepExceptions(QEvent* event, const Handler& handle, const Report& report) {
    if (event->type() != QEvent::MetaCall)
        return handle(event);
    try {
        return handle(event);
    } catch (const vemo::sfx::CustomAudioException& fault) {
        report(QString::fromStdString(fault.Priority()), QString::fromStdString(fault.Message()));
    } catch (const std::exception& fault) {
        report(QStringLiteral("error"), QString::fromUtf8(fault.what()));
    }
    return true;
}

} // namespace vemo::audio
