#pragma once

#include <cstdint>
#include <vector>

#include <vemo_audio/export.h>

namespace vemo_audio {

/// Decodes a whole Ogg Vorbis stream in memory. One object is used by one thread.
class VEMO_AUDIO_EXPORT OggVorbisDecoder {
public:
    /// `bytes` holds the complete stream of `length` bytes; it must outlive the decoder and is
    /// not changed.
    OggVorbisDecoder(unsigned char* bytes, std::int64_t length);
    virtual ~OggVorbisDecoder();

    OggVorbisDecoder(const OggVorbisDecoder&) = delete;
    OggVorbisDecoder& operator=(const OggVorbisDecoder&) = delete;

    /// The stream as interleaved signed 16-bit PCM in native byte order.
    /// Throws std::runtime_error, naming the fault, on anything but an Ogg Vorbis stream; skips
    /// what is damaged in one.
    virtual std::vector<unsigned char> Decode();

    /// 0 before Decode().
    std::uint16_t ChannelCount() const;
    /// Frames per second; 0 before Decode().
    std::uint32_t SampleRate() const;
    /// After Decode(): parts of the stream were missing or broken and have been skipped.
    bool Damaged() const;

private:
    unsigned char* bytes_;
    std::int64_t length_;
    std::uint16_t channelCount_ = 0;
    std::uint32_t sampleRate_ = 0;
    bool damaged_ = false;
};

} // namespace vemo_audio
