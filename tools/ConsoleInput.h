#pragma once

#include <memory>
#include <string>

#include <QObject>
#include <QString>

namespace vemo::tool {

inline constexpr char PROMPT[] = "sfx> ";

/// Where the console's lines come from and its answers go to, through the event loop.
class ConsoleInput : public QObject {
    Q_OBJECT

public:
    /// Lines with editing and a history when stdin and stdout are a terminal, else plain ones.
    static std::unique_ptr<ConsoleInput> make();

    /// Asks for one more line: line() or ended() follows.
    virtual void ask() = 0;
    /// Writes a line to stdout, above what the user is typing.
    virtual void say(const std::string& text) = 0;
    /// Keeps a text in view while the user types; an empty one takes it away. Plain lines show
    /// none.
    virtual void show(const std::string& /*state*/) {}
    /// Asks no more, and leaves the terminal as it was.
    virtual void close() = 0;

Q_SIGNALS:
    void line(QString text);
    void ended();
};

} // namespace vemo::tool
