#include <sfx/player/AudioOutputs.h>

#include <QMediaDevices>

#ifdef _WIN32
#include <QMutex>
#endif

namespace vemo::audio {

namespace {

// Qt lists the outputs of Windows through winmm, of which not every edition sets up its own list
// safely when two threads ask for it at once. Elsewhere one caller may wait for a server that
// hangs, and must not hold the others.
class Turn {
#ifdef _WIN32
public:
    Turn() {
        mutex_.lock();
    }
    ~Turn() {
        mutex_.unlock();
    }
    Turn(const Turn&) = delete;
    Turn& operator=(const Turn&) = delete;

private:
    static inline QBasicMutex mutex_;
#endif
};

} // namespace

QList<QAudioDevice> AudioOutputs() {
    [[maybe_unused]] const Turn turn;
    return QMediaDevices::audioOutputs();
}

QAudioDevice DefaultAudioOutput() {
    [[maybe_unused]] const Turn turn;
    return QMediaDevices::defaultAudioOutput();
}

} // namespace vemo::audio
