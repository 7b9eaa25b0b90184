#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iostream>

#include <QCoreApplication>

#include <gmock/gmock.h>

#include "PulseServer.h"
#include "Sanitizers.h"

#ifdef _WIN32
#include <windows.h>
#endif

#ifdef SFX_TEST_ASAN
#include <sanitizer/lsan_interface.h>
#endif

#ifdef SFX_TEST_TSAN
namespace {
std::atomic<bool> raceReported = false;
}
// NOLINTNEXTLINE(bugprone-reserved-identifier)
extern "C" __attribute__((visibility("default"))) void __tsan_on_report(void*) {
    raceReported = true;
}
#endif

namespace {

[[noreturn]] void Leave(int code, [[maybe_unused]] const QByteArray& codeFile) {
#ifdef _WIN32
    // Wine may crash below, where a thread ends at the same time; who runs this reads the code.
    if (!codeFile.isEmpty()) {
        std::ofstream(codeFile.constData()) << code;
    }
    // On Windows _Exit() still lets every DLL clean up, with its threads gone.
    TerminateProcess(GetCurrentProcess(), static_cast<UINT>(code));
#endif
    std::_Exit(code);
}

} // namespace

int main(int argc, char** argv) {
    ::testing::InitGoogleMock(&argc, argv);
    QCoreApplication application(argc, argv);
    const QByteArray codeFile = qgetenv("SFX_TEST_CODE_FILE");
    qunsetenv("SFX_TEST_CODE_FILE"); // it is not for the programs that a test starts
    int code = RUN_ALL_TESTS();
    sfx_test::PulseServer::StopShared();
    // As the end of an event loop would do.
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);

    // The pulse client inside Qt crashes now and then in static destruction soon after playing,
    // and a thread that hangs in a dead server would keep the application's destructor from
    // returning. So both are left out, and what they would do for the sanitizers is done here.
#ifdef SFX_TEST_ASAN
    if (__lsan_do_recoverable_leak_check() != 0) {
        code = 1;
    }
#endif
#ifdef SFX_TEST_TSAN
    if (raceReported) {
        code = 1;
    }
#endif
    std::cout.flush();
    std::fflush(nullptr);
    Leave(code, codeFile);
}
