// A minute of stereo pulled in 16 KiB reads, as a sink does it, against a plain copy of it.
#include <cstring>
#include <memory>
#include <random>
#include <vector>

#include <benchmark/benchmark.h>

#include <sfx/source/SfxAudioStream.h>

using namespace vemo::audio;

namespace {

constexpr std::size_t kFrames = std::size_t{60} * 44100;
constexpr std::size_t kReadBytes = 16384;

struct MinuteOfNoise : SfxFileInterface {
    std::vector<std::int16_t> pcm;

    MinuteOfNoise() : pcm(2 * kFrames) {
        std::mt19937 random;
        for (auto& sample : pcm)
            sample = static_cast<std::int16_t>(random());
    }
    std::pair<const char*, const char*> Read() override {
        const auto* bytes = reinterpret_cast<const char*>(pcm.data());
        return {bytes, bytes + pcm.size() * sizeof pcm[0]};
    }
    float Duration() const override { return 60.0F; }
    unsigned int ChannelCount() const override { return 2; }
    double SampleRate() const override { return 44100.0; }
    std::string Path() override { return {}; }
};

MinuteOfNoise& file() {
    static MinuteOfNoise noise;
    return noise;
}

void countFrames(benchmark::State& state) {
    state.counters["frames/s"] = benchmark::Counter(
        static_cast<double>(kFrames * state.iterations()), benchmark::Counter::kIsRate);
}

void copyOf(benchmark::State& state) {
    const auto [begin, end] = file().Read();
    std::vector<char> chunk(kReadBytes);
    for ([[maybe_unused]] auto _ : state) {
        for (const char* at = begin; at < end; at += kReadBytes) {
            std::memcpy(chunk.data(), at, std::min<std::size_t>(kReadBytes, end - at));
            benchmark::DoNotOptimize(chunk.data());
            benchmark::ClobberMemory();
        }
    }
    countFrames(state);
}

void stream(benchmark::State& state, float reverb, float pan) {
    const auto record =
        std::make_shared<sfx::SfxDto>(sfx::SfxDto::builder().reverb(reverb).pan(pan).build());
    SfxAudioStream stream(record, &file(), nullptr);
    if (!stream.open(QIODevice::ReadOnly)) {
        state.SkipWithError("the stream does not open");
        return;
    }
    std::vector<char> chunk(kReadBytes);
    for ([[maybe_unused]] auto _ : state) {
        while (stream.read(chunk.data(), kReadBytes) > 0) {
            benchmark::ClobberMemory();
        }
        stream.resetStream();
    }
    countFrames(state);
}

BENCHMARK(copyOf)->Name("memcpy")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(stream, no_filter, 0.0F, 0.5F)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(stream, pan, 0.0F, 0.25F)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(stream, reverb, 0.4F, 0.5F)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(stream, reverb_and_pan, 0.4F, 0.25F)->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();
