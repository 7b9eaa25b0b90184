#pragma once

#include <memory>
#include <utility>
#include <vector>

#include <QThreadPool>

#include <sfx/player/SfxPlayerImpl.h>
#include <support/Analysis.h>
#include <support/EffectMaker.h>
#include <support/FakeFile.h>
#include <support/PulseServer.h>
#include <support/Recorder.h>
#include <support/SignalLog.h>

namespace sfx_test {

/// Players on one shared playback pool, as a controller keeps them.
class PlayerHouse {
public:
    PlayerHouse() : pool_(std::make_shared<QThreadPool>()) {
        pool_->setMaxThreadCount(16);
        pool_->setThreadPriority(QThread::TimeCriticalPriority);
    }

    vemo::audio::SfxPlayerImpl& Add(vemo::audio::sfx::SfxDto record,
                                    vemo::audio::SfxFileInterface* file) {
        players_.push_back(std::make_unique<vemo::audio::SfxPlayerImpl>(
            std::move(record), pool_, std::make_shared<QThreadPool>(), nullptr));
        players_.back()->SetFile(file);
        return *players_.back();
    }
    bool AllDone() const {
        for (const auto& player : players_) {
            if (!player->Done())
                return false;
        }
        return true;
    }
    bool WaitUntilAllDone(std::chrono::milliseconds deadline = kDeadline) const {
        return WaitFor([this] { return AllDone(); }, deadline);
    }
    QThreadPool& Pool() { return *pool_; }

private:
    std::shared_ptr<QThreadPool> pool_;
    std::vector<std::unique_ptr<vemo::audio::SfxPlayerImpl>> players_;
};

inline vemo::audio::sfx::SfxDto::SfxDtoBuilder Record() {
    return vemo::audio::sfx::SfxDto::builder().eventId("sfx.1");
}

} // namespace sfx_test
