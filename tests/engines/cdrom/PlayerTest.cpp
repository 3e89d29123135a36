#include "engines/cdrom/Player.h"

#include "engines/cdrom/CdEngine.h"
#include "engines/cdrom/ImageDrive.h"
#include "testkit/DiscFolder.h"
#include "testkit/Ui.h"

#include <mutex>

namespace {

using namespace cdrom;

/// What was heard, and how much more may be.
struct Ear
{
    std::mutex mutex;
    QByteArray heard;
    qsizetype patience = 0; ///< frames
    bool paused = false;

    void listen(qsizetype frames)
    {
        const std::lock_guard lock(mutex);
        patience += frames;
    }
    QByteArray all()
    {
        const std::lock_guard lock(mutex);
        return heard;
    }
    bool isPaused()
    {
        const std::lock_guard lock(mutex);
        return paused;
    }
};

/// An output whose time passes as the test says.
class EarOutput : public AudioOutput
{
public:
    explicit EarOutput(Ear &ear) : m_ear(ear) {}

    qsizetype room() override
    {
        const std::lock_guard lock(m_ear.mutex);
        return m_ear.patience;
    }
    qsizetype write(const qint16 *samples, qsizetype frames) override
    {
        const std::lock_guard lock(m_ear.mutex);
        const qsizetype taken = std::min(frames, m_ear.patience);
        m_ear.heard.append(reinterpret_cast<const char *>(samples), taken * 4);
        m_ear.patience -= taken;
        return taken;
    }
    void setPaused(bool paused) override
    {
        const std::lock_guard lock(m_ear.mutex);
        m_ear.paused = paused;
    }
    bool isDry() override { return true; }

private:
    Ear &m_ear;
};

class PlayerTest : public ::testing::Test
{
protected:
    PlayerTest()
    {
        sound = markedSectors(1, 300);
        discs.write(QStringLiteral("d.bin"), sound);
        discs.write(QStringLiteral("d.cue"),
                    "FILE d.bin BINARY\nTRACK 01 AUDIO\nINDEX 01 00:00:00\nTRACK 02 AUDIO\n"
                    "INDEX 01 00:01:00\nTRACK 03 MODE1/2352\nINDEX 01 00:03:00\n");
    }

    std::unique_ptr<CdEngine> engineWith(const MakeOutput &make)
    {
        auto engine = std::make_unique<CdEngine>(imageDrives(discs.path()), make);
        EXPECT_TRUE(engine->SelectDrive(0));
        EXPECT_TRUE(engine->DiscReady());
        return engine;
    }

    bool hears(qsizetype frames)
    {
        ear.listen(frames);
        return waitFor([&, before = ear.all().size()] { return ear.all().size() >= before + frames * 4; });
    }

    QByteArray sound;
    DiscFolder discs;
    Ear ear;
    MakeOutput intoEar = [this] { return std::make_unique<EarOutput>(ear); };
};

TEST_F(PlayerTest, aTrackIsHeardWholeAndPausingLosesNoSample)
{
    const auto engine = engineWith(intoEar);
    engine->PlayTrack(2);
    EXPECT_EQ(engine->DriveStatus(), CDRipperX::Playing);
    ASSERT_TRUE(hears(30001));
    engine->PausePlay();
    EXPECT_EQ(engine->DriveStatus(), CDRipperX::Paused);
    ASSERT_TRUE(waitFor([&] { return ear.isPaused(); }));
    ear.listen(1000000);
    engine->PausePlay();
    EXPECT_EQ(ear.all().size(), 30001 * 4);
    engine->ResumePlay(); // the ear may have heard all of it before this returns
    EXPECT_TRUE(waitFor([&] { return engine->DriveStatus() == CDRipperX::DiscIdle; }));
    EXPECT_TRUE(ear.all() == sound.mid(75 * 2352, 150 * 2352));
    engine->ResumePlay();
    EXPECT_EQ(engine->DriveStatus(), CDRipperX::DiscIdle);
}

TEST_F(PlayerTest, anotherTrackStopAndEjectEndTheOneBefore)
{
    const auto engine = engineWith(intoEar);
    engine->PlayTrack(3);
    engine->PlayTrack(4);
    engine->PausePlay();
    EXPECT_EQ(engine->DriveStatus(), CDRipperX::DiscIdle) << "data and missing tracks can't be heard";
    engine->PlayTrack(1);
    ASSERT_TRUE(hears(588));
    engine->PausePlay();
    engine->PlayTrack(2);
    EXPECT_EQ(engine->DriveStatus(), CDRipperX::Playing);
    ASSERT_TRUE(hears(588));
    EXPECT_TRUE(ear.all() == sound.left(2352) + sound.mid(75 * 2352, 2352));
    engine->StopPlay();
    EXPECT_EQ(engine->DriveStatus(), CDRipperX::DiscIdle);
    engine->PlayTrack(1);
    engine->EjectTray();
    EXPECT_TRUE(waitFor([&] { return engine->DriveStatus() == CDRipperX::NoDisc; }));
    engine->LoadTray();
    EXPECT_TRUE(waitFor([&] { return engine->DriveStatus() == CDRipperX::DiscIdle; }));
}

TEST_F(PlayerTest, withoutASoundDeviceTimePassesSilently)
{
    const auto engine = engineWith([] { return std::make_unique<SilentOutput>(); });
    QElapsedTimer clock;
    clock.start();
    engine->PlayTrack(1);
    EXPECT_LT(clock.elapsed(), 100);
    QTest::qWait(200);
    engine->PausePlay();
    QTest::qWait(1100);
    EXPECT_EQ(engine->DriveStatus(), CDRipperX::Paused) << "longer than the track, but paused";
    engine->ResumePlay();
    EXPECT_TRUE(waitFor([&] { return engine->DriveStatus() == CDRipperX::DiscIdle; }, 3000));
    EXPECT_GE(clock.elapsed(), 2000);
}

TEST_F(PlayerTest, theEngineMayGoWhileItPlays)
{
    auto engine = engineWith(makeAudioOutput);
    engine->PlayTrack(2);
    EXPECT_EQ(engine->DriveStatus(), CDRipperX::Playing);
    engine.reset();
}

} // namespace
