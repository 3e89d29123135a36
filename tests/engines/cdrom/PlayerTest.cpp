#include "engines/cdrom/Player.h"

#include "engines/cdrom/CdEngine.h"
#include "engines/cdrom/ImageDrive.h"
#include "testkit/DiscFolder.h"
#include "testkit/Ui.h"

#include <atomic>
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

    std::unique_ptr<CdEngine> engineWith(const MakeOutput &make, const ImageOptions &options = {})
    {
        auto engine = std::make_unique<CdEngine>(imageDrives(discs.path(), options), make);
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

TEST_F(PlayerTest, whatCantBeReadIsSilentAndATrackOfNothingElseIsLeft)
{
    qint32 firstGood = 125; // 50 sectors of track 2 are lost
    const auto fails = [&firstGood](qint32 first, qint32) { return first < firstGood; };
    const auto engine = engineWith(intoEar, {.fails = fails});
    ear.listen(1000000);
    const auto plays = [&] {
        ear.heard.clear();
        engine->PlayTrack(2);
        EXPECT_TRUE(waitFor([&] { return engine->DriveStatus() == CDRipperX::DiscIdle; }));
        return ear.all();
    };
    EXPECT_TRUE(plays() == QByteArray(50 * 2352, '\0') + sound.mid(125 * 2352, 100 * 2352));
    firstGood = 1000;
    EXPECT_LT(plays().size(), 150 * 2352);
}

TEST_F(PlayerTest, withoutASoundDeviceTimePassesSilently)
{
    constexpr qint64 Second = 1'000'000'000;
    std::atomic<qint64> now = 7 * Second;
    SilentOutput output([&] { return now.load(); });
    const std::vector<qint16> samples(2 * 88200);
    EXPECT_EQ(output.write(samples.data(), 88200), 44100) << "a second of sound, for all that is given";
    EXPECT_EQ(output.room(), 0);
    now += Second / 4;
    EXPECT_EQ(output.room(), 11025);
    output.setPaused(true);
    now += 5 * Second;
    EXPECT_EQ(output.room(), 11025);
    EXPECT_FALSE(output.isDry());
    output.setPaused(false);
    now += Second;
    EXPECT_TRUE(output.isDry());

    // A clock that runs on with each question.
    const auto hasty = [&] { return now += Second / 10; };
    const qint64 before = now;
    const auto engine = engineWith([&] { return std::make_unique<SilentOutput>(hasty); });
    engine->PlayTrack(2);
    EXPECT_EQ(engine->DriveStatus(), CDRipperX::Playing);
    EXPECT_TRUE(waitFor([&] { return engine->DriveStatus() == CDRipperX::DiscIdle; }));
    EXPECT_GE(now - before, 2 * Second) << "so long is the track";
}

TEST_F(PlayerTest, theEngineMayGoWhileItPlays)
{
    auto engine = engineWith(makeAudioOutput);
    engine->PlayTrack(2);
    EXPECT_EQ(engine->DriveStatus(), CDRipperX::Playing);
    engine.reset();
}

} // namespace
