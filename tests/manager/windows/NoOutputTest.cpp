#include <gtest/gtest.h>

#include <sfx/sfx.h>

#include "Com.h"

using namespace vemo::audio;

TEST(OutputDevices, areNoneWithoutAnAudioServer) {
    const sfx_test::Com com;
    EXPECT_EQ(MakeDeviceControl()->GetOutputDevices().size(), 0U);
    EXPECT_EQ(DeviceControlQt().GetOutputDevices().size(), 0U);
}
