#pragma once

#include <chrono>
#include <cstddef>
#include <optional>
#include <string>

#include <sfx/model/SfxDto.h>

#include "ToolError.h"

namespace vemo::tool {

/// One sound on its way through the library, however it got there, with the times that the library
/// does not tell.
class Voice {
public:
    virtual ~Voice() = default;

    /// As lines name it.
    virtual std::string label() const = 0;
    /// The same with what else identifies it.
    virtual std::string title() const = 0;
    /// What it plays by; a copy, as long as it exists.
    virtual audio::sfx::SfxDto record() const = 0;
    /// False while play() should not be called yet. ToolError (Refused) when it cannot sound.
    virtual bool ready() { return true; }
    /// Playing time of one pass; 0 while it is not known, below 0 if there is nothing to play.
    virtual double seconds() const = 0;
    /// About how loud it is now, 0 to 1, if that can be known.
    virtual std::optional<double> level() { return std::nullopt; }

    /// Starts it, or starts it once more.
    void play();
    /// Fades out and ends; does nothing when called again.
    void stop();
    bool started() const { return startedAt_.has_value(); }
    bool stopped() const { return stoppedAt_.has_value(); }
    /// True for one call, when it is known that it sounds.
    bool begins();
    /// True once begins() has answered true.
    bool begun() const { return begun_; }
    /// True once it has played to its end or to its stop.
    bool over();
    /// Playing time of all passes; empty when it repeats without end.
    std::optional<double> allSeconds() const;
    /// Seconds since it sounds; stands still once over() has answered true.
    double elapsed() const;
    /// How loud the fades leave it, 0 to 1.
    double fadeGain() const;
    /// Once it is over: why it was not heard to its end or to its stop, if it was not.
    std::optional<ToolError> fault() const;

protected:
    using Clock = std::chrono::steady_clock;
    static double secondsBetween(Clock::time_point from, Clock::time_point to) {
        return std::chrono::duration<double>(to - from).count();
    }

private:
    virtual void start_() = 0;
    virtual void halt_() = 0;
    virtual bool done_() = 0;

    std::string complaint_() const;

    std::optional<Clock::time_point> startedAt_;
    std::optional<Clock::time_point> stoppedAt_;
    std::optional<Clock::time_point> endedAt_;
    bool begun_ = false;
    std::size_t faultsBefore_ = 0;
};

} // namespace vemo::tool
