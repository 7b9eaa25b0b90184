#include <sfx/player/SinkStage.h>

#include <algorithm>

#include <QMediaDevices>
#include <QTimer>

#include <sfx/player/FileGate.h>
#include <sfx/player/Log.h>
#include <sfx/player/Playback.h>
#include <sfx/player/SinkQuirks.h>
#include <sfx/source/EncryptedVorbisFile.h>
#include <sfx/source/UserAudioFile.h>

namespace vemo::audio {

namespace {

using namespace std::chrono_literals;

constexpr auto TickInterval = 200ms;
constexpr unsigned int TicksPerDeviceLook = 3;
// An output that is just waking up may take two seconds to its first read.
constexpr unsigned int QuietTicksAllowed = 25;

std::int64_t BytesToPlay(SfxFileInterface& file, const sfx::SfxDto& record) {
    constexpr auto Most = std::int64_t{1} << 62;
    const auto [first, last] = file.Read();
    const auto passes = std::int64_t{static_cast<std::uint32_t>(record.repeats())} + 1;
    return last - first > Most / passes ? Most : (last - first) * passes;
}

} // namespace

SinkStage::SinkStage(Playback& playback) : playback_(playback) {}

SinkStage::~SinkStage() {
    // A fade may still be at it.
    if (link_)
        link_->Cut();
    playback_.ForgetDevice();
    // An unstopped sink still feeds itself while it is destroyed, which the pulse client does not
    // survive.
    Close();
}

void SinkStage::Sound() {
    QTimer tick;
    QObject::connect(&tick, &QTimer::timeout, &tick, [this] { OnTick(); });
    tick.start(TickInterval);

    file_ = WaitForFile();
    if (file_ == nullptr || !Open(*file_) || !playback_.EnterPlaying(link_, *device_))
        return;
    Start();
    if (!ended_)
        loop_.exec();
}

std::shared_ptr<SfxFileInterface> SinkStage::WaitForFile() {
    auto file = playback_.state_.File();
    FileGate gate(file.get());
    // The wait is short or the cue is late anyway: look often at first, then take it easy.
    QTimer poll;
    poll.setTimerType(Qt::PreciseTimer);
    QObject::connect(&poll, &QTimer::timeout, &poll, [&] {
        if (playback_.StopCameEarly() || gate.Look() != FileGate::State::Waiting)
            loop_.quit();
        else if (gate.Waited() > 1s)
            poll.setInterval(20ms);
    });
    if (gate.Look() == FileGate::State::Waiting) {
        if (auto* installed = dynamic_cast<EncryptedVorbisFile*>(file.get()))
            installed->Expedite();
        poll.start(2ms);
        loop_.exec();
    }
    if (gate.Look() == FileGate::State::Unusable)
        qCWarning(lcPlayer).noquote() << "nothing to play:" << gate.Reason();
    return gate.Look() == FileGate::State::Open ? file : nullptr;
}

QAudioFormat SinkStage::FormatOf(const SfxFileInterface& file) const {
    if (const auto* user = dynamic_cast<const UserAudioFile*>(&file))
        return user->Format();
    QAudioFormat format = output_.preferredFormat();
    format.setSampleFormat(QAudioFormat::Int16);
    format.setChannelCount(static_cast<int>(file.ChannelCount()));
    format.setSampleRate(static_cast<int>(file.SampleRate()));
    return format;
}

bool SinkStage::Open(SfxFileInterface& file) {
    record_ = std::make_shared<sfx::SfxDto>(*playback_.state_.Record());
    stream_ = std::make_unique<SfxAudioStream>(record_, &file, nullptr);
    // Looked up just before it is opened: an output that has gone holds its opener for ever.
    output_ = QMediaDevices::defaultAudioOutput();
    if (output_.isNull()) {
        qCWarning(lcPlayer) << "no audio output to play on";
        return false;
    }
    if (!stream_->open(QIODevice::ReadOnly))
        return false;
    format_ = FormatOf(file);
    device_ = std::make_unique<PullDevice>(*stream_, format_, BytesToPlay(file, *record_));
    // A sink of its own for every playback: one that is restarted shrinks its buffer each time.
    sink_ = std::make_unique<QAudioSink>(output_, format_);
    ChooseBufferSize(*sink_, format_);
    link_ = std::make_shared<SinkLink>(*sink_);
    QObject::connect(sink_.get(), &QAudioSink::stateChanged, sink_.get(),
                     [this](QAudio::State state) { OnStateChanged(state); });
    return true;
}

void SinkStage::Start() {
    const unsigned short fadeIn = record_->fadeIn();
    const bool startsSilent = fadeIn != 0 && stream_->duration() * 1000.0 > fadeIn;
    link_->SetVolume(startsSilent ? 0.0 : static_cast<double>(record_->volume()));

    playback_.CountBeat();
    sink_->start(device_.get());
    playback_.CountBeat();
    if (playback_.WasAbandoned()) {
        End();
        return;
    }
    if (ended_ || sink_->state() == QAudio::StoppedState) {
        qCWarning(lcPlayer).noquote()
            << "cannot open" << output_.description() << "error" << sink_->error();
        End();
        return;
    }
    device_->SetTail(
        std::max<std::int64_t>(sink_->bufferSize(), format_.bytesForDuration(100'000)));
    Q_EMIT playback_.player_.fadeRequested(record_->volume(), fadeIn, false);
    playback_.EnterStarted();
}

void SinkStage::OnStateChanged(QAudio::State state) {
    switch (state) {
    case QAudio::ActiveState:
        return;
    case QAudio::IdleState:
        // Idle with sound left is an underrun: the sink goes on with the next read, and so does
        // the effect.
        if (!device_->atEnd())
            return;
        break;
    case QAudio::StoppedState:
        // From a stopping fade, while the sink itself runs on: let its last steps be heard.
        if (sink_->state() != QAudio::StoppedState &&
            link_->LastStop() == SinkLink::Stop::AfterBuffer) {
            device_->EndStream();
            return;
        }
        if (sink_->state() == QAudio::StoppedState && !ended_)
            qCWarning(lcPlayer).noquote() << output_.description() << "has stopped by itself";
        break;
    case QAudio::SuspendedState:
        break;
    }
    End();
}

void SinkStage::OnTick() {
    playback_.CountBeat();
    ++ticks_;
    if (!sink_)
        return;
    if (const char* fault = Fault()) {
        qCWarning(lcPlayer).noquote() << output_.description() << fault;
        End();
    }
}

const char* SinkStage::Fault() {
    const std::int64_t read = device_->BytesRead();
    quietTicks_ = read == bytesSeen_ ? quietTicks_ + 1 : 0;
    bytesSeen_ = read;
    if (quietTicks_ > QuietTicksAllowed)
        return "has stopped taking sound";
    if (sink_->error() == QAudio::IOError || sink_->error() == QAudio::FatalError)
        return "has failed";
    // A sink whose output was removed stays active for ever; only the list of outputs tells.
    if (ticks_ % TicksPerDeviceLook == 0 && !QMediaDevices::audioOutputs().contains(output_))
        return "was removed";
    return nullptr;
}

void SinkStage::End() {
    ended_ = true;
    if (loop_.isRunning())
        loop_.quit();
}

void SinkStage::Close() {
    if (sink_)
        sink_->stop();
    if (stream_ && stream_->isOpen())
        stream_->close();
}

} // namespace vemo::audio
