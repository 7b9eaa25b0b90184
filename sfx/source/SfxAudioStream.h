#pragma once

#include <array>
#include <cstdint>
#include <list>
#include <memory>

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
    SfxAudioStream(std::shared_ptr<sfx::SfxDto> sfx, const SfxFileInterface* file,
                   QObject* parent);
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
};

} // namespace vemo::audio
