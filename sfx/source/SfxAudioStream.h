#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <list>
#include <memory>

#include <QAudioFormat>
#include <QIODevice>

#include <sfx/export.h>
#include <sfx/model/SfxDto.h>
#include <sfx/source/SfxAudioFilterInterface.h>
#include <sfx/source/SfxFileInterface.h>

namespace vemo::audio {

/// Read-only device over the PCM of one file: repeats it as the record asks and filters every
/// chunk on the way out. It walks the file's buffer and never copies it as a whole.
///
/// Used on one thread, that of the sink that pulls from it. Reading takes no lock, allocates
/// nothing after the first read and makes no system call.
class SFX_EXPORT SfxAudioStream : public QIODevice {
    Q_OBJECT

public:
    /// Without a file the stream makes an EncryptedVorbisFile on the record's effect path, which
    /// lives for the rest of the process. A given file stays the caller's and must outlive the
    /// stream.
    SfxAudioStream(std::shared_ptr<sfx::SfxDto> sfx, const SfxFileInterface* file, QObject* parent);
    ~SfxAudioStream() override;

    /// Only QIODevice::ReadOnly is accepted. The file's PCM is taken at this moment; a file that
    /// has not reported its format is refused.
    bool open(QIODevice::OpenMode mode) override;
    /// Rewinds, then closes.
    void close() override;
    /// Bytes left of the current pass; -1 when there are none.
    qint64 bytesAvailable() const override;
    bool canReadLine() const override;

    /// Back to the first byte with all repeats; does nothing before the first open.
    void resetStream();
    /// The file's Duration().
    double duration() const;

protected:
    qint64 readData(char* data, qint64 maxSize) override;
    qint64 writeData(const char* data, qint64 size) override;

private:
    qint64 FilterData_(char* data, qint64 maxSize, qint64 offset);
    void applyFilters_(char* data, std::size_t frames, unsigned int channels);
    bool rewindAtEnd_();

    std::uint32_t repeatsLeft_ = 0;
    const char* current_ = nullptr;
    const char* begin_ = nullptr;
    const char* end_ = nullptr;
    std::list<std::shared_ptr<SfxAudioFilterInterface>> filters_;
    std::shared_ptr<sfx::SfxDto> sfx_;
    const SfxFileInterface* file_;
    QAudioFormat::SampleFormat sampleFormat_ = QAudioFormat::Int16;
    unsigned int sampleBytes_ = 2;
    std::array<std::int16_t, 16384> scratch_{};
};

} // namespace vemo::audio
