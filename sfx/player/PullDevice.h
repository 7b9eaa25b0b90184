#pragma once

#include <array>
#include <atomic>
#include <cstdint>
#include <vector>

#include <QAudioFormat>
#include <QIODevice>

#include <sfx/source/SfxAudioStream.h>

namespace vemo::audio {

/// What the sink pulls from. It forwards to the audio stream and, once that has ended, serves
/// silence for the length of the sink's buffer before it ends itself: stopping a sink drops what
/// it has buffered, and that must be nothing but silence.
///
/// Reading must not lock, allocate or call the system.
class PullDevice : public QIODevice {
    Q_OBJECT

public:
    /// `bytes` is all that `stream` will deliver, repeats included.
    PullDevice(SfxAudioStream& stream, const QAudioFormat& format, std::int64_t bytes);

    /// Length of the silence at the end; before the sink pulls for the first time.
    void SetTail(std::int64_t bytes);
    /// Lets the sound end here: from now on there is only the tail. On the sink's thread.
    void EndStream();
    /// No read reaches the stream any more and every read is at the end. Any thread.
    void Detach();

    /// True once the tail has been read. Any thread: the audio server's client asks from its own.
    bool atEnd() const override;
    /// Never more than there is, or the server waits for it in vain before it starts.
    qint64 bytesAvailable() const override;
    bool isSequential() const override;

    /// Bytes handed out so far, the tail included. Any thread.
    std::int64_t BytesRead() const;

protected:
    qint64 readData(char* data, qint64 maxSize) override;
    qint64 writeData(const char* data, qint64 size) override;

private:
    qint64 ReadStream(char* data, qint64 maxSize);

    SfxAudioStream& stream_;
    std::vector<char> chunk_;
    qint64 chunkPosition_ = 0;
    qint64 chunkSize_ = 0;
    std::int64_t streamLeft_;
    std::int64_t tailLeft_;
    bool streamEnded_ = false;
    char silence_;
    std::atomic<bool> detached_ = false;
    std::atomic<bool> exhausted_ = false;
    std::atomic<std::int64_t> bytesRead_ = 0;
};

} // namespace vemo::audio
