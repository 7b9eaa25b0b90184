#include <gmock/gmock.h>

#include "TwoOutputs.h"
#include "support/ProcessRunner.h"

using namespace sfx_test;
using ::testing::Pair;
using ::testing::StartsWith;
using ::testing::UnorderedElementsAre;

namespace {

class DeviceControlWin32 : public ::testing::Test {
protected:
    void SetUp() override {
        if (qgetenv("SFX_WITHOUT_WINE") == "1") {
            GTEST_SKIP() << "SFX_WITHOUT_WINE is set: nothing of Windows is tested";
        }
        ASSERT_STRNE(WINE_PROGRAM, "")
            << "this tree was configured without mingw-w64, googletest's "
               "sources or Wine: run scripts/setup windows and configure "
               "again, or set SFX_WITHOUT_WINE=1";
    }

    static QByteArray Run(const QStringList& arguments) {
        const auto result = ProcessRunner::Run(
            WINE, QStringList{WINE_PREFIX, "run", WINE_PROGRAM} + arguments, {}, 6 * kDeadline);
        EXPECT_EQ(result.exitCode, 0) << result.out.toStdString() << result.err.toStdString();
        return result.out;
    }

    /// Name and id of each device.
    static std::multimap<std::string, std::string> List(const char* command = "list") {
        std::multimap<std::string, std::string> devices;
        for (const QByteArray& line : Run({command}).split('\n').toList()) {
            const auto fields = line.trimmed().split('\t');
            if (fields.size() == 3) {
                EXPECT_EQ(fields[1], fields[2]) << "both forms of the id";
                devices.emplace(fields[0].toStdString(), fields[1].toStdString());
            } else {
                EXPECT_TRUE(line.isEmpty()) << line.toStdString();
            }
        }
        return devices;
    }
};

} // namespace

TEST_F(DeviceControlWin32, walksEndpointsThatFail) {
    EXPECT_THAT(Run({}).toStdString(), ::testing::HasSubstr("[  PASSED  ]"));
}

TEST_F(DeviceControlWin32, getOutputDevicesListsSinksByDescription) {
    const TwoOutputs server;
    const auto isRenderEndpoint = StartsWith("{0.0.0.00000000}.{");
    // Wine adds the server's default output under the name of its driver.
    EXPECT_THAT(List(), UnorderedElementsAre(Pair(kStage, isRenderEndpoint),
                                             Pair("Foyer caf\xe9", isRenderEndpoint),
                                             Pair("PulseAudio", isRenderEndpoint)));
}

TEST_F(DeviceControlWin32, getOutputDevicesIsEmptyWithoutCom) {
    const TwoOutputs server;
    EXPECT_THAT(List("list-without-com"), ::testing::IsEmpty());
}

TEST_F(DeviceControlWin32, getOutputDevicesIsEmptyWithoutAnAudioServer) {
    qputenv("PULSE_SERVER", "unix:/nonexistent");
    EXPECT_THAT(List(), ::testing::IsEmpty());
}
