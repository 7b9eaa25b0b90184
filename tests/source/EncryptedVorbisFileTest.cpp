#include <gtest/gtest.h>

#include <mutex>

#include <QThreadPool>

#include <sfx/source/EncryptedVorbisFile.h>
#include <support/EffectMaker.h>
#include <support/SignalLog.h>

using namespace sfx_test;
using vemo::audio::DecodeState;
using vemo::audio::EncryptedVorbisFile;

namespace {

// Keeps the global pool busy, so that a decode does not begin before the test lets it.
class BusyPool {
public:
    BusyPool() : pool_(*QThreadPool::globalInstance()), before_(pool_.maxThreadCount()) {
        pool_.setMaxThreadCount(1);
        pool_.start([this] {
            while (!released_)
                QThread::msleep(1);
        });
    }
    ~BusyPool() {
        Release();
        pool_.waitForDone();
        pool_.setMaxThreadCount(before_);
    }
    void Release() { released_ = true; }

private:
    QThreadPool& pool_;
    int before_;
    std::atomic<bool> released_ = false;
};

bool Decided(const EncryptedVorbisFile& file) {
    return WaitFor([&] { return file.stage() != DecodeState::Stage::Decoding; });
}

} // namespace

TEST(EncryptedVorbisFile, isEmptyUntilItIsReadyAndThenHoldsEverySample) {
    InstallFolder install;
    const auto path =
        install.AddEffect("a.sfx", "A", MakeTone({.ms = 1000, .rate = 44100, .channels = 2}));
    BusyPool pool;
    EncryptedVorbisFile file(path);
    SignalLog ready(&file, &EncryptedVorbisFile::isReady);
    EXPECT_EQ(file.Read().first, file.Read().second);
    EXPECT_EQ(file.ChannelCount(), 0U);
    EXPECT_EQ(file.SampleRate(), 0.0);
    EXPECT_EQ(file.Duration(), 0.0F);
    EXPECT_EQ(file.Path(), path);

    pool.Release();
    ASSERT_TRUE(ready.WaitForCount(1));
    EXPECT_EQ(file.stage(), DecodeState::Stage::Ready);
    EXPECT_EQ(file.Read().second - file.Read().first, 176400);
    EXPECT_EQ(file.ChannelCount(), 2U);
    EXPECT_EQ(file.SampleRate(), 44100.0);
    EXPECT_FLOAT_EQ(file.Duration(), 2.0F);
    EXPECT_EQ(file.failure(), "");
}

TEST(EncryptedVorbisFile, staysEmptyAndSaysWhyWhenItCannotBeDecoded) {
    QTemporaryDir folder;
    const std::string base = folder.path().toStdString();
    const auto plain = EncodeVorbis(MakeTone({.ms = 100}));
    WriteBytes(base + "/empty.sfx", {});
    WriteBytes(base + "/plain.sfx", plain);
    WriteBytes(base + "/cut.sfx", {0xEA, 0xC2, 0xC2, 0xF6, 0xA5});
    for (const char* name : {"/empty.sfx", "/plain.sfx", "/cut.sfx", "/missing.sfx", ""}) {
        EncryptedVorbisFile file(base + name);
        SignalLog ready(&file, &EncryptedVorbisFile::isReady);
        ASSERT_TRUE(Decided(file));
        EXPECT_EQ(file.stage(), DecodeState::Stage::Failed) << name;
        EXPECT_NE(file.failure().find(base + name), std::string::npos) << file.failure();
        EXPECT_EQ(file.Read().first, file.Read().second);
        EXPECT_EQ(ready.Count(), 0U);
    }
    EncryptedVorbisFile missing(base + "/missing.sfx");
    ASSERT_TRUE(Decided(missing));
    EXPECT_EQ(missing.failure(), "SFX File Failed to Open: " + base + "/missing.sfx");
}

TEST(EncryptedVorbisFile, mayGoWhileItsDecodeIsStillToCome) {
    InstallFolder install;
    const auto path = install.AddEffect("a.sfx", "A", MakeTone({.ms = 2000}));
    for (int i = 0; i < 20; ++i) {
        auto file = std::make_unique<EncryptedVorbisFile>(path);
        // From before the decode has begun to the middle of it.
        QThread::usleep(static_cast<unsigned long>(i) * 300);
        file.reset();
    }
    QThreadPool::globalInstance()->waitForDone();
}

// A receiver that is called directly runs on the pool thread, and may even end the file.
TEST(EncryptedVorbisFile, mayBeDestroyedByWhoHearsThatItIsReady) {
    InstallFolder install;
    const auto path = install.AddEffect("a.sfx", "A", MakeTone({.ms = 500}));
    BusyPool pool;
    auto file = std::make_unique<EncryptedVorbisFile>(path);
    std::atomic<bool> heard = false;
    QObject::connect(file.get(), &EncryptedVorbisFile::isReady, [&] {
        file.reset();
        heard = true;
    });
    pool.Release();
    EXPECT_TRUE(WaitFor([&] { return heard.load(); }));
    EXPECT_FALSE(file);
}

TEST(EncryptedVorbisFile, goesAheadOfTheQueueWhenItIsExpedited) {
    InstallFolder install;
    const auto path = install.AddEffect("a.sfx", "A", MakeTone({.ms = 10}));
    std::mutex mutex;
    std::vector<int> order;
    std::vector<std::unique_ptr<EncryptedVorbisFile>> files;
    BusyPool pool;
    for (int i = 0; i < 8; ++i)
        files.push_back(std::make_unique<EncryptedVorbisFile>(path, [&, i](auto& file) {
            QObject::connect(&file, &EncryptedVorbisFile::isReady, [&, i] {
                const std::lock_guard lock(mutex);
                order.push_back(i);
            });
        }));
    files[5]->Expedite();
    pool.Release();
    QThreadPool::globalInstance()->waitForDone();
    EXPECT_EQ(order, (std::vector{5, 0, 1, 2, 3, 4, 6, 7}));
}
