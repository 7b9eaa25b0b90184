#pragma once

#include <memory>
#include <optional>
#include <vector>

#include <QEventLoop>
#include <QObject>
#include <QTimer>

#include "Interrupt.h"
#include "PlayScreen.h"
#include "ToolError.h"
#include "Voice.h"

namespace vemo::tool {

struct PlayOrder {
    /// Seconds from the start of each voice.
    std::optional<double> stopAfter;
    bool together = false;
};

/// Plays voices one after the other or together, shows them, and ends them on a signal.
class PlaySession : public QObject {
    Q_OBJECT

public:
    PlaySession(std::vector<std::unique_ptr<Voice>> voices, const PlayOrder& order);

    /// Runs until everything has ended. ToolError when a voice cannot sound (Refused), nothing
    /// plays any more though it should (NoAudio), or a signal came (Interrupted).
    void run();

private:
    void awaitReady_();
    void tick_();
    void startDue_();
    void endOne_(Voice& voice);
    void checkOverdue_(const Voice& voice) const;
    void onInterrupt_();
    void guarded_(void (PlaySession::*step)());

    PlayOrder order_;
    Interrupt interrupt_;
    PlayScreen screen_;
    std::vector<std::unique_ptr<Voice>> waiting_;
    std::vector<std::unique_ptr<Voice>> playing_;
    /// Ended voices stay: their last fade may still be on its thread.
    std::vector<std::unique_ptr<Voice>> ended_;
    QTimer timer_;
    QTimer giveUp_;
    QEventLoop loop_;
    std::exception_ptr failure_;
};

} // namespace vemo::tool
