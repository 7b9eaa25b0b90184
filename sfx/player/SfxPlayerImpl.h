#pragma once

#include <future>
#include <memory>
#include <string>

#include <QObject>
#include <QString>
#include <QThreadPool>

#include <sfx/export.h>
#include <sfx/model/SfxDto.h>
#include <sfx/player/SfxPlayerInterface.h>
#include <sfx/source/SfxFileInterface.h>

namespace vemo::audio {

class PlayerState;

/// Plays one record on the default output through QAudioSink. Each Play() is a playback of its own
/// on a thread of the playback pool.
///
/// Any thread may call any operation. A player that a std::shared_ptr owns is kept by its playbacks
/// until they are over; any other must live until Done().
class SFX_EXPORT SfxPlayerImpl : public QObject,
                                 public SfxPlayerInterface,
                                 public std::enable_shared_from_this<SfxPlayerImpl> {
    Q_OBJECT

public:
    /// `playbackPool` runs playbacks and fades, `stopPool` the work of stop requests.
    SfxPlayerImpl(sfx::SfxDto sfx, std::shared_ptr<QThreadPool> playbackPool,
                  std::shared_ptr<QThreadPool> stopPool, QObject* parent);
    ~SfxPlayerImpl() override;

    /// The file that the next Play() sounds; not owned, it must live until Done(). It may still be
    /// decoding. The record's effect path becomes the file's path.
    void SetFile(SfxFileInterface* file);
    /// The same for a file that player and playbacks keep for as long as they need it.
    void SetFile(const std::shared_ptr<SfxFileInterface>& file);
    /// The record as it is now, and will stay.
    std::shared_ptr<const sfx::SfxDto> Record() const;

    void Play() override;
    void Stop(bool urgent) override;
    void Stop() override;
    void SetOutputDevice(const wchar_t* deviceId) override;
    void SetVolume(float volume) override;
    float Volume() override;
    void SetReverb(float reverb) override;
    void SetPan(float pan) override;
    void SetSfxPath(const std::string& path) override;
    void ReplaceSfxData(const sfx::SfxDto& other) override;
    float GetDuration() override;
    void FadeTo(float volume, unsigned int duration) override;
    bool Done() override;
    void WaitUntilDone() override;
    bool PlaysSameSfx(const sfx::SfxDto& other) override;
    const sfx::SfxDto* SfxData() const override;

Q_SIGNALS:
    void cancelSfx(bool isUrgent);
    /// Carries the record's event id. From a pool thread, once when a playback ends and once more
    /// when a stopping fade ends.
    void sfxFinished(QString);
    void sfxFileRequested(const std::string& effectId,
                          std::promise<const SfxFileInterface*>& sfxFile);
    void fadeRequested(VolumeType volume, FadeType duration, bool stopAfterFade);
    void fadeSuspensionRequested();
    void fadeResumeRequested();
    void fadeCancellationRequested();

private:
    void ConnectPlaybacks();

    std::unique_ptr<PlayerState> state_;
};

} // namespace vemo::audio
