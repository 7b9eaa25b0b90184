#include <map>
#include <string>
#include <thread>

#include <gmock/gmock.h>

#include <sfx/sfx.h>

#include "Com.h"

using namespace sfx_test;
using namespace vemo::audio;
using ::testing::Pair;
using ::testing::StartsWith;
using ::testing::UnorderedElementsAre;

namespace {

/// Id of each device by its name.
std::map<std::string, std::string> Found(DeviceControlInterface& control) {
    std::map<std::string, std::string> found;
    for (const AudioDevice& device : control.GetOutputDevices()) {
        found[device.name] = device.idText;
        EXPECT_EQ(std::wstring(device.id),
                  std::wstring(device.idText.begin(), device.idText.end()));
    }
    return found;
}

} // namespace

TEST(OutputDevices, areListedByDescriptionWithTheSameIds) {
    const Com com;
    const auto isEndpoint = StartsWith("{0.0.0.00000000}.{");
    // Wine adds the server's default output under the name of its driver.
    auto win32 = Found(*MakeDeviceControl());
    EXPECT_THAT(win32, UnorderedElementsAre(Pair("Stage left", isEndpoint),
                                            Pair("Foyer caf\xe9", isEndpoint),
                                            Pair("PulseAudio", isEndpoint)));
    DeviceControlQt control;
    const auto qt = Found(control);
    EXPECT_THAT(qt, UnorderedElementsAre(Pair("Stage left", win32["Stage left"]),
                                         Pair("Foyer caf\u00e9", win32["Foyer caf\xe9"]),
                                         Pair("PulseAudio", win32["PulseAudio"])));
}

TEST(OutputDevices, areNoneOnAThreadWithoutCom) {
    std::size_t without = 1;
    std::size_t with = 0;
    std::thread([&] {
        without = DeviceControlWin32().GetOutputDevices().size();
        const Com com;
        with = DeviceControlWin32().GetOutputDevices().size();
    }).join();
    EXPECT_EQ(without, 0U);
    EXPECT_EQ(with, 3U);
}
