#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include "Analysis.h"
#include "Pcm.h"
#include "PulseServer.h"
#include "SinkBytes.h"
#include "Waiting.h"

namespace sfx_test {

/// Records what is played on a sink of the process's PulseServer, from construction to Stop().
/// Made and destroyed on the main thread; the queries may come from any thread. The waiting calls
/// run the event loop, and measure silence in the recorded stream, not on a clock.
class Recorder {
public:
    /// Returns when the recording runs. Throws std::runtime_error when it does not.
    explicit Recorder(const std::string& sink = PulseServer::kSink, int rate = 48000,
                      int channels = 2);
    ~Recorder();
    Recorder(const Recorder&) = delete;
    Recorder& operator=(const Recorder&) = delete;

    /// True once anything was heard on any channel.
    bool WaitForSound(std::chrono::milliseconds deadline = kDeadline);
    /// True once something was heard and `silence` has followed it.
    bool WaitForSilence(std::chrono::milliseconds silence = std::chrono::milliseconds(400),
                        std::chrono::milliseconds deadline = kDeadline);
    /// True once `length` has been recorded after this call.
    bool WaitForMore(std::chrono::milliseconds length,
                     std::chrono::milliseconds deadline = kDeadline);

    /// Frames recorded so far.
    std::size_t Frames() const;
    /// What is recorded so far.
    Pcm Heard() const;
    /// Ends the recording and returns all of it. What was still on its way is lost: wait first.
    Pcm Stop();

private:
    void ReadAll();
    void Take(const std::vector<float>& samples);
    std::size_t FramesIn(std::chrono::milliseconds time) const;
    /// Runs the event loop until `holds`, which is asked with the lock held.
    bool WaitUnderLock(const std::function<bool()>& holds, std::chrono::milliseconds deadline);

    std::unique_ptr<SinkBytes> bytes_;
    std::thread reader_;
    mutable std::mutex mutex_;
    Pcm pcm_;
    /// One past the last frame that was not silent, 0 if there was none.
    std::size_t soundEnd_ = 0;
    bool ended_ = false;
};

} // namespace sfx_test
