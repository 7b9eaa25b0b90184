#include "Waiting.h"

#include <QDeadlineTimer>
#include <QEventLoop>
#include <QTimer>

namespace sfx_test {

bool WaitFor(const std::function<bool()>& holds, std::chrono::milliseconds deadline) {
    if (holds()) {
        return true;
    }
    const QDeadlineTimer limit(deadline);
    // exec() and not processEvents(): only inside a running loop are objects deleted by
    // deleteLater().
    QEventLoop loop;
    QTimer tick;
    tick.setTimerType(Qt::PreciseTimer);
    bool held = false;
    QObject::connect(&tick, &QTimer::timeout, &loop, [&] {
        held = holds();
        if (held || limit.hasExpired()) {
            loop.quit();
        }
    });
    tick.start(std::chrono::milliseconds(2));
    loop.exec();
    return held;
}

} // namespace sfx_test
