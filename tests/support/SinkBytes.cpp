#include "SinkBytes.h"

#include <array>
#include <cerrno>
#include <stdexcept>

#include <fcntl.h>
#include <unistd.h>

#include "ProcessRunner.h"

namespace sfx_test {

namespace {

class Parec : public SinkBytes {
public:
    Parec(const std::string& sink, int rate, int channels) {
        std::array<int, 2> pipe{};
        if (pipe2(pipe.data(), O_CLOEXEC) != 0) {
            throw std::runtime_error("no pipe for parec");
        }
        // A pipe, not QProcess: read by a thread of its own.
        DieWithParent(process_, [out = pipe[1]] { dup2(out, STDOUT_FILENO); });
        process_.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        process_.start("parec", {"--raw", "--format=float32le", "--latency-msec=20",
                                 "--rate=" + QString::number(rate),
                                 "--channels=" + QString::number(channels),
                                 "--device=" + QString::fromStdString(sink) + ".monitor"});
        process_.waitForStarted();
        close(pipe[1]);
        fd_ = pipe[0];
    }
    ~Parec() override {
        Parec::End();
        close(fd_);
    }

    std::size_t Read(char* bytes, std::size_t size) override {
        ssize_t got = -1;
        do {
            got = read(fd_, bytes, size);
        } while (got < 0 && errno == EINTR);
        return got > 0 ? static_cast<std::size_t>(got) : 0;
    }
    void End() override {
        process_.kill();
        process_.waitForFinished();
    }

private:
    QProcess process_;
    int fd_ = -1;
};

} // namespace

std::unique_ptr<SinkBytes> SinkBytes::Open(const std::string& sink, int rate, int channels) {
    return std::make_unique<Parec>(sink, rate, channels);
}

} // namespace sfx_test
