#include "LineEditor.h"

#include <algorithm>
#include <array>
#include <cwchar>
#include <iostream>
#include <poll.h>
#include <unistd.h>

#include <QDir>
#include <QFile>

#include "Terminal.h"

namespace vemo::tool {

namespace {

constexpr int HISTORY_LENGTH = 1000;
// The keys that send several bytes send them at once; a lone escape must not hold the event loop.
constexpr int REST_OF_A_KEY_MS = 50;
constexpr char END_OF_INPUT = '\x04';

/// Empty when there is no place for it: the history then ends with the program.
std::string historyPath() {
    QString state = QString::fromUtf8(qgetenv("XDG_STATE_HOME"));
    if (!QDir::isAbsolutePath(state)) {
        state = QDir::homePath() + QStringLiteral("/.local/state");
    }
    const QString folder = state + QStringLiteral("/vemo-sfx");
    return QDir().mkpath(folder)
               ? QFile::encodeName(folder + QStringLiteral("/history")).toStdString()
               : std::string();
}

bool comes(int timeoutMs) {
    pollfd input{STDIN_FILENO, POLLIN, 0};
    return ::poll(&input, 1, timeoutMs) > 0;
}

} // namespace

LineEditor::LineEditor()
    : notifier_(STDIN_FILENO, QSocketNotifier::Read),
      history_(history_init()),
      editor_(el_init("vemo-sfx", stdin, stdout, stderr)),
      historyFile_(historyPath()),
      promptText_(PROMPT) {
    notifier_.setEnabled(false);
    connect(&notifier_, &QSocketNotifier::activated, this, [this] { onKey_(); });
    HistEvent event{};
    history(history_.get(), &event, H_SETSIZE, HISTORY_LENGTH);
    history(history_.get(), &event, H_SETUNIQUE, 1);
    if (!historyFile_.empty()) {
        history(history_.get(), &event, H_LOAD, historyFile_.c_str());
    }
    EditLine* const editor = editor_.get();
    el_set(editor, EL_CLIENTDATA, this);
    el_set(editor, EL_PROMPT, &LineEditor::prompt_);
    el_set(editor, EL_EDITOR, "emacs");
    el_set(editor, EL_HIST, history, history_.get());
    el_set(editor, EL_GETCFN, &LineEditor::readCharacter);
    el_source(editor, nullptr);
}

LineEditor::~LineEditor() {
    finish_();
}

void LineEditor::ask() {
    el_set(editor_.get(), EL_UNBUFFERED, 1); // shows the prompt
    editing_ = true;
    notifier_.setEnabled(true);
}

void LineEditor::close() {
    if (editing_) {
        wipe_();
    }
    finish_();
}

void LineEditor::finish_() {
    notifier_.setEnabled(false);
    if (editing_) {
        editing_ = false;
        el_set(editor_.get(), EL_UNBUFFERED, 0);
    }
}

LineEditor& LineEditor::of_(EditLine* editor) {
    LineEditor* self = nullptr;
    el_get(editor, EL_CLIENTDATA, &self);
    return *self;
}

char* LineEditor::prompt_(EditLine* editor) {
    return of_(editor).promptText_.data();
}

int LineEditor::readCharacter(EditLine* editor, wchar_t* character) {
    std::mbstate_t state{};
    while (comes(REST_OF_A_KEY_MS)) {
        char byte = 0;
        if (::read(STDIN_FILENO, &byte, 1) != 1) {
            of_(editor).hungUp_ = true;
            return 0;
        }
        // Safe with a state of its own: NOLINTNEXTLINE(concurrency-mt-unsafe)
        const std::size_t used = std::mbrtowc(character, &byte, 1, &state);
        if (used == static_cast<std::size_t>(-1)) {
            *character = L'\uFFFD';
            return 1;
        }
        if (used != static_cast<std::size_t>(-2)) {
            return 1;
        }
    }
    return 0;
}

void LineEditor::onKey_() {
    int length = 0;
    const char* const typed = el_gets(editor_.get(), &length);
    // The line before may still stand behind the length.
    const std::string text =
        typed && length > 0 ? std::string(typed, static_cast<std::size_t>(length)) : std::string();
    if (hungUp_ || text.ends_with(END_OF_INPUT)) {
        finish_();
        std::cout << '\n' << std::flush;
        Q_EMIT ended();
    } else if (text.ends_with('\n') || text.ends_with('\r')) {
        finish_();
        const std::string whole = text.substr(0, text.size() - 1);
        remember_(whole);
        Q_EMIT line(QString::fromStdString(whole));
    }
}

void LineEditor::remember_(const std::string& line) {
    if (line.find_first_not_of(' ') == std::string::npos) {
        return;
    }
    HistEvent event{};
    history(history_.get(), &event, H_ENTER, line.c_str());
    if (!historyFile_.empty()) {
        history(history_.get(), &event, H_SAVE, historyFile_.c_str());
    }
}

// Takes prompt and line off the terminal, however many rows they take.
void LineEditor::wipe_() {
    const LineInfo* const line = el_line(editor_.get());
    const std::string before(line->buffer, line->cursor);
    const std::size_t rows = (displayWidth(promptText_) + displayWidth(before)) / terminalWidth();
    if (rows > 0) {
        std::cout << "\x1b[" << rows << 'A';
    }
    std::cout << "\r\x1b[J" << std::flush;
}

void LineEditor::say(const std::string& text) {
    if (editing_) {
        wipe_();
    }
    std::cout << text << '\n' << std::flush;
    drawAgain_();
}

void LineEditor::show(const std::string& state) {
    const std::string shown = state.empty() ? PROMPT : "[" + state + "] " + PROMPT;
    if (shown == promptText_) {
        return;
    }
    if (editing_) {
        wipe_();
    }
    promptText_ = shown;
    drawAgain_();
}

void LineEditor::drawAgain_() {
    if (editing_) {
        el_resize(editor_.get());
        el_set(editor_.get(), EL_REFRESH);
    }
}

} // namespace vemo::tool
