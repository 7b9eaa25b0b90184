// A soundscape of what is installed: the ambient effects one after another, each fading into the
// next, with the primary effects on top.
#include <chrono>
#include <cstdlib>
#include <iostream>
#include <vector>

#include <QAudioDevice>
#include <QCoreApplication>
#include <QMediaDevices>
#include <QThreadPool>
#include <QTimer>

#include <sfx/sfx.h>

namespace {

using vemo::audio::ChangeLogSfxRepository;
using vemo::audio::SfxManager;
using vemo::audio::SfxPlayerConnectionMediator;
using vemo::audio::sfx::SfxDto;
using vemo::audio::sfx::SfxVector;

/// Puts one event for each effect of the list into the change log.
std::vector<SfxDto> putOnCue(const SfxVector& effects, SfxDto::SfxDtoBuilder settings) {
    ChangeLogSfxRepository cues;
    std::vector<SfxDto> records;
    for (std::size_t i = 0; i < effects.Count(); ++i) {
        const char* const id = effects.Get(i);
        records.push_back(settings.eventId(cues.GenerateEventId()).name(id).effectId(id).build());
        cues.Save(records.back());
    }
    return records;
}

std::vector<int> addAll(SfxManager& manager, const std::vector<SfxDto>& records) {
    std::vector<int> ids;
    for (const SfxDto& record : records) {
        ids.push_back(manager.AddPlayer(record));
    }
    return ids;
}

int play(QCoreApplication& app, std::chrono::milliseconds scene) {
    SfxManager manager;
    if (manager.GetAmbientList().Count() == 0) {
        std::cerr << "no ambient effect is installed\n";
        return EXIT_FAILURE;
    }
    // Asked before the first scene starts its clock: the first look may take a second.
    if (QMediaDevices::defaultAudioOutput().isNull()) {
        std::cerr << "no audio output\n";
        return EXIT_FAILURE;
    }
    std::unique_ptr<vemo::audio::SfxRepository> repository =
        std::make_unique<ChangeLogSfxRepository>();
    const vemo::audio::SfxPlayerController controller(repository);
    auto* const mediator = SfxPlayerConnectionMediator::instance();
    QObject::connect(mediator, &SfxPlayerConnectionMediator::soundEffectError, &app,
                     [](const QString&, const QString& message, const QString&) {
                         std::cerr << message.toStdString() << '\n';
                     });

    // What is heard of a cross-over are the fades of the records: the old bed goes slowly.
    const auto bedRecords =
        putOnCue(manager.GetAmbientList(),
                 SfxDto::builder().type(vemo::audio::AMBIENT).fadeIn(1000).fadeOut(4000));
    const auto effectRecords = putOnCue(manager.GetSfxList(), SfxDto::builder().volume(0.8F));
    // The manager's players get the files that the controller has loaded by now, and a reload that
    // is under way would take them for doubles of its own and remove them.
    mediator->onSoundEffectsChanged();
    QThreadPool::globalInstance()->waitForDone();
    const auto beds = addAll(manager, bedRecords);
    const auto effects = addAll(manager, effectRecords);

    QTimer scenes;
    std::size_t next = 0;
    const auto startScene = [&] {
        if (next == beds.size()) {
            manager.StopAmbient();
            manager.WaitForAllToComplete();
            app.quit();
            return;
        }
        std::cout << "bed " << bedRecords[next].name() << std::endl;
        manager.SetAmbient(beds[next]);
        if (!effects.empty()) {
            QTimer::singleShot(scene / 2, &scenes, [&, effect = next % effects.size()] {
                std::cout << "effect " << effectRecords[effect].name() << std::endl;
                manager.Play(effects[effect], 0);
            });
        }
        ++next;
    };
    QObject::connect(&scenes, &QTimer::timeout, startScene);
    startScene();
    scenes.start(scene);
    return QCoreApplication::exec();
}

} // namespace

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    const int seconds = argc == 2 ? std::atoi(argv[1]) : 6;
    // A scene is longer than a fade-in: a stop while it runs would cut the bed off.
    if (argc > 2 || seconds < 2) {
        std::cerr << "usage: soundscape [SECONDS]   of each scene, 2 or more\n";
        return 2;
    }
    int code = EXIT_FAILURE;
    try {
        code = play(app, std::chrono::seconds(seconds));
    } catch (const std::exception& error) { // an install that cannot be used
        std::cerr << error.what() << '\n';
    }
    // PulseAudio's client may crash in static destructors that run right after a playback.
    std::cout.flush();
    std::_Exit(code);
}
