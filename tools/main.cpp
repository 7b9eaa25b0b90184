#include <algorithm>
#include <iostream>

#include <QCoreApplication>

#include "Commands.h"
#include "LibraryLog.h"
#include "System.h"
#include "Terminal.h"

namespace vemo::tool {

namespace {

constexpr char DESCRIPTION[] =
    "Sound effects at the command line: make an install folder, check it, list it, play from it,\n"
    "and run a show of events that play its effects.";

constexpr char EXIT_CODES[] = "Exit codes:\n"
                              "  0    done\n"
                              "  1    a check failed: faults found, an input or a show file "
                              "refused, output that cannot be written\n"
                              "  2    usage: an unknown option, a value out of range\n"
                              "  3    no install at that place, or a manifest that cannot be used\n"
                              "  4    unknown effect, event or cue\n"
                              "  5    no audio output device, or the playback broke off\n"
                              "  130  interrupted (SIGINT, SIGTERM)\n";

ExitCode run(std::vector<std::string> arguments) {
    CLI::App app(DESCRIPTION, "vemo-sfx");
    app.footer(EXIT_CODES);
    app.set_version_flag("--version", "vemo-sfx " VEMO_SFX_VERSION);
    app.add_flag_callback("--verbose", showLog, "Show the log of Qt and of the library on stderr");
    app.allow_windows_style_options(false); // a path may begin with a slash
    app.require_subcommand(0, 1);
    app.fallthrough();
    Command command;
    addPackCommand(app, command);
    addVerifyCommand(app, command);
    addListCommand(app, command);
    addPlayCommand(app, command);
    addPlayFileCommand(app, command);
    addShowCommand(app, command);
    addConsoleCommand(app, command);
    addDevicesCommand(app, command);
    try {
        std::reverse(arguments.begin(), arguments.end());
        app.parse(std::move(arguments));
    } catch (const CLI::ParseError& error) {
        if (error.get_exit_code() == 0) {
            app.exit(error);
            return ExitCode::Ok;
        }
        throw ToolError(ExitCode::Usage, error.what() + std::string(" (--help shows the usage)"));
    }
    if (!command) {
        throw ToolError(ExitCode::Usage, "a command is needed (--help shows them)");
    }
    return command();
}

ExitCode runToTheEnd(const std::vector<std::string>& arguments) {
    try {
        return run(arguments);
    } catch (const ToolError& error) {
        complain(error.what());
        return error.code();
    } catch (const std::exception& error) {
        complain(error.what());
        return ExitCode::Refused;
    }
}

} // namespace

} // namespace vemo::tool

int main(int argc, char** argv) {
    using namespace vemo::tool;
    takeOverLog();
    // Lives until the end: see below.
    [[maybe_unused]] auto* application = new QCoreApplication(argc, argv);
    prepareStreams();
    const ExitCode code = runToTheEnd(commandLine(argc, argv));
    std::cout.flush();
    restoreStreams();
    // The sound server's client library crashes now and then when its static objects are destroyed
    // soon after playing, so they are not.
    leave(code);
}
