#include <sfx/source/SfxAudioStream.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <mutex>
#include <utility>
#include <vector>

#include <sfx/source/EncryptedVorbisFile.h>
#include <sfx/source/SfxPanFilter.h>
#include <sfx/source/SfxReverbFilter.h>
#include <sfx/source/UserAudioFile.h>

#include "PcmConversion.h"

namespace vemo::audio {

namespace {

constexpr std::uint32_t kWithoutEnd = 0xFFFFFFFF;

// A stream never destroys its file, not even one it made itself. The store is never destroyed
// either, so that those files stay reachable to the end.
const SfxFileInterface* makeLastingFile(const std::string& path) {
    struct Store {
        std::mutex mutex;
        std::vector<std::unique_ptr<EncryptedVorbisFile>> files;
    };
    static Store& store = *new Store;
    auto file = std::make_unique<EncryptedVorbisFile>(path);
    const std::lock_guard lock(store.mutex);
    return store.files.emplace_back(std::move(file)).get();
}

QAudioFormat::SampleFormat sampleFormatOf(const SfxFileInterface* file) {
    const auto* user = dynamic_cast<const UserAudioFile*>(file);
    const auto format = user != nullptr ? user->Format().sampleFormat() : QAudioFormat::Int16;
    return format == QAudioFormat::Unknown ? QAudioFormat::Int16 : format;
}

} // namespace

SfxAudioStream::SfxAudioStream(std::shared_ptr<sfx::SfxDto> sfx, const SfxFileInterface* file,
                               QObject* parent)
    : QIODevice(parent),
      sfx_(std::move(sfx)),
      file_(file != nullptr ? file : makeLastingFile(sfx_->effectPath())) {
    if (sfx_->reverb() > SfxAudioFilterInterface::EPSILON) {
        filters_.push_back(std::make_shared<SfxReverbFilter>(sfx_, nullptr));
    }
    if (std::abs(sfx_->pan() - 0.5F) > SfxAudioFilterInterface::EPSILON) {
        filters_.push_back(std::make_shared<SfxPanFilter>(sfx_, nullptr));
    }
    repeatsLeft_ = static_cast<std::uint32_t>(sfx_->repeats());
}

SfxAudioStream::~SfxAudioStream() = default;

bool SfxAudioStream::open(QIODevice::OpenMode mode) {
    if (mode != QIODevice::ReadOnly || file_->ChannelCount() == 0) {
        return false;
    }
    // Read() only hands out a range, but is not const in the interface.
    const auto [first, last] = const_cast<SfxFileInterface*>(file_)->Read();
    begin_ = current_ = first;
    end_ = last;
    sampleFormat_ = sampleFormatOf(file_);
    QAudioFormat format;
    format.setSampleFormat(sampleFormat_);
    sampleBytes_ = static_cast<unsigned int>(format.bytesPerSample());
    return QIODevice::open(mode);
}

void SfxAudioStream::close() {
    resetStream();
    QIODevice::close();
}

// -1, not 0, when nothing is left: meant so, whatever QIODevice makes of it.
qint64 SfxAudioStream::bytesAvailable() const {
    const qint64 available = (end_ - current_) + QIODevice::bytesAvailable();
    return available > 0 ? available : -1;
}

bool SfxAudioStream::canReadLine() const {
    return false;
}

void SfxAudioStream::resetStream() {
    if (begin_ == nullptr) {
        return;
    }
    repeatsLeft_ = static_cast<std::uint32_t>(sfx_->repeats());
    current_ = begin_;
    if (isOpen()) {
        seek(0);
    }
}

double SfxAudioStream::duration() const {
    return file_->Duration();
}

qint64 SfxAudioStream::readData(char* data, qint64 maxSize) {
    if (current_ == end_) {
        if (repeatsLeft_ != 0) {
            // Only an empty file gets here with repeats left; the signal is meant.
            Q_EMIT aboutToClose();
        }
        return -1;
    }
    qint64 size = FilterData_(data, maxSize, 0);
    if (rewindAtEnd_() && size < maxSize) {
        size += FilterData_(data, maxSize - size, size);
        // No second wrap in one read, but the next one must find something to play.
        rewindAtEnd_();
    }
    return size;
}

qint64 SfxAudioStream::writeData(const char* /*data*/, qint64 /*size*/) {
    return -1;
}

bool SfxAudioStream::rewindAtEnd_() {
    if (current_ != end_ || repeatsLeft_ == 0) {
        return false;
    }
    if (repeatsLeft_ != kWithoutEnd) {
        --repeatsLeft_;
    }
    current_ = begin_;
    return true;
}

qint64 SfxAudioStream::FilterData_(char* data, qint64 maxSize, qint64 offset) {
    const qint64 size = std::max<qint64>(0, std::min<qint64>(maxSize, end_ - current_));
    std::memcpy(data + offset, current_, static_cast<std::size_t>(size));
    const unsigned int channels = file_->ChannelCount();
    if (!filters_.empty() && channels != 0) {
        const std::size_t frameBytes = std::size_t{channels} * sampleBytes_;
        // From the start of the chunk, not from its new part: after a wrap the filters run again
        // over the first frames and the new bytes pass as they are. Meant so.
        applyFilters_(data, static_cast<std::size_t>(size) / frameBytes, channels);
    }
    current_ += size;
    return size;
}

void SfxAudioStream::applyFilters_(char* data, std::size_t frames, unsigned int channels) {
    const bool aligned = reinterpret_cast<std::uintptr_t>(data) % alignof(std::int16_t) == 0;
    if (sampleFormat_ == QAudioFormat::Int16 && aligned) {
        for (const auto& filter : filters_) {
            filter->apply(reinterpret_cast<std::int16_t*>(data), static_cast<qint64>(frames),
                          channels);
        }
        return;
    }
    // The filters know 16-bit samples only. A sink's gulp of 16 KiB is one block in any format.
    const std::size_t framesPerBlock = scratch_.size() / channels;
    if (framesPerBlock == 0) {
        return;
    }
    while (frames > 0) {
        const std::size_t blockFrames = std::min(frames, framesPerBlock);
        const std::size_t samples = blockFrames * channels;
        toInt16(data, sampleFormat_, scratch_.data(), samples);
        for (const auto& filter : filters_) {
            filter->apply(scratch_.data(), static_cast<qint64>(blockFrames), channels);
        }
        fromInt16(scratch_.data(), sampleFormat_, data, samples);
        data += samples * sampleBytes_;
        frames -= blockFrames;
    }
}

} // namespace vemo::audio
