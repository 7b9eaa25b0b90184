// An enciphered effect from file to PCM, against bare libvorbisfile on the same bytes in memory.
#include <cstdio>
#include <fstream>
#include <stdexcept>
#include <vector>

#include <QCoreApplication>
#include <QThread>

#include <benchmark/benchmark.h>
#include <vorbis/vorbisfile.h>

#include <sfx/source/EffectCipher.h>
#include <sfx/source/EncryptedVorbisFile.h>
#include <support/EffectMaker.h>

using namespace vemo::audio;

namespace {

constexpr double Seconds = 20;

sfx_test::InstallFolder& Install() {
    static sfx_test::InstallFolder folder;
    return folder;
}

const std::string& EffectPath() {
    static const std::string path = Install().AddEffect(
        "tone.sfx", "Tone", sfx_test::MakeTone({.ms = Seconds * 1000, .rate = 44100}));
    return path;
}

std::vector<unsigned char> ReadEnciphered() {
    std::ifstream file(EffectPath(), std::ios::binary);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

void timesRealTime(benchmark::State& state) {
    state.counters["x_real_time"] = benchmark::Counter(
        Seconds * static_cast<double>(state.iterations()), benchmark::Counter::kIsRate);
}

void effect(benchmark::State& state) {
    EffectPath();
    for (auto _ : state) {
        EncryptedVorbisFile file(EffectPath());
        while (file.stage() == DecodeState::Stage::Decoding)
            QThread::usleep(100);
        if (file.stage() == DecodeState::Stage::Failed)
            state.SkipWithError(file.failure().c_str());
    }
    timesRealTime(state);
}

void bareVorbisfile(benchmark::State& state) {
    auto bytes = ReadEnciphered();
    ApplyEffectCipher(bytes.data(), bytes.size());
    std::vector<char> pcm;
    for (auto _ : state) {
        FILE* image = fmemopen(bytes.data(), bytes.size(), "rb");
        OggVorbis_File file;
        if (ov_open(image, &file, nullptr, 0) < 0)
            throw std::runtime_error("not an Ogg Vorbis stream");
        pcm.clear();
        char block[16384];
        for (long got = 0; (got = ov_read(&file, block, sizeof block, 0, 2, 1, nullptr)) > 0;)
            pcm.insert(pcm.end(), block, block + got);
        ov_clear(&file);
        benchmark::DoNotOptimize(pcm.data());
    }
    timesRealTime(state);
}

void decipher(benchmark::State& state) {
    auto bytes = ReadEnciphered();
    for (auto _ : state) {
        ApplyEffectCipher(bytes.data(), bytes.size());
        benchmark::ClobberMemory();
    }
    state.SetBytesProcessed(static_cast<std::int64_t>(bytes.size() * state.iterations()));
}

// In the background: what the caller's thread waits for is real time, not its own.
BENCHMARK(effect)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(bareVorbisfile)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(decipher)->Unit(benchmark::kMicrosecond);

} // namespace

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
