#include <set>
#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>
#include <sfx/model/CustomAudioException.h>
#include <sfx/model/InternedText.h>
#include <sfx/model/SfxException.h>

namespace {

TEST(CustomAudioException, keepsPriorityApartFromMessage) {
    const vemo::sfx::CustomAudioException original("error", "X");
    const vemo::sfx::CustomAudioException copy = original;
    EXPECT_EQ(copy.Priority(), "error");
    EXPECT_EQ(copy.Message(), "X");
    EXPECT_STREQ(copy.what(), "X");
}

TEST(SfxException, copyAnswersTheSamePointer) {
    char text[] = "gone";
    const vemo::audio::SfxException original(text);
    const vemo::audio::SfxException copy = original;
    EXPECT_EQ(original.what(), text);
    EXPECT_EQ(copy.what(), text);
}

TEST(InternText, storesEachTextOnceAcrossThreads) {
    constexpr int kTexts = 500;
    std::vector<std::vector<const char*>> seen(4);
    {
        std::vector<std::jthread> threads;
        for (auto& pointers : seen) {
            threads.emplace_back([&pointers] {
                for (int i = 0; i < kTexts; ++i) {
                    pointers.push_back(vemo::audio::InternText("fault " + std::to_string(i)));
                }
            });
        }
    }
    for (const auto& pointers : seen) {
        EXPECT_EQ(pointers, seen.front());
    }
    EXPECT_EQ(std::set(seen.front().begin(), seen.front().end()).size(), std::size_t{kTexts});
    EXPECT_STREQ(seen.front().front(), "fault 0");
    EXPECT_STREQ(seen.front().back(), "fault 499");
}

} // namespace
