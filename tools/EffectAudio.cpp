#include "EffectAudio.h"

#include <cstring>
#include <fstream>
#include <stdexcept>
#include <system_error>

#include <ogg/ogg.h>

#include <sfx/source/EffectCipher.h>
#include <vemo_audio/OggVorbisDecoder.h>

#include "System.h"

namespace vemo::tool {

namespace {

constexpr std::size_t PAGE_HEADER = 27;
constexpr std::size_t SEGMENTS_AT = 26;

bool startsPage(const std::vector<unsigned char>& bytes, std::size_t at) {
    return at + PAGE_HEADER <= bytes.size() && std::memcmp(bytes.data() + at, "OggS", 4) == 0;
}

/// Offset of the page's body; past the end of `bytes` when the header is cut off.
std::size_t bodyOf(const std::vector<unsigned char>& bytes, std::size_t page) {
    return page + PAGE_HEADER + bytes[page + SEGMENTS_AT];
}

// The decoder skips what is broken, and a broken last page just makes the effect shorter, so the
// checksum of every page is looked at here.
void checkPages(const std::vector<unsigned char>& bytes) {
    ogg_sync_state sync{};
    ogg_sync_init(&sync);
    const auto size = static_cast<long>(bytes.size());
    std::memcpy(ogg_sync_buffer(&sync, size), bytes.data(), bytes.size());
    ogg_sync_wrote(&sync, size);
    ogg_page page{};
    long taken = 0;
    long whole = 0;
    while ((taken = ogg_sync_pageseek(&sync, &page)) > 0) {
        whole += taken;
    }
    ogg_sync_clear(&sync);
    if (whole != size) {
        throw std::runtime_error("damaged or cut off at byte " + std::to_string(whole));
    }
}

} // namespace

double EffectAudio::seconds() const {
    const auto frameBytes = static_cast<double>(channels) * sizeof(std::int16_t);
    return channels == 0 || rate == 0 ? 0.0 : static_cast<double>(pcm.size()) / (frameBytes * rate);
}

std::vector<unsigned char> readBytes(const std::filesystem::path& file) {
    std::error_code error;
    const auto size = std::filesystem::file_size(file, error);
    if (error) {
        throw std::runtime_error("cannot be read: " + reasonText(error));
    }
    std::ifstream in(file, std::ios::binary);
    std::vector<unsigned char> bytes(size);
    in.read(reinterpret_cast<char*>(bytes.data()), static_cast<std::streamsize>(size));
    if (!in) {
        throw std::runtime_error("cannot be read");
    }
    return bytes;
}

bool isOggVorbis(const std::vector<unsigned char>& bytes) {
    static constexpr unsigned char IDENTIFICATION[] = {1, 'v', 'o', 'r', 'b', 'i', 's'};
    if (!startsPage(bytes, 0)) {
        return false;
    }
    const std::size_t body = bodyOf(bytes, 0);
    return body + sizeof IDENTIFICATION <= bytes.size() &&
           std::memcmp(bytes.data() + body, IDENTIFICATION, sizeof IDENTIFICATION) == 0;
}

EffectAudio decodeVorbis(std::vector<unsigned char>& bytes) {
    if (bytes.empty()) {
        throw std::runtime_error("empty");
    }
    if (!isOggVorbis(bytes)) {
        throw std::runtime_error("not Ogg Vorbis");
    }
    checkPages(bytes);
    vemo_audio::OggVorbisDecoder decoder(bytes.data(), static_cast<std::int64_t>(bytes.size()));
    EffectAudio audio;
    audio.pcm = decoder.Decode();
    if (decoder.Damaged()) {
        throw std::runtime_error("damaged or cut off");
    }
    audio.channels = decoder.ChannelCount();
    audio.rate = decoder.SampleRate();
    if (audio.seconds() <= 0.0) {
        throw std::runtime_error("holds no sound");
    }
    return audio;
}

EffectAudio decodeEffect(const std::filesystem::path& file) {
    std::vector<unsigned char> bytes = readBytes(file);
    audio::ApplyEffectCipher(bytes.data(), bytes.size());
    return decodeVorbis(bytes);
}

} // namespace vemo::tool
