#pragma once

#include <functional>
#include <string>
#include <vector>

#include "CueList.h"

namespace vemo::tool {

/// What the lines of the console mean.
class ConsoleCommands {
public:
    enum class After { NextLine, Load, Quit };
    struct Outcome {
        After after = After::NextLine;
        /// To be said once the events are loaded.
        std::string answer;
    };

    ConsoleCommands(Stage& stage, ShowFile& show, const Install& install, CueList& cues,
                    CueList::Say say);

    /// Carries out one line and answers it; never throws for what a user can type. An empty line
    /// and one that begins with '#' have no answer.
    Outcome execute(const std::string& line);

private:
    Outcome run_(const std::vector<std::string>& words);
    void list_();
    std::string add_(EventOptions options);
    std::string edit_(const std::string& event, EventOptions options);

    Stage& stage_;
    ShowFile& show_;
    const Install& install_;
    CueList& cues_;
    CueList::Say say_;
};

} // namespace vemo::tool
