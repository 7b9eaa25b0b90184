#include <gtest/gtest.h>

#include <sfx/manager/DeviceControlWin32Impl.h>

#include "Com.h"
#include "FakeEndpoints.h"

using namespace sfx_test;
using vemo::audio::AudioDevice;
using vemo::audio::ListRenderEndpoints;

namespace {

using Texts = std::vector<std::string>;

/// Name and id of each device; checks that the walk has kept nothing but the enumerator.
Texts Walk(const std::vector<Endpoint>& endpoints, Fault fault = Fault::None) {
    const Com com;
    auto* enumerator = new FakeEnumerator(endpoints, fault);
    Texts texts;
    for (const AudioDevice& device : ListRenderEndpoints(*enumerator)) {
        texts.push_back(device.name + " " + device.idText);
        EXPECT_EQ(std::wstring(device.id),
                  std::wstring(device.idText.begin(), device.idText.end()));
    }
    EXPECT_EQ(heldReferences, 1);
    enumerator->Release();
    return texts;
}

} // namespace

TEST(ListRenderEndpoints, keepsTheEnumeratorsOrder) {
    EXPECT_EQ(Walk({{L"{b}", L"Stage"}, {L"{a}", L"Foyer"}, {L"{c}", L""}}),
              (Texts{"Stage {b}", "Foyer {a}", " {c}"}));
    EXPECT_EQ(Walk({}), Texts{});
}

TEST(ListRenderEndpoints, leavesOutADeviceThatFailsHalfWay) {
    for (const Fault fault :
         {Fault::Item, Fault::OpenProperties, Fault::GetValue, Fault::NameIsNoText, Fault::GetId}) {
        EXPECT_EQ(Walk({{L"{a}", L"First"}, {L"{b}", L"Broken", fault}, {L"{c}", L"Last"}}),
                  (Texts{"First {a}", "Last {c}"}))
            << static_cast<int>(fault);
    }
}

TEST(ListRenderEndpoints, isEmptyWhenTheEndpointsCannotBeEnumerated) {
    EXPECT_EQ(Walk({{L"{a}", L"First"}}, Fault::Enumerate), Texts{});
    EXPECT_EQ(Walk({{L"{a}", L"First"}}, Fault::GetCount), Texts{});
}

TEST(ListRenderEndpoints, convertsNamesToTheThreadsCodePage) {
    const LCID before = GetThreadLocale();
    ASSERT_TRUE(
        SetThreadLocale(MAKELCID(MAKELANGID(LANG_JAPANESE, SUBLANG_DEFAULT), SORT_DEFAULT)));
    EXPECT_EQ(Walk({{L"{a}", L"\u30a2\u30a2"}}), (Texts{"\x83\x41\x83\x41 {a}"}));
    SetThreadLocale(before);
}
