#include <vemo_audio/OggVorbisDecoder.h>

#include <algorithm>
#include <bit>
#include <cstdio>
#include <cstring>
#include <stdexcept>
#include <string>

#define OV_EXCLUDE_STATIC_CALLBACKS
#include <vorbis/vorbisfile.h>

namespace vemo_audio {

namespace {

struct MemoryStream {
    const unsigned char* bytes;
    std::int64_t length;
    std::int64_t position = 0;
};

std::size_t Read(void* target, std::size_t size, std::size_t count, void* source) {
    auto& stream = *static_cast<MemoryStream*>(source);
    if (size == 0)
        return 0;
    const auto left = static_cast<std::size_t>(stream.length - stream.position) / size;
    const std::size_t items = std::min(count, left);
    if (items == 0)
        return 0;
    std::memcpy(target, stream.bytes + stream.position, items * size);
    stream.position += static_cast<std::int64_t>(items * size);
    return items;
}

int Seek(void* source, ogg_int64_t offset, int whence) {
    auto& stream = *static_cast<MemoryStream*>(source);
    const std::int64_t base = whence == SEEK_CUR   ? stream.position
                              : whence == SEEK_END ? stream.length
                                                   : 0;
    const std::int64_t target = base + offset;
    if (target < 0 || target > stream.length)
        return -1;
    stream.position = target;
    return 0;
}

long Tell(void* source) {
    return static_cast<long>(static_cast<MemoryStream*>(source)->position);
}

class VorbisFile {
public:
    explicit VorbisFile(MemoryStream& stream) {
        const int result =
            ov_open_callbacks(&stream, &file_, nullptr, 0, {Read, Seek, nullptr, Tell});
        if (result < 0)
            throw std::runtime_error("not an Ogg Vorbis stream");
    }
    ~VorbisFile() { ov_clear(&file_); }
    VorbisFile(const VorbisFile&) = delete;
    VorbisFile& operator=(const VorbisFile&) = delete;

    OggVorbis_File* get() { return &file_; }

private:
    OggVorbis_File file_{};
};

// The last page of a whole stream ends with the image and carries the end-of-stream mark.
bool EndsWithItsLastPage(const unsigned char* bytes, std::int64_t length) {
    constexpr std::int64_t Header = 27;
    for (std::int64_t at = length - Header; at >= 0; --at) {
        if (std::memcmp(bytes + at, "OggS", 4) != 0)
            continue;
        const std::int64_t segments = bytes[at + 26];
        if (at + Header + segments > length)
            return false;
        std::int64_t body = 0;
        for (std::int64_t i = 0; i < segments; ++i)
            body += bytes[at + Header + i];
        constexpr unsigned EndOfStream = 4;
        return at + Header + segments + body == length && (bytes[at + 5] & EndOfStream) != 0;
    }
    return false;
}

} // namespace

OggVorbisDecoder::OggVorbisDecoder(unsigned char* bytes, std::int64_t length)
    : bytes_(bytes), length_(std::max<std::int64_t>(length, 0)) {}

OggVorbisDecoder::~OggVorbisDecoder() = default;

std::vector<unsigned char> OggVorbisDecoder::Decode() {
    MemoryStream stream{bytes_, length_};
    VorbisFile file(stream);
    const vorbis_info* info = ov_info(file.get(), -1);
    const int channels = info->channels;
    const long rate = info->rate;

    std::vector<unsigned char> pcm;
    // What the stream says of its length is only a hint: a forged one must not cost memory.
    constexpr ogg_int64_t MostReserved = ogg_int64_t{256} << 20;
    const ogg_int64_t frameBytes = ogg_int64_t{2} * channels;
    const ogg_int64_t frames = std::max<ogg_int64_t>(ov_pcm_total(file.get(), -1), 0);
    pcm.reserve(static_cast<std::size_t>(std::min(frames, MostReserved / frameBytes) * frameBytes));

    damaged_ = !EndsWithItsLastPage(bytes_, length_);
    constexpr int BigEndian = std::endian::native == std::endian::big ? 1 : 0;
    char block[16 * 1024];
    for (;;) {
        int section = 0;
        const long got = ov_read(file.get(), block, sizeof block, BigEndian, 2, 1, &section);
        if (got == 0)
            break;
        if (got == OV_HOLE) {
            // A lost page costs some sound, not the whole effect.
            damaged_ = true;
            continue;
        }
        if (got < 0)
            throw std::runtime_error("corrupt Ogg Vorbis stream");
        info = ov_info(file.get(), section);
        if (info->channels != channels || info->rate != rate)
            throw std::runtime_error("Ogg Vorbis stream changes its format on the way");
        pcm.insert(pcm.end(), block, block + got);
    }
    channelCount_ = static_cast<std::uint16_t>(channels);
    sampleRate_ = static_cast<std::uint32_t>(rate);
    return pcm;
}

std::uint16_t OggVorbisDecoder::ChannelCount() const {
    return channelCount_;
}

std::uint32_t OggVorbisDecoder::SampleRate() const {
    return sampleRate_;
}

bool OggVorbisDecoder::Damaged() const {
    return damaged_;
}

} // namespace vemo_audio
