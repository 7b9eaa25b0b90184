#include "Recorder.h"

#include <array>
#include <cmath>
#include <cstring>
#include <stdexcept>

namespace sfx_test {

Recorder::Recorder(const std::string& sink, int rate, int channels)
    : bytes_(SinkBytes::Open(sink, rate, channels)), pcm_{rate, channels, {}} {
    // On a thread of its own: a test that blocks the event loop must not stall the recording.
    reader_ = std::thread(&Recorder::ReadAll, this);
    if (!WaitUnderLock([this] { return !pcm_.samples.empty(); }, kDeadline)) {
        Stop();
        throw std::runtime_error("nothing is recorded from sink " + sink);
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
    bytes_->End();
    if (reader_.joinable()) {
        reader_.join();
    }
    return Heard();
}

void Recorder::ReadAll() {
    std::array<char, 4096> bytes{};
    const std::size_t frameBytes = sizeof(float) * static_cast<std::size_t>(pcm_.channels);
    std::size_t held = 0;
    std::vector<float> samples;
    while (const std::size_t got = bytes_->Read(bytes.data() + held, bytes.size() - held)) {
        held += got;
        const std::size_t whole = held - held % frameBytes;
        samples.resize(whole / sizeof(float));
        std::memcpy(samples.data(), bytes.data(), whole);
        std::memmove(bytes.data(), bytes.data() + whole, held - whole);
        held -= whole;
        Take(samples);
    }
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
