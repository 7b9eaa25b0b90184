// Measures a recording: raw interleaved signed 16-bit PCM, as parec writes it.
//
//   pcm-meter FILE CHANNELS RATE
//
// One line: the seconds from the first to the last sample that is heard, and each channel's peak
// and RMS over that stretch. Exit code 1 when the recording is silent.

#include <charconv>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <iomanip>
#include <iostream>
#include <iterator>
#include <vector>

#include "PcmLevel.h"

namespace {

// A null sink dithers nothing: what is beyond one step of the quantiser was played.
constexpr int AUDIBLE = 2;
constexpr unsigned int MOST_CHANNELS = 32;
constexpr unsigned int MOST_RATE = 384000;

bool number(const char* text, unsigned int most, unsigned int& value) {
    const char* end = text + std::strlen(text);
    const auto [stop, error] = std::from_chars(text, end, value);
    return error == std::errc{} && stop == end && value > 0 && value <= most;
}

int measure(const std::vector<std::int16_t>& samples, unsigned int channels, unsigned int rate) {
    const auto heard = [](std::int16_t sample) { return std::abs(int{sample}) >= AUDIBLE; };
    const auto first = std::find_if(samples.begin(), samples.end(), heard);
    if (first == samples.end()) {
        std::cout << "silent\n";
        return 1;
    }
    const auto last = std::find_if(samples.rbegin(), samples.rend(), heard).base();
    const auto from = (first - samples.begin()) / channels * channels;
    const auto to = std::min<std::ptrdiff_t>(
        ((last - samples.begin() - 1) / channels + 1) * channels, std::ssize(samples));
    const std::span heardPart(samples.data() + from, static_cast<std::size_t>(to - from));
    std::cout << std::fixed << std::setprecision(2)
              << static_cast<double>(heardPart.size()) / (channels * static_cast<double>(rate))
              << " s heard";
    for (unsigned int channel = 0; channel < channels; ++channel) {
        const auto level = vemo::tool::levelOf(heardPart, channels, channel);
        std::cout << ", channel " << channel + 1 << " peak " << vemo::tool::decibelText(level.peak)
                  << " RMS " << vemo::tool::decibelText(level.rms);
    }
    std::cout << '\n';
    return 0;
}

} // namespace

int main(int argc, char** argv) {
    unsigned int channels = 0;
    unsigned int rate = 0;
    if (argc != 4 || !number(argv[2], MOST_CHANNELS, channels) ||
        !number(argv[3], MOST_RATE, rate)) {
        std::cerr << "usage: pcm-meter FILE CHANNELS RATE\n";
        return 2;
    }
    std::ifstream in(argv[1], std::ios::binary);
    if (!in) {
        std::cerr << "pcm-meter: " << argv[1] << " cannot be read\n";
        return 2;
    }
    const std::vector<char> bytes{std::istreambuf_iterator<char>(in), {}};
    std::vector<std::int16_t> samples(bytes.size() / sizeof(std::int16_t));
    std::memcpy(samples.data(), bytes.data(), samples.size() * sizeof(std::int16_t));
    return measure(samples, channels, rate);
}
