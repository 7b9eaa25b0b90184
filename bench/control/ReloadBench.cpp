// What it costs to bring the players in line with the records, and what a player that does not
// play takes. Time per record is to stay the same from 100 records to 10,000.
#include <cstdint>
#include <iterator>
#include <list>
#include <memory>
#include <string>

#include <QCoreApplication>
#include <QThreadPool>

#include <benchmark/benchmark.h>
#include <catalogue/BareInstall.h>
#include <sfx/control/PlayerStore.h>
#include <support/EffectMaker.h>

#if defined(__GLIBC__)
#include <malloc.h>
#endif

namespace {

using vemo::audio::PlayerStore;
using vemo::audio::sfx::SfxDto;

std::string Id(std::int64_t effect) {
    return "effect-" + std::to_string(effect) + ".sfx";
}

/// An install of that many effects, all of them one short sound.
class Install {
public:
    explicit Install(std::int64_t effects) {
        using namespace sfx_test;
        WriteBytes(install_.Path(u8"one.sfx"), Encipher(EncodeVorbis(MakeTone({.ms = 10}))));
        std::string list;
        for (std::int64_t i = 0; i < effects; ++i) {
            list.append(i == 0 ? "" : ",\n").append(R"({"id": ")").append(Id(i));
            list.append(R"(", "name": "an effect", "path": "one.sfx"})");
        }
        install_.WriteManifest(R"({"metadata": {"version": "1.1", "count": )" +
                               std::to_string(effects) +
                               R"(, "ambientCount": 1}, "ambient": [], "sfx": [)" + list + "]}");
    }

private:
    BareInstall install_;
};

std::list<SfxDto> Records(std::int64_t count, bool oneEffect = false) {
    std::list<SfxDto> records;
    for (std::int64_t i = 0; i < count; ++i)
        records.push_back(SfxDto::builder()
                              .name("an effect")
                              .eventId("sfx." + std::to_string(i))
                              .effectId(Id(oneEffect ? 0 : i))
                              .build());
    return records;
}

std::unique_ptr<PlayerStore> MakeStore() {
    PlayerStore::Wiring wiring;
    wiring.adopt = [](QObject& object) { object.moveToThread(qApp->thread()); };
    wiring.connectFile = [](QObject&) {};
    wiring.connectPlayer = [](auto&) {};
    return std::make_unique<PlayerStore>(std::make_shared<QThreadPool>(), std::move(wiring));
}

void Reload(PlayerStore& store, const std::list<SfxDto>& records) {
    for (const SfxDto& record : records)
        store.Load(record);
    store.Prune(records);
}

/// Lets decodes end and removed players go.
void Settle() {
    QThreadPool::globalInstance()->waitForDone();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

void PerRecord(benchmark::State& state) {
    const auto records = static_cast<double>(state.range(0) * state.iterations());
    state.counters["per_record"] =
        benchmark::Counter(records, benchmark::Counter::kIsRate | benchmark::Counter::kInvert);
    state.SetComplexityN(state.range(0));
}

/// The decodes that it starts run beside it, and are not waited for.
void FirstLoad(benchmark::State& state) {
    const Install install(state.range(0));
    const auto records = Records(state.range(0));
    while (state.KeepRunning()) {
        state.PauseTiming();
        auto store = MakeStore();
        state.ResumeTiming();
        Reload(*store, records);
        state.PauseTiming();
        Settle();
        store.reset();
        Settle();
        state.ResumeTiming();
    }
    PerRecord(state);
}

void ReloadUnchanged(benchmark::State& state) {
    const Install install(state.range(0));
    const auto records = Records(state.range(0));
    const auto store = MakeStore();
    Reload(*store, records);
    Settle();
    while (state.KeepRunning())
        Reload(*store, records);
    PerRecord(state);
}

void ReloadOnePercentChanged(benchmark::State& state) {
    const Install install(state.range(0));
    auto records = Records(state.range(0));
    const auto store = MakeStore();
    Reload(*store, records);
    Settle();
    float volume = 0.0F;
    while (state.KeepRunning()) {
        state.PauseTiming();
        volume = volume == 0.5F ? 0.25F : 0.5F;
        for (auto record = records.begin();; std::advance(record, 100)) {
            record->setVolume(volume);
            if (std::distance(record, records.end()) <= 100)
                break;
        }
        state.ResumeTiming();
        Reload(*store, records);
    }
    PerRecord(state);
}

#if defined(__GLIBC__)
void MemoryPerIdlePlayer(benchmark::State& state) {
    const Install install(1);
    const auto records = Records(state.range(0), true);
    while (state.KeepRunning()) {
        const auto store = MakeStore();
        store->Load(records.front());
        Settle();
        const auto before = mallinfo2().uordblks;
        for (const SfxDto& record : records)
            store->Load(record);
        state.counters["bytes_per_player"] = static_cast<double>(mallinfo2().uordblks - before) /
                                             static_cast<double>(state.range(0) - 1);
        Settle();
    }
}
BENCHMARK(MemoryPerIdlePlayer)->Arg(1000)->Iterations(1);
#endif

#define SFX_GROWTH RangeMultiplier(10)->Range(100, 10000)->Complexity(benchmark::oN)
BENCHMARK(FirstLoad)->SFX_GROWTH->Unit(benchmark::kMillisecond);
BENCHMARK(ReloadUnchanged)->SFX_GROWTH->Unit(benchmark::kMillisecond);
BENCHMARK(ReloadOnePercentChanged)->SFX_GROWTH->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
}
