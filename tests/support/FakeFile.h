#pragma once

#include <atomic>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include <sfx/source/DecodeState.h>
#include <sfx/source/SfxFileInterface.h>

#include "Pcm.h"

namespace sfx_test {

/// An effect file over given PCM (signed 16 bit), whose decode ends when the test says so. Like
/// an installed effect it is empty until it is ready, and counts bytes per channel as duration.
class FakeFile : public vemo::audio::SfxFileInterface, public vemo::audio::DecodeState {
public:
    explicit FakeFile(const Pcm& pcm, Stage stage = Stage::Ready, std::string path = "fake")
        : pcm_(pcm.AsInt16()),
          rate_(pcm.rate),
          channels_(pcm.channels),
          path_(std::move(path)),
          stage_(stage) {}

    /// Any thread.
    void SetStage(Stage stage) { stage_.store(stage, std::memory_order_release); }
    /// How often the PCM was asked for.
    int Reads() const { return reads_; }

    std::pair<const char*, const char*> Read() override {
        ++reads_;
        const auto* begin = reinterpret_cast<const char*>(pcm_.data());
        return Ready() ? std::pair(begin, begin + Bytes()) : std::pair(begin, begin);
    }
    float Duration() const override {
        return Ready() ? static_cast<float>(static_cast<double>(Bytes()) / (channels_ * rate_)) : 0;
    }
    unsigned int ChannelCount() const override {
        return Ready() ? static_cast<unsigned int>(channels_) : 0;
    }
    double SampleRate() const override { return Ready() ? rate_ : 0; }
    std::string Path() override { return path_; }
    Stage stage() const noexcept override { return stage_.load(std::memory_order_acquire); }
    std::string failure() const override {
        return stage() == Stage::Failed ? path_ + ": made to fail" : std::string();
    }

private:
    bool Ready() const { return stage() == Stage::Ready; }
    std::size_t Bytes() const { return pcm_.size() * sizeof(std::int16_t); }

    std::vector<std::int16_t> pcm_;
    int rate_;
    int channels_;
    std::string path_;
    std::atomic<Stage> stage_;
    std::atomic<int> reads_ = 0;
};

} // namespace sfx_test
