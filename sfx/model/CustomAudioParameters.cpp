#include <sfx/model/CustomAudioParameters.h>

#include <utility>

namespace vemo::audio {

CustomAudioParameters::CustomAudioParameters() = default;

CustomAudioParameters::CustomAudioParameters(QString name, QString file, QString outputPath,
                                             QString networkPatch, int repeats, unsigned int fadeIn,
                                             unsigned int fadeOut, double volume, double reverb,
                                             double pan, CustomAudioCommand command)
    : name_(std::move(name)),
      file_(std::move(file)),
      outputPath_(std::move(outputPath)),
      networkPatch_(std::move(networkPatch)),
      repeats_(repeats),
      fadeIn_(fadeIn),
      fadeOut_(fadeOut),
      volume_(volume),
      reverb_(reverb),
      pan_(pan),
      command_(command) {}

CustomAudioParameters::CustomAudioParameters(const CustomAudioParameters& other) = default;
CustomAudioParameters::CustomAudioParameters(CustomAudioParameters&& other) noexcept = default;
CustomAudioParameters::~CustomAudioParameters() = default;

CustomAudioParameters& CustomAudioParameters::operator=(CustomAudioParameters other) noexcept {
    std::swap(name_, other.name_);
    std::swap(file_, other.file_);
    std::swap(outputPath_, other.outputPath_);
    std::swap(networkPatch_, other.networkPatch_);
    std::swap(repeats_, other.repeats_);
    std::swap(fadeIn_, other.fadeIn_);
    std::swap(fadeOut_, other.fadeOut_);
    std::swap(volume_, other.volume_);
    std::swap(reverb_, other.reverb_);
    std::swap(pan_, other.pan_);
    std::swap(command_, other.command_);
    return *this;
}

CustomAudioParameters::Builder CustomAudioParameters::builder() {
    return {};
}

CustomAudioParameters::Builder::Builder() = default;

CustomAudioParameters::Builder& CustomAudioParameters::Builder::name(const QString& name) {
    name_ = name;
    return *this;
}
CustomAudioParameters::Builder& CustomAudioParameters::Builder::file(const QString& file) {
    file_ = file;
    return *this;
}
CustomAudioParameters::Builder&
CustomAudioParameters::Builder::outputPath(const QString& outputPath) {
    outputPath_ = outputPath;
    return *this;
}
CustomAudioParameters::Builder&
CustomAudioParameters::Builder::networkPatch(const QString& networkPatch) {
    networkPatch_ = networkPatch;
    return *this;
}
CustomAudioParameters::Builder& CustomAudioParameters::Builder::repeats(int repeats) {
    repeats_ = repeats;
    return *this;
}
CustomAudioParameters::Builder& CustomAudioParameters::Builder::fadeIn(unsigned int fadeIn) {
    fadeIn_ = fadeIn;
    return *this;
}
CustomAudioParameters::Builder& CustomAudioParameters::Builder::fadeOut(unsigned int fadeOut) {
    fadeOut_ = fadeOut;
    return *this;
}
CustomAudioParameters::Builder& CustomAudioParameters::Builder::volume(double volume) {
    volume_ = volume;
    return *this;
}
CustomAudioParameters::Builder& CustomAudioParameters::Builder::reverb(double reverb) {
    reverb_ = reverb;
    return *this;
}
CustomAudioParameters::Builder& CustomAudioParameters::Builder::pan(double pan) {
    pan_ = pan;
    return *this;
}
CustomAudioParameters::Builder&
CustomAudioParameters::Builder::command(CustomAudioCommand command) {
    command_ = command;
    return *this;
}

CustomAudioParameters CustomAudioParameters::Builder::build() const {
    return {name_,    file_,   outputPath_, networkPatch_, repeats_, fadeIn_,
            fadeOut_, volume_, reverb_,     pan_,          command_};
}

} // namespace vemo::audio
