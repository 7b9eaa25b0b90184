#include <sfx/player/FileGate.h>

#include <sfx/source/DecodeState.h>
#include <sfx/source/UserAudioFile.h>

namespace vemo::audio {

namespace {

// Some user files give the decoder neither a buffer nor an error, ever.
constexpr auto LongestStandstill = std::chrono::seconds(10);

bool HasFormat(const SfxFileInterface& file) {
    return file.ChannelCount() > 0 && file.SampleRate() >= 1.0;
}

} // namespace

FileGate::FileGate(SfxFileInterface* file)
    : file_(file), since_(std::chrono::steady_clock::now()), progressAt_(since_) {}

FileGate::State FileGate::Look() {
    if (file_ == nullptr || stuck_)
        return State::Unusable;
    const auto* decode = dynamic_cast<const DecodeState*>(file_);
    if (decode == nullptr)
        return HasFormat(*file_) ? State::Open : State::Waiting;
    switch (decode->stage()) {
    case DecodeState::Stage::Ready:
        return HasFormat(*file_) ? State::Open : State::Unusable;
    case DecodeState::Stage::Failed:
        return State::Unusable;
    case DecodeState::Stage::Decoding:
        break;
    }
    return Stuck() ? State::Unusable : State::Waiting;
}

bool FileGate::Stuck() {
    const auto* user = dynamic_cast<const UserAudioFile*>(file_);
    if (user == nullptr)
        return false;
    const auto now = std::chrono::steady_clock::now();
    if (user->DecodedBytes() != decodedBytes_) {
        decodedBytes_ = user->DecodedBytes();
        progressAt_ = now;
    }
    stuck_ = now - progressAt_ > LongestStandstill;
    return stuck_;
}

QString FileGate::Reason() const {
    if (file_ == nullptr)
        return QStringLiteral("the player has no file");
    const auto* decode = dynamic_cast<const DecodeState*>(file_);
    const std::string failure = decode == nullptr ? std::string() : decode->failure();
    const std::string path = file_->Path();
    return QString::fromStdString(!failure.empty() ? failure
                                                   : path + ": the decoder gives no sound");
}

std::chrono::steady_clock::duration FileGate::Waited() const {
    return std::chrono::steady_clock::now() - since_;
}

} // namespace vemo::audio
