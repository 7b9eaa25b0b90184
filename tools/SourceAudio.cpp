#include "SourceAudio.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <memory>
#include <stdexcept>
#include <string>

#include <sndfile.h>

namespace vemo::tool {

namespace {

// libsndfile's encoder keeps a whole write on its stack, so it gets modest pieces.
constexpr sf_count_t CHUNK_FRAMES = 1024;
// About 190 kbit/s in stereo: transparent for effects, and still a tenth of the PCM.
constexpr double VBR_QUALITY = 0.6;

struct CloseSound {
    void operator()(SNDFILE* sound) const { sf_close(sound); }
};
using Sound = std::unique_ptr<SNDFILE, CloseSound>;

std::runtime_error soundError(const std::string& what, SNDFILE* sound) {
    std::string reason = sf_strerror(sound);
    while (!reason.empty() && (reason.back() == '.' || reason.back() == '\n')) {
        reason.pop_back();
    }
    return std::runtime_error(what + ": " + reason);
}

/// A file in memory for libsndfile.
struct Memory {
    std::vector<unsigned char> bytes;
    std::size_t at = 0;

    static Memory& of(void* user) { return *static_cast<Memory*>(user); }
    static sf_count_t length(void* user) { return static_cast<sf_count_t>(of(user).bytes.size()); }
    static sf_count_t tell(void* user) { return static_cast<sf_count_t>(of(user).at); }

    static sf_count_t seek(sf_count_t offset, int whence, void* user) {
        const sf_count_t base = whence == SEEK_SET   ? 0
                                : whence == SEEK_CUR ? tell(user)
                                                     : length(user);
        of(user).at =
            static_cast<std::size_t>(std::clamp<sf_count_t>(base + offset, 0, length(user)));
        return tell(user);
    }
    static sf_count_t read(void* to, sf_count_t count, void* user) {
        Memory& memory = of(user);
        const auto size =
            std::min(static_cast<std::size_t>(count), memory.bytes.size() - memory.at);
        std::memcpy(to, memory.bytes.data() + memory.at, size);
        memory.at += size;
        return static_cast<sf_count_t>(size);
    }
    static sf_count_t write(const void* from, sf_count_t count, void* user) {
        Memory& memory = of(user);
        const auto size = static_cast<std::size_t>(count);
        memory.bytes.resize(std::max(memory.bytes.size(), memory.at + size));
        std::memcpy(memory.bytes.data() + memory.at, from, size);
        memory.at += size;
        return count;
    }
    static SF_VIRTUAL_IO* calls() {
        static SF_VIRTUAL_IO io{length, seek, read, write, tell};
        return &io;
    }
};

void copyFrames(SNDFILE* from, SNDFILE* to, int channels, const std::function<void()>& checkpoint,
                const std::string& refused) {
    std::vector<float> frames(static_cast<std::size_t>(CHUNK_FRAMES * channels));
    for (;;) {
        checkpoint();
        const sf_count_t count = sf_readf_float(from, frames.data(), CHUNK_FRAMES);
        if (count <= 0) {
            break;
        }
        const auto end = frames.begin() + count * channels;
        if (!std::all_of(frames.begin(), end, [](float x) { return std::isfinite(x); })) {
            throw std::runtime_error("holds samples that are not numbers");
        }
        if (sf_writef_float(to, frames.data(), count) != count) {
            throw soundError(refused, to);
        }
    }
    if (sf_error(from) != SF_ERR_NO_ERROR) {
        throw soundError("cannot be decoded", from);
    }
}

std::vector<unsigned char> encode(std::vector<unsigned char> source,
                                  const std::function<void()>& checkpoint) {
    Memory in{std::move(source)};
    SF_INFO info{};
    const Sound reader(sf_open_virtual(Memory::calls(), SFM_READ, &info, &in));
    if (!reader) {
        throw soundError("is not an audio file that can be read", nullptr);
    }
    if (info.frames == 0) {
        throw std::runtime_error("holds no sound");
    }

    Memory out;
    SF_INFO format{};
    format.samplerate = info.samplerate;
    format.channels = info.channels;
    format.format = SF_FORMAT_OGG | SF_FORMAT_VORBIS;
    const std::string refused = "cannot be encoded at " + std::to_string(info.samplerate) +
                                " Hz with " + std::to_string(info.channels) +
                                (info.channels == 1 ? " channel" : " channels");
    Sound writer(sf_open_virtual(Memory::calls(), SFM_WRITE, &format, &out));
    if (!writer) {
        throw soundError(refused, nullptr);
    }
    double quality = VBR_QUALITY;
    sf_command(writer.get(), SFC_SET_VBR_ENCODING_QUALITY, &quality, sizeof quality);
    copyFrames(reader.get(), writer.get(), info.channels, checkpoint, refused);
    writer.reset();
    return std::move(out.bytes);
}

} // namespace

PackedAudio packAudio(const std::filesystem::path& file, const std::function<void()>& checkpoint) {
    PackedAudio audio;
    audio.vorbis = readBytes(file);
    if (audio.vorbis.empty()) {
        throw std::runtime_error("empty");
    }
    if (!isOggVorbis(audio.vorbis)) {
        audio.vorbis = encode(std::move(audio.vorbis), checkpoint);
        audio.encoded = true;
    }
    checkpoint();
    audio.seconds = decodeVorbis(audio.vorbis).seconds();
    return audio;
}

} // namespace vemo::tool
