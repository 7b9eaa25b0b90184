#include "EffectAudio.h"

#include <algorithm>
#include <cstring>
#include <fstream>
#include <stdexcept>
#include <system_error>

#include <vemo_audio/OggVorbisDecoder.h>

namespace vemo::tool {

namespace {

constexpr std::size_t PAGE_HEADER = 27;
constexpr std::size_t FLAGS_AT = 5;
constexpr std::size_t SEGMENTS_AT = 26;
constexpr unsigned char END_OF_STREAM = 0x04;

bool startsPage(const std::vector<unsigned char>& bytes, std::size_t at) {
    return at + PAGE_HEADER <= bytes.size() && std::memcmp(bytes.data() + at, "OggS", 4) == 0;
}

/// Offset of the page's body; past the end of `bytes` when the header is cut off.
std::size_t bodyOf(const std::vector<unsigned char>& bytes, std::size_t page) {
    return page + PAGE_HEADER + bytes[page + SEGMENTS_AT];
}

// A decoder plays what there is of a stream that was cut between two pages and sees no fault, so
// the pages are walked here to their end mark.
void checkPages(const std::vector<unsigned char>& bytes) {
    std::size_t page = 0;
    bool ended = false;
    while (page < bytes.size()) {
        if (bytes.size() - page < PAGE_HEADER) {
            throw std::runtime_error("truncated: the last page is cut off");
        }
        if (!startsPage(bytes, page)) {
            throw std::runtime_error("damaged: no Ogg page at byte " + std::to_string(page));
        }
        const std::size_t body = bodyOf(bytes, page);
        std::size_t next = body;
        for (std::size_t lace = page + PAGE_HEADER; lace < std::min(body, bytes.size()); ++lace) {
            next += bytes[lace];
        }
        if (next > bytes.size()) {
            throw std::runtime_error("truncated: the last page is cut off");
        }
        ended = (bytes[page + FLAGS_AT] & END_OF_STREAM) != 0;
        page = next;
    }
    if (!ended) {
        throw std::runtime_error("truncated: the stream's last page is missing");
    }
}

} // namespace

double EffectAudio::seconds() const {
    const auto frameBytes = static_cast<double>(channels) * sizeof(std::int16_t);
    return channels == 0 || rate == 0 ? 0.0 : static_cast<double>(pcm.size()) / (frameBytes * rate);
}

void applyKey(std::vector<unsigned char>& bytes) {
    for (unsigned char& byte : bytes) {
        byte ^= KEY_BYTE;
    }
}

std::vector<unsigned char> readBytes(const std::filesystem::path& file) {
    std::error_code error;
    const auto size = std::filesystem::file_size(file, error);
    if (error) {
        throw std::runtime_error("cannot be read: " + error.message());
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
    audio.channels = decoder.ChannelCount();
    audio.rate = decoder.SampleRate();
    if (audio.seconds() <= 0.0) {
        throw std::runtime_error("holds no sound");
    }
    return audio;
}

EffectAudio decodeEffect(const std::filesystem::path& file) {
    std::vector<unsigned char> bytes = readBytes(file);
    applyKey(bytes);
    return decodeVorbis(bytes);
}

} // namespace vemo::tool
