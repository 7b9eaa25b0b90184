#pragma once

#include "ToolTest.h"

#include "support/Analysis.h"
#include "support/PulseServer.h"
#include "support/Recorder.h"

namespace sfx_test {

inline constexpr double LOW = 440;
inline constexpr double HIGH = 1320;

/// Without gaps: a loaded machine may starve the sink for a moment, which delays sound but loses
/// none.
inline double soundingMs(const Pcm& pcm, int channel) {
    double sum = 0;
    for (const Stretch& stretch : Stretches(pcm, channel)) {
        sum += stretch.Ms(pcm.rate);
    }
    return sum;
}

/// An install with two tones and one that is long, and a server that is heard.
class PlayTest : public ToolTest {
protected:
    void SetUp() override {
        writeVorbis("in/low.ogg", {.ms = 600, .frequency = LOW});
        writeVorbis("in/high.ogg", {.ms = 600, .frequency = HIGH});
        writeVorbis("in/long.ogg", {.ms = 60'000, .frequency = LOW});
        ASSERT_EQ(run({"pack", at("in"), "--out", at("out")}).exitCode, 0);
    }

    std::vector<std::string> command(std::vector<std::string> arguments) const {
        arguments.insert(arguments.begin(), "play");
        arguments.insert(arguments.end(), {"--install", at("out")});
        return arguments;
    }
    /// Plays to the end and returns what was heard.
    static Pcm hearCommand(const std::vector<std::string>& arguments) {
        Recorder recorder;
        const Result result = run(arguments);
        EXPECT_EQ(result.exitCode, 0) << result.err.toStdString();
        EXPECT_TRUE(recorder.WaitForSilence());
        return recorder.Stop();
    }
    Pcm hear(const std::vector<std::string>& effects) const {
        return hearCommand(command(effects));
    }
    /// The share of each tone in what a channel sounds.
    static double level(const Pcm& heard, int channel, double frequency) {
        const auto stretch = Heard(heard, channel);
        return stretch ? ToneLevel(heard, channel, *stretch, frequency) : 0;
    }

    PulseServer server_;
};

} // namespace sfx_test
