#include <cstdio>
#include <string_view>

#include <gtest/gtest.h>
#include <objbase.h>

#include <sfx/manager/DeviceControl.h>

namespace {

int List() {
    for (const auto& device : vemo::audio::MakeDeviceControl()->GetOutputDevices()) {
        std::printf("%s\t%s\t%ls\n", device.name.c_str(), device.idText.c_str(), device.id);
    }
    return 0;
}

} // namespace

// devices list, devices list-without-com: a device per line. Otherwise runs the tests.
int main(int argc, char** argv) {
    const std::string_view command = argc > 1 ? argv[1] : "";
    if (command == "list-without-com") {
        return List();
    }
    if (FAILED(CoInitializeEx(nullptr, COINIT_MULTITHREADED))) {
        return 2;
    }
    if (command == "list") {
        return List();
    }
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
