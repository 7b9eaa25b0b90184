// What it costs to load described assets and to ask for them. Items per second are to stay the
// same from 100 assets to 10,000.
#include <cstdint>
#include <string>

#include <benchmark/benchmark.h>
#include <catalogue/AssetFolder.h>

namespace {

constexpr const char* kSchema = R"({
    "type": "object", "required": ["filetype", "version", "assets"],
    "properties": {"assets": {"type": "array", "items": {
        "type": "object", "required": ["type", "id", "group", "name", "filename"],
        "additionalProperties": {"type": "string", "pattern": "^[^\\\\]+$"}}}}})";

std::string Id(std::int64_t asset) {
    return "asset-" + std::to_string(asset);
}

void Fill(const AssetFolder& folder, std::int64_t assets) {
    std::string list;
    for (std::int64_t i = 0; i < assets; ++i) {
        const std::string id = Id(i);
        folder.Write(u8"base/" + std::u8string(id.begin(), id.end()));
        list.append(i == 0 ? "" : ",\n").append(OneAsset(id, id));
    }
    folder.Write(u8"schema.json", kSchema);
    folder.Write(u8"assets.json", Described(list));
}

void Load(benchmark::State& state) {
    const AssetFolder folder;
    Fill(folder, state.range(0));
    while (state.KeepRunning()) {
        if (folder.Load().GetAsset(Id(state.range(0) - 1)).Bytes().empty()) {
            state.SkipWithError("the last asset is not loaded");
            break;
        }
    }
    state.SetItemsProcessed(state.range(0) * state.iterations());
}

void LookUpAll(benchmark::State& state) {
    const AssetFolder folder;
    Fill(folder, state.range(0));
    vemo::AssetManager manager = folder.Load();
    while (state.KeepRunning()) {
        for (std::int64_t i = 0; i < state.range(0); ++i) {
            benchmark::DoNotOptimize(manager.GetAsset(Id(i)));
        }
    }
    state.SetItemsProcessed(state.range(0) * state.iterations());
}

BENCHMARK(Load)->RangeMultiplier(10)->Range(100, 10000)->Unit(benchmark::kMillisecond);
BENCHMARK(LookUpAll)->RangeMultiplier(10)->Range(100, 10000)->Unit(benchmark::kMicrosecond);

} // namespace

BENCHMARK_MAIN();
