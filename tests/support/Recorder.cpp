#include "Recorder.h"

#include <array>
#include <cerrno>
#include <cmath>
#include <cstring>
#include <stdexcept>

#include <fcntl.h>
#include <unistd.h>

#include "ProcessRunner.h"

namespace sfx_test {

Recorder::Recorder(const std::string& sink, int rate, int channels) : pcm_{rate, channels, {}} {
    std::array<int, 2> pipe{};
    if (pipe2(pipe.data(), O_CLOEXEC) != 0) {
        throw std::runtime_error("no pipe for parec");
    }
    // Read by a thread of its own: a test that blocks the event loop must not stall the recording.
    DieWithParent(parec_, [out = pipe[1]] { dup2(out, STDOUT_FILENO); });
    parec_.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    parec_.start("parec",
                 {"--raw", "--format=float32le", "--latency-msec=20",
                  "--rate=" + QString::number(rate), "--channels=" + QString::number(channels),
                  "--device=" + QString::fromStdString(sink) + ".monitor"});
    parec_.waitForStarted();
    close(pipe[1]);
    reader_ = std::thread(&Recorder::ReadAll, this, pipe[0]);
    if (!WaitUnderLock([this] { return !pcm_.samples.empty(); }, kDeadline)) {
        Stop();
        throw std::runtime_error("parec does not record from sink " + sink);
    }
}

Recorder::~Recorder() {
    Stop();
}

bool Recorder::WaitForSound(std::chrono::milliseconds deadline) {
    return WaitUnderLock([this] { return soundEnd_ > 0; }, deadline);
}

bool Recorder::WaitForSilence(std::chrono::milliseconds silence,
                              std::chrono::milliseconds deadline) {
    const std::size_t frames = FramesIn(silence);
    return WaitUnderLock(
        [this, frames] { return soundEnd_ > 0 && pcm_.Frames() >= soundEnd_ + frames; }, deadline);
}

bool Recorder::WaitForMore(std::chrono::milliseconds length, std::chrono::milliseconds deadline) {
    const std::size_t end = Frames() + FramesIn(length);
    return WaitUnderLock([this, end] { return pcm_.Frames() >= end; }, deadline);
}

std::size_t Recorder::Frames() const {
    const std::lock_guard lock(mutex_);
    return pcm_.Frames();
}

Pcm Recorder::Heard() const {
    const std::lock_guard lock(mutex_);
    return pcm_;
}

Pcm Recorder::Stop() {
    parec_.kill();
    parec_.waitForFinished();
    if (reader_.joinable()) {
        reader_.join();
    }
    return Heard();
}

void Recorder::ReadAll(int fd) {
    std::array<char, 4096> bytes{};
    const std::size_t frameBytes = sizeof(float) * static_cast<std::size_t>(pcm_.channels);
    std::size_t held = 0;
    std::vector<float> samples;
    for (;;) {
        const ssize_t got = read(fd, bytes.data() + held, bytes.size() - held);
        if (got < 0 && errno == EINTR) {
            continue;
        }
        if (got <= 0) {
            break;
        }
        held += static_cast<std::size_t>(got);
        const std::size_t whole = held - held % frameBytes;
        samples.resize(whole / sizeof(float));
        std::memcpy(samples.data(), bytes.data(), whole);
        std::memmove(bytes.data(), bytes.data() + whole, held - whole);
        held -= whole;
        Take(samples);
    }
    close(fd);
    const std::lock_guard lock(mutex_);
    ended_ = true;
}

void Recorder::Take(const std::vector<float>& samples) {
    const std::lock_guard lock(mutex_);
    for (const float sample : samples) {
        pcm_.samples.push_back(sample);
        if (std::abs(sample) >= kSilence) {
            soundEnd_ = (pcm_.samples.size() - 1) / static_cast<std::size_t>(pcm_.channels) + 1;
        }
    }
}

std::size_t Recorder::FramesIn(std::chrono::milliseconds time) const {
    return FramesOf(static_cast<double>(time.count()), pcm_.rate);
}

bool Recorder::WaitUnderLock(const std::function<bool()>& holds,
                             std::chrono::milliseconds deadline) {
    bool held = false;
    WaitFor(
        [&] {
            const std::lock_guard lock(mutex_);
            held = holds();
            return held || ended_;
        },
        deadline);
    return held;
}

} // namespace sfx_test
