#include "ToolTest.h"

namespace {

using namespace sfx_test;
using testing::ElementsAre;

class Show : public ToolTest {
protected:
    void SetUp() override {
        writeVorbis("in/bell.ogg", {.ms = 50});
        writeVorbis("in/rain.ogg", {.ms = 50});
        ASSERT_EQ(run({"pack", at("in"), "--out", at("out"), "--ambient", "rain*"}).exitCode, 0);
    }

    Result show(std::vector<std::string> arguments) const {
        arguments.insert(arguments.begin(), {"show", at("a.show")});
        return run(arguments);
    }
    /// Id of the new event.
    std::string add(std::vector<std::string> arguments) const {
        arguments.insert(arguments.begin(), "add");
        arguments.insert(arguments.end(), {"--install", at("out")});
        const Result result = show(arguments);
        EXPECT_EQ(result.exitCode, 0) << result.err.toStdString();
        return result.out.trimmed().toStdString();
    }
    std::vector<std::string> events() const {
        std::vector<std::string> ids;
        const auto list = parse(show({"list", "--json"}).out);
        for (const auto& event : list.GetArray()) {
            ids.emplace_back(event["event"].GetString());
        }
        return ids;
    }
};

TEST_F(Show, keepsEventsFromOneRunToTheNext) {
    const std::string bell = add({"Bell", "--name", "door", "--volume", "0.5", "--pan", "0.25",
                                  "--fade-in", "40", "--fade-out", "300", "--repeats", "2"});
    const std::string rain = add({"rain"});
    EXPECT_THAT(show({"edit", "door", "--reverb", "0.5", "--effect", "unknown", "--no-check"}),
                testing::Field("exitCode", &Result::exitCode, 0));

    const Result listed = show({"list", "--json"});
    const auto list = parse(listed.out);
    ASSERT_EQ(list.Size(), 2U);
    const auto& door = list[0];
    EXPECT_EQ(door["event"].GetString(), bell);
    EXPECT_STREQ(door["name"].GetString(), "door");
    EXPECT_STREQ(door["effect"].GetString(), "unknown");
    EXPECT_EQ(door["volume"].GetDouble(), 0.5);
    EXPECT_EQ(door["pan"].GetDouble(), 0.25);
    EXPECT_EQ(door["reverb"].GetDouble(), 0.5);
    EXPECT_EQ(door["fadeIn"].GetInt(), 40);
    EXPECT_EQ(door["fadeOut"].GetInt(), 300);
    EXPECT_EQ(door["repeats"].GetInt(), 2);
    EXPECT_STREQ(list[1]["name"].GetString(), "Rain");
    EXPECT_EQ(list[1]["repeats"].GetInt(), -1) << "an ambient effect";
    EXPECT_THAT(show({"list"}).out.toStdString(),
                testing::ContainsRegex(rain + " +Rain +rain.sfx +1 +0.5 +0 +0 +500 +endless\n"));
}

TEST_F(Show, removeTakesAllOrNone) {
    const std::string first = add({"bell", "--name", "a"});
    const std::string second = add({"bell", "--name", "b"});
    EXPECT_THAT(show({"remove", "a", "nobody"}), failedWith(4, "no event 'nobody'"));
    EXPECT_THAT(events(), ElementsAre(first, second));
    EXPECT_EQ(show({"remove", "b", second}).exitCode, 0);
    EXPECT_THAT(events(), ElementsAre(first));
    EXPECT_THAT(add({"bell"}), testing::Not(testing::AnyOf(first, second))) << "ids are not reused";
}

TEST_F(Show, refusesWhatItCannotDo) {
    EXPECT_THAT(show({"list"}), failedWith(1, "no show file " + at("a.show")));
    EXPECT_THAT(run({"show", at("out"), "list"}), failedWith(1, at("out")));
    writeText("text", "text that is no show");
    EXPECT_THAT(run({"show", at("text"), "list"}), failedWith(1, at("text")));
    EXPECT_EQ(readFile(dir() / "text").size(), 20U);

    const auto addTo = [&](const std::vector<std::string>& arguments) {
        std::vector<std::string> all{"add", "--install", at("out")};
        all.insert(all.end(), arguments.begin(), arguments.end());
        return show(all);
    };
    EXPECT_THAT(addTo({"gong"}), failedWith(4, "gong"));
    EXPECT_THAT(addTo({"bell", "--name", "sfx.7"}), failedWith(2, "sfx.7"));
    EXPECT_THAT(addTo({"bell", "--volume", "2"}), failedWith(2, "'2'"));
    EXPECT_FALSE(std::filesystem::exists(dir() / "a.show")) << "nothing was to be kept";

    add({"bell", "--name", "twice"});
    add({"bell", "--name", "twice"});
    EXPECT_THAT(show({"edit", "twice", "--pan", "0"}), failedWith(4, "more than one event"));
    EXPECT_THAT(show({"edit", "nobody", "--pan", "0"}), failedWith(4, "nobody"));
}

TEST_F(Show, isHeldByOneProgramAtATime) {
    add({"bell"});
    ProcessRunner console(toolPath(), list({"console", at("a.show"), "--install", onStage("out")}));
    ASSERT_TRUE(console.WaitForOutput("1 event loaded"));
    EXPECT_THAT(show({"add", "bell", "--no-check"}), failedWith(1, at("a.show")));
    EXPECT_THAT(run({"play", "Bell", "--show", at("a.show"), "--install", at("out")}),
                failedWith(1, at("a.show")));
    console.CloseInput();
    EXPECT_EQ(console.Finish().exitCode, 0);
    EXPECT_EQ(events().size(), 1U);
}

#ifdef _WIN32
TEST_F(Show, playsFromNoPlaceButTheLibrarys) {
    add({"bell"});
    EXPECT_THAT(run({"play", "Bell", "--show", at("a.show"), "--install", at("out")}),
                failedWith(3, onStage("out")));
    EXPECT_THAT(run({"console", at("a.show"), "--install", at("out")}),
                failedWith(3, onStage("out")));
}
#endif

} // namespace
