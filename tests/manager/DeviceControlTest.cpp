#include <algorithm>
#include <map>
#include <thread>

#include <gmock/gmock.h>

#include <sfx/sfx.h>

#include "TwoOutputs.h"

using namespace sfx_test;
using namespace vemo::audio;
using ::testing::IsEmpty;
using ::testing::Pair;
using ::testing::UnorderedElementsAre;

TEST(DeviceControlQt, getOutputDevicesListsSinksByDescription) {
    const TwoOutputs server;
    std::map<std::string, std::string> found;
    for (const AudioDevice& device : MakeDeviceControl()->GetOutputDevices()) {
        found[device.idText] = device.name;
        EXPECT_EQ(std::wstring(device.id),
                  std::wstring(device.idText.begin(), device.idText.end()));
    }
    EXPECT_THAT(found, UnorderedElementsAre(Pair("stage", kStage), Pair("foyer", kFoyer)));
}

TEST(DeviceControlQt, getOutputDevicesGivesOnePointerPerIdAcrossCallsAndThreads) {
    const TwoOutputs server;
    const auto ids = [] {
        std::map<std::string, const wchar_t*> found;
        for (const AudioDevice& device : DeviceControlQt().GetOutputDevices()) {
            found[device.idText] = device.id;
        }
        return found;
    };
    const auto expected = ids();
    ASSERT_EQ(expected.size(), 2U);
    std::vector<std::map<std::string, const wchar_t*>> seen(4);
    {
        std::vector<std::jthread> threads;
        for (auto& one : seen) {
            threads.emplace_back([&one, &ids] { one = ids(); });
        }
    }
    EXPECT_THAT(seen, ::testing::Each(expected));
    EXPECT_STREQ(expected.at("stage"), L"stage");
}

TEST(DeviceControlQt, getOutputDevicesIsEmptyWithoutAnAudioServer) {
    qputenv("PULSE_SERVER", "unix:/nonexistent");
    EXPECT_THAT(DeviceControlQt().GetOutputDevices(), IsEmpty());
}
