#include <sfx/player/PullDevice.h>

#include <algorithm>
#include <cstring>

namespace vemo::audio {

namespace {

// The stream's filters work chunk by chunk and their echo depends on the chunk's length. QIODevice
// gulps 16 KiB, so that is what they get, rounded up so that no frame is torn apart.
std::size_t ChunkSize(const QAudioFormat& format) {
    constexpr std::size_t Gulp = 16384;
    const auto frame = static_cast<std::size_t>(std::max(format.bytesPerFrame(), 1));
    return (Gulp + frame - 1) / frame * frame;
}

} // namespace

PullDevice::PullDevice(SfxAudioStream& stream, const QAudioFormat& format, std::int64_t bytes)
    : stream_(stream),
      chunk_(ChunkSize(format)),
      streamLeft_(bytes),
      tailLeft_(format.bytesForDuration(200'000)),
      silence_(format.sampleFormat() == QAudioFormat::UInt8 ? '\x80' : '\0') {
    open(QIODevice::ReadOnly | QIODevice::Unbuffered);
}

void PullDevice::SetTail(std::int64_t bytes) {
    tailLeft_ = bytes;
}

void PullDevice::EndStream() {
    streamEnded_ = true;
    streamLeft_ = 0;
}

void PullDevice::Detach() {
    detached_.store(true, std::memory_order_relaxed);
    exhausted_.store(true, std::memory_order_relaxed);
}

bool PullDevice::atEnd() const {
    return exhausted_.load(std::memory_order_relaxed);
}

qint64 PullDevice::bytesAvailable() const {
    return atEnd() ? 0 : streamLeft_ + tailLeft_;
}

bool PullDevice::isSequential() const {
    return true;
}

std::int64_t PullDevice::BytesRead() const {
    return bytesRead_.load(std::memory_order_relaxed);
}

qint64 PullDevice::readData(char* data, qint64 maxSize) {
    if (detached_.load(std::memory_order_relaxed))
        return 0;
    qint64 read = streamEnded_ ? 0 : ReadStream(data, maxSize);
    if (streamEnded_) {
        const qint64 quiet = std::min<qint64>(maxSize - read, tailLeft_);
        std::memset(data + read, silence_, static_cast<std::size_t>(quiet));
        tailLeft_ -= quiet;
        read += quiet;
        if (tailLeft_ == 0)
            exhausted_.store(true, std::memory_order_relaxed);
    }
    bytesRead_.fetch_add(read, std::memory_order_relaxed);
    return read;
}

qint64 PullDevice::ReadStream(char* data, qint64 maxSize) {
    qint64 read = 0;
    while (read < maxSize) {
        if (chunkPosition_ == chunkSize_) {
            chunkPosition_ = 0;
            chunkSize_ = stream_.read(chunk_.data(), static_cast<qint64>(chunk_.size()));
            if (chunkSize_ <= 0) {
                chunkSize_ = 0;
                EndStream();
                break;
            }
        }
        const qint64 part = std::min(maxSize - read, chunkSize_ - chunkPosition_);
        std::memcpy(data + read, chunk_.data() + chunkPosition_, static_cast<std::size_t>(part));
        chunkPosition_ += part;
        read += part;
    }
    streamLeft_ = std::max<std::int64_t>(streamLeft_ - read, 0);
    return read;
}

qint64 PullDevice::writeData(const char*, qint64) {
    return -1;
}

} // namespace vemo::audio
