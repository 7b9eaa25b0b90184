#include "Interrupt.h"

#include <mutex>

#include <windows.h>

namespace vemo::tool {

namespace {

std::mutex mutex;
Interrupt* alive = nullptr;

// On a thread that the system makes for it.
BOOL WINAPI onControl(DWORD event) {
    Interrupt::note();
    {
        const std::lock_guard lock(mutex);
        if (alive) {
            QMetaObject::invokeMethod(alive, &Interrupt::caught, Qt::QueuedConnection);
        }
    }
    if (event == CTRL_CLOSE_EVENT || event == CTRL_LOGOFF_EVENT || event == CTRL_SHUTDOWN_EVENT) {
        // The system ends the program when this returns, or after some seconds.
        Sleep(INFINITE);
    }
    return TRUE;
}

} // namespace

Interrupt::Interrupt() {
    reset_();
    const std::lock_guard lock(mutex);
    alive = this;
    SetConsoleCtrlHandler(onControl, TRUE);
}

Interrupt::~Interrupt() {
    SetConsoleCtrlHandler(onControl, FALSE);
    const std::lock_guard lock(mutex);
    alive = nullptr;
}

} // namespace vemo::tool
