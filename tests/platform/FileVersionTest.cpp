#include <stdexcept>
#include <string>

#include <gtest/gtest.h>
#include <vemo_core/FileVersion.h>

namespace {

using cmn::FileVersion;

TEST(FileVersion, readsMajorAndMinor) {
    EXPECT_EQ(FileVersion("1.255"), FileVersion(1, 255));
    EXPECT_EQ(FileVersion("2"), FileVersion(2, 0));
    EXPECT_EQ(FileVersion("1.2.77-beta"), FileVersion(1, 2));
    EXPECT_EQ(FileVersion("10.3").Major(), 10);
    EXPECT_EQ(FileVersion("10.3").Minor(), 3);
}

TEST(FileVersion, comparesMajorBeforeMinor) {
    EXPECT_GE(FileVersion(2, 0), FileVersion(1, 255));
    EXPECT_LT(FileVersion("1.9"), FileVersion("1.10"));
}

TEST(FileVersion, throwsAndNamesTheTextWhenItIsNoVersion) {
    for (const char* text :
         {"", ".", "1.", ".1", "1.256", "256", "-1.0", "+1", " 1.1", "1.1 ", "1,1", "v1", "1.x"}) {
        try {
            FileVersion version((std::string(text)));
            ADD_FAILURE() << "accepted: " << text;
        } catch (const std::invalid_argument& error) {
            EXPECT_EQ(error.what(), "Not a file version: " + std::string(text));
        }
    }
}

} // namespace
