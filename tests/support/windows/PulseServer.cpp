#include "support/PulseServer.h"

#include <stdexcept>

namespace sfx_test {

// Wine reads the list of outputs when a program starts. So the server is there before the program,
// with the sinks that its tests need, and what changes a server is not for Windows.

PulseServer::PulseServer() : PulseServer(Options{}) {}

PulseServer::PulseServer(Options options) {
    if (qEnvironmentVariableIsEmpty("SFX_TEST_EARS")) {
        throw std::runtime_error("no server with recorders: SFX_TEST_SINKS is for the script that "
                                 "runs the tests under Wine");
    }
    if (!options.withSink || options.rate != 48000) {
        throw std::runtime_error("the server under Wine has its sinks already");
    }
}

PulseServer::~PulseServer() = default;

PulseServer& PulseServer::Shared() {
    static PulseServer server;
    return server;
}

void PulseServer::StopShared() {}

} // namespace sfx_test
