#include <sfx/source/UserAudioFile.h>

#include <atomic>
#include <chrono>

#include <QAudioBuffer>
#include <QByteArray>
#include <QThread>
#include <QTimer>
#include <QUrl>

namespace vemo::audio {

struct UserAudioFile::Data {
    std::unique_ptr<QAudioDecoder> decoder;
    float duration = 0.0F;
    std::string path;
    QByteArray buffer;
    QAudioFormat format;
    std::string failure;
    FailureHandler onFailure;
    std::unique_ptr<QTimer> standstill;
    std::atomic<std::uint64_t> decodedBytes = 0;
    std::atomic<Stage> stage = Stage::Decoding;
};

UserAudioFile::UserAudioFile(std::string path) : data_(std::make_unique<Data>()) {
    data_->path = std::move(path);
    start_();
}

UserAudioFile::UserAudioFile(std::string path, QThread& home, FailureHandler onFailure)
    : data_(std::make_unique<Data>()) {
    data_->path = std::move(path);
    data_->onFailure = std::move(onFailure);
    moveToThread(&home);
}

void UserAudioFile::Start() {
    // A decoder belongs to the thread that makes it.
    QMetaObject::invokeMethod(this, &UserAudioFile::start_, Qt::QueuedConnection);
}

UserAudioFile::~UserAudioFile() = default;

void UserAudioFile::start_() {
    data_->decoder = std::make_unique<QAudioDecoder>();
    const auto* decoder = data_->decoder.get();
    connect(decoder, &QAudioDecoder::bufferReady, this, &UserAudioFile::onBufferReady_);
    connect(decoder, qOverload<QAudioDecoder::Error>(&QAudioDecoder::error), this,
            &UserAudioFile::onError_);
    connect(decoder, &QAudioDecoder::finished, this, &UserAudioFile::onFinished_);
    if (data_->onFailure) {
        // Some files give the decoder neither a buffer nor an error, ever.
        data_->standstill = std::make_unique<QTimer>();
        data_->standstill->setSingleShot(true);
        connect(data_->standstill.get(), &QTimer::timeout, this,
                [this] { fail_("the decoder gives no sound"); });
        data_->standstill->start(std::chrono::seconds(10));
    }
    data_->decoder->setSource(QUrl(QString::fromStdString(data_->path)));
    data_->decoder->start();
}

void UserAudioFile::onBufferReady_() {
    const QAudioBuffer received = data_->decoder->read();
    if (!received.isValid() || stage() != Stage::Decoding)
        return;
    data_->buffer.append(received.constData<char>(), received.byteCount());
    data_->format = received.format();
    data_->decodedBytes.store(static_cast<std::uint64_t>(data_->buffer.size()),
                              std::memory_order_relaxed);
    if (data_->standstill)
        data_->standstill->start();
}

void UserAudioFile::onError_(QAudioDecoder::Error error) const {
    const std::string reason =
        "Error decoding audio file: " + std::to_string(static_cast<int>(error));
    fail_(reason);
    if (!data_->onFailure)
        throw vemo::sfx::CustomAudioException("warning", reason);
}

void UserAudioFile::fail_(const std::string& reason) const {
    if (stage() != Stage::Decoding)
        return;
    data_->failure = data_->path + ": " + reason;
    releaseDecoder_();
    data_->stage.store(Stage::Failed, std::memory_order_release);
    if (!data_->onFailure)
        return;
    data_->standstill->stop();
    data_->onFailure(*this, vemo::sfx::CustomAudioException("warning", reason));
}

void UserAudioFile::onFinished_() {
    if (stage() != Stage::Decoding)
        return;
    if (data_->standstill)
        data_->standstill->stop();
    // Some files end their decode without a single buffer.
    if (!data_->format.isValid()) {
        fail_("the decoder found no sound in it");
        return;
    }
    const qint64 milliseconds = data_->decoder->duration();
    const double seconds =
        milliseconds > 0
            ? static_cast<double>(milliseconds) / 1000.0
            : static_cast<double>(data_->format.durationForBytes(
                  static_cast<qint32>(data_->format.bytesPerFrame()))) /
                  1e6 * (static_cast<double>(data_->buffer.size()) / data_->format.bytesPerFrame());
    data_->duration = static_cast<float>(seconds);
    releaseDecoder_();
    data_->stage.store(Stage::Ready, std::memory_order_release);
    Q_EMIT isReady();
}

// As long as it lives it keeps the file open, and on Windows its owner could not replace it. Not at
// once: it is what calls.
void UserAudioFile::releaseDecoder_() const {
    QAudioDecoder* decoder = data_->decoder.release();
    decoder->disconnect(this);
    decoder->deleteLater();
}

QAudioFormat UserAudioFile::Format() const {
    // Until it is ready only the file's own thread may look at what has arrived.
    return stage() == Stage::Ready || QThread::currentThread() == thread() ? data_->format
                                                                           : QAudioFormat();
}

std::uint64_t UserAudioFile::DecodedBytes() const noexcept {
    return data_->decodedBytes.load(std::memory_order_relaxed);
}

std::pair<const char*, const char*> UserAudioFile::Read() {
    if (stage() != Stage::Ready && QThread::currentThread() != thread())
        return {nullptr, nullptr};
    const QByteArray& buffer = data_->buffer;
    return {buffer.constData(), buffer.constData() + buffer.size()};
}

float UserAudioFile::Duration() const {
    return stage() == Stage::Ready ? data_->duration : 0.0F;
}

unsigned int UserAudioFile::ChannelCount() const {
    return static_cast<unsigned int>(Format().channelCount());
}

double UserAudioFile::SampleRate() const {
    return static_cast<double>(Format().sampleRate());
}

std::string UserAudioFile::Path() {
    return data_->path;
}

DecodeState::Stage UserAudioFile::stage() const noexcept {
    return data_->stage.load(std::memory_order_acquire);
}

std::string UserAudioFile::failure() const {
    return stage() == Stage::Failed ? data_->failure : std::string();
}

} // namespace vemo::audio
