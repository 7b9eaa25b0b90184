#pragma once

#include <cstddef>
#include <memory>
#include <string>

namespace sfx_test {

/// What comes out of a sink, as interleaved 32-bit floats.
class SinkBytes {
public:
    /// Throws std::runtime_error when the sink cannot be recorded like that.
    static std::unique_ptr<SinkBytes> Open(const std::string& sink, int rate, int channels);
    virtual ~SinkBytes() = default;

    /// Waits for bytes and returns how many there are in `bytes`; 0 once End() was called.
    virtual std::size_t Read(char* bytes, std::size_t size) = 0;
    /// Any thread.
    virtual void End() = 0;
};

} // namespace sfx_test
