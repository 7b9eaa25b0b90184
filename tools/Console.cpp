#include "Console.h"

#include <utility>

#include "Commands.h"
#include "OutputDevices.h"
#include "Terminal.h"
#include "ToolError.h"

namespace vemo::tool {

namespace {

constexpr int TICK_MS = 20;
// Beyond the longest fade; a dead audio server must not hold the user.
constexpr int PATIENCE_MS = 3000;

} // namespace

Console::Console(Stage& stage, ShowFile& show, const Install& install)
    : stage_(stage),
      input_(ConsoleInput::make()),
      cues_(stage, show, [this](const std::string& text) { input_->say(text); }),
      commands_(stage, show, install, cues_,
                [this](const std::string& text) { input_->say(text); }) {
    connect(input_.get(), &ConsoleInput::line, this, &Console::onLine_);
    connect(input_.get(), &ConsoleInput::ended, this, [this] { inputEnded_ = true; });
    connect(&stage_, &Stage::loaded, this, &Console::onLoaded_);
    connect(&stage_, &Stage::failed, this, [this](const QString& message, const QString& what) {
        cues_.tellFailure(message.toStdString(), what.toStdString());
    });
    connect(&interrupt_, &Interrupt::caught, this, &Console::leave_);
    connect(&timer_, &QTimer::timeout, this, &Console::tick_);
    giveUp_.setSingleShot(true);
    connect(&giveUp_, &QTimer::timeout, &loop_, &QEventLoop::quit);
}

void Console::run() {
    answer_ = commands_.execute("reload").answer;
    stage_.load();
    timer_.start(TICK_MS);
    loop_.exec();
    input_->close();
    Interrupt::checkpoint();
}

void Console::onLine_(const QString& text) {
    const ConsoleCommands::Outcome outcome = commands_.execute(text.toStdString());
    switch (outcome.after) {
    case ConsoleCommands::After::NextLine:
        input_->ask();
        break;
    case ConsoleCommands::After::Load:
        answer_ = outcome.answer;
        stage_.load();
        break;
    case ConsoleCommands::After::Quit:
        leave_();
        break;
    }
}

void Console::onLoaded_() {
    input_->say(answer_);
    if (!leaving_) {
        input_->ask();
    }
}

void Console::tick_() {
    cues_.look();
    input_->show(cues_.summary(terminalWidth() / 3));
    if (inputEnded_ && !leaving_) {
        cues_.stopEndless();
    }
    if ((inputEnded_ || leaving_) && cues_.empty()) {
        loop_.quit();
    }
}

void Console::leave_() {
    input_->close();
    if (!std::exchange(leaving_, true) && !cues_.empty()) {
        giveUp_.start(cues_.longestFadeOut() + PATIENCE_MS);
        cues_.stopAll();
    }
}

namespace {

struct Options {
    std::string show;
    std::string install;
};

ExitCode runConsole(const Options& options) {
    const Install install = Install::open(options.install);
    ShowFile show(options.show, ShowFile::Missing::Created);
    Stage stage(std::make_unique<DataRoot>(install.folder()));
    try {
        outputDevices();
    } catch (const ToolError& error) {
        complain(std::string(error.what()) + "; cues will fail until there is one");
    }
    Console(stage, show, install).run();
    return ExitCode::Ok;
}

} // namespace

void addConsoleCommand(CLI::App& app, Command& chosen) {
    CLI::App* command = app.add_subcommand(
        "console",
        "Run a show: type commands, `help` among them, while cues play; the\n"
        "prompt shows what runs. From a pipe it takes the same commands, and answers\n"
        "each with at least one line. The end of the input waits for what plays, unless\n"
        "that repeats without end.");
    const auto options = std::make_shared<Options>();
    command->add_option("SHOW", options->show, "The show file; made if there is none")->required();
    command->add_option("--install", options->install, installHelp())->type_name("FOLDER");
    command->callback([options, &chosen] { chosen = [options] { return runConsole(*options); }; });
}

} // namespace vemo::tool
