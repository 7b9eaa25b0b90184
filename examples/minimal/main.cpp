// The smallest host: plays one installed effect, given by its id.
#include <cstdlib>
#include <iostream>

#include <QAudioDevice>
#include <QCoreApplication>
#include <QMediaDevices>

#include <sfx/sfx.h>

namespace {

int play(QCoreApplication& app, const std::string& id) {
    const vemo::sfx::SfxManifest manifest;
    const auto path = manifest.path(id);
    if (!path) {
        std::cerr << "no effect \"" << id << "\" is installed\n";
        return EXIT_FAILURE;
    }
    if (QMediaDevices::defaultAudioOutput().isNull()) {
        std::cerr << "no audio output\n";
        return EXIT_FAILURE;
    }

    vemo::audio::EncryptedVorbisFile file(*path); // decodes itself in the background
    vemo::audio::SfxPlayerImpl player(
        vemo::audio::sfx::SfxDto::builder().effectId(id).volume(0.8F).build(),
        std::make_shared<QThreadPool>(), std::make_shared<QThreadPool>(), nullptr);
    player.SetFile(&file);

    QObject::connect(&player, &vemo::audio::SfxPlayerImpl::sfxFinished, &app,
                     &QCoreApplication::quit, Qt::QueuedConnection);
    player.Play();
    QCoreApplication::exec();
    player.WaitUntilDone();

    if (file.stage() == vemo::audio::DecodeState::Stage::Failed) {
        std::cerr << file.failure() << '\n';
        return EXIT_FAILURE;
    }
    return EXIT_SUCCESS;
}

} // namespace

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    if (argc != 2) {
        std::cerr << "usage: minimal EFFECT_ID\n";
        return 2;
    }
    int code = EXIT_FAILURE;
    try {
        code = play(app, argv[1]);
    } catch (const std::exception& error) { // an install that cannot be used
        std::cerr << error.what() << '\n';
    }
    // PulseAudio's client may crash in static destructors that run right after a playback.
    std::cout.flush();
    std::_Exit(code);
}
