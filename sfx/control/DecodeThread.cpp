#include <sfx/control/DecodeThread.h>

#include <QCoreApplication>

namespace vemo::audio {

namespace {

QThread* running = nullptr;

// Decoders must not run while the process destroys what they use.
void End() {
    running->quit();
    running->wait(2000);
}

} // namespace

QThread& DecodeThread() {
    static QThread* const thread = [] {
        running = new QThread;
        running->setObjectName(QStringLiteral("sfx decode"));
        running->start();
        qAddPostRoutine(End);
        return running;
    }();
    return *thread;
}

} // namespace vemo::audio
