#pragma once

#include <atomic>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>

#include <QObject>
#include <QPointer>
#include <QString>
#include <QTimer>

#include <sfx/control/SfxPlayerController.h>
#include <sfx/model/CustomAudioParameters.h>
#include <sfx/player/SfxPlayerImpl.h>

#include "DataRoot.h"

namespace vemo::tool {

/// The library's controller with the events of the active change log. One per process, on the main
/// thread.
class Stage : public QObject {
    Q_OBJECT

public:
    /// ToolError (NoInstall) when the library refuses the install.
    explicit Stage(std::unique_ptr<DataRoot> install);

    audio::SfxPlayerController& controller() { return *controller_; }
    /// Brings the players in line with the events, in the background; loaded() follows.
    void load();
    bool loading() const { return timer_.isActive(); }
    /// The same, and runs the event loop until it is done.
    void loadAndWait();

    using Player = QPointer<audio::SfxPlayerImpl>;
    /// Null for an id that no player has.
    Player player(std::uint64_t id);
    bool hasPlayerOf(const std::string& eventId);
    /// The player of these parameters, which play() has just made or found.
    std::optional<std::uint64_t> playerOf(const audio::CustomAudioParameters& parameters);

Q_SIGNALS:
    void loaded();
    /// Something failed that nobody waits for; `what` names it.
    void failed(QString message, QString what);

private:
    class Repository;

    void look_();

    std::unique_ptr<DataRoot> install_;
    /// How often a reload has read the events, which it does twice.
    std::shared_ptr<std::atomic<unsigned int>> reads_;
    unsigned int readsAwaited_ = 0;
    std::unique_ptr<audio::SfxPlayerController> controller_;
    QTimer timer_;
};

} // namespace vemo::tool
