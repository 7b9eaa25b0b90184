#include <sfx/control/SfxPlayerControllerImpl.h>

#include <algorithm>
#include <cmath>
#include <exception>
#include <limits>
#include <stdexcept>

#include <QDebug>

#include <sfx/control/CustomAudio.h>
#include <sfx/control/PlayerStore.h>
#include <sfx/control/ThreadWatch.h>

namespace vemo::audio {

namespace {

PlayerStore::Predicate NamedBy(const std::string& request) {
    return [&request](const sfx::SfxDto& record) {
        return record.name() == request || record.eventId() == request;
    };
}

bool Every(const sfx::SfxDto&) {
    return true;
}

} // namespace

void SfxPlayerControllerImpl::play(const CustomAudioParameters& parameters) {
    for (const auto& player : store_->Custom(parameters))
        player->Play();
}

std::uint64_t SfxPlayerControllerImpl::play(const std::string& request) {
    // The first request of a host that reports no changes. It does not wait, so it finds nothing
    // yet; unlike a reload it removes nothing. Both meant so.
    if (store_->Empty())
        StartInBackground_(&SfxPlayerControllerImpl::loadSfx);
    const auto named = store_->Matching(NamedBy(request));
    for (const PlayerEntry& entry : named)
        entry.player->Play();
    if (!named.empty())
        return named.back().id;
    try {
        const std::uint64_t id = std::stoull(request);
        if (!play(id))
            throw std::runtime_error("Invalid sound effect id");
        return id;
    } catch (const std::invalid_argument&) {
        qDebug() << "Invalid request from OSC: cannot play sound effect player with event id"
                 << request.c_str();
    } catch (const std::runtime_error& fault) {
        qDebug() << fault.what();
    }
    return 0;
}

bool SfxPlayerControllerImpl::play(std::uint64_t playerId) {
    store_->At(playerId)->Play();
    return true;
}

void SfxPlayerControllerImpl::stop(bool isUrgent) {
    for (const auto& player : store_->MatchingOrSounding(Every))
        player->Stop(isUrgent);
}

void SfxPlayerControllerImpl::stop(const CustomAudioParameters& parameters) {
    const auto custom = CustomRecord(parameters, parameters.file().toStdString());
    const auto ofParameters = [&custom](const sfx::SfxDto& record) {
        return record.type() == USER_PROVIDED && PlaysCustom(record, custom);
    };
    for (const auto& player : store_->MatchingOrSounding(ofParameters))
        player->Stop();
}

void SfxPlayerControllerImpl::stop(const std::string& request) {
    const auto named = store_->MatchingOrSounding(NamedBy(request));
    for (const auto& player : named)
        player->Stop();
    if (!named.empty())
        return;
    try {
        stop(std::uint64_t{std::stoull(request)});
    } catch (const std::invalid_argument&) {
        // Everything else reaches the caller, unlike in play(). Meant so.
        qDebug() << "Invalid request from OSC: cannot stop sound effect player with id"
                 << request.c_str();
    }
}

void SfxPlayerControllerImpl::stop(std::uint64_t playerId) {
    store_->AtOrSounding(playerId)->Stop();
}

void SfxPlayerControllerImpl::stop() {
    stop(false);
}

float SfxPlayerControllerImpl::GetDuration(std::uint64_t playerId) {
    return store_->At(playerId)->GetDuration();
}

void SfxPlayerControllerImpl::SetOutputDevice(std::uint64_t playerId, const wchar_t* deviceId) {
    store_->At(playerId)->SetOutputDevice(deviceId);
}

void SfxPlayerControllerImpl::SetVolume(std::uint64_t playerId, float volume) {
    store_->At(playerId)->SetVolume(volume);
}

float SfxPlayerControllerImpl::Volume(std::uint64_t playerId) {
    return store_->At(playerId)->Volume();
}

void SfxPlayerControllerImpl::SetReverb(std::uint64_t playerId, float reverb) {
    store_->At(playerId)->SetReverb(reverb);
}

void SfxPlayerControllerImpl::SetPan(std::uint64_t playerId, float pan) {
    store_->At(playerId)->SetPan(pan);
}

void SfxPlayerControllerImpl::SetSfxPath(std::uint64_t playerId, const std::string& path) {
    store_->At(playerId)->SetSfxPath(path);
}

bool SfxPlayerControllerImpl::Done(std::uint64_t playerId) {
    return store_->At(playerId)->Done();
}

void SfxPlayerControllerImpl::WaitUntilDone(std::uint64_t playerId) {
    store_->At(playerId)->WaitUntilDone();
}

bool SfxPlayerControllerImpl::PlaysSameSfx(std::uint64_t playerId, const sfx::SfxDto& record) {
    return store_->At(playerId)->PlaysSameSfx(record);
}

std::optional<const sfx::SfxDto*> SfxPlayerControllerImpl::SfxData(std::uint64_t playerId) {
    return store_->At(playerId)->SfxData();
}

std::optional<SfxPlayerInterface*> SfxPlayerControllerImpl::GetPlayer(const std::string& eventId) {
    const auto matching = store_->Matching(
        [&eventId](const sfx::SfxDto& record) { return record.eventId() == eventId; });
    if (matching.empty())
        return std::nullopt;
    return matching.back().player.get();
}

std::optional<SfxPlayerInterface*> SfxPlayerControllerImpl::GetPlayer(std::uint64_t playerId) {
    return store_->At(playerId).get();
}

void SfxPlayerControllerImpl::PreloadFile(const std::string& path) {
    if (!store_->Preload(path))
        ReportError_(QStringLiteral("warning"),
                     QStringLiteral("The text is not the URL of an audio file"),
                     QString::fromStdString(path));
}

void SfxPlayerControllerImpl::FadeTo(std::string eventId, float volume, float duration) {
    constexpr auto Longest = std::numeric_limits<unsigned int>::max();
    const double milliseconds = std::isnan(duration) ? 0.0 : static_cast<double>(duration);
    const auto bounded = std::clamp(milliseconds, 0.0, static_cast<double>(Longest));
    if (const auto player = store_->OfEvent(eventId))
        player->FadeTo(volume, static_cast<unsigned int>(bounded));
}

bool SfxPlayerControllerImpl::HoldsPlayer(std::uint64_t playerId) const {
    return store_->Holds(playerId);
}

bool SfxPlayerControllerImpl::ThreadEnded() const {
    return thread_->Ended();
}

} // namespace vemo::audio
