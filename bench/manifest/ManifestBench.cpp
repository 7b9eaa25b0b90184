// What it costs to load an install catalogue and to ask it. Time per effect is to stay the same
// from 100 effects to 10,000.
#include <cstdint>
#include <string>
#include <vector>

#include <benchmark/benchmark.h>
#include <catalogue/BareInstall.h>
#include <sfx/catalogue/SfxManifest.h>

namespace {

std::string Id(std::int64_t effect) {
    return "effect-" + std::to_string(effect) + ".sfx";
}

void Fill(const BareInstall& install, std::int64_t effects) {
    std::string list;
    for (std::int64_t i = 0; i < effects; ++i) {
        const std::string id = Id(i);
        install.Write(std::u8string(id.begin(), id.end()));
        list.append(i == 0 ? "" : ",\n").append(R"({"id": ")").append(id);
        list.append(R"(", "name": "an effect", "path": ")").append(id).append(R"("})");
    }
    install.WriteManifest(R"({"metadata": {"version": "1.1", "count": )" + std::to_string(effects) +
                          R"(, "ambientCount": 1}, "ambient": [], "sfx": [)" + list + "]}");
}

void PerEffect(benchmark::State& state) {
    const auto effects = static_cast<double>(state.range(0) * state.iterations());
    state.counters["per_effect"] =
        benchmark::Counter(effects, benchmark::Counter::kIsRate | benchmark::Counter::kInvert);
    state.SetComplexityN(state.range(0));
}

void Load(benchmark::State& state) {
    const BareInstall install;
    Fill(install, state.range(0));
    while (state.KeepRunning()) {
        const vemo::sfx::SfxManifest manifest;
        if (!manifest.HasEffectId(Id(state.range(0) - 1))) {
            state.SkipWithError("the last effect is not in the catalogue");
            break;
        }
    }
    PerEffect(state);
}

void LookUpAll(benchmark::State& state) {
    const BareInstall install;
    Fill(install, state.range(0));
    const vemo::sfx::SfxManifest manifest;
    std::vector<std::string> ids;
    for (std::int64_t i = 0; i < state.range(0); ++i) {
        ids.push_back(Id(i));
    }
    while (state.KeepRunning()) {
        for (const std::string& id : ids) {
            benchmark::DoNotOptimize(manifest.type(id));
            benchmark::DoNotOptimize(manifest.path(id));
            benchmark::DoNotOptimize(manifest.displayName(id));
        }
    }
    PerEffect(state);
}

BENCHMARK(Load)
    ->RangeMultiplier(10)
    ->Range(100, 10000)
    ->Unit(benchmark::kMillisecond)
    ->Complexity(benchmark::oN);
BENCHMARK(LookUpAll)
    ->RangeMultiplier(10)
    ->Range(100, 10000)
    ->Unit(benchmark::kMicrosecond)
    ->Complexity(benchmark::oN);

} // namespace

BENCHMARK_MAIN();
