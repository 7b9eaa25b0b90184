#include <QUrl>
#include <QUuid>

#include <sfx/control/CustomAudio.h>
#include <sfx/control/DecodeThread.h>
#include <sfx/control/PlayerId.h>
#include <sfx/control/PlayerStore.h>
#include <sfx/model/CustomAudioException.h>

namespace vemo::audio {

namespace {

// The decoder never answers for a text that is no URL.
bool CanBeUserFile(const std::string& url) {
    const QUrl parsed(QString::fromStdString(url));
    return parsed.isValid() && !parsed.isEmpty();
}

} // namespace

std::vector<PlayerStore::Player> PlayerStore::Custom(const CustomAudioParameters& parameters) {
    const auto custom = CustomRecord(parameters, parameters.file().toStdString());
    std::vector<Player> players;
    const std::lock_guard lock(mutex_);
    for (PlayerEntry& entry : players_) {
        if (!PlaysCustom(*entry.player->Record(), custom))
            continue;
        // The file may be there now, or whole.
        if (dynamic_cast<UserAudioFile*>(entry.file.get()) != nullptr) {
            if (const File_ file = UserFile_(custom.effectPath()); file != entry.file)
                GiveFile_(entry, file);
        }
        players.push_back(entry.player);
    }
    if (players.empty())
        players.push_back(CreateCustom_(parameters).player);
    return players;
}

PlayerEntry& PlayerStore::CreateCustom_(const CustomAudioParameters& parameters) {
    const std::uint64_t id = NextPlayerId();
    const auto record = CustomRecord(parameters, QUuid::createUuid().toString().toStdString());
    const File_ file = UserFile_(record.effectPath());
    PlayerEntry& entry = AddPlayer_(id, record);
    if (file == nullptr)
        throw vemo::sfx::CustomAudioException(
            "error", "SFX Files Map does not contain the desired file, likely due to an issue "
                     "loading the source file.");
    GiveFile_(entry, file);
    return entry;
}

PlayerStore::File_ PlayerStore::UserFile_(const std::string& url) {
    File_ known = FindFile_(url);
    const auto* user = dynamic_cast<const UserAudioFile*>(known.get());
    if (known != nullptr && (user == nullptr || user->stage() != DecodeState::Stage::Failed))
        return known;
    if (!CanBeUserFile(url))
        return nullptr;
    const auto file = std::shared_ptr<UserAudioFile>(
        new UserAudioFile(url, DecodeThread(), wiring_.userFileFailed), DeleteLater_);
    wiring_.connectFile(*file);
    file->Start();
    return files_[url] = file;
}

} // namespace vemo::audio
