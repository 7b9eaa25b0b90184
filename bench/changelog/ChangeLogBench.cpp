// What it costs to read all records and to make one edit, in memory and in a show file, whose edits
// are on disk when they return. An edit is to cost the same among 100 events and among 10,000.
#include <cstdint>
#include <filesystem>
#include <string>

#include <benchmark/benchmark.h>
#include <platform/ShowHouse.h>
#include <sfx/catalogue/ChangeLogSfxRepository.h>

namespace {

void Fill(std::int64_t events) {
    vemo::audio::ChangeLogSfxRepository repository;
    for (std::int64_t i = 0; i < events; ++i) {
        repository.Save(vemo::audio::sfx::SfxDto::builder()
                            .eventId(repository.GenerateEventId())
                            .effectId("an effect of the install")
                            .name("an effect of the show")
                            .build());
    }
}

void Get(benchmark::State& state) {
    const ShowHouse house;
    Fill(state.range(0));
    vemo::audio::ChangeLogSfxRepository repository;
    while (state.KeepRunning()) {
        benchmark::DoNotOptimize(repository.Get());
    }
    state.SetComplexityN(state.range(0));
}

// The last of the events, over and over.
void Edit(benchmark::State& state) {
    const ActiveChangeLogExclusive exclusive;
    const CL::Sfx& last = exclusive.Get().SoundEffects().back();
    CL::SfxProperties properties = last.sfx_properties();
    CL::Editor editor;
    float volume = 0.0F;
    while (state.KeepRunning()) {
        properties.setVolume(volume += 1.0F);
        editor.EditSoundEffectSFXPropertyValues(last, properties);
    }
    if (last.sfx_properties().volume() != volume) {
        state.SkipWithError("the edit did not reach the log");
    }
    state.SetComplexityN(state.range(0));
}

void EditInMemory(benchmark::State& state) {
    const ShowHouse house;
    Fill(state.range(0));
    Edit(state);
}

void EditInShowFile(benchmark::State& state) {
    const ShowHouse house;
    CL::OpenShow(house.Path("bench.show"));
    Fill(state.range(0));
    Edit(state);
}

void Open(benchmark::State& state) {
    const ShowHouse house;
    const std::string path = house.Path("bench.show");
    CL::OpenShow(path);
    Fill(state.range(0));
    while (state.KeepRunning()) {
        CL::CloseShow();
        CL::OpenShow(path);
    }
    state.SetComplexityN(state.range(0));
}

BENCHMARK(Get)
    ->RangeMultiplier(10)
    ->Range(100, 10000)
    ->Unit(benchmark::kMicrosecond)
    ->Complexity(benchmark::oN);
BENCHMARK(EditInMemory)
    ->RangeMultiplier(10)
    ->Range(100, 10000)
    ->Unit(benchmark::kMicrosecond)
    ->Complexity(benchmark::o1);
BENCHMARK(EditInShowFile)
    ->RangeMultiplier(10)
    ->Range(100, 10000)
    ->Unit(benchmark::kMicrosecond)
    ->UseRealTime()
    ->Complexity(benchmark::o1);
BENCHMARK(Open)
    ->RangeMultiplier(10)
    ->Range(100, 10000)
    ->Unit(benchmark::kMicrosecond)
    ->UseRealTime()
    ->Complexity(benchmark::oN);

} // namespace

BENCHMARK_MAIN();
