#include <sfx/model/SfxException.h>

#include "PlayerTrouble.h"

using namespace sfx_test;
using std::chrono::milliseconds;
using vemo::audio::SfxPlayerImpl;

namespace {

// Each has a server of its own, and runs in a process of its own.
class ServerTrouble : public PlayerTrouble {};

} // namespace

TEST_F(ServerTrouble, endsWithoutAnOutput) {
    PulseServer server({.withSink = false});
    auto& player = house_.Add(Record().repeats(-1).build(), &endless_);
    EXPECT_THROW(
        try { player.SetOutputDevice(L"any"); } catch (const vemo::audio::SfxException& fault) {
            EXPECT_STREQ(fault.what(), "No audio devices found");
            throw;
        },
        vemo::audio::SfxException);
    ExpectEnd(player);
}

TEST_F(ServerTrouble, endsWhenTheOutputIsTakenAway) {
    PulseServer server;
    auto& player = house_.Add(Record().repeats(-1).build(), &endless_);
    SignalLog finished(&player, &SfxPlayerImpl::sfxFinished);
    player.SetOutputDevice(nullptr);
    {
        Recorder recorder;
        player.Play();
        ASSERT_TRUE(recorder.WaitForSound());
    }
    server.RemoveSink(PulseServer::kSink);
    ExpectEnded(player, finished);
}

TEST_F(ServerTrouble, endsWhenTheServerDies) {
    PulseServer server;
    auto& player = house_.Add(Record().repeats(-1).fadeOut(200).build(), &endless_);
    auto& stopped = house_.Add(Record().repeats(-1).fadeOut(200).build(), &endless_);
    SignalLog finished(&player, &SfxPlayerImpl::sfxFinished);
    {
        Recorder recorder;
        player.Play();
        stopped.Play();
        ASSERT_TRUE(recorder.WaitForSound());
        server.Kill();
    }
    stopped.Stop();
    EXPECT_TRUE(WaitFor([&] { return player.Done() && stopped.Done(); }, milliseconds(20000)));
    EXPECT_GE(finished.Count(), 1U);
    // And what is asked for afterwards ends as well.
    ExpectEnd(player, milliseconds(20000));
}

// A frozen server holds whoever opens a sink. The pool gets a thread for the one that is held, so
// that the next effect plays as soon as the server answers again.
TEST_F(ServerTrouble, givesUpAPlaybackThatTheServerHolds) {
    PulseServer server;
    house_.Pool().setMaxThreadCount(1);
    auto& player = house_.Add(Record().repeats(-1).build(), &endless_);
    auto& next = house_.Add(Record().repeats(-1).build(), &endless_);
    player.SetOutputDevice(nullptr);
    server.Freeze();
    SignalLog finished(&player, &SfxPlayerImpl::sfxFinished);
    player.Play();
    ExpectEnded(player, finished, milliseconds(20000));
    server.Thaw();
    Recorder recorder;
    next.Play();
    EXPECT_TRUE(recorder.WaitForSound());
    next.Stop();
    EXPECT_TRUE(house_.WaitUntilAllDone());
    EXPECT_EQ(finished.Count(), 1U);
}
