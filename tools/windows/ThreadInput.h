#pragma once

#include <memory>
#include <optional>

#include "LineInput.h"

namespace vemo::tool {

/// Lines of stdin, which a thread waits for. A terminal lets the user edit a line and call up
/// earlier ones by itself; a prompt is shown there.
class ThreadInput : public LineInput {
    Q_OBJECT

public:
    ThreadInput();
    ~ThreadInput() override;

    void ask() override;
    void say(const std::string& text) override;
    /// In the title of the terminal's window: the line belongs to the terminal while the user
    /// types it.
    void show(const std::string& state) override;
    void close() override;

private:
    struct Shared;
    struct Reader;

    void want_(bool more) override;
    void take_(const std::optional<QByteArray>& piece);

    bool prompts_;
    std::wstring title_;
    std::string state_;
    std::shared_ptr<Shared> shared_;
};

} // namespace vemo::tool
