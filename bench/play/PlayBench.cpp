// From Play() to the first read of the effect's samples, on a PulseAudio null sink of its own.
#include <atomic>
#include <chrono>
#include <cstdlib>

#include <QCoreApplication>
#include <QThread>
#include <QThreadPool>

#include <benchmark/benchmark.h>

#include <sfx/player/SfxPlayerImpl.h>
#include <support/FakeFile.h>
#include <support/PulseServer.h>

using namespace vemo::audio;

namespace {

using Clock = std::chrono::steady_clock;

// The stream asks for the channels with every read that has samples left, and the effect is over
// in one: so the last time it was asked is the first pull.
class WatchedFile : public sfx_test::FakeFile {
public:
    using FakeFile::FakeFile;

    unsigned int ChannelCount() const override {
        asked_ = Clock::now().time_since_epoch().count();
        return FakeFile::ChannelCount();
    }
    Clock::time_point LastAsked() const { return Clock::time_point(Clock::duration(asked_)); }

private:
    mutable std::atomic<Clock::rep> asked_ = 0;
};

void playToFirstPull(benchmark::State& state) {
    WatchedFile file(sfx_test::MakeTone({.ms = 20}));
    SfxPlayerImpl player(sfx::SfxDto::builder().build(), std::make_shared<QThreadPool>(),
                         std::make_shared<QThreadPool>(), nullptr);
    player.SetFile(&file);
    for (auto _ : state) {
        const auto asked = Clock::now();
        player.Play();
        while (!player.Done())
            QThread::usleep(200);
        state.SetIterationTime(std::chrono::duration<double>(file.LastAsked() - asked).count());
    }
}

BENCHMARK(playToFirstPull)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(50);

} // namespace

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    sfx_test::PulseServer::Shared();
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    sfx_test::PulseServer::StopShared();
    // The pulse client may crash in static destructors that run right after a playback.
    std::quick_exit(EXIT_SUCCESS);
}
