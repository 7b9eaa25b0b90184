#pragma once

#include <map>
#include <memory>
#include <string>

#include <QByteArray>
#include <QProcess>
#include <QStringList>
#include <QTemporaryDir>

namespace sfx_test {

/// A PulseAudio server of this process's own, which renders into null sinks whose monitors can be
/// recorded. It lives in a temporary folder and knows nothing of the user's settings; this
/// process and its children are pointed to it. Used on the main thread.
///
/// Qt connects to the audio server once per process, so the server is made before the first
/// object of Qt Multimedia, and there is one of them.
class PulseServer {
public:
    struct Options {
        bool withSink = true;
        /// Of the first sink, in Hz.
        int rate = 48000;
    };

    /// Returns when the server answers and its sink renders. Throws std::runtime_error if not.
    PulseServer();
    explicit PulseServer(Options options);
    ~PulseServer();
    PulseServer(const PulseServer&) = delete;
    PulseServer& operator=(const PulseServer&) = delete;

    /// The process's server, started by the first call and kept until the process ends.
    static PulseServer& Shared();
    /// Ends the server of Shared(), if it was started.
    static void StopShared();

    /// The first sink, which is the default output.
    static constexpr const char* kSink = "sfx_test_sink";

    /// Returns when the sink renders; its description is its name.
    void AddSink(const std::string& name, int rate = 48000);
    /// Returns when the sink is gone.
    void RemoveSink(const std::string& name);
    /// SIGKILL, as when the audio server crashes. Returns when it is dead.
    void Kill();
    /// SIGSTOP, as when the audio server hangs, and SIGCONT.
    void Freeze();
    void Thaw();
    /// Runs `pactl` on this server and returns its output. Throws std::runtime_error with its
    /// complaint if it fails.
    QByteArray Pactl(const QStringList& arguments) const;

private:
    struct Sink {
        QString module;
        std::unique_ptr<QProcess> awake;
    };

    void SetEnvironment() const;
    void Start();

    QTemporaryDir dir_;
    QString socket_;
    QProcess daemon_;
    std::map<std::string, Sink> sinks_;
};

} // namespace sfx_test
