#pragma once

#include <functional>
#include <memory>
#include <string>
#include <utility>

#include <QObject>

#include <sfx/export.h>
#include <sfx/source/DecodeState.h>
#include <sfx/source/SfxFileInterface.h>

namespace vemo::audio {

/// An installed effect: an Ogg Vorbis stream of which every byte is XORed with one key byte. It
/// deciphers and decodes itself on Qt's global thread pool as soon as it is made.
///
/// A file that cannot be read or decoded stays empty for good, emits nothing, and answers Failed
/// from stage(). The accessors may be called from any thread; the object is destroyed on the
/// thread it lives in, at any time: a decode under way is not waited for.
class SFX_EXPORT EncryptedVorbisFile : public QObject, public SfxFileInterface, public DecodeState {
    Q_OBJECT

public:
    /// Returns before the file is read; nothing about the path is checked here.
    explicit EncryptedVorbisFile(std::string path);
    /// The same; `connect` runs on the caller's thread before the decode starts, so that what it
    /// connects to isReady misses nothing, however fast the decode is.
    EncryptedVorbisFile(std::string path, const std::function<void(EncryptedVorbisFile&)>& connect);
    ~EncryptedVorbisFile() override;

    /// Somebody waits for this file: its decode goes before those of all others that have not
    /// started. Any thread.
    void Expedite();

    /// Signed 16-bit PCM in native byte order.
    std::pair<const char*, const char*> Read() override;
    /// Bytes of PCM / (channels * sample rate): twice the playing time in seconds. Meant so, and
    /// relied upon by everything that compares durations.
    float Duration() const override;
    unsigned int ChannelCount() const override;
    double SampleRate() const override;
    std::string Path() override;

    Stage stage() const noexcept override;
    std::string failure() const override;

Q_SIGNALS:
    /// Emitted once, from a pool thread, when the PCM is complete.
    void isReady();

private:
    struct Decode;
    void LoadBuffer_();

    std::shared_ptr<Decode> decode_;
};

} // namespace vemo::audio
