#pragma once

#include <memory>

#include <QEventLoop>
#include <QObject>
#include <QTimer>

#include "ConsoleCommands.h"
#include "ConsoleInput.h"
#include "CueList.h"
#include "Interrupt.h"

namespace vemo::tool {

/// Runs a show: takes commands, and tells what becomes of the cues.
class Console : public QObject {
    Q_OBJECT

public:
    Console(Stage& stage, ShowFile& show, const Install& install);

    /// Until the user or the input ends it. ToolError (Interrupted) when a signal does.
    void run();

private:
    void onLine_(const QString& text);
    void onLoaded_();
    void tick_();
    void leave_();

    Stage& stage_;
    Interrupt interrupt_;
    std::unique_ptr<ConsoleInput> input_;
    CueList cues_;
    ConsoleCommands commands_;
    std::string answer_;
    bool inputEnded_ = false;
    bool leaving_ = false;
    QTimer timer_;
    QTimer giveUp_;
    QEventLoop loop_;
};

} // namespace vemo::tool
