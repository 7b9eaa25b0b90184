#include <sfx/control/DecodeThread.h>

#include <QCoreApplication>

#include <sfx/source/ComApartment.h>

namespace vemo::audio {

namespace {

class Thread : public QThread {
    void run() override {
        [[maybe_unused]] const ComApartment com;
        exec();
    }
};

QThread* running = nullptr;

// Decoders must not run while the process destroys what they use.
void End() {
    running->quit();
    running->wait(2000);
}

} // namespace

QThread& DecodeThread() {
    static QThread* const thread = [] {
        running = new Thread;
        running->setObjectName(QStringLiteral("sfx decode"));
        running->start();
        qAddPostRoutine(End);
        return running;
    }();
    return *thread;
}

} // namespace vemo::audio
