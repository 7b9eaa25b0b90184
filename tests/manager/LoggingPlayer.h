#pragma once

#include <atomic>
#include <chrono>
#include <iomanip>
#include <memory>
#include <mutex>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

#include <sfx/player/SfxPlayerInterface.h>

namespace sfx_test {

/// What was called on a player, in order; shared by the test and the player. Any thread.
class CallLog {
public:
    void Add(const std::string& call) {
        const std::lock_guard lock(mutex_);
        calls_.push_back(call);
    }
    std::vector<std::string> All() const {
        const std::lock_guard lock(mutex_);
        return calls_;
    }
    std::size_t Count() const { return All().size(); }
    std::string Text() const {
        std::string text;
        for (const std::string& call : All())
            text += (text.empty() ? "" : " ") + call;
        return text;
    }
    void Clear() {
        const std::lock_guard lock(mutex_);
        calls_.clear();
    }

    std::atomic<bool> done = false;
    /// How long the player takes to say whether it is done.
    std::atomic<std::chrono::milliseconds> slowness{};

private:
    mutable std::mutex mutex_;
    std::vector<std::string> calls_;
};

/// A player without sound that writes down every command. It plays until it is stopped.
class LoggingPlayer : public vemo::audio::SfxPlayerInterface {
public:
    using Record = vemo::audio::sfx::SfxDto;

    LoggingPlayer(Record record, std::shared_ptr<CallLog> log)
        : record_(std::move(record)), volume_(record_.volume()), log_(std::move(log)) {
        log_->done = true;
    }

    void Play() override {
        log_->done = false;
        log_->Add("play");
    }
    void Stop(bool urgent) override {
        log_->done = true;
        log_->Add(urgent ? "stop!" : "stop");
    }
    void Stop() override { Stop(false); }
    void SetOutputDevice(const wchar_t* deviceId) override {
        log_->Add(deviceId == nullptr ? "device null" : "device");
    }
    void SetVolume(float volume) override {
        volume_ = volume;
        std::ostringstream text;
        text << std::setprecision(3) << volume;
        log_->Add(text.str());
    }
    float Volume() override { return volume_; }
    void SetReverb(float) override {}
    void SetPan(float) override {}
    void SetSfxPath(const std::string&) override {}
    void ReplaceSfxData(const Record&) override {}
    float GetDuration() override { return 0; }
    void FadeTo(float, unsigned int) override {}
    bool Done() override {
        std::this_thread::sleep_for(log_->slowness.load());
        return log_->done;
    }
    void WaitUntilDone() override { log_->Add("wait"); }
    bool PlaysSameSfx(const Record& other) override { return record_ == other; }
    const Record* SfxData() const override { return &record_; }

private:
    Record record_;
    std::atomic<float> volume_;
    std::shared_ptr<CallLog> log_;
};

} // namespace sfx_test
