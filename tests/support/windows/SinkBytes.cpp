#include "support/SinkBytes.h"

#include <atomic>
#include <chrono>
#include <stdexcept>
#include <thread>

#include <QFile>

namespace sfx_test {

namespace {

// The recorders run on the other side of Wine, for as long as the program does: each writes a file,
// of which the end is followed here.
class FileTail : public SinkBytes {
public:
    explicit FileTail(const QString& path) : file_(path) {
        constexpr qint64 kFrame = 2 * sizeof(float);
        if (!file_.open(QIODevice::ReadOnly | QIODevice::Unbuffered) ||
            !file_.seek(file_.size() - file_.size() % kFrame)) {
            throw std::runtime_error("cannot read the recording " + path.toStdString());
        }
    }

    std::size_t Read(char* bytes, std::size_t size) override {
        while (!ended_) {
            const qint64 got = file_.read(bytes, static_cast<qint64>(size));
            if (got > 0) {
                return static_cast<std::size_t>(got);
            }
            std::this_thread::sleep_for(std::chrono::milliseconds(2));
        }
        return 0;
    }
    void End() override { ended_ = true; }

private:
    QFile file_;
    std::atomic<bool> ended_ = false;
};

} // namespace

std::unique_ptr<SinkBytes> SinkBytes::Open(const std::string& sink, int rate, int channels) {
    if (rate != 48000 || channels != 2) {
        throw std::runtime_error("recordings are in stereo with 48000 Hz here");
    }
    return std::make_unique<FileTail>(qEnvironmentVariable("SFX_TEST_EARS") + "/" +
                                      QString::fromStdString(sink) + ".raw");
}

} // namespace sfx_test
