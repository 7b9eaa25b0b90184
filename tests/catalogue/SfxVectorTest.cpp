#include <cstddef>
#include <limits>
#include <new>
#include <stdexcept>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include <gtest/gtest.h>
#include <sfx/catalogue/SfxVector.h>

namespace {

using vemo::audio::sfx::SfxVector;

constexpr std::size_t kAbsent = std::numeric_limits<std::size_t>::max();

SfxVector Names(const std::vector<std::string>& names) {
    SfxVector vector;
    for (const std::string& name : names) {
        vector.Add(name.c_str());
    }
    return vector;
}

template <typename Exception, typename Action>
void ExpectThrow(Action action, const std::string& text) {
    try {
        action();
        ADD_FAILURE() << "nothing thrown, expected: " << text;
    } catch (const Exception& error) {
        EXPECT_EQ(error.what(), text);
    }
}

TEST(SfxVector, addDoublesCapacityWhenFull) {
    SfxVector vector;
    EXPECT_EQ(vector.Count(), 0U);
    EXPECT_EQ(vector.Capacity(), 5U);
    for (int i = 0; i < 11; ++i) {
        EXPECT_EQ(vector.Capacity(), i < 6 ? 5U : 10U) << i;
        vector.Add(std::to_string(i).c_str());
    }
    EXPECT_EQ(vector.Capacity(), 20U);
    EXPECT_STREQ(vector[10], "10");
    EXPECT_STREQ(vector.Get(0), "0");
}

TEST(SfxVector, growsAgainFromNoCapacity) {
    SfxVector source = Names({"a"});
    const SfxVector taken(std::move(source));
    // What a moved-from array is has been promised.
    // NOLINTBEGIN(bugprone-use-after-move,clang-analyzer-cplusplus.Move)
    EXPECT_EQ(source.Count(), 0U);
    EXPECT_EQ(source.Capacity(), 0U);
    source.Add("b");
    EXPECT_EQ(source.Capacity(), 5U);
    EXPECT_STREQ(source.Get(0), "b");
    // NOLINTEND(bugprone-use-after-move,clang-analyzer-cplusplus.Move)
    EXPECT_STREQ(taken.Get(0), "a");

    SfxVector empty;
    empty.ShrinkToFit();
    EXPECT_EQ(empty.Capacity(), 0U);
    EXPECT_EQ(empty, SfxVector(empty));
    empty.Add("c");
    EXPECT_EQ(empty.Find("c"), 0U);
}

TEST(SfxVector, resizeNeverLosesUsedSlots) {
    SfxVector vector = Names({"a", "b", "c"});
    vector.SetPath(2, "p");
    vector.Resize(1);
    EXPECT_EQ(vector.Capacity(), 3U);
    EXPECT_STREQ(vector.GetPath(2), "p");
    vector.Add("d");
    EXPECT_EQ(vector.Capacity(), 6U);
    ExpectThrow<std::invalid_argument>([&] { vector.Resize(kAbsent); }, "Size is too large");
    EXPECT_THROW(vector.Resize(std::size_t{1} << 60), std::bad_alloc);
    EXPECT_EQ(vector.Capacity(), 6U);
    EXPECT_EQ(vector, Names({"a", "b", "c", "d"}));
}

TEST(SfxVector, removeMovesNamesButNotPaths) {
    SfxVector vector = Names({"a", "b"});
    vector.SetPath(1, "p");
    vector.Remove(0);
    EXPECT_STREQ(vector.Get(0), "b");
    EXPECT_EQ(vector.GetPath(0), nullptr);
    EXPECT_THROW(vector.GetPath(1), std::out_of_range);
    vector.Add("c");
    EXPECT_STREQ(vector.GetPath(1), "p");
}

TEST(SfxVector, removeStaysInsideAFullArray) {
    SfxVector vector = Names({"a", "b", "c", "d", "e"});
    ASSERT_EQ(vector.Count(), vector.Capacity());
    vector.Remove("b");
    EXPECT_EQ(vector, Names({"a", "c", "d", "e"}));
    EXPECT_EQ(vector[4], nullptr);
}

TEST(SfxVector, namesWhatIsOutOfRange) {
    SfxVector vector = Names({"a", "b", "c"});
    ExpectThrow<std::out_of_range>([&] { vector.Get(3); },
                                   "Index out of range from SfxVector::Get(const size_t) const");
    ExpectThrow<std::out_of_range>(
        [&] { vector.SetPath(3, "p"); },
        "Index out of range from SfxVector::SetPath(const size_t, char*)");
    ExpectThrow<std::out_of_range>([&] { vector.GetPath(7); },
                                   "Index out of range from SfxVector::GetPath(7) const with an "
                                   "sfxCount_ of 3");
    ExpectThrow<std::out_of_range>([&] { vector.Remove(std::size_t{3}); },
                                   "Index out of range from SfxVector::Remove(const size_t)");
    EXPECT_THROW(vector.Remove(-1), std::out_of_range);
    ExpectThrow<std::invalid_argument>([&] { vector.Remove("z"); }, "Sfx not found");
    EXPECT_EQ(vector.Find("z"), kAbsent);
}

TEST(SfxVector, clearKeepsCapacityAndPaths) {
    SfxVector vector = Names({"a", "b", "c", "d", "e", "f"});
    vector.SetPath(0, "p");
    vector.Clear();
    EXPECT_EQ(vector.begin(), vector.end());
    EXPECT_EQ(vector.Capacity(), 10U);
    vector.Add("x");
    EXPECT_STREQ(vector.Get(0), "x");
    EXPECT_STREQ(vector.GetPath(0), "p");
}

TEST(SfxVector, copiesHaveTheirOwnStrings) {
    SfxVector original = Names({"a", "b"});
    original.SetPath(1, "p");
    original.Resize(8);
    SfxVector copy;
    copy = original;
    *original.begin()[0] = 'z';
    EXPECT_EQ(copy.Capacity(), 8U);
    EXPECT_STREQ(copy.Get(0), "a");
    EXPECT_EQ(copy.GetPath(0), nullptr);
    EXPECT_STREQ(copy.GetPath(1), "p");
    const char* kept = copy.Get(1);
    copy = SfxVector();
    EXPECT_EQ(copy.Capacity(), 5U);
    EXPECT_STREQ(kept, "b"); // a name once handed out stays good
}

TEST(SfxVector, equalWhenNamesAreEqual) {
    SfxVector left = Names({"a", "b"});
    SfxVector right = Names({"a", "b"});
    right.SetPath(0, "p");
    right.Resize(50);
    EXPECT_EQ(left, right);
    right.begin()[1] = nullptr;
    EXPECT_FALSE(left == right);
    EXPECT_FALSE(right == left);
    EXPECT_EQ(right.Find("b"), kAbsent);
    EXPECT_FALSE(left == Names({"a"}));
}

TEST(SfxVector, losesNothingWhenThreadsAddAtOnce) {
    SfxVector vector;
    SfxVector other = Names({"x"});
    {
        std::vector<std::jthread> threads;
        threads.reserve(4);
        for (int t = 0; t < 4; ++t) {
            threads.emplace_back([&, t] {
                for (int i = 0; i < 200; ++i) {
                    vector.Add(std::to_string(t * 200 + i).c_str());
                    if (t % 2 == 0 ? vector == other : other == vector) {
                        ADD_FAILURE() << "equal to another list";
                    }
                }
            });
        }
    }
    EXPECT_EQ(vector.Count(), 800U);
    for (int i = 0; i < 800; ++i) {
        EXPECT_NE(vector.Find(std::to_string(i).c_str()), kAbsent) << i;
    }
}

} // namespace
