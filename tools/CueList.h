#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "Cue.h"

namespace vemo::tool {

/// The cues that run, and what can be done with them. Every operation answers with at least one
/// line, and throws ToolError when it cannot be done.
class CueList {
public:
    using Say = std::function<void(const std::string&)>;
    CueList(Stage& stage, ShowFile& show, Say say);

    /// A cue of the show or, if there is none, a user's audio file.
    void play(const std::string& cueOrFile);
    void stop(const std::string& cue);
    void stopAll();
    void fade(const std::string& cue, float volume, unsigned int milliseconds);
    /// For what sounds and for the next time, until the event is edited.
    void setVolume(const std::string& cue, float volume);
    void status() const;
    /// What runs, in whole seconds, in at most that many columns; empty when nothing does.
    std::string summary(std::size_t columns) const;

    /// Tells which cues have ended since the last look, and how.
    void look();
    /// Tells of a failure that belongs to no cue; a cue's own is told when it ends.
    void tellFailure(const std::string& message, const std::string& what) const;
    bool empty() const { return cues_.empty(); }
    /// Stops what would play for ever.
    void stopEndless();
    /// The longest fade-out of what plays, in milliseconds.
    int longestFadeOut() const;

private:
    std::vector<Cue*> running_(const std::string& cue) const;
    [[noreturn]] void refuse_(const std::string& cue) const;
    void stop_(Cue& cue) const;

    Stage& stage_;
    ShowFile& show_;
    Say say_;
    std::vector<std::unique_ptr<Cue>> cues_;
};

} // namespace vemo::tool
