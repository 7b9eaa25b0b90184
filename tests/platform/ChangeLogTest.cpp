#include <cstdint>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>
#include <vemo_core/DataVector.h>

#include "ShowHouse.h"

namespace {

using Strings = std::vector<std::string>;

TEST(ChangeLog, addNumbersEventsAndKeepsTheirOrder) {
    const ShowHouse house;
    Add("sfx.2", "b");
    Add("sfx.1", "a");
    Add("sfx.2", "c"); // an id may come twice
    EXPECT_EQ(Lines(), Strings({"1 sfx.2 b", "2 sfx.1 a", "3 sfx.2 c"}));

    const ActiveChangeLogExclusive exclusive;
    const CL::Sfx& last = exclusive.Get().SoundEffects().back();
    CL::Editor editor;
    editor.DeleteEvent(exclusive.Get().SoundEffects().front());
    editor.EditSoundEffectSFXPropertyValues(last, Named("z"));
    EXPECT_EQ(last.sfx_properties().name(), "z");
    editor.DeleteEvent(last);
    Add("sfx.7");
    EXPECT_EQ(Lines(), Strings({"2 sfx.1 a", "4 sfx.7 "}));
    EXPECT_EQ(exclusive.Get().ShowFile(), "");
}

TEST(ChangeLog, leavesTheLogAloneWhenTheEventIsNotInIt) {
    const ShowHouse house;
    Add("sfx.1", "a");
    CL::Editor editor;
    for (const CL::Sfx& stranger : {CL::Sfx(0, "sfx.1", {}), CL::Sfx(2, "sfx.1", {}),
                                    CL::Sfx(1, "an event of another show", {})}) {
        editor.EditSoundEffectSFXPropertyValues(stranger, Named("z"));
        editor.DeleteEvent(stranger);
    }
    EXPECT_EQ(Lines(), Strings({"1 sfx.1 a"}));
}

TEST(ChangeLog, suffixRisesAboveWhatHostsChoose) {
    const ShowHouse house;
    CL::Editor editor;
    EXPECT_EQ(editor.PreviewNextSfxEventId(), 1U);
    EXPECT_EQ(editor.GetNextSfxEventIdSuffix(), 1U);
    EXPECT_EQ(editor.GetNextSfxEventIdSuffix(), 2U);
    for (const char* id : {"sfx.1", "sfx.", "sfx.x", "sfx.9a", "SFX.9", "sfx.-9", "9", "",
                           "sfx.18446744073709551615", "sfx.99999999999999999999"}) {
        Add(id);
        EXPECT_EQ(editor.PreviewNextSfxEventId(), 3U) << id;
    }
    Add("sfx.3");
    Add("sfx.9");
    editor.DeleteEvent(Events().back());
    EXPECT_EQ(editor.GetNextSfxEventIdSuffix(), 10U);
    Add("sfx.18446744073709551614");
    EXPECT_THROW(editor.GetNextSfxEventIdSuffix(), std::length_error);
    EXPECT_THROW(editor.PreviewNextSfxEventId(), std::length_error);
}

TEST(ActiveChangeLogExclusive, keepsOtherThreadsOutUntilTheOuterOneEnds) {
    const ShowHouse house;
    {
        std::vector<std::jthread> threads;
        for (int t = 0; t < 3; ++t) {
            threads.emplace_back([] {
                for (int i = 0; i < 300; ++i) {
                    const ActiveChangeLogExclusive outer;
                    const auto& events = outer.Get().SoundEffects();
                    const std::size_t before = events.size();
                    {
                        const ActiveChangeLogExclusive inner;
                        Add("sfx.1");
                    }
                    std::this_thread::yield();
                    EXPECT_EQ(events.size(), before + 1);
                }
            });
        }
    }
    EXPECT_EQ(Events().back().Number(), 900U);
}

TEST(DataVector, comparesBytesAsUnsigned) {
    using vemo::core::DataVector;
    const std::string text("a\0b", 3);
    EXPECT_EQ(DataVector(text).size(), 3U);
    EXPECT_EQ(DataVector(text).ToString(), text);
    EXPECT_LT(DataVector("\x7f"), DataVector("\x80"));
    EXPECT_LT(DataVector("a"), DataVector(text));
    EXPECT_EQ(DataVector(), DataVector(""));
}

} // namespace
