#pragma once

#include <atomic>
#include <list>
#include <memory>
#include <mutex>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include <QThread>
#include <QThreadPool>

#include <sfx/catalogue/SfxRepository.h>
#include <sfx/control/SfxPlayer.h>
#include <sfx/control/SfxPlayerConnectionMediator.h>
#include <sfx/control/SfxPlayerController.h>
#include <support/EffectMaker.h>
#include <support/PulseServer.h>
#include <support/SignalLog.h>

namespace sfx_test {

/// Records in memory, given as a whole. Any thread.
class MemoryRepository : public vemo::audio::SfxRepository {
public:
    using Record = vemo::audio::sfx::SfxDto;

    void Set(std::list<Record> records) {
        const std::lock_guard lock(mutex_);
        records_ = std::move(records);
    }
    /// How often all records were taken: a reload does it twice.
    int Gets() const { return gets_; }

    std::list<Record> Get() override {
        ++gets_;
        const std::lock_guard lock(mutex_);
        return records_;
    }
    void Save(Record) override { throw std::logic_error("unused"); }
    std::optional<Record> GetById(std::any) override { throw std::logic_error("unused"); }
    void Update(std::any, Record) override { throw std::logic_error("unused"); }
    void Delete(std::any) override { throw std::logic_error("unused"); }
    std::string GenerateEventId() override { throw std::logic_error("unused"); }
    std::string PreviewEventId() override { throw std::logic_error("unused"); }

private:
    std::mutex mutex_;
    std::list<Record> records_;
    std::atomic<int> gets_ = 0;
};

inline vemo::audio::sfx::SfxDto::SfxDtoBuilder Event(const std::string& eventId,
                                                     const std::string& effectId) {
    return vemo::audio::sfx::SfxDto::builder().eventId(eventId).effectId(effectId).name("cue " +
                                                                                        eventId);
}

/// The controller of this process, on the calling thread, with a repository and an install that
/// has the effects "low.sfx" and "high.sfx". There is one controller per process, so every test
/// that makes one is run in a process of its own.
class ControlHouse {
public:
    explicit ControlHouse(double effectMs = 300) {
        PulseServer::Shared();
        install_.AddEffect("low.sfx", "Low", MakeTone({.ms = effectMs, .frequency = 440}));
        install_.AddEffect("high.sfx", "High", MakeTone({.ms = effectMs, .frequency = 1320}));
        install_.Publish();
        auto owned = std::make_unique<MemoryRepository>();
        repository_ = owned.get();
        std::unique_ptr<vemo::audio::SfxRepository> repository = std::move(owned);
        controller_ = std::make_unique<vemo::audio::SfxPlayerController>(repository);
        if (repository)
            throw std::logic_error("there was a controller before this one");
    }
    ControlHouse(const ControlHouse&) = delete;
    ControlHouse& operator=(const ControlHouse&) = delete;
    ~ControlHouse() { QThreadPool::globalInstance()->waitForDone(); }

    vemo::audio::SfxPlayerController& Controller() { return *controller_; }
    MemoryRepository& Repository() { return *repository_; }
    static vemo::audio::SfxPlayerConnectionMediator& Mediator() {
        return *vemo::audio::SfxPlayerConnectionMediator::instance();
    }

    /// Gives the repository these records and returns when they are loaded and decoded.
    bool Load(std::list<MemoryRepository::Record> records) {
        repository_->Set(std::move(records));
        return Reload();
    }
    bool Reload() {
        const int before = repository_->Gets();
        Mediator().onSoundEffectsChanged();
        const bool done = WaitFor([&] { return repository_->Gets() >= before + 2; });
        QThreadPool::globalInstance()->waitForDone();
        return done;
    }
    /// The id of the player of an event: its text request would play it, so it is looked for.
    bool Holds(std::uint64_t id) {
        try {
            controller_->GetPlayer(id);
            return true;
        } catch (const std::out_of_range&) {
            return false;
        }
    }

private:
    InstallFolder install_;
    MemoryRepository* repository_ = nullptr;
    std::unique_ptr<vemo::audio::SfxPlayerController> controller_;
};

/// Runs `work` on a thread of its own while this thread's event loop runs, and returns when it is
/// over; what it throws comes out here.
template <typename Work>
void OnAnotherThread(const Work& work) {
    std::exception_ptr fault;
    std::atomic<bool> over = false;
    const std::unique_ptr<QThread> thread(QThread::create([&] {
        try {
            work();
        } catch (...) {
            fault = std::current_exception();
        }
        over = true;
    }));
    thread->start();
    WaitFor([&] { return over.load(); }, std::chrono::minutes(2));
    thread->wait();
    if (fault)
        std::rethrow_exception(fault);
}

} // namespace sfx_test
