#include "Stage.h"

#include <exception>
#include <iostream>
#include <stdexcept>

#include <QEventLoop>

#include <sfx/catalogue/ChangeLogSfxRepository.h>
#include <sfx/control/SfxPlayerConnectionMediator.h>

#include "Interrupt.h"
#include "ToolError.h"

namespace vemo::tool {

namespace {

constexpr int LOOK_MS = 5;
constexpr unsigned int READS_PER_LOAD = 2;
constexpr std::uint64_t MOST_PLAYERS = 100'000;

audio::sfx::SfxDto recordOf(const audio::CustomAudioParameters& parameters) {
    return audio::sfx::SfxDto::builder()
        .name(parameters.name().toStdString())
        .effectPath(parameters.file().toStdString())
        .type(audio::USER_PROVIDED)
        .repeats(parameters.repeats())
        .fadeIn(static_cast<unsigned short>(parameters.fadeIn()))
        .fadeOut(static_cast<unsigned short>(parameters.fadeOut()))
        .volume(static_cast<float>(parameters.volume()))
        .reverb(static_cast<float>(parameters.reverb()))
        .pan(static_cast<float>(parameters.pan()))
        .build();
}

/// Nothing that is written to std::cout is shown while it lives.
class Quiet {
public:
    Quiet() : shown_(std::cout.rdbuf(nullptr)) {}
    ~Quiet() {
        std::cout.rdbuf(shown_);
        std::cout.clear();
    }
    Quiet(const Quiet&) = delete;
    Quiet& operator=(const Quiet&) = delete;

private:
    std::streambuf* shown_;
};

} // namespace

// The controller does not tell when it has reloaded; its second look at the events, with which it
// starts to remove players, does.
class Stage::Repository : public audio::ChangeLogSfxRepository {
public:
    explicit Repository(std::shared_ptr<std::atomic<unsigned int>> reads)
        : reads_(std::move(reads)) {}

    std::list<audio::sfx::SfxDto> Get() override {
        struct Count {
            std::atomic<unsigned int>& reads;
            ~Count() { ++reads; }
        } const count{*reads_};
        return ChangeLogSfxRepository::Get();
    }

private:
    std::shared_ptr<std::atomic<unsigned int>> reads_;
};

Stage::Stage(std::unique_ptr<DataRoot> install)
    : install_(std::move(install)), reads_(std::make_shared<std::atomic<unsigned int>>(0)) {
    std::unique_ptr<audio::SfxRepository> repository = std::make_unique<Repository>(reads_);
    try {
        const Quiet noRemarkOnAMissingInstall;
        controller_ = std::make_unique<audio::SfxPlayerController>(repository);
    } catch (const std::exception& error) {
        throw ToolError(ExitCode::NoInstall, error.what());
    }
    connect(audio::SfxPlayerConnectionMediator::instance(),
            &audio::SfxPlayerConnectionMediator::soundEffectError, this,
            [this](const QString&, const QString& message, const QString& what) {
                Q_EMIT failed(message, what);
            });
    connect(&timer_, &QTimer::timeout, this, &Stage::look_);
}

void Stage::load() {
    readsAwaited_ = *reads_ + READS_PER_LOAD;
    timer_.start(LOOK_MS);
    audio::SfxPlayerConnectionMediator::instance()->onSoundEffectsChanged();
}

void Stage::loadAndWait() {
    QEventLoop loop;
    Interrupt interrupt;
    connect(&interrupt, &Interrupt::caught, &loop, &QEventLoop::quit);
    connect(this, &Stage::loaded, &loop, &QEventLoop::quit);
    load();
    loop.exec();
    Interrupt::checkpoint();
}

void Stage::look_() {
    // Compared by difference, since the counter may pass its end.
    if (static_cast<int>(*reads_ - readsAwaited_) >= 0) {
        timer_.stop();
        Q_EMIT loaded();
    }
}

Stage::Player Stage::player(std::uint64_t id) {
    try {
        return dynamic_cast<audio::SfxPlayerImpl*>(controller_->GetPlayer(id).value_or(nullptr));
    } catch (const std::out_of_range&) {
        return nullptr;
    }
}

bool Stage::hasPlayerOf(const std::string& eventId) {
    return controller_->GetPlayer(eventId).has_value();
}

// Playing by parameters does not answer with an id, so the players are asked, of which the ids
// count from 0.
std::optional<std::uint64_t> Stage::playerOf(const audio::CustomAudioParameters& parameters) {
    const audio::sfx::SfxDto record = recordOf(parameters);
    for (std::uint64_t id = 0; id < MOST_PLAYERS; ++id) {
        if (const Player found = player(id); found && found->PlaysSameSfx(record)) {
            return id;
        }
    }
    return std::nullopt;
}

} // namespace vemo::tool
