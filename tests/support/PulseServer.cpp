#include "PulseServer.h"

#include <algorithm>
#include <stdexcept>

#include <QDeadlineTimer>
#include <QFile>
#include <QThread>

#include <csignal>
#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include "ProcessRunner.h"

namespace sfx_test {

namespace {

using namespace std::chrono_literals;

sockaddr_un AddressOf(const QString& socketPath) {
    const QByteArray path = QFile::encodeName(socketPath);
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    if (static_cast<std::size_t>(path.size()) >= sizeof address.sun_path) {
        throw std::runtime_error("the temporary folder's path is too long for a socket: " +
                                 path.toStdString());
    }
    std::copy(path.begin(), path.end(), address.sun_path);
    return address;
}

bool Answers(const sockaddr_un& address) {
    const int fd = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    const bool connected =
        connect(fd, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0;
    close(fd);
    return connected;
}

bool Renders(const QByteArray& listOfSinks, const QByteArray& name) {
    const auto lines = listOfSinks.split('\n');
    return std::any_of(lines.begin(), lines.end(), [&](const QByteArray& line) {
        return line.contains('\t' + name + '\t') && line.endsWith("\tRUNNING");
    });
}

std::unique_ptr<PulseServer>& SharedServer() {
    static std::unique_ptr<PulseServer> server;
    return server;
}

} // namespace

PulseServer::PulseServer() : PulseServer(Options{}) {}

PulseServer::PulseServer(Options options) {
    if (!dir_.isValid()) {
        throw std::runtime_error("no temporary folder: " + dir_.errorString().toStdString());
    }
    // Threads that play get their turn on a loaded machine, as far as the user may ask for that;
    // otherwise they are late now and then, and the gap is rightly heard.
    setpriority(PRIO_PROCESS, 0, -11);
    socket_ = dir_.filePath("native");
    SetEnvironment();
    Start();
    if (options.withSink) {
        AddSink(kSink, options.rate);
    }
}

PulseServer::~PulseServer() {
    Kill();
}

PulseServer& PulseServer::Shared() {
    if (!SharedServer()) {
        SharedServer() = std::make_unique<PulseServer>();
    }
    return *SharedServer();
}

void PulseServer::StopShared() {
    SharedServer().reset();
}

void PulseServer::SetEnvironment() const {
    // HOME stays: a new one costs every process that decodes a rebuild of gstreamer's registry.
    QFile config(dir_.filePath("client.conf"));
    if (!config.open(QIODevice::WriteOnly) || config.write("autospawn = no\n") < 0) {
        throw std::runtime_error("cannot write " + config.fileName().toStdString());
    }
    qputenv("XDG_RUNTIME_DIR", QFile::encodeName(dir_.path()));
    qputenv("PULSE_SERVER", "unix:" + QFile::encodeName(socket_));
    qputenv("PULSE_CLIENTCONFIG", QFile::encodeName(config.fileName()));
    qputenv("PULSE_COOKIE", QFile::encodeName(dir_.filePath("cookie")));
    for (const char* name : {"PULSE_SINK", "PULSE_SOURCE", "PULSE_RUNTIME_PATH"}) {
        qunsetenv(name);
    }
}

void PulseServer::Start() {
    const sockaddr_un address = AddressOf(socket_);
    auto environment = QProcessEnvironment::systemEnvironment();
    environment.insert("HOME", dir_.path());
    environment.insert("PULSE_CONFIG", "/dev/null");
    environment.insert("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nonexistent");
    environment.insert("DBUS_SYSTEM_BUS_ADDRESS", "unix:path=/nonexistent");
    daemon_.setProcessEnvironment(environment);
    daemon_.setProcessChannelMode(QProcess::ForwardedChannels);
    DieWithParent(daemon_);
    daemon_.start(
        "pulseaudio",
        {"-n", "--daemonize=no", "--exit-idle-time=-1", "--use-pid-file=no", "--log-level=error",
         "--log-target=stderr", "-L",
         "module-native-protocol-unix auth-anonymous=1 auth-cookie-enabled=0 socket=" + socket_});
    const QDeadlineTimer limit(kDeadline);
    while (!Answers(address)) {
        if (daemon_.waitForFinished(2) || daemon_.state() == QProcess::NotRunning) {
            throw std::runtime_error("pulseaudio does not start: " +
                                     daemon_.errorString().toStdString());
        }
        if (limit.hasExpired()) {
            throw std::runtime_error("pulseaudio does not answer");
        }
    }
}

void PulseServer::AddSink(const std::string& name, int rate) {
    const QString sinkName = QString::fromStdString(name);
    Sink& sink = sinks_[name];
    // norewinds: rendered at most 50 ms ahead, and at once when a stream starts.
    sink.module = Pactl({"load-module", "module-null-sink", "sink_name=" + sinkName,
                         "rate=" + QString::number(rate), "channels=2", "norewinds=1",
                         "sink_properties=device.description=" + sinkName})
                      .trimmed();
    // A sink that has been idle starts its first stream up to two seconds late.
    sink.awake = std::make_unique<QProcess>();
    sink.awake->setStandardOutputFile(QProcess::nullDevice());
    sink.awake->setStandardErrorFile(QProcess::nullDevice());
    DieWithParent(*sink.awake);
    sink.awake->start("pacat", {"--raw", "--device=" + sinkName, "/dev/zero"});
    const QDeadlineTimer limit(kDeadline);
    while (!Renders(Pactl({"list", "short", "sinks"}), sinkName.toUtf8())) {
        if (limit.hasExpired()) {
            throw std::runtime_error("sink " + name + " does not start");
        }
    }
}

void PulseServer::RemoveSink(const std::string& name) {
    const auto found = sinks_.find(name);
    if (found == sinks_.end()) {
        throw std::invalid_argument("no such sink: " + name);
    }
    Pactl({"unload-module", found->second.module});
    found->second.awake->kill();
    found->second.awake->waitForFinished();
    sinks_.erase(found);
}

void PulseServer::Kill() {
    daemon_.kill();
    daemon_.waitForFinished();
    for (auto& [name, sink] : sinks_) {
        sink.awake->kill();
        sink.awake->waitForFinished();
    }
    sinks_.clear();
}

void PulseServer::Freeze() {
    ::kill(static_cast<pid_t>(daemon_.processId()), SIGSTOP);
}

void PulseServer::Thaw() {
    ::kill(static_cast<pid_t>(daemon_.processId()), SIGCONT);
}

QByteArray PulseServer::Pactl(const QStringList& arguments) const {
    const auto result =
        ProcessRunner::Run("pactl", QStringList{"--server=unix:" + socket_} + arguments);
    if (result.exitCode != 0) {
        throw std::runtime_error("pactl " + arguments.join(' ').toStdString() + ": " +
                                 result.err.toStdString());
    }
    return result.out;
}

} // namespace sfx_test
