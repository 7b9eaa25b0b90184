#include <sfx/source/EncryptedVorbisFile.h>

#include <algorithm>
#include <atomic>
#include <cstdint>
#include <exception>
#include <filesystem>
#include <fstream>
#include <mutex>
#include <vector>

#include <QAudioFormat>
#include <QByteArray>
#include <QThreadPool>
#include <QtConcurrentRun>

#include <sfx/model/InternedText.h>
#include <sfx/model/SfxException.h>
#include <sfx/source/EffectCipher.h>
#include <vemo_audio/OggVorbisDecoder.h>

namespace vemo::audio {

namespace {

struct Pcm {
    std::vector<unsigned char> bytes;
    double sampleRate = 0.0;
    unsigned int channels = 0;
};

std::ifstream Open_(const std::string& path) {
    const std::u8string utf8(path.begin(), path.end());
    std::ifstream stream(std::filesystem::path(utf8), std::ios::in | std::ios::binary);
    if (!stream.is_open())
        throw SfxException(InternText("SFX File Failed to Open: " + path));
    return stream;
}

// One pass: each block is XORed while it is still in the cache, in the vector it stays in.
std::vector<unsigned char> Decrypt_(std::ifstream& stream) {
    constexpr std::size_t Block = 65536;
    std::vector<unsigned char> bytes;
    const auto start = stream.tellg();
    if (start >= 0 && stream.seekg(0, std::ios::end)) {
        const auto end = stream.tellg();
        // A folder opens like a file on some systems and claims a size beyond all memory.
        constexpr std::streamoff Sane = std::streamoff{1} << 40;
        if (end > start && end - start < Sane)
            bytes.reserve(static_cast<std::size_t>(end - start));
    }
    stream.clear();
    stream.seekg(start);
    std::streamsize got = 0;
    do {
        const std::size_t filled = bytes.size();
        bytes.resize(std::max(filled + 1, std::min(bytes.capacity(), filled + Block)));
        got = stream.rdbuf()->sgetn(reinterpret_cast<char*>(bytes.data() + filled),
                                    static_cast<std::streamsize>(bytes.size() - filled));
        bytes.resize(filled + static_cast<std::size_t>(std::max<std::streamsize>(got, 0)));
        ApplyEffectCipher(bytes.data() + filled, bytes.size() - filled);
    } while (got > 0);
    return bytes;
}

std::vector<unsigned char> Decode_(std::vector<unsigned char>& bytes, double& sampleRate,
                                   unsigned int& channels) {
    vemo_audio::OggVorbisDecoder decoder(bytes.data(), static_cast<std::int64_t>(bytes.size()));
    auto pcm = decoder.Decode();
    sampleRate = static_cast<double>(decoder.SampleRate());
    channels = decoder.ChannelCount();
    return pcm;
}

Pcm ExtractAudioData_(const std::string& path) {
    auto stream = Open_(path);
    auto bytes = Decrypt_(stream);
    Pcm pcm;
    pcm.bytes = Decode_(bytes, pcm.sampleRate, pcm.channels);
    return pcm;
}

} // namespace

// Shared by the file and its decode task, so that the file may go while the task still runs.
struct EncryptedVorbisFile::Decode {
    float duration = 0.0F;
    std::string path;
    QByteArray buffer;
    QAudioFormat format;
    std::string failure;
    std::mutex mutex; // held by the task for its whole run
    std::atomic<bool> taken = false;
    std::atomic<Stage> stage = Stage::Decoding;

    // Recursive, since a directly connected receiver of isReady may destroy the file.
    std::recursive_mutex ownerMutex;
    EncryptedVorbisFile* owner = nullptr;

    void Run() {
        if (taken.exchange(true))
            return;
        const std::lock_guard lock(mutex);
        try {
            Fill(ExtractAudioData_(path));
        } catch (const std::exception& fault) {
            failure = fault.what();
            if (failure.find(path) == std::string::npos)
                failure = path + ": " + failure;
            stage.store(Stage::Failed, std::memory_order_release);
            return;
        }
        const std::lock_guard ownerLock(ownerMutex);
        if (owner != nullptr)
            Q_EMIT owner->isReady();
    }

    void Fill(const Pcm& pcm) {
        buffer.append(reinterpret_cast<const char*>(pcm.bytes.data()),
                      static_cast<qsizetype>(pcm.bytes.size()));
        format.setSampleRate(static_cast<int>(pcm.sampleRate));
        format.setChannelCount(static_cast<int>(pcm.channels));
        format.setSampleFormat(QAudioFormat::Int16);
        // Leaves out the two bytes of a sample on purpose: every consumer knows the doubled value.
        const double divisor =
            static_cast<double>(static_cast<std::int16_t>(pcm.channels)) * format.sampleRate();
        duration = static_cast<float>(static_cast<double>(buffer.size()) / divisor);
        stage.store(Stage::Ready, std::memory_order_release);
    }
};

EncryptedVorbisFile::EncryptedVorbisFile(std::string path)
    : EncryptedVorbisFile(std::move(path), nullptr) {}

EncryptedVorbisFile::EncryptedVorbisFile(std::string path,
                                         const std::function<void(EncryptedVorbisFile&)>& connect)
    : decode_(std::make_shared<Decode>()) {
    decode_->path = std::move(path);
    decode_->owner = this;
    if (connect)
        connect(*this);
    LoadBuffer_();
}

EncryptedVorbisFile::~EncryptedVorbisFile() {
    const std::lock_guard lock(decode_->ownerMutex);
    decode_->owner = nullptr;
}

void EncryptedVorbisFile::LoadBuffer_() {
    // The future is dropped: a failure stays in stage() and failure().
    static_cast<void>(
        QtConcurrent::run(QThreadPool::globalInstance(), [decode = decode_] { decode->Run(); }));
}

void EncryptedVorbisFile::Expedite() {
    if (decode_->taken)
        return;
    // A second task, ahead of the queue; whichever comes first decodes.
    constexpr int AheadOfTheQueue = 2;
    const auto decode = [decode = decode_] {
        try {
            decode->Run();
        } catch (...) { // a receiver's; the first task would have dropped it with its future
        }
    };
    QThreadPool::globalInstance()->start(decode, AheadOfTheQueue);
}

std::pair<const char*, const char*> EncryptedVorbisFile::Read() {
    if (stage() != Stage::Ready)
        return {nullptr, nullptr};
    const QByteArray& buffer = decode_->buffer;
    return {buffer.constData(), buffer.constData() + buffer.size()};
}

float EncryptedVorbisFile::Duration() const {
    return stage() == Stage::Ready ? decode_->duration : 0.0F;
}

unsigned int EncryptedVorbisFile::ChannelCount() const {
    return stage() == Stage::Ready ? static_cast<unsigned int>(decode_->format.channelCount()) : 0;
}

double EncryptedVorbisFile::SampleRate() const {
    return stage() == Stage::Ready ? static_cast<double>(decode_->format.sampleRate()) : 0.0;
}

std::string EncryptedVorbisFile::Path() {
    return decode_->path;
}

DecodeState::Stage EncryptedVorbisFile::stage() const noexcept {
    return decode_->stage.load(std::memory_order_acquire);
}

std::string EncryptedVorbisFile::failure() const {
    return stage() == Stage::Failed ? decode_->failure : std::string();
}

} // namespace vemo::audio
