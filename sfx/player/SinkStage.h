#pragma once

#include <cstdint>
#include <memory>

#include <QAudio>
#include <QAudioDevice>
#include <QAudioFormat>
#include <QAudioSink>
#include <QEventLoop>

#include <sfx/model/SfxDto.h>
#include <sfx/player/PullDevice.h>
#include <sfx/player/SinkLink.h>
#include <sfx/source/ComApartment.h>
#include <sfx/source/SfxAudioStream.h>
#include <sfx/source/SfxFileInterface.h>

namespace vemo::audio {

class Playback;

/// The part of a playback that lives on its thread: waits for the file, opens stream and sink,
/// and runs the event loop until the sound is over or lost.
class SinkStage {
public:
    explicit SinkStage(Playback& playback);
    SinkStage(const SinkStage&) = delete;
    SinkStage& operator=(const SinkStage&) = delete;
    ~SinkStage();

    /// Returns when there is nothing more to hear.
    void Sound();
    /// Stops the sink and closes the stream.
    void Close();

private:
    std::shared_ptr<SfxFileInterface> WaitForFile();
    bool Open(SfxFileInterface& file);
    QAudioFormat FormatOf(const SfxFileInterface& file) const;
    void Start();
    void OnStateChanged(QAudio::State state);
    void OnTick();
    /// Why the output cannot be counted on any more; null while all is well.
    const char* Fault();
    void End();

    Playback& playback_;
    ComApartment com_;
    QEventLoop loop_;
    bool ended_ = false;
    unsigned int ticks_ = 0;
    unsigned int quietTicks_ = 0;
    std::int64_t bytesSeen_ = 0;
    QAudioDevice output_;
    QAudioFormat format_;
    std::shared_ptr<sfx::SfxDto> record_;
    std::shared_ptr<SfxFileInterface> file_;
    // The sink goes first, then what it pulls from.
    std::unique_ptr<SfxAudioStream> stream_;
    std::unique_ptr<PullDevice> device_;
    std::unique_ptr<QAudioSink> sink_;
    std::shared_ptr<SinkLink> link_;
};

} // namespace vemo::audio
