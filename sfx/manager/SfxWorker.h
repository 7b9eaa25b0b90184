#pragma once

#include <atomic>
#include <mutex>
#include <thread>

namespace vemo::audio {

/// Owner of a thread that does one piece of work, once, and can be asked to stop.
class SfxWorker {
public:
    SfxWorker() = default;
    SfxWorker(const SfxWorker&) = delete;
    SfxWorker& operator=(const SfxWorker&) = delete;
    /// Asks the thread to stop and joins it; a derived class does so itself before its members go.
    virtual ~SfxWorker();

    /// Starts the thread. Called once; std::terminate() when a thread is held already.
    void Start();
    /// True while a thread is held, whether or not its work is over. Any thread.
    bool IsRunning() const;
    /// Any thread.
    void RequestStop();
    /// True once the work has reached its first call into what it works on. Any thread.
    bool Begun() const;
    /// Throws std::system_error without a thread (invalid argument), and on the worker's own
    /// thread (resource deadlock would occur).
    void Join();

protected:
    bool StopRequested() const;
    void HasBegun();
    /// Asks to stop and joins a held thread.
    void End();

private:
    /// The work, on the worker's thread.
    virtual void Work() = 0;

    std::atomic<bool> stopRequested_ = false;
    mutable std::mutex mutex_;
    std::thread thread_;
    std::atomic<bool> begun_ = false;
};

} // namespace vemo::audio
