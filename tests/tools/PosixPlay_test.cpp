#include "PlayTest.h"

namespace {

using namespace sfx_test;
using testing::HasSubstr;

// What changes the audio server, which is out of reach under Wine, and what takes a terminal from
// script(1).
using PlayOnPosix = PlayTest;

TEST_F(PlayOnPosix, playTellsWhenTheServerDies) {
    Recorder recorder;
    ProcessRunner tool(toolPath(), list(command({"long"})));
    ASSERT_TRUE(recorder.WaitForSound());
    server_.Kill();
    EXPECT_THAT(tool.Finish(), failedWith(5, "long.sfx"));
}

TEST_F(PlayOnPosix, devicesListsTheOutputs) {
    server_.AddSink("second_sink");
    const Result listed = run({"devices", "--json"});
    EXPECT_EQ(listed.exitCode, 0);
    const auto devices = parse(listed.out);
    std::map<std::string, bool> found;
    for (const auto& device : devices.GetArray()) {
        found[device["id"].GetString()] = device["default"].GetBool();
    }
    EXPECT_EQ(found,
              (std::map<std::string, bool>{{PulseServer::kSink, true}, {"second_sink", false}}));
}

TEST_F(PlayOnPosix, editsLinesWithHistoryOnATerminal) {
    const QString commandLine = QStringLiteral("exec '%1' console '%2' --install '%3'")
                                    .arg(toolPath(), QString::fromStdString(at("a.show")),
                                         QString::fromStdString(at("out")));
    ProcessRunner terminal("script", {"-qefc", commandLine, "/dev/null"},
                           {{"TERM", "xterm"},
                            {"LC_ALL", "C.UTF-8"},
                            {"XDG_STATE_HOME", QString::fromStdString(at("state"))}});
    ASSERT_TRUE(terminal.WaitForOutput("sfx> "));
    terminal.Write("no\x7f\x7f"
                   "add loww\x7f --name \"\xc3\xbc\"\n");
    ASSERT_TRUE(terminal.WaitForOutput("sfx.1 added"));
    terminal.Write("\x1b[A\n"); // the line before
    ASSERT_TRUE(terminal.WaitForOutput("sfx.2 added\r\nsfx> "));
    terminal.Write("play sfx.2\n");
    EXPECT_TRUE(terminal.WaitForOutput("[\xc3\xbc 0:00")) << "what runs, in front of the prompt";
    ASSERT_TRUE(terminal.WaitForOutput("finished \xc3\xbc"));
    terminal.Write("\x04");
    EXPECT_EQ(terminal.Finish().exitCode, 0);
    const auto history = readFile(at("state/vemo-sfx/history"));
    EXPECT_THAT(std::string(history.begin(), history.end()), HasSubstr("add"));
}

} // namespace
