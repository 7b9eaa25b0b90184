#include <sfx/control/SfxPlayerProxy.h>

#include <chrono>
#include <stdexcept>

#include <sfx/control/PlayerId.h>
#include <sfx/control/SfxPlayerConnectionMediator.h>
#include <sfx/control/SfxPlayerControllerImpl.h>
#include <sfx/model/SfxException.h>

namespace vemo::audio {

namespace {

constexpr char PlayerGone[] =
    "The sound effect player was removed: no record has its event and effect any more";
constexpr char ThreadGone[] = "The thread of the sound effect player controller has ended";

} // namespace

SfxPlayerProxy::SfxPlayerProxy(sfx::SfxDto record, QObject* parent)
    : QObject(parent), id_(NextPlayerId()) {
    auto* const mediator = SfxPlayerConnectionMediator::instance();
    const auto playerCreated = std::make_shared<std::promise<void>>();
    auto created = playerCreated->get_future();
    // Direct: to be wired takes no event loop, and a missing controller is this caller's to know.
    connect(this, &SfxPlayerProxy::createSfxPlayerImpl, mediator,
            &SfxPlayerConnectionMediator::registerSfxPlayerProxy, Qt::DirectConnection);
    Q_EMIT createSfxPlayerImpl(this, id_, record, playerCreated);
    controller_ = mediator->Controller_();
    Await_(created, false);
}

SfxPlayerProxy::~SfxPlayerProxy() = default;

template <typename Value>
Value SfxPlayerProxy::Await_(std::future<Value>& answer, bool playerExists) const {
    using namespace std::chrono_literals;
    // The controller may be busy for long, with a host's WaitUntilDone() for one: only what ends
    // all hope ends the wait. An answer given just before that still counts.
    while (answer.wait_for(100ms) != std::future_status::ready) {
        const bool threadGone = controller_->ThreadEnded();
        const bool playerGone = playerExists && !controller_->HoldsPlayer(id_);
        if ((threadGone || playerGone) && answer.wait_for(0s) != std::future_status::ready)
            throw SfxException(threadGone ? ThreadGone : PlayerGone);
    }
    return answer.get();
}

template <typename Value, typename Ask>
Value SfxPlayerProxy::Query_(const Ask& ask) const {
    const auto promise = std::make_shared<std::promise<Value>>();
    auto answer = promise->get_future();
    try {
        ask(promise);
    } catch (const std::out_of_range&) {
        // On the controller's own thread the look-up throws right here.
        throw SfxException(PlayerGone);
    }
    return Await_(answer, true);
}

void SfxPlayerProxy::Play() {
    Q_EMIT playSfx(id_);
}

void SfxPlayerProxy::Stop(bool urgent) {
    Q_EMIT stopSfx(id_, urgent);
}

void SfxPlayerProxy::Stop() {
    Q_EMIT stopSfx(id_, false);
}

void SfxPlayerProxy::SetOutputDevice(const wchar_t* deviceId) {
    Q_EMIT setOutputDevice(id_, deviceId);
}

void SfxPlayerProxy::SetVolume(float volume) {
    Q_EMIT setVolume(id_, volume);
}

float SfxPlayerProxy::Volume() {
    return Query_<float>([this](const auto& promise) { Q_EMIT volume(id_, promise); });
}

void SfxPlayerProxy::SetReverb(float reverb) {
    Q_EMIT setReverb(id_, reverb);
}

void SfxPlayerProxy::SetPan(float pan) {
    Q_EMIT setPan(id_, pan);
}

void SfxPlayerProxy::SetSfxPath(const std::string& path) {
    Q_EMIT setSfxPath(id_, path);
}

void SfxPlayerProxy::ReplaceSfxData(const sfx::SfxDto& other) {
    Q_EMIT replaceSfxData(id_, other);
}

float SfxPlayerProxy::GetDuration() {
    return Query_<float>([this](const auto& promise) { Q_EMIT getDuration(id_, promise); });
}

void SfxPlayerProxy::FadeTo(float volume, unsigned int duration) {
    Q_EMIT fadeRequested(id_, static_cast<double>(volume), duration);
}

bool SfxPlayerProxy::Done() {
    return Query_<bool>([this](const auto& promise) { Q_EMIT done(id_, promise); });
}

void SfxPlayerProxy::WaitUntilDone() {
    Q_EMIT waitUntilDone(id_);
}

bool SfxPlayerProxy::PlaysSameSfx(const sfx::SfxDto& other) {
    return Query_<bool>([&](const auto& promise) { Q_EMIT playsSameSfx(id_, other, promise); });
}

const sfx::SfxDto* SfxPlayerProxy::SfxData() const {
    return Query_<const sfx::SfxDto*>(
        [this](const auto& promise) { Q_EMIT sfxData(id_, promise); });
}

} // namespace vemo::audio
