#include "SignalLog.h"
#include "base/RunTimeFailure.h"
#include "base/Thread.h"
#include "demodisc/DemoDisc.h"
#include "engines/cdrom/CdEngine.h"
#include "engines/cdrom/ImageDrive.h"
#include "engines/codecs/Encoder.h"
#include "testkit/DiscFolder.h"
#include "testkit/FullDisk.h"
#include "testkit/Logged.h"
#include "testkit/Printing.h"
#include "testkit/Ui.h"

#include <QPointer>
#include <csignal>
#include <new>
#include <sys/resource.h>

namespace {

using namespace cdrom;

/// An encoder whose settings are impossible.
class RefusingEncoder : public QObject, public codecs::EncoderSource
{
public:
    std::shared_ptr<const codecs::EncoderRecipe> recipe() const override
    {
        throw RunTimeFailure(RunTimeFailure::InvalidCall, QStringLiteral("no such bit rate"));
    }
};

/// An encoder whose threads never come to an end.
class EndlessEncoder : public QObject,
                       public codecs::EncoderSource,
                       public codecs::EncoderRecipe,
                       public std::enable_shared_from_this<EndlessEncoder>
{
public:
    std::shared_ptr<const codecs::EncoderRecipe> recipe() const override { return shared_from_this(); }

    std::unique_ptr<codecs::Encoder> create(const codecs::PcmFormat &, files::ByteSink &, int) const override
    {
        class Waiting : public codecs::Encoder
        {
        public:
            explicit Waiting(std::atomic<int> &alive) : m_alive(alive) { ++m_alive; }
            ~Waiting() override { --m_alive; }
            void encode(const qint16 *, qsizetype) override { finish(); }
            void finish() override
            {
                for (;;)
                    m_call();
            }
            void whileWaiting(std::function<void()> call) override { m_call = std::move(call); }

        private:
            std::atomic<int> &m_alive;
            std::function<void()> m_call;
        };
        return std::make_unique<Waiting>(alive);
    }

    mutable std::atomic<int> alive = 0;
};

/// An encoder for whose first stream there is no memory.
class ShortOfMemory : public QObject,
                      public codecs::EncoderSource,
                      public codecs::EncoderRecipe,
                      public std::enable_shared_from_this<ShortOfMemory>
{
public:
    std::shared_ptr<const codecs::EncoderRecipe> recipe() const override { return shared_from_this(); }

    std::unique_ptr<codecs::Encoder> create(const codecs::PcmFormat &, files::ByteSink &, int) const override
    {
        struct Failing : codecs::Encoder
        {
            void encode(const qint16 *, qsizetype) override { throw std::bad_alloc(); }
            void finish() override {}
        };
        struct Silent : Failing
        {
            void encode(const qint16 *, qsizetype) override {}
        };
        return m_made++ == 0 ? std::make_unique<Failing>() : std::make_unique<Silent>();
    }

private:
    mutable int m_made = 0;
};

/// A drive whose readers find no memory for one sector.
class ShortOfMemoryDrive : public Drive
{
public:
    ShortOfMemoryDrive(std::shared_ptr<Drive> drive, qint32 sector)
        : m_drive(std::move(drive)), m_sector(sector)
    {}

    DriveTexts texts() const override { return m_drive->texts(); }
    qint16 maxSpeed() const override { return m_drive->maxSpeed(); }
    void setSpeed(qint16 factor) override { m_drive->setSpeed(factor); }
    MediumState medium() override { return m_drive->medium(); }
    DiscToc readToc() override { return m_drive->readToc(); }
    void moveTray(bool open) override { m_drive->moveTray(open); }
    std::unique_ptr<AudioReader> openReader(ReadFor purpose, const ReadHooks &hooks) override
    {
        struct Reader : AudioReader
        {
            const DiscToc &toc() const override { return inner->toc(); }
            void begin(qint32 first, qint32 last) override
            {
                if (first <= failing && failing <= last)
                    throw std::bad_alloc();
                inner->begin(first, last);
            }
            ReadResult read(qint16 *samples, qint32 &count) override { return inner->read(samples, count); }
            std::unique_ptr<AudioReader> inner;
            qint32 failing = 0;
        };
        auto reader = std::make_unique<Reader>();
        reader->inner = m_drive->openReader(purpose, hooks);
        reader->failing = m_sector;
        return reader;
    }

private:
    const std::shared_ptr<Drive> m_drive;
    const qint32 m_sector;
};

class ExtractionTest : public ::testing::Test
{
protected:
    static constexpr qint32 Sectors = 200; ///< of each of the disc's three tracks

    ExtractionTest()
    {
        discs.write(QStringLiteral("d.bin"), markedSectors(1, 3 * Sectors));
        discs.write(
            QStringLiteral("d.cue"),
            "FILE d.bin BINARY\nTRACK 01 AUDIO\nINDEX 01 00:00:00\nTRACK 02 AUDIO\nINDEX 01 00:02:50\n"
            "TRACK 03 AUDIO\nINDEX 01 00:05:25\n");
    }

    std::unique_ptr<CdEngine> engineWith(const ImageOptions &options = {}) const
    {
        auto engine = std::make_unique<CdEngine>(imageDrives(discs.path(), options));
        EXPECT_TRUE(engine->SelectDrive(0));
        EXPECT_TRUE(engine->DiscReady());
        return engine;
    }

    /// What a WAV file of that track holds behind its header.
    QByteArray samplesOf(int track) const
    {
        return discs.read(QStringLiteral("d.bin")).mid(qsizetype(track - 1) * Sectors * 2352, Sectors * 2352);
    }

    QString target(const QString &name) const { return files.path(name); }

    static bool rips(CdEngine &engine, SignalLog &log)
    {
        log.complete = false;
        return engine.StartExtraction() && waitFor([&] { return log.complete; });
    }

    static bool queue(CdEngine &engine, qint16 track, const QString &file)
    {
        return engine.AddTrack(track, file, track * 10);
    }

    DiscFolder discs;
    DiscFolder files;
};

TEST_F(ExtractionTest, tracksBecomeBitExactFilesAndTheSignalsComeInOrder)
{
    const auto engine = engineWith();
    SignalLog log(*engine);
    engine->ClearTracks();
    EXPECT_TRUE(queue(*engine, 1, target(QStringLiteral("01 日本 'ü'.wav"))));
    EXPECT_TRUE(queue(*engine, 3, target(QStringLiteral("3.wav"))));
    EXPECT_FALSE(queue(*engine, 4, target(QStringLiteral("4.wav"))));
    EXPECT_FALSE(queue(*engine, 2, QString()));
    ASSERT_TRUE(rips(*engine, log));
    EXPECT_EQ(log.take(), QStringList({"prepared", "start 01 日本 'ü'.wav 0-199 #10", "finished",
                                       "start 3.wav 400-599 #30", "finished", "complete"}));
    EXPECT_EQ(files.entries(), QStringList({"01 日本 'ü'.wav", "3.wav"}));
    EXPECT_EQ(files.read(QStringLiteral("01 日本 'ü'.wav")).mid(44), samplesOf(1));
    EXPECT_EQ(files.read(QStringLiteral("3.wav")).mid(44), samplesOf(3));
    EXPECT_TRUE(log.progress.contains(199));
    EXPECT_EQ(log.progress.last(), 599);
    EXPECT_FALSE(engine->AddTrack(1, QString(), 1));
}

TEST_F(ExtractionTest, aWholeDemoDiscWithADataTrackIsBitExact)
{
    DiscFolder folder;
    const demodisc::DiscPlan plan = demodisc::withDataTrack(demodisc::shortDisc());
    demodisc::write(plan, folder.path(QStringLiteral("demo.cue")).toStdString());
    CdEngine engine(imageDrives(folder.path()));
    engine.SelectDrive(0);
    ASSERT_EQ(engine.TrackCount(), 7);
    SignalLog log(engine);
    for (qint16 track = 1; track <= 7; ++track)
        EXPECT_EQ(queue(engine, track, target(QString::number(track))), track < 7) << track;
    ASSERT_TRUE(rips(engine, log));
    for (std::size_t i = 0; i < plan.tracks.size(); ++i) {
        const std::vector<std::int16_t> samples = demodisc::render(plan.tracks[i]);
        const QByteArray expected(reinterpret_cast<const char *>(samples.data()),
                                  static_cast<qsizetype>(samples.size() * 2));
        EXPECT_TRUE(files.read(QString::number(i + 1)).mid(44) == expected) << "track " << i + 1;
    }
}

TEST_F(ExtractionTest, whatCantStartSaysSo)
{
    const auto engine = engineWith();
    SignalLog log(*engine);
    EXPECT_FALSE(engine->StartExtraction()) << "nothing is queued";
    queue(*engine, 1, target(QStringLiteral("1")));
    engine->setUseEncoder(true);
    EXPECT_THROW(engine->StartExtraction(), RunTimeFailure) << "no encoder";
    RefusingEncoder encoder;
    engine->SetEncoder(&encoder);
    try {
        engine->StartExtraction();
        ADD_FAILURE() << "impossible settings";
    } catch (const RunTimeFailure &failure) {
        EXPECT_EQ(failure.description(), QStringLiteral("no such bit rate"));
    }
    engine->setUseEncoder(false);
    discs.write(QStringLiteral("d.bin"), markedSectors(2, 3 * Sectors + 1));
    ASSERT_TRUE(waitFor([&] { return engine->TrackLength(3) == Sectors + 1; }));
    EXPECT_FALSE(queue(*engine, 2, target(QStringLiteral("2")))) << "of another disc than the queue's";
    EXPECT_FALSE(engine->StartExtraction());
    engine->ClearTracks();
    EXPECT_FALSE(engine->StartExtraction());
    EXPECT_EQ(log.take(), QStringList());
}

TEST_F(ExtractionTest, aDiscThatIsAnotherOneOnceItIsOpenedIsNotRipped)
{
    /// Its disc is changed by whoever is quicker than the engine.
    class QuicklyChanged : public ImageDrive
    {
    public:
        using ImageDrive::ImageDrive;
        std::unique_ptr<AudioReader> openReader(ReadFor purpose, const ReadHooks &hooks) override
        {
            change();
            return ImageDrive::openReader(purpose, hooks);
        }
        std::function<void()> change;
    };
    const auto drive = std::make_shared<QuicklyChanged>(discs.path(QStringLiteral("d.cue")));
    drive->change = [this] { discs.write(QStringLiteral("d.bin"), markedSectors(2, 3 * Sectors + 1)); };
    CdEngine engine({drive});
    engine.SelectDrive(0);
    ASSERT_TRUE(waitFor([&] { return engine.DiscReady(); }));
    SignalLog log(engine);
    queue(engine, 1, target(QStringLiteral("1")));
    ASSERT_TRUE(rips(engine, log));
    EXPECT_EQ(log.take(), QStringList({"prepared", "status 13", "complete"}));
    EXPECT_TRUE(files.entries().isEmpty());
}

TEST_F(ExtractionTest, aFileThatCantBeWrittenIsToldAndTheNextTrackGoesOn)
{
    const auto engine = engineWith();
    SignalLog log(*engine);
    queue(*engine, 1, target(QStringLiteral("missing/1.wav")));
    queue(*engine, 2, files.path());
    queue(*engine, 3, target(QString(256, u'x')));
    queue(*engine, 1, target(QString(255, u'y')));
    ASSERT_TRUE(rips(*engine, log));
    const QStringList told = log.take();
    EXPECT_EQ(told.filter(QStringLiteral("status")), QStringList({"status 10", "status 10", "status 10"}));
    EXPECT_EQ(told.mid(told.size() - 2), QStringList({"finished", "complete"}));
    EXPECT_EQ(files.entries(), QStringList(QString(255, u'y')));
    const QStringList logged = takeLogged("tonelift.rip");
    ASSERT_EQ(logged.size(), 3);
    EXPECT_EQ(logged[0], target(QStringLiteral("missing/1.wav")) +
                             QStringLiteral(" given up: Run-time error '76': No such file or directory"));
}

TEST_F(ExtractionTest, whatLacksMemoryOrThreadsIsGivenUpAndTheNextTrackGoesOn)
{
    CdEngine engine({std::make_shared<ShortOfMemoryDrive>(imageDrives(discs.path())[0], 250)});
    ASSERT_TRUE(engine.SelectDrive(0));
    SignalLog log(engine);
    for (qint16 track = 1; track <= 3; ++track)
        queue(engine, track, target(QString::number(track)));
    ASSERT_TRUE(rips(engine, log));
    EXPECT_EQ(log.take(),
              QStringList({"prepared", "start 1 0-199 #10", "finished", "start 2 200-399 #20", "status 9",
                           "status 8", "start 3 400-599 #30", "finished", "complete"}))
        << "while it is read";
    EXPECT_EQ(files.entries(), QStringList({"1", "3"}));

    const auto encoder = std::make_shared<ShortOfMemory>();
    const auto other = engineWith();
    SignalLog otherLog(*other);
    other->setUseEncoder(true);
    other->SetEncoder(encoder.get());
    queue(*other, 1, target(QStringLiteral("first")));
    queue(*other, 2, target(QStringLiteral("second")));
    ASSERT_TRUE(rips(*other, otherLog));
    EXPECT_EQ(otherLog.take(), QStringList({"prepared", "start first 0-199 #10", "status 9", "status 8",
                                            "start second 200-399 #20", "finished", "complete"}))
        << "while it is encoded";
    EXPECT_EQ(files.entries(), QStringList({"1", "3", "second"}));
}

TEST_F(ExtractionTest, withoutThreadsItDoesNotStartAndLaterItDoes)
{
    const auto engine = engineWith();
    SignalLog log(*engine);
    queue(*engine, 1, target(QStringLiteral("1")));
    for (const int there : {0, 1}) { // for the reader, for the writer
        const ThreadShortage shortage(there);
        EXPECT_FALSE(engine->StartExtraction());
    }
    EXPECT_EQ(takeLogged("tonelift.rip").size(), 2);
    ASSERT_TRUE(rips(*engine, log));
    EXPECT_EQ(log.take(), QStringList({"prepared", "start 1 0-199 #10", "finished", "complete"}));
}

TEST_F(ExtractionTest, aFullDiskAbortsTheTrackAndLeavesNothing)
{
    files.write(QStringLiteral("1.wav"), "older");
    const auto engine = engineWith();
    SignalLog log(*engine);
    queue(*engine, 1, target(QStringLiteral("1.wav")));
    queue(*engine, 2, target(QStringLiteral("2.wav")));
    {
        const testkit::FullDisk full(100'000);
        ASSERT_TRUE(rips(*engine, log));
    }
    EXPECT_EQ(log.take(), QStringList({"prepared", "start 1.wav 0-199 #10", "status 11", "status 8",
                                       "start 2.wav 200-399 #20", "status 11", "status 8", "complete"}));
    EXPECT_EQ(files.entries(), QStringList("1.wav"));
    EXPECT_EQ(files.read(QStringLiteral("1.wav")), "older");
}

TEST_F(ExtractionTest, aHoleAbortsItsTrackAloneAndATransientErrorNone)
{
    ImageOptions options;
    options.fails = [tries = 0](qint32 first, qint32 count) mutable {
        const bool hole = first <= 250 && 250 < first + count;
        const bool stumbles = first <= 500 && 500 < first + count && tries++ == 0;
        return hole || stumbles;
    };
    const auto engine = engineWith(options);
    SignalLog log(*engine);
    for (qint16 track = 1; track <= 3; ++track)
        queue(*engine, track, target(QString::number(track)));
    ASSERT_TRUE(rips(*engine, log));
    EXPECT_EQ(log.take(), QStringList({"prepared", "start 1 0-199 #10", "finished", "start 2 200-399 #20",
                                       "status 4", "status 5", "status 6", "status 8", "start 3 400-599 #30",
                                       "status 4", "status 5", "finished", "complete"}));
    EXPECT_EQ(files.entries(), QStringList({"1", "3"}));
    EXPECT_EQ(files.read(QStringLiteral("3")).mid(44), samplesOf(3));
}

TEST_F(ExtractionTest, cancellingAnswersAtOnceAndKeepsTheOlderFile)
{
    files.write(QStringLiteral("1"), "older");
    const auto engine = engineWith();
    SignalLog log(*engine);
    engine->SetSpeed(1);
    queue(*engine, 1, target(QStringLiteral("1")));
    queue(*engine, 2, target(QStringLiteral("2")));
    QElapsedTimer clock;
    log.onStatus = [&](qint32 code) {
        if (code == CDRipperX::Progress && !clock.isValid()) {
            clock.start();
            engine->CancelExtraction();
            engine->CancelExtraction();
        }
    };
    ASSERT_TRUE(rips(*engine, log));
    EXPECT_LT(clock.elapsed(), 1000);
    EXPECT_EQ(log.take(), QStringList({"prepared", "start 1 0-199 #10", "status 14", "complete"}));
    EXPECT_EQ(files.entries(), QStringList("1"));
    EXPECT_EQ(files.read(QStringLiteral("1")), "older");
    engine->CancelExtraction();
    engine->SetSpeed(0);
    EXPECT_TRUE(rips(*engine, log)) << "the queue stays";
    EXPECT_EQ(files.entries(), QStringList({"1", "2"}));
}

TEST_F(ExtractionTest, cancellingEndsTheWaitForAnEncoder)
{
    const auto engine = engineWith();
    SignalLog log(*engine);
    const auto encoder = std::make_shared<EndlessEncoder>();
    engine->setUseEncoder(true);
    engine->SetEncoder(encoder.get());
    queue(*engine, 1, target(QStringLiteral("1")));
    log.onEntry = [&](const QString &entry) {
        if (entry.startsWith(u"start"))
            engine->CancelExtraction();
    };
    ASSERT_TRUE(rips(*engine, log));
    EXPECT_EQ(log.take(), QStringList({"prepared", "start 1 0-199 #10", "status 14", "complete"}));
    EXPECT_TRUE(files.entries().isEmpty());
    EXPECT_EQ(encoder->alive, 0) << "the rip wasn't left to itself";
}

TEST_F(ExtractionTest, cancellingAnswersEvenWhenTheDriveDoesnt)
{
    std::atomic<bool> hangs = true;
    ImageOptions options;
    options.fails = [&hangs](qint32, qint32) {
        while (hangs)
            std::this_thread::yield();
        return false;
    };
    auto engine = engineWith(options);
    SignalLog log(*engine);
    queue(*engine, 1, target(QStringLiteral("1")));
    log.onEntry = [&](const QString &entry) {
        if (entry == u"prepared")
            QTimer::singleShot(0, engine.get(), [&] { engine->CancelExtraction(); });
    };
    QElapsedTimer clock;
    clock.start();
    ASSERT_TRUE(rips(*engine, log));
    EXPECT_LT(clock.elapsed(), 1000);
    EXPECT_TRUE(files.entries().isEmpty());
    hangs = false;
    log.onEntry = [](const QString &) {};
    EXPECT_TRUE(rips(*engine, log)) << "the drive answers again";
    EXPECT_EQ(files.read(QStringLiteral("1")).mid(44), samplesOf(1));
}

TEST_F(ExtractionTest, handlersMayHandleEventsAndTheOrderHolds)
{
    const auto engine = engineWith();
    SignalLog log(*engine);
    for (qint16 track = 1; track <= 3; ++track)
        queue(*engine, track, target(QString::number(track)));
    int depth = 0;
    int deepest = 0;
    const auto pump = [&] {
        deepest = std::max(deepest, ++depth);
        QElapsedTimer clock;
        clock.start();
        while (clock.elapsed() < 5)
            QCoreApplication::processEvents();
        --depth;
    };
    log.onEntry = [&](const QString &) { pump(); };
    log.onStatus = [&](qint32) { pump(); };
    ASSERT_TRUE(rips(*engine, log));
    EXPECT_EQ(deepest, 1);
    EXPECT_EQ(log.take(), QStringList({"prepared", "start 1 0-199 #10", "finished", "start 2 200-399 #20",
                                       "finished", "start 3 400-599 #30", "finished", "complete"}));
}

TEST_F(ExtractionTest, aRipThatNobodyHearsEndsAndTheNextHearsNothingOfIt)
{
    const auto engine = engineWith();
    engine->SetSpeed(1);
    queue(*engine, 1, target(QStringLiteral("1")));
    {
        SignalLog closed(*engine);
        ASSERT_TRUE(engine->StartExtraction());
        ASSERT_TRUE(waitFor([&] { return !closed.progress.isEmpty(); }));
        EXPECT_FALSE(engine->StartExtraction()) << "one job at a time";
    }
    ASSERT_TRUE(waitFor([&] { return engine->StartExtraction(); })) << "the first one ends by itself";
    SignalLog leaving(*engine);
    ASSERT_TRUE(waitFor([&] { return !leaving.progress.isEmpty(); }));
    engine->disconnect(&leaving);
    // One that connects in the same moment hears nothing either, and needn't wait.
    SignalLog log(*engine);
    engine->SetSpeed(0);
    engine->ClearTracks();
    queue(*engine, 2, target(QStringLiteral("2")));
    ASSERT_TRUE(engine->StartExtraction());
    ASSERT_TRUE(waitFor([&] { return log.complete; }));
    EXPECT_EQ(log.take(), QStringList({"prepared", "start 2 200-399 #20", "finished", "complete"}));
    EXPECT_TRUE(waitFor([&] { return files.entries() == QStringList("2"); }));
}

TEST_F(ExtractionTest, anyHandlerMayDestroyTheEngine)
{
    for (const char *last : {"prepared", "start 1 0-199 #10", "finished", "status 14", "complete"}) {
        auto engine = engineWith();
        SignalLog log(*engine);
        queue(*engine, 1, target(QStringLiteral("1")));
        const bool cancels = QLatin1String(last) == u"status 14";
        if (cancels)
            engine->SetSpeed(1);
        log.onStatus = [&](qint32 code) {
            if (cancels && code == CDRipperX::Progress)
                engine->CancelExtraction();
        };
        log.onEntry = [&](const QString &entry) {
            if (entry == QLatin1String(last))
                engine.reset();
        };
        ASSERT_TRUE(engine->StartExtraction());
        EXPECT_TRUE(waitFor([&] { return !engine; })) << last;
        EXPECT_TRUE(files.entries().filter(QStringLiteral("part")).isEmpty()) << last;
    }
}

TEST_F(ExtractionTest, anImageThatGoesWhileItIsRippedLeavesWholeFilesOrNone)
{
    const auto engine = engineWith();
    SignalLog log(*engine);
    engine->SetSpeed(4);
    for (qint16 track = 1; track <= 3; ++track)
        queue(*engine, track, target(QString::number(track)));
    log.onStatus = [&](qint32 code) {
        if (code == CDRipperX::Progress && QFile::exists(discs.path(QStringLiteral("d.cue")))) {
            QFile::remove(discs.path(QStringLiteral("d.cue")));
            QFile::resize(discs.path(QStringLiteral("d.bin")), 300 * 2352);
        }
    };
    ASSERT_TRUE(rips(*engine, log));
    EXPECT_EQ(files.entries(), QStringList("1"));
    EXPECT_EQ(files.read(QStringLiteral("1")).mid(44), samplesOf(1));
    EXPECT_TRUE(waitFor([&] { return engine->DriveStatus() == CDRipperX::NoDisc; }));
    EXPECT_FALSE(engine->StartExtraction());
}

TEST_F(ExtractionTest, twoEnginesRipAtATime)
{
    const auto one = engineWith();
    const auto two = engineWith();
    SignalLog logOfOne(*one);
    SignalLog logOfTwo(*two);
    for (qint16 track = 1; track <= 3; ++track) {
        queue(*one, track, target(QStringLiteral("a%1").arg(track)));
        queue(*two, track, target(QStringLiteral("b%1").arg(track)));
    }
    ASSERT_TRUE(one->StartExtraction());
    ASSERT_TRUE(two->StartExtraction());
    ASSERT_TRUE(waitFor([&] { return logOfOne.complete && logOfTwo.complete; }));
    for (int track = 1; track <= 3; ++track)
        for (const char *name : {"a%1", "b%1"})
            EXPECT_EQ(files.read(QString::fromLatin1(name).arg(track)).mid(44), samplesOf(track));
}

} // namespace
