#include <gtest/gtest.h>

#include <random>
#include <thread>

#include <QCoreApplication>

#include <sfx/model/CustomAudioException.h>
#include <sfx/model/SfxException.h>
#include <support/SoundFile.h>

#include "ControlHouse.h"

using namespace sfx_test;
using namespace std::chrono_literals;
using vemo::audio::CustomAudioParameters;
using vemo::audio::SfxException;
using vemo::audio::SfxPlayer;

namespace {

constexpr int kThreads = 8;
constexpr int kEvents = 12;

/// SFX_HAMMER_SECONDS makes the run as long as it takes to believe in it.
std::chrono::seconds HammerTime() {
    const int seconds = qEnvironmentVariableIntValue("SFX_HAMMER_SECONDS");
    return std::chrono::seconds(seconds > 0 ? seconds : 3);
}

class Hammer : public ::testing::Test {
protected:
    Hammer() {
        const std::string path = folder_.filePath("user.wav").toStdString();
        WriteSoundFile(path, MakeTone({.ms = 80}));
        file_ = QString::fromStdString(FileUrl(QString::fromStdString(path)));
    }

    static std::list<MemoryRepository::Record> RandomRecords(std::mt19937& random) {
        std::list<MemoryRepository::Record> records;
        for (int event = 0; event < kEvents; ++event) {
            if (random() % 4 == 0)
                continue;
            records.push_back(
                Event("sfx." + std::to_string(event), random() % 3 == 0 ? "high.sfx" : "low.sfx")
                    .volume(static_cast<float>(random() % 100) / 100)
                    .fadeOut(static_cast<unsigned short>(random() % 90))
                    .repeats(random() % 8 == 0 ? -1 : 0)
                    .build());
        }
        return records;
    }

    void Play(std::mt19937& random) {
        // Every play is one more playback: more than the pool has threads for would pile up.
        if (plays_++ % 48 == 47)
            house_.Controller().stop();
        const std::string event = std::to_string(random() % kEvents);
        switch (random() % 4) {
        case 0:
            house_.Controller().play("sfx." + event);
            break;
        case 1:
            house_.Controller().play("cue sfx." + event);
            break;
        case 2:
            house_.Controller().play(std::uint64_t{random() % 200});
            break;
        default:
            house_.Controller().play(CustomAudioParameters::builder()
                                         .file(file_)
                                         .volume(static_cast<double>(random() % 5) / 10)
                                         .build());
        }
    }

    void Stop(std::mt19937& random) {
        const std::string event = std::to_string(random() % kEvents);
        switch (random() % 5) {
        case 0:
            house_.Controller().stop("sfx." + event);
            break;
        case 1:
            house_.Controller().stop(random() % 2 == 0);
            break;
        case 2:
            house_.Controller().stop(CustomAudioParameters::builder().file(file_).build());
            break;
        case 3:
            house_.Controller().FadeTo("sfx." + event, 0.5F, 40);
            break;
        default:
            house_.Controller().stop(std::uint64_t{random() % 200});
        }
    }

    void Ask(std::mt19937& random) {
        auto& controller = house_.Controller();
        const std::uint64_t id = random() % 200;
        switch (random() % 7) {
        case 0:
            controller.SetVolume(id, 0.3F);
            break;
        case 1:
            controller.SetSfxPath(id, std::string(40, 'x'));
            break;
        case 2:
            controller.GetDuration(id);
            break;
        case 3:
            controller.PlaysSameSfx(id, Event("", "low.sfx").build());
            break;
        case 4:
            controller.GetPlayer("sfx.1");
            break;
        case 5:
            letters_ += (*controller.SfxData(id))->effectPath().size();
            break;
        default:
            controller.Done(id);
        }
    }

    void Change(std::mt19937& random) {
        house_.Repository().Set(RandomRecords(random));
        ControlHouse::Mediator().onSoundEffectsChanged();
    }

    static void Proxy(std::mt19937& random) {
        SfxPlayer player(
            Event("sfx." + std::to_string(random() % kEvents), "low.sfx").volume(0.1F).build());
        player.Play();
        player.SetVolume(0.2F);
        player.Volume();
        static_cast<void>(player.SfxData()->name().size());
        player.Stop();
        player.Done();
    }

    void Work(unsigned int seed) {
        std::mt19937 random(seed);
        const auto end = std::chrono::steady_clock::now() + HammerTime();
        while (std::chrono::steady_clock::now() < end) {
            try {
                const auto dice = random() % 1000;
                dice < 20   ? Play(random)
                : dice < 60 ? Stop(random)
                : dice < 70 ? Change(random)
                : dice < 75 ? Proxy(random)
                : dice < 80 ? house_.Controller().PreloadFile(file_.toStdString())
                            : Ask(random);
            } catch (const std::out_of_range&) { // no such player just now
            } catch (const SfxException&) {      // the proxy's player was removed
            }
            ++operations_;
        }
    }

    ControlHouse house_{80};
    QTemporaryDir folder_;
    QString file_;
    std::atomic<int> plays_ = 0;
    std::atomic<std::size_t> letters_ = 0;
    std::atomic<std::uint64_t> operations_ = 0;
};

} // namespace

TEST_F(Hammer, nothingIsLostUnderEightThreads) {
    std::mt19937 random(1);
    ASSERT_TRUE(house_.Load(RandomRecords(random)));
    std::atomic<int> working = kThreads;
    std::vector<std::thread> threads;
    for (int thread = 0; thread < kThreads; ++thread) {
        threads.emplace_back([&, thread] {
            Work(static_cast<unsigned int>(thread));
            --working;
        });
    }
    EXPECT_TRUE(WaitFor([&] { return working == 0; }, HammerTime() + 60s));
    for (auto& thread : threads)
        thread.join();
    RecordProperty("operations", std::to_string(operations_));
    std::cout << operations_ << " operations\n";

    // Whatever happened: every record has its player, everything can be stopped, and it plays.
    std::list<MemoryRepository::Record> records;
    for (int event = 0; event < kEvents; ++event)
        records.push_back(Event("sfx." + std::to_string(event), "low.sfx").build());
    ASSERT_TRUE(house_.Load(records));
    auto& controller = house_.Controller();
    controller.stop();
    for (int event = 0; event < kEvents; ++event) {
        const auto player = controller.GetPlayer("sfx." + std::to_string(event));
        ASSERT_TRUE(player) << event;
        EXPECT_TRUE(WaitFor([&] { return (*player)->Done(); }, 60s)) << event;
        EXPECT_GT((*player)->GetDuration(), 0.0F) << event;
    }
    controller.play("sfx.3");
    const auto player = controller.GetPlayer("sfx.3");
    EXPECT_FALSE((*player)->Done());
    EXPECT_TRUE(WaitFor([&] { return (*player)->Done(); }));
}
