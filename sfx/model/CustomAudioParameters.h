#pragma once

#include <QString>

#include <sfx/export.h>

namespace vemo::audio {

/// What a host wants done with a user's audio file. The library carries the value and does not act
/// on it; a host gives the enumerators beyond the default their meaning.
enum class CustomAudioCommand : int {};

/// One custom-audio command: a user's audio file with its routing and mix. A plain value; nothing
/// is clamped or checked.
class SFX_EXPORT CustomAudioParameters {
public:
    class Builder;

    /// Empty texts, zeros everywhere, the volume included.
    CustomAudioParameters();
    CustomAudioParameters(QString name, QString file, QString outputPath, QString networkPatch,
                          int repeats, unsigned int fadeIn, unsigned int fadeOut, double volume,
                          double reverb, double pan, CustomAudioCommand command);
    CustomAudioParameters(const CustomAudioParameters& other);
    CustomAudioParameters(CustomAudioParameters&& other) noexcept;
    CustomAudioParameters& operator=(CustomAudioParameters other) noexcept;
    ~CustomAudioParameters();

    QString name() const { return name_; }
    /// Text of a URL ("file:///..."), see UserAudioFile.
    QString file() const { return file_; }
    /// Name of the output path the audio plays on.
    QString outputPath() const { return outputPath_; }
    QString networkPatch() const { return networkPatch_; }
    /// Passes after the first; -1 repeats without end.
    int repeats() const { return repeats_; }
    /// Milliseconds.
    unsigned int fadeIn() const { return fadeIn_; }
    /// Milliseconds.
    unsigned int fadeOut() const { return fadeOut_; }
    /// Linear gain, 1.0 is unity.
    double volume() const { return volume_; }
    /// Gain of the echo, 0.0 is none.
    double reverb() const { return reverb_; }
    /// 0.0 left, 0.5 centre, 1.0 right.
    double pan() const { return pan_; }
    CustomAudioCommand command() const { return command_; }

    void file(const QString& file) { file_ = file; }
    void outputPath(const QString& outputPath) { outputPath_ = outputPath; }
    void networkPatch(const QString& networkPatch) { networkPatch_ = networkPatch; }
    void repeats(int repeats) { repeats_ = repeats; }
    void fadeIn(unsigned int fadeIn) { fadeIn_ = fadeIn; }
    void fadeOut(unsigned int fadeOut) { fadeOut_ = fadeOut; }
    void volume(double volume) { volume_ = volume; }
    void reverb(double reverb) { reverb_ = reverb; }
    void pan(double pan) { pan_ = pan; }
    void commandIndex(CustomAudioCommand command) { command_ = command; }

    static Builder builder();

private:
    QString name_;
    QString file_;
    QString outputPath_;
    QString networkPatch_;
    int repeats_ = 0;
    unsigned int fadeIn_ = 0;
    unsigned int fadeOut_ = 0;
    double volume_ = 0.0;
    double reverb_ = 0.0;
    double pan_ = 0.0;
    CustomAudioCommand command_{};
};

/// Builds parameters field by field, from the same defaults. A short-lived value for one thread.
class SFX_EXPORT CustomAudioParameters::Builder {
public:
    Builder();

    Builder& name(const QString& name);
    Builder& file(const QString& file);
    Builder& outputPath(const QString& outputPath);
    Builder& networkPatch(const QString& networkPatch);
    Builder& repeats(int repeats);
    Builder& fadeIn(unsigned int fadeIn);
    Builder& fadeOut(unsigned int fadeOut);
    Builder& volume(double volume);
    Builder& reverb(double reverb);
    Builder& pan(double pan);
    Builder& command(CustomAudioCommand command);

    CustomAudioParameters build() const;

private:
    QString name_;
    QString file_;
    QString outputPath_;
    QString networkPatch_;
    int repeats_ = 0;
    unsigned int fadeIn_ = 0;
    unsigned int fadeOut_ = 0;
    double volume_ = 0.0;
    double reverb_ = 0.0;
    double pan_ = 0.0;
    CustomAudioCommand command_{};
};

} // namespace vemo::audio
