#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <utility>

#include <QAudioDecoder>
#include <QAudioFormat>
#include <QObject>

#include <sfx/export.h>
#include <sfx/model/CustomAudioException.h>
#include <sfx/source/DecodeState.h>
#include <sfx/source/SfxFileInterface.h>

namespace vemo::audio {

/// A sound file of the user's, decoded by Qt's QAudioDecoder on the thread that made it, whose
/// event loop must run. The PCM keeps whatever format the decoder delivers (often Float).
///
/// A decoder error throws vemo::sfx::CustomAudioException out of that event loop.
class SFX_EXPORT UserAudioFile : public QObject, public SfxFileInterface, public DecodeState {
    Q_OBJECT

public:
    /// `path` is the text of a URL ("file:///..."). Returns before any audio is read.
    explicit UserAudioFile(std::string path);

    /// Told of a failed decode, on the file's thread; file.failure() has the whole story.
    using FailureHandler = std::function<void(const UserAudioFile& file,
                                              const vemo::sfx::CustomAudioException& fault)>;
    /// The same, made on any thread for `home`, whose event loop runs; it decodes from Start() on.
    /// A failure, a decoder that stands still for ten seconds included, goes to the handler and is
    /// not thrown. The file is destroyed on `home` (deleteLater).
    UserAudioFile(std::string path, QThread& home, FailureHandler onFailure);
    ~UserAudioFile() override;

    /// Starts the decode of a file that was made for another thread; called once, by the thread
    /// that made it.
    void Start();

    /// Format of the PCM; invalid until the first buffer has arrived.
    QAudioFormat Format() const;
    /// Bytes of PCM received so far; tells a slow decode from one that is stuck. Any thread.
    std::uint64_t DecodedBytes() const noexcept;

    std::pair<const char*, const char*> Read() override;
    /// Real playing time in seconds; 0 until the decode is finished.
    float Duration() const override;
    unsigned int ChannelCount() const override;
    double SampleRate() const override;
    std::string Path() override;

    Stage stage() const noexcept override;
    std::string failure() const override;

Q_SIGNALS:
    /// Emitted once, when the decoder has finished.
    void isReady();

private:
    void start_();
    void fail_(const std::string& reason) const;
    void releaseDecoder_() const;
    void onBufferReady_();
    void onError_(QAudioDecoder::Error error) const;
    void onFinished_();

    struct Data;
    std::unique_ptr<Data> data_;
};

} // namespace vemo::audio
