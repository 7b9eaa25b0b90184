// A complete small host: it owns a show, and does what the lines on its standard input say.
#include <algorithm>
#include <cstdlib>
#include <iostream>
#include <sstream>
#include <thread>

#include <QCoreApplication>
#include <QFileInfo>
#include <QTimer>
#include <QUrl>

#include <sfx/sfx.h>

#include <vemo_core/ChangeLog.h>

using namespace vemo::audio;
using vemo::audio::sfx::SfxDto;

namespace {

constexpr int FADE_OUT_MS = 500;
constexpr int LAST_SOUND_MS = 300; // what the sinks still hold

void answer(const QString& text) {
    std::cout << text.toStdString() << std::endl; // a reader at a pipe gets it at once
}

/// Keeps an exception of a slot, the host's own or the library's, from ending the show.
class Application : public QCoreApplication {
public:
    using QCoreApplication::QCoreApplication;

    bool notify(QObject* receiver, QEvent* event) override {
        try {
            return QCoreApplication::notify(receiver, event);
        } catch (const std::exception& error) {
            answer(QStringLiteral("error: ") + error.what());
        }
        return false;
    }
};

class Host : public QObject {
public:
    Host() : controller_(repository_) {
        auto* mediator = SfxPlayerConnectionMediator::instance();
        connect(mediator, &SfxPlayerConnectionMediator::onSfxIsReady, this,
                [](const QString& path) { answer("ready " + path); });
        connect(mediator, &SfxPlayerConnectionMediator::soundEffectError, this,
                [](const QString& priority, const QString& message, const QString& what) {
                    answer(priority + ": " + message + " (" + what + ")");
                });
        mediator->onSoundEffectsChanged();
    }

    void take(const std::string& line) {
        std::istringstream words(line);
        std::string command;
        std::string what;
        words >> command;
        std::getline(words >> std::ws, what);
        try {
            run(command, what);
        } catch (const std::exception& error) {
            answer(QStringLiteral("error: ") + error.what());
        }
    }

    /// Fades out, and leaves when that is heard.
    void leave() {
        if (std::exchange(leaving_, true)) {
            return;
        }
        controller_.stop();
        int fade = FADE_OUT_MS;
        for (const SfxDto& event : show_.Get()) {
            fade = std::max<int>(fade, event.fadeOut());
        }
        QTimer::singleShot(fade + LAST_SOUND_MS, this, &QCoreApplication::quit);
    }

private:
    void run(const std::string& command, const std::string& what) {
        if (command == "add") {
            add(what);
        } else if (command == "remove") {
            show_.Delete(what);
            SfxPlayerConnectionMediator::instance()->onSoundEffectsChanged();
        } else if (command == "list") {
            list();
        } else if (command == "play") {
            play(what);
        } else if (command == "file") {
            controller_.play(userFile(what));
        } else if (command == "stop" && what.empty()) {
            controller_.stop();
        } else if (command == "stop") {
            controller_.stop(what);
        } else if (command == "quit") {
            leave();
        } else if (!command.empty()) {
            answer("add EFFECT, remove EVENT, list, play EVENT, file PATH, stop [EVENT], quit");
        }
    }

    void add(const std::string& effect) {
        const std::string event = show_.GenerateEventId();
        show_.Save(SfxDto::builder()
                       .eventId(event)
                       .name(effect)
                       .effectId(effect)
                       .volume(0.8F)
                       .fadeOut(FADE_OUT_MS)
                       .build());
        SfxPlayerConnectionMediator::instance()->onSoundEffectsChanged();
        answer(QStringLiteral("added ") + event.c_str());
    }

    void list() {
        for (const SfxDto& event : show_.Get()) {
            const auto player = controller_.GetPlayer(event.eventId());
            const char* const state = !player             ? "not loaded"
                                      : (*player)->Done() ? "silent"
                                                          : "plays";
            answer(QStringLiteral("%1 %2 %3")
                       .arg(event.eventId().c_str(), event.name().c_str(), state));
        }
    }

    void play(const std::string& event) {
        if (!controller_.GetPlayer(event)) { // a reload may be on its way
            throw std::invalid_argument("no player for the event '" + event + "'");
        }
        controller_.play(event);
    }

    static CustomAudioParameters userFile(const std::string& path) {
        const QFileInfo file(QString::fromStdString(path));
        return CustomAudioParameters::builder()
            .file(QUrl::fromLocalFile(file.absoluteFilePath()).toString(QUrl::FullyEncoded))
            .name(file.fileName())
            .volume(0.8)
            .pan(0.5)
            .fadeOut(FADE_OUT_MS)
            .build();
    }

    ChangeLogSfxRepository show_;
    std::unique_ptr<SfxRepository> repository_ = std::make_unique<ChangeLogSfxRepository>();
    SfxPlayerController controller_;
    bool leaving_ = false;
};

/// Standard input is read on a thread of its own, since reading it blocks.
void readLines(Host& host) {
    std::thread([&host] {
        for (std::string line; std::getline(std::cin, line);) {
            QMetaObject::invokeMethod(
                &host, [&host, line] { host.take(line); }, Qt::QueuedConnection);
        }
        QMetaObject::invokeMethod(
            &host, [&host] { host.leave(); }, Qt::QueuedConnection);
    }).detach();
}

} // namespace

int main(int argc, char** argv) {
    Application app(argc, argv);
    if (argc != 2) {
        std::cerr << "usage: host SHOW\n";
        return 2;
    }
    int code = EXIT_SUCCESS;
    try {
        CL::OpenShow(argv[1]);
        auto* const host = new Host; // the reading thread uses it to the end of the process
        readLines(*host);
        code = QCoreApplication::exec();
    } catch (const std::exception& error) { // no show file, or an install that cannot be used
        std::cerr << error.what() << '\n';
        code = EXIT_FAILURE;
    }
    CL::CloseShow();
    // PulseAudio's client may crash in static destructors that run right after a playback.
    std::cout.flush();
    std::_Exit(code);
}
