#pragma once

#include <memory>
#include <string>

#include <QSocketNotifier>

#include <histedit.h>

#include "ConsoleInput.h"

namespace vemo::tool {

/// Lines typed at a terminal, with editing and a history that outlives the program, through
/// libedit. It reads a key whenever one is there, so the event loop runs while the user types.
class LineEditor : public ConsoleInput {
    Q_OBJECT

public:
    LineEditor();
    ~LineEditor() override;

    void ask() override;
    void say(const std::string& text) override;
    /// In front of the prompt.
    void show(const std::string& state) override;
    void close() override;

private:
    struct End {
        void operator()(EditLine* editor) const { el_end(editor); }
        void operator()(History* history) const { history_end(history); }
    };

    static LineEditor& of_(EditLine* editor);
    static char* prompt_(EditLine* editor);
    static int readCharacter(EditLine* editor, wchar_t* character);
    void onKey_();
    void finish_();
    void wipe_();
    void drawAgain_();
    void remember_(const std::string& line);

    QSocketNotifier notifier_;
    std::unique_ptr<History, End> history_;
    std::unique_ptr<EditLine, End> editor_;
    std::string historyFile_;
    std::string promptText_;
    bool editing_ = false;
    /// The terminal is gone.
    bool hungUp_ = false;
};

} // namespace vemo::tool
