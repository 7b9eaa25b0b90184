#include <sfx/manager/ManagedSfxPlayer.h>

#include <stdexcept>
#include <utility>

#include <sfx/model/SfxException.h>

namespace vemo::audio {

ManagedSfxPlayer::ManagedSfxPlayer(std::unique_ptr<SfxPlayerInterface> player)
    : player_(std::move(player)) {}

ManagedSfxPlayer::~ManagedSfxPlayer() {
    CancelWorker();
    worker_.reset();
}

SfxType ManagedSfxPlayer::Type() {
    try {
        lastType_ = player_->SfxData()->type();
    } catch (const SfxException&) { // removed
    }
    return lastType_;
}

bool ManagedSfxPlayer::DoneOrGone_() {
    try {
        return player_->Done();
    } catch (const SfxException&) {
        try {
            player_->Stop();
        } catch (const std::out_of_range&) { // it has come to its end
        }
        return true;
    }
}

void ManagedSfxPlayer::StartWorker_(SfxWorkerVolume::Kind kind, int fadeMs, float targetLevel) {
    worker_ = std::make_unique<SfxWorkerVolume>(kind, static_cast<std::uint32_t>(fadeMs),
                                                player_->Volume(), targetLevel, &player_, volume_,
                                                &volumeGate_);
    worker_->Start();
}

void ManagedSfxPlayer::Play(int fadeMs) {
    const Gate command(commandGate_);
    CancelWorker();
    const Gate volume(volumeGate_);
    phase_ = !phase_;
    if (fadeMs <= 0 || volume_ == 0.0F)
        player_->Play();
    else
        StartWorker_(SfxWorkerVolume::FadeIn, fadeMs, volume_);
}

void ManagedSfxPlayer::Stop(int fadeMs) {
    const Gate volume(volumeGate_);
    phase_ = !phase_;
    if (DoneOrGone_()) {
        // A fade-in that has yet to start playing must not outlive its stop.
        if (worker_ != nullptr && !worker_->Begun())
            worker_->RequestStop();
        return;
    }
    if (fadeMs <= 0 || volume_ == 0.0F) {
        player_->SetVolume(volume_);
        player_->Stop();
        return;
    }
    // The gates the other way round than in Play(), as it always was; the worker that is joined
    // here gives up waiting for the volume gate when it is asked to stop.
    const Gate command(commandGate_);
    CancelWorker();
    StartWorker_(SfxWorkerVolume::FadeOut, fadeMs, 0.0F);
}

void ManagedSfxPlayer::CancelWorker() {
    const Gate command(commandGate_);
    if (worker_ == nullptr || !worker_->IsRunning())
        return;
    worker_->RequestStop();
    worker_->Join();
}

void ManagedSfxPlayer::WaitUntilDone() {
    if (worker_ != nullptr && worker_->IsRunning())
        worker_->Join();
    const Gate volume(volumeGate_);
    try {
        player_->WaitUntilDone();
    } catch (const std::out_of_range&) { // the controller has removed it
    }
}

} // namespace vemo::audio
