#include <sfx/control/SfxPlayer.h>

#include <string>

#include <sfx/control/GetSfxPlayer.h>
#include <sfx/control/SfxPlayerProxy.h>
#include <sfx/model/SfxException.h>

namespace vemo::audio {

namespace {

const std::string NoImplementation = "No SFX Implementation Available"; // NOLINT(cert-err58-cpp)

} // namespace

SfxPlayer::SfxPlayer(const sfx::SfxDto& record)
    : player_(std::make_unique<SfxPlayerProxy>(record, nullptr)) {}

SfxPlayer::SfxPlayer(SfxPlayer&& other) noexcept = default;
SfxPlayer& SfxPlayer::operator=(SfxPlayer&& other) noexcept = default;
SfxPlayer::~SfxPlayer() = default;

SfxPlayerInterface& SfxPlayer::Player_() const {
    if (player_ == nullptr)
        throw SfxException(NoImplementation.c_str());
    return *player_;
}

void SfxPlayer::Play() {
    Player_().Play();
}

void SfxPlayer::Stop(bool urgent) {
    Player_().Stop(urgent);
}

void SfxPlayer::Stop() {
    Player_().Stop();
}

void SfxPlayer::SetOutputDevice(const wchar_t* deviceId) {
    Player_().SetOutputDevice(deviceId);
}

void SfxPlayer::SetVolume(float volume) {
    Player_().SetVolume(volume);
}

float SfxPlayer::Volume() {
    return Player_().Volume();
}

void SfxPlayer::SetReverb(float reverb) {
    Player_().SetReverb(reverb);
}

void SfxPlayer::SetPan(float pan) {
    Player_().SetPan(pan);
}

void SfxPlayer::SetSfxPath(const std::string& path) {
    Player_().SetSfxPath(path);
}

void SfxPlayer::ReplaceSfxData(const sfx::SfxDto& other) {
    Player_().ReplaceSfxData(other);
}

float SfxPlayer::GetDuration() {
    return Player_().GetDuration();
}

void SfxPlayer::FadeTo(float volume, unsigned int duration) {
    Player_().FadeTo(volume, duration);
}

bool SfxPlayer::Done() {
    return Player_().Done();
}

void SfxPlayer::WaitUntilDone() {
    Player_().WaitUntilDone();
}

bool SfxPlayer::PlaysSameSfx(const sfx::SfxDto& other) {
    return Player_().PlaysSameSfx(other);
}

const sfx::SfxDto* SfxPlayer::SfxData() const {
    return Player_().SfxData();
}

namespace sfx {

SfxPlayerInterface* GetSfxPlayer(const SfxDto& record) {
    return new SfxPlayer(record);
}

} // namespace sfx

} // namespace vemo::audio
