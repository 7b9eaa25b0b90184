#include <sfx/control/SfxPlayerController.h>

#include <utility>

#include <sfx/control/SfxPlayerControllerImpl.h>

namespace vemo::audio {

// Without a controller every operation does nothing and answers the empty value.

SfxPlayerController::SfxPlayerController(std::unique_ptr<SfxRepository>& repository)
    : impl_(SfxPlayerControllerImpl::instance(repository)) {}

SfxPlayerController::SfxPlayerController() : impl_(nullptr) {
    std::unique_ptr<SfxRepository> none;
    impl_ = SfxPlayerControllerImpl::instance(none);
}

SfxPlayerController::~SfxPlayerController() = default;

void SfxPlayerController::play(const CustomAudioParameters& parameters) {
    if (impl_ != nullptr)
        impl_->play(parameters);
}

std::uint64_t SfxPlayerController::play(const std::string& request) {
    return impl_ == nullptr ? 0 : impl_->play(request);
}

bool SfxPlayerController::play(std::uint64_t playerId) {
    return impl_ == nullptr ? false : impl_->play(playerId);
}

void SfxPlayerController::stop(bool isUrgent) {
    if (impl_ != nullptr)
        impl_->stop(isUrgent);
}

void SfxPlayerController::stop(const CustomAudioParameters& parameters) {
    if (impl_ != nullptr)
        impl_->stop(parameters);
}

void SfxPlayerController::stop(const std::string& request) {
    if (impl_ != nullptr)
        impl_->stop(request);
}

void SfxPlayerController::stop(std::uint64_t playerId) {
    if (impl_ != nullptr)
        impl_->stop(playerId);
}

void SfxPlayerController::stop() {
    if (impl_ != nullptr)
        impl_->stop();
}

float SfxPlayerController::GetDuration(std::uint64_t playerId) {
    return impl_ == nullptr ? 0.0F : impl_->GetDuration(playerId);
}

void SfxPlayerController::SetOutputDevice(std::uint64_t playerId, const wchar_t* deviceId) {
    if (impl_ != nullptr)
        impl_->SetOutputDevice(playerId, deviceId);
}

void SfxPlayerController::SetVolume(std::uint64_t playerId, float volume) {
    if (impl_ != nullptr)
        impl_->SetVolume(playerId, volume);
}

float SfxPlayerController::Volume(std::uint64_t playerId) {
    return impl_ == nullptr ? 0.0F : impl_->Volume(playerId);
}

void SfxPlayerController::SetReverb(std::uint64_t playerId, float reverb) {
    if (impl_ != nullptr)
        impl_->SetReverb(playerId, reverb);
}

void SfxPlayerController::SetPan(std::uint64_t playerId, float pan) {
    if (impl_ != nullptr)
        impl_->SetPan(playerId, pan);
}

void SfxPlayerController::SetSfxPath(std::uint64_t playerId, const std::string& path) {
    if (impl_ != nullptr)
        impl_->SetSfxPath(playerId, path);
}

bool SfxPlayerController::Done(std::uint64_t playerId) {
    return impl_ == nullptr ? false : impl_->Done(playerId);
}

void SfxPlayerController::WaitUntilDone(std::uint64_t playerId) {
    if (impl_ != nullptr)
        impl_->WaitUntilDone(playerId);
}

bool SfxPlayerController::PlaysSameSfx(std::uint64_t playerId, const sfx::SfxDto& record) {
    return impl_ == nullptr ? false : impl_->PlaysSameSfx(playerId, record);
}

std::optional<const sfx::SfxDto*> SfxPlayerController::SfxData(std::uint64_t playerId) {
    return impl_ == nullptr ? std::nullopt : impl_->SfxData(playerId);
}

std::optional<SfxPlayerInterface*> SfxPlayerController::GetPlayer(const std::string& eventId) {
    return impl_ == nullptr ? std::nullopt : impl_->GetPlayer(eventId);
}

std::optional<SfxPlayerInterface*> SfxPlayerController::GetPlayer(std::uint64_t playerId) {
    return impl_ == nullptr ? std::nullopt : impl_->GetPlayer(playerId);
}

void SfxPlayerController::PreloadFile(const std::string& path) {
    if (impl_ != nullptr)
        impl_->PreloadFile(path);
}

void SfxPlayerController::FadeTo(std::string eventId, float volume, float duration) {
    if (impl_ != nullptr)
        impl_->FadeTo(std::move(eventId), volume, duration);
}

} // namespace vemo::audio
