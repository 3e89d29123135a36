#include "engines/cdrom/CdEngine.h"

#include "SignalLog.h"
#include "base/RunTimeFailure.h"
#include "base/Thread.h"
#include "engines/cdrom/ImageDrive.h"
#include "testkit/DiscFolder.h"
#include "testkit/Logged.h"
#include "testkit/Printing.h"
#include "testkit/Ui.h"

#include <atomic>
#include <condition_variable>
#include <mutex>

namespace {

using namespace cdrom;

/// A drive that does what the test says, and hangs while it is told to.
class ScriptedDrive : public Drive
{
public:
    DriveTexts texts() const override
    {
        return {QStringLiteral("X:"), QStringLiteral("Maker"), QStringLiteral("Model")};
    }
    qint16 maxSpeed() const override { return 24; }
    void setSpeed(qint16) override {}
    MediumState medium() override
    {
        std::unique_lock lock(m_mutex);
        m_change.wait(lock, [this] { return !m_hangs; });
        return m_state;
    }
    DiscToc readToc() override
    {
        const std::lock_guard lock(m_mutex);
        if (m_tocReads++ < unreadable)
            throw RunTimeFailure(RunTimeFailure::DeviceIoError);
        return m_toc;
    }
    void moveTray(bool) override {}
    std::unique_ptr<AudioReader> openReader(ReadFor, const ReadHooks &) override { return nullptr; }

    void put(Medium medium, qint32 tracks = 0)
    {
        const std::lock_guard lock(m_mutex);
        m_state.medium = medium;
        m_toc = {};
        for (qint32 i = 0; i < tracks; ++i)
            m_toc.tracks.push_back({i * 1000, 1000, 1, true, false});
        m_toc.leadOut = tracks * 1000;
    }
    void hang(bool hangs)
    {
        const std::lock_guard lock(m_mutex);
        m_hangs = hangs;
        m_change.notify_all();
    }
    int tocReads()
    {
        const std::lock_guard lock(m_mutex);
        return m_tocReads;
    }

    std::atomic<int> unreadable = 0; ///< so often its contents can't be read

private:
    std::mutex m_mutex;
    std::condition_variable m_change;
    MediumState m_state;
    DiscToc m_toc;
    int m_tocReads = 0;
    bool m_hangs = false;
};

class CdEngineTest : public ::testing::Test
{
protected:
    /// A disc of two tracks of 100 sectors, the first with its copy flag set.
    void writeDisc(const QString &name, const QByteArray &title = "A title") const
    {
        folder.write(name + QStringLiteral(".bin"), markedSectors(1, 200));
        folder.write(name + QStringLiteral(".cue"),
                     "TITLE \"" + title + "\"\nFILE \"" + name.toUtf8() +
                         ".bin\" BINARY\nTRACK 01 AUDIO\nFLAGS DCP\nINDEX 01 00:00:00\nTRACK 02 AUDIO\n"
                         "INDEX 01 00:01:25\n");
    }

    static bool comes(const CdEngine &engine, qint32 status)
    {
        return waitFor([&] { return engine.DriveStatus() == status; });
    }

    DiscFolder folder;
};

TEST_F(CdEngineTest, withoutAnyDriveEveryQuestionHasAnAnswer)
{
    CdEngine engine(folder.path(QStringLiteral("missing")));
    for (qint16 drive : {qint16(-1), engine.DriveCount()}) {
        EXPECT_FALSE(engine.SelectDrive(drive));
        EXPECT_EQ(engine.DriveAddress(drive), QString());
    }
    EXPECT_NE(engine.LastError(), 0);
    EXPECT_EQ(engine.DriveStatus(), CDRipperX::NoDisc);
    EXPECT_FALSE(engine.DiscReady());
    EXPECT_EQ(engine.TrackCount(), 0);
    EXPECT_EQ(engine.TrackLength(1), 0);
    EXPECT_FALSE(engine.IsAudioTrack(1));
    EXPECT_EQ(engine.MaxSpeed(), 0);
    EXPECT_EQ(engine.DiscId(), QStringLiteral("00000000"));
    engine.EjectTray();
    engine.LoadTray();
    engine.SetSpeed(4);
    engine.PlayTrack(1);
    engine.StopPlay();
    engine.CancelExtraction();
    EXPECT_FALSE(engine.AddTrack(1, folder.path(QStringLiteral("a.wav")), 1));
    EXPECT_FALSE(engine.StartExtraction());
}

TEST_F(CdEngineTest, imagesAreDrivesInTheOrderOfTheirNames)
{
    writeDisc(QStringLiteral("b ä"));
    writeDisc(QStringLiteral("A"), "");
    folder.write(QStringLiteral("c.cue"), "nonsense");
    folder.write(QStringLiteral("d.txt"), "none");
    CdEngine engine(imageDrives(folder.path()));
    ASSERT_EQ(engine.DriveCount(), 3);
    EXPECT_EQ(engine.DriveAddress(0), QStringLiteral("A.cue"));
    EXPECT_EQ(engine.DriveModel(0), QStringLiteral("A"));
    EXPECT_EQ(engine.DriveAddress(1), QStringLiteral("b ä.cue"));
    EXPECT_EQ(engine.DriveMaker(1), QStringLiteral("Disc image"));
    EXPECT_EQ(engine.DriveModel(1), QStringLiteral("A title"));
    EXPECT_EQ(engine.DriveModel(2), QStringLiteral("c"));
    ASSERT_TRUE(engine.SelectDrive(1));
    EXPECT_TRUE(engine.DiscReady());
    EXPECT_EQ(engine.DriveStatus(), CDRipperX::DiscIdle);
    EXPECT_EQ(engine.TrackCount(), 2);
    EXPECT_EQ(engine.TrackStart(2), 100);
    EXPECT_EQ(engine.TrackLength(2), 100);
    EXPECT_TRUE(engine.IsAudioTrack(2));
    EXPECT_TRUE(engine.TrackFlag(1));
    EXPECT_FALSE(engine.TrackFlag(2));
    EXPECT_EQ(engine.TrackLength(3), 0);
    EXPECT_EQ(engine.DiscId(), QStringLiteral("05000202"));
    EXPECT_GE(engine.MaxSpeed(), 1);
    ASSERT_TRUE(engine.SelectDrive(2));
    EXPECT_FALSE(engine.DiscReady());
    EXPECT_EQ(engine.TrackCount(), 0);
}

/// A Nero image in its second format, of two tracks, with two seconds of silence ahead as always.
QByteArray neroImage(const QByteArray &sectors, qint32 second)
{
    const auto number = [](auto value) {
        QByteArray bytes(sizeof value, '\0');
        qToBigEndian(value, bytes.data());
        return bytes;
    };
    const auto chunk = [&](const char *name, const QByteArray &body) {
        return name + number(quint32(body.size())) + body;
    };
    const QByteArray sound = QByteArray(150 * 2352, '\0') + sectors;
    const quint64 start = 150 * 2352;
    const quint64 middle = start + quint64(second) * 2352;
    QByteArray cue;
    const auto index = [&](char track, char index, qint32 sector) {
        cue += QByteArray(1, '\1') + track + index + '\0' + number(sector);
    };
    index('\0', '\0', -150);
    index('\1', '\0', -150);
    index('\1', '\1', 0);
    index('\2', '\0', second);
    index('\2', '\1', second);
    index('\xaa', '\1', qint32(sectors.size() / 2352));
    const auto track = [&](quint64 gap, quint64 from, quint64 to) {
        return QByteArray(12, '\0') + number(quint16(2352)) + number(quint16(0x0700)) + number(quint16(1)) +
               number(gap) + number(from) + number(to);
    };
    const QByteArray tracks = QByteArray(18, '\0') + QByteArray("\0\0\1\2", 4) + track(0, start, middle) +
                              track(middle, middle, quint64(sound.size()));
    return sound + chunk("CUEX", cue) + chunk("DAOX", tracks) + chunk("SINF", number(quint32(2))) +
           chunk("END!", {}) + "NER5" + number(quint64(sound.size()));
}

TEST_F(CdEngineTest, tocAndNeroImagesAreReadAsWell)
{
    const QByteArray sound = markedSectors(1, 700);
    QByteArray swapped = sound;
    qbswap<2>(swapped.data(), swapped.size() / 2, swapped.data());
    folder.write(QStringLiteral("d 1.bin"), swapped);
    folder.write(QStringLiteral("a.toc"),
                 "CD_DA\n// Track 1\nTRACK AUDIO\nCOPY\nFILE \"d 1.bin\" 0 00:04:00\n\n"
                 "TRACK AUDIO\nFILE \"d 1.bin\" 00:04:00 00:05:25\n");
    folder.write(QStringLiteral("b.nrg"), neroImage(sound, 300));
    folder.write(QStringLiteral("c.toc"), "nonsense");
    folder.write(QStringLiteral("d.nrg"), "nonsense");
    folder.write(QStringLiteral("e.toc"), "CD_DA\nTRACK AUDIO\nFILE \"d.wav\" 0\n");
    CdEngine engine(imageDrives(folder.path()));
    SignalLog log(engine);
    for (qint16 drive = 0; drive < 2; ++drive) {
        ASSERT_TRUE(engine.SelectDrive(drive));
        ASSERT_TRUE(engine.DiscReady()) << drive;
        EXPECT_EQ(engine.DriveModel(drive), QString(QChar(u"ab"[drive])));
        ASSERT_EQ(engine.TrackCount(), 2);
        EXPECT_EQ(engine.TrackStart(2), 300);
        EXPECT_EQ(engine.TrackLength(2), 400);
        EXPECT_TRUE(engine.IsAudioTrack(2));
        engine.ClearTracks();
        EXPECT_TRUE(engine.AddTrack(2, folder.path(QStringLiteral("2.wav")), 2));
        log.complete = false;
        ASSERT_TRUE(engine.StartExtraction());
        ASSERT_TRUE(waitFor([&] { return log.complete; }));
        EXPECT_TRUE(folder.read(QStringLiteral("2.wav")).mid(44) == sound.mid(300 * 2352)) << drive;
    }
    for (qint16 drive = 2; drive < 5; ++drive) {
        ASSERT_TRUE(engine.SelectDrive(drive));
        EXPECT_FALSE(engine.DiscReady()) << drive;
    }
}

TEST_F(CdEngineTest, aTrayGivesItsDiscBackAsANewOne)
{
    writeDisc(QStringLiteral("a"));
    CdEngine engine(imageDrives(folder.path()));
    engine.SelectDrive(0);
    ASSERT_TRUE(engine.DiscReady());
    engine.EjectTray();
    EXPECT_TRUE(comes(engine, CDRipperX::NoDisc));
    EXPECT_EQ(engine.TrackCount(), 0);
    EXPECT_EQ(engine.DriveStatus(), CDRipperX::NoDisc);
    engine.LoadTray();
    EXPECT_TRUE(comes(engine, CDRipperX::DiscIdle));
    EXPECT_TRUE(engine.DiscReady());
}

TEST_F(CdEngineTest, aDeletedImageIsADiscTakenOutAndAReplacedOneAnotherDisc)
{
    writeDisc(QStringLiteral("a"));
    CdEngine engine(imageDrives(folder.path()));
    engine.SelectDrive(0);
    ASSERT_TRUE(engine.DiscReady());
    const QByteArray sheet = folder.read(QStringLiteral("a.cue"));
    QFile::remove(folder.path(QStringLiteral("a.cue")));
    EXPECT_TRUE(comes(engine, CDRipperX::NoDisc));
    folder.write(QStringLiteral("a.cue"), sheet);
    EXPECT_TRUE(comes(engine, CDRipperX::DiscIdle));
    EXPECT_TRUE(engine.DiscReady());

    // The sheet stays, its sectors become more: one NoDisc stands between the two discs.
    folder.write(QStringLiteral("a.bin"), markedSectors(1, 300));
    EXPECT_TRUE(comes(engine, CDRipperX::NoDisc));
    EXPECT_EQ(engine.DriveStatus(), CDRipperX::DiscIdle);
    EXPECT_EQ(engine.TrackLength(2), 200);

    QFile::remove(folder.path(QStringLiteral("a.bin")));
    EXPECT_TRUE(comes(engine, CDRipperX::NoDisc));
    EXPECT_FALSE(engine.DiscReady());
}

TEST_F(CdEngineTest, aDriveThatHangsHoldsNobodyUp)
{
    const auto drive = std::make_shared<ScriptedDrive>();
    drive->put(Medium::Present, 3);
    drive->hang(true);
    QElapsedTimer clock;
    clock.start();
    {
        CdEngine engine({drive});
        EXPECT_TRUE(engine.SelectDrive(0));
        EXPECT_FALSE(engine.DiscReady());
        for (int question = 0; question < 100; ++question)
            EXPECT_EQ(engine.DriveStatus(), CDRipperX::NoDisc);
        EXPECT_LT(clock.elapsed(), 5000) << "none of them waits for the drive";
        drive->hang(false);
        EXPECT_TRUE(comes(engine, CDRipperX::DiscIdle)) << "a disc that came late is announced";
        EXPECT_EQ(engine.TrackCount(), 3);
        drive->hang(true);
        engine.SelectDrive(0);
    }
    EXPECT_LT(clock.elapsed(), 5000);
    drive->hang(false);
}

TEST_F(CdEngineTest, aDiscThatCantBeReadAtFirstIsThereOnceItCan)
{
    const auto drive = std::make_shared<ScriptedDrive>();
    drive->put(Medium::Present, 3);
    drive->unreadable = 2;
    CdEngine engine({drive});
    engine.SelectDrive(0);
    EXPECT_TRUE(waitFor([&] { return engine.DiscReady(); }));
    EXPECT_EQ(engine.TrackCount(), 3);
}

TEST_F(CdEngineTest, aBusyDriveKeepsItsDiscAndTheContentsAreReadOncePerDisc)
{
    const auto drive = std::make_shared<ScriptedDrive>();
    drive->put(Medium::Busy);
    CdEngine engine({drive});
    engine.SelectDrive(0);
    EXPECT_FALSE(engine.DiscReady());
    drive->put(Medium::Present, 3);
    EXPECT_TRUE(comes(engine, CDRipperX::DiscIdle));
    ASSERT_TRUE(engine.DiscReady());
    engine.SelectDrive(0);
    ASSERT_TRUE(engine.DiscReady());
    EXPECT_EQ(drive->tocReads(), 1);

    drive->put(Medium::Busy);
    EXPECT_TRUE(waitFor([&] { return engine.DriveStatus() == 3; }));
    drive->put(Medium::Present, 3);
    EXPECT_TRUE(waitFor([&] { return engine.DriveStatus() != 3; }));
    EXPECT_EQ(engine.DriveStatus(), CDRipperX::DiscIdle) << "the same disc isn't announced again";
    drive->put(Medium::Busy);
    EXPECT_TRUE(waitFor([&] { return engine.DriveStatus() == 3; }));
    drive->put(Medium::Present, 4);
    EXPECT_TRUE(comes(engine, CDRipperX::NoDisc)) << "another one is";
    EXPECT_EQ(engine.TrackCount(), 4);
}

TEST_F(CdEngineTest, aDriveForWhichThereIsNoThreadHasNoDiscUntilThereIsOne)
{
    writeDisc(QStringLiteral("a"));
    CdEngine engine(folder.path());
    {
        const ThreadShortage shortage(0);
        EXPECT_TRUE(engine.SelectDrive(0));
        EXPECT_FALSE(engine.DiscReady());
        EXPECT_EQ(engine.DriveStatus(), CDRipperX::NoDisc);
        EXPECT_EQ(takeLogged("tonelift.drive").size(), 1) << "it is told once";
    }
    EXPECT_TRUE(comes(engine, CDRipperX::NoDisc));
    EXPECT_TRUE(waitFor([&] { return engine.DiscReady(); }));
    EXPECT_EQ(engine.TrackCount(), 2);
    const ThreadShortage shortage(0);
    engine.PlayTrack(1);
    EXPECT_EQ(engine.DriveStatus(), CDRipperX::DiscIdle) << "nothing is heard";
}

} // namespace
