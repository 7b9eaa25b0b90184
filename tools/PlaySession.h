#pragma once

#include <memory>
#include <vector>

#include <QEventLoop>
#include <QObject>
#include <QTimer>

#include "Interrupt.h"
#include "PlayScreen.h"
#include "PlayVoice.h"
#include "ToolError.h"

namespace vemo::tool {

/// Plays effects one after the other or together, shows them, and ends them on a signal.
class PlaySession : public QObject {
    Q_OBJECT

public:
    PlaySession(const std::vector<InstalledEffect>& effects, const PlayOptions& options);

    /// Runs until everything has ended. ToolError when an effect does not decode (Refused), nothing
    /// plays any more though it should (NoAudio), or a signal came (Interrupted).
    void run();

private:
    using Stage = audio::DecodeState::Stage;

    void awaitDecoding_();
    void tick_();
    void startDue_();
    void endOne_(PlayVoice& voice);
    void checkOverdue_(PlayVoice& voice) const;
    void onInterrupt_();
    void guarded_(void (PlaySession::*step)());

    PlayOptions options_;
    Interrupt interrupt_;
    PlayScreen screen_;
    std::vector<std::unique_ptr<PlayVoice>> waiting_;
    std::vector<std::unique_ptr<PlayVoice>> playing_;
    /// Ended voices stay: their last fade may still be on its thread.
    std::vector<std::unique_ptr<PlayVoice>> ended_;
    QTimer timer_;
    QTimer giveUp_;
    QEventLoop loop_;
    std::exception_ptr failure_;
};

} // namespace vemo::tool
