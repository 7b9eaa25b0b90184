#include <sfx/manager/SfxManager.h>

#include <cstdint>
#include <exception>
#include <iostream>
#include <limits>
#include <stdexcept>
#include <string>
#include <utility>

#include <sfx/catalogue/ManifestDocument.h>
#include <sfx/control/GetSfxPlayer.h>
#include <sfx/manager/ManagedSfxPlayer.h>
#include <sfx/model/SfxException.h>

namespace vemo::audio {

namespace {

constexpr int AmbientFadeMs = 1000;

bool PlaysSame(SfxPlayerInterface& player, const sfx::SfxDto& record) {
    try {
        return player.PlaysSameSfx(record);
    } catch (const SfxException&) {
        return false; // the controller has removed that player
    }
}

} // namespace

SfxManager::SfxManager() {
    try {
        // Without a manifest one line says it for both lists.
        if (Populate_(PRIMARY))
            Populate_(AMBIENT);
    } catch (const std::exception& fault) {
        std::cout << "The Population of SFX Manager has failed: " << fault.what() << "\n"
                  << std::flush;
    }
}

SfxManager::~SfxManager() = default;

bool SfxManager::Populate_(SfxType type) {
    const auto manifest = vemo::sfx::ManifestDocument::OpenInstalled();
    if (!manifest) {
        listLoaded_ = true;
        return false;
    }
    sfx::SfxVector& list = type == PRIMARY ? effects_ : ambients_;
    list = sfx::SfxVector();
    manifest->ResizeToDeclaredCount(type, list);
    manifest->RequireSupportedVersion();
    manifest->ForEachEffect(type, [&list](const vemo::sfx::ManifestEffect& effect) {
        const std::string id = effect.Id();
        const std::string path = effect.FullPath();
        list.Add(id.c_str());
        list.SetPath(list.Count() - 1, path.c_str());
    });
    listLoaded_ = true;
    return true;
}

int SfxManager::AddPath(const AudioPath& path) {
    const int id = pathManager_.AddPath(path);
    pathIds_[core::DataVector(path.Name())] = id;
    return id;
}

int SfxManager::AddPlayer(std::unique_ptr<SfxPlayerInterface> player) {
    const int id = nextPlayerId_++;
    players_[id] = std::make_unique<ManagedSfxPlayer>(std::move(player));
    return id;
}

int SfxManager::AddPlayer(sfx::SfxDto record) {
    for (const auto& [id, managed] : players_) {
        if (managed && PlaysSame(managed->Player(), record))
            return id;
    }
    const sfx::SfxVector& list = record.type() == PRIMARY ? effects_ : ambients_;
    if (list.Find(record.effectId().c_str()) == std::numeric_limits<std::size_t>::max())
        return -1;
    const int id = nextPlayerId_++;
    auto managed = std::make_unique<ManagedSfxPlayer>(
        std::unique_ptr<SfxPlayerInterface>(sfx::GetSfxPlayer(record)));
    managed->Type();
    // An empty entry, left by a call with this id before it was given, stays empty. Meant so.
    players_.emplace(id, std::move(managed));
    return id;
}

void SfxManager::ForEach_(const std::function<void(int, ManagedSfxPlayer&)>& visit) const {
    for (const auto& [id, managed] : players_) {
        if (managed)
            visit(id, *managed);
    }
}

void SfxManager::ForEachPlayer(const std::function<void(int)>& visit) {
    ForEach_([&visit](int id, ManagedSfxPlayer&) { visit(id); });
}

sfx::SfxVector& SfxManager::GetSfxList() {
    if (!listLoaded_)
        Populate_(PRIMARY);
    return effects_;
}

sfx::SfxVector& SfxManager::GetAmbientList() {
    if (ambients_.Count() == 0)
        Populate_(AMBIENT);
    return ambients_;
}

int SfxManager::GetPathIdType(core::DataVector name) {
    return pathIds_[std::move(name)];
}

const AudioPathManager& SfxManager::GetPathManager() const {
    return pathManager_;
}

const sfx::SfxDto& SfxManager::GetSfxDto(int playerId) const {
    const auto found = players_.find(playerId);
    if (found == players_.end() || !found->second)
        throw std::out_of_range("invalid map<K, T> key");
    return *found->second->Player().SfxData();
}

ManagedSfxPlayer& SfxManager::Player_(int playerId) {
    const auto& managed = players_[playerId];
    if (!managed)
        throw std::out_of_range("No player has the id " + std::to_string(playerId));
    return *managed;
}

void SfxManager::Play(int playerId, int fadeMs) {
    if (playerId != -1)
        Player_(playerId).Play(fadeMs);
}

void SfxManager::Stop(int playerId, int /*fadeMs*/) {
    Player_(playerId).Stop(0);
}

void SfxManager::SetAmbient(int playerId) {
    if (!ambientActive_) {
        Play(playerId, AmbientFadeMs);
        ambientActive_ = true;
        currentAmbient_ = playerId;
    } else if (currentAmbient_ != playerId) {
        Stop(currentAmbient_, AmbientFadeMs);
        currentAmbient_ = playerId;
        Play(playerId, AmbientFadeMs);
    }
}

void SfxManager::SetPlayerOutputPath(int playerId, int pathId) {
    ManagedSfxPlayer& managed = Player_(playerId);
    const wchar_t* device = nullptr;
    try {
        device = pathManager_.GetDeviceIdFromPathId(pathId);
    } catch (const std::exception&) {
        return;
    }
    managed.Player().SetOutputDevice(device);
}

void SfxManager::StopAllEffects() {
    ForEach_([](int, ManagedSfxPlayer& managed) { managed.Stop(0); });
}

void SfxManager::StopAmbient() {
    if (ambientActive_)
        Stop(currentAmbient_, AmbientFadeMs);
}

void SfxManager::StopType_(SfxType type) {
    ForEach_([type](int, ManagedSfxPlayer& managed) {
        if (managed.Type() == type)
            managed.Stop(0);
    });
}

void SfxManager::StopAmbientEffects() {
    StopType_(AMBIENT);
}

void SfxManager::StopPrimaryEffects() {
    StopType_(PRIMARY);
}

void SfxManager::WaitForAllToComplete() {
    ForEach_([](int, ManagedSfxPlayer& managed) { managed.WaitUntilDone(); });
}

} // namespace vemo::audio
