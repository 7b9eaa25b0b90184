#pragma once

#include <gtest/gtest.h>

#include "PlayerHouse.h"

namespace sfx_test {

class PlayerTrouble : public ::testing::Test {
protected:
    void ExpectEnd(vemo::audio::SfxPlayerImpl& player,
                   std::chrono::milliseconds deadline = kDeadline) {
        SignalLog finished(&player, &vemo::audio::SfxPlayerImpl::sfxFinished);
        player.Play();
        ExpectEnded(player, finished, deadline);
    }
    void ExpectEnded(vemo::audio::SfxPlayerImpl& player, const SignalLog<QString>& finished,
                     std::chrono::milliseconds deadline = kDeadline) {
        EXPECT_TRUE(WaitFor([&] { return player.Done(); }, deadline));
        EXPECT_EQ(finished.Count(), 1U);
        player.WaitUntilDone();
    }

    FakeFile endless_{MakeTone({.ms = 1000, .level = 0.5})};
    PlayerHouse house_;
};

} // namespace sfx_test
