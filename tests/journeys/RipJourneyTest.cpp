#include "journeys/Journey.h"
#include "testkit/TestDecoder.h"

#include <QListWidget>
#include <QProgressBar>
#include <cmath>

namespace {

/// How much of the decoded sound is the source's, as a signal-to-noise ratio in dB, the same place compared.
double likeness(const std::vector<std::int16_t> &source, const std::vector<qint16> &decoded)
{
    double signal = 0;
    double noise = 1e-9;
    for (std::size_t i = 0; i < std::min(source.size(), decoded.size()); ++i) {
        signal += double(source[i]) * source[i];
        noise += std::pow(double(source[i]) - decoded[i], 2);
    }
    return 10 * std::log10(signal / noise);
}

struct FormatRow
{
    const char *name;
    int format; ///< index of rdFormat
    const char *extension;
    const char *codec;
    bool exactLength;
    double leastLikeness; ///< dB
};

void PrintTo(const FormatRow &row, std::ostream *out)
{
    *out << row.name;
}

class RipJourney : public Journey
{};

class RipToFormat : public Journey, public ::testing::WithParamInterface<FormatRow>
{};

TEST_P(RipToFormat, everyCheckedTrackBecomesAFileOfItsLengthAndSound)
{
    const FormatRow &row = GetParam();
    const demodisc::DiscPlan plan = insert(demodisc::shortDisc(3));
    start(3);
    click(qPrintable(QStringLiteral("rdFormat_%1").arg(row.format)));
    list().setChecked(1, true);
    list().setChecked(3, true);
    expectCompleted();
    int mostPercent = 0;
    rip([&](QWidget &job) {
        mostPercent = std::max(mostPercent, control<QProgressBar>(job, QStringLiteral("prgTrack"))->value());
    });
    const QString extension = QLatin1String(row.extension);
    ASSERT_EQ(files(),
              (QStringList{QStringLiteral("Track01") + extension, QStringLiteral("Track03") + extension}));
    for (const int track : {1, 3}) {
        const auto source = demodisc::render(plan.tracks[std::size_t(track) - 1]);
        const auto decoded =
            testkit::decodeFile(folder() + QStringLiteral("Track0%1").arg(track) + extension);
        EXPECT_TRUE(decoded.codec.startsWith(QLatin1String(row.codec))) << decoded.codec.toStdString();
        EXPECT_EQ(decoded.channels, 2);
        if (row.exactLength)
            EXPECT_EQ(decoded.samples.size(), source.size());
        else
            EXPECT_NEAR(double(decoded.samples.size()), double(source.size()), 2.0 * 2 * 2048);
        EXPECT_GE(likeness(source, decoded.samples), row.leastLikeness) << track;
    }
    EXPECT_GT(mostPercent, 0);
    EXPECT_EQ(system.log.calls(), QStringList{QStringLiteral("explore ") + folder()});
}

INSTANTIATE_TEST_SUITE_P(Formats, RipToFormat,
                         ::testing::Values(FormatRow{"MP3", 0, ".mp3", "mp3", true, 8},
                                           FormatRow{"WAV", 1, ".wav", "pcm_s16le", true, 150},
                                           FormatRow{"WMA", 2, ".wma", "wmav2", false, 8},
                                           FormatRow{"OGG", 4, ".ogg", "vorbis", true, 8}),
                         ::testing::PrintToStringParamName());

TEST_F(RipJourney, trackInformationEndsUpInTheFile)
{
    insert(demodisc::shortDisc(1));
    start(1);
    main().discInfo().Album = QStringLiteral("Albüm");
    main().discInfo().TrackTitles = QStringLiteral("Übung 日本");
    main().UpdateFileNamesWithTitles();
    list().setChecked(1, true);
    expectCompleted();
    rip();
    ASSERT_EQ(files(), QStringList{QStringLiteral("Übung 日本.mp3")});
    const auto tags = testkit::decodeFile(folder() + files().first()).tags;
    EXPECT_EQ(tags.value(QStringLiteral("title")), QStringLiteral("Übung 日本"));
    EXPECT_EQ(tags.value(QStringLiteral("album")), QStringLiteral("Albüm"));
}

TEST_F(RipJourney, aVqfJobLeavesVqfFilesAlone)
{
    insert(demodisc::shortDisc(1));
    start(1);
    click("rdFormat_3");
    click("chkAll");
    expectCompleted();
    rip();
    ASSERT_EQ(files(), QStringList{QStringLiteral("Track01.vqf")});
    EXPECT_EQ(testkit::decodeFile(folder() + files().first()).codec, QStringLiteral("twinvq"));
}

TEST_F(RipJourney, aDataTrackIsLeftOutAndTheRestIsRipped)
{
    const demodisc::DiscPlan plan = insert(demodisc::withDataTrack(demodisc::shortDisc(2)));
    start(3);
    click("rdFormat_1");
    click("chkAll");
    expectCompleted();
    rip();
    EXPECT_EQ(files(), (QStringList{QStringLiteral("Track01.wav"), QStringLiteral("Track02.wav")}));
    const auto last = testkit::decodeFile(folder() + QStringLiteral("Track02.wav"));
    EXPECT_EQ(last.samples, demodisc::render(plan.tracks[1]));
}

TEST_F(RipJourney, aCancelLeavesFinishedFilesAndNothingHalf)
{
    insert(demodisc::longDisc());
    start(10);
    click("chkAll");
    expectCompleted();
    bool pressed = false;
    rip([&](QWidget &job) {
        if (!std::exchange(pressed, control<QProgressBar>(job, QStringLiteral("prgTotal"))->value() >= 1) &&
            pressed)
            control<QPushButton>(job, QStringLiteral("cmdCancel"))->click();
    });
    EXPECT_TRUE(pressed);
    EXPECT_LT(files().size(), 10);
    for (const QString &file : files())
        EXPECT_EQ(testkit::decodeFile(folder() + file).frames(), 60 * 44100) << file.toStdString();
}

TEST_F(RipJourney, closingTheJobsWindowEndsTheRipAndTheNextOneRuns)
{
    insert(demodisc::longDisc());
    start(10);
    list().setChecked(1, true);
    list().setChecked(2, true);
    rip([&](QWidget &job) {
        if (control<QProgressBar>(job, QStringLiteral("prgTrack"))->value() > 5)
            job.close();
    });
    // Nobody listens any more: the engine ends by itself, and nothing half stays.
    EXPECT_TRUE(waitFor([&] { return files().filter(QStringLiteral(".part")).isEmpty(); }));
    list().setChecked(1, false);
    click("rdFormat_1");
    expectCompleted();
    rip();
    EXPECT_EQ(files(), QStringList{QStringLiteral("Track02.wav")});
}

TEST_F(RipJourney, anUnwritableFolderFailsInTheHiddenLogAndTheJobEnds)
{
    insert(demodisc::shortDisc(1));
    start(1);
    system.write(QStringLiteral("blocked"), "a file");
    const QString path = system.folder() + QStringLiteral("/blocked/");
    control<QLineEdit>(main(), QStringLiteral("txtOutputDirectory"))->setText(path);
    list().setChecked(1, true);
    const MessageBox refusal{.text = QStringLiteral("Create directory error: ") + path,
                             .icon = BoxIcon::Critical,
                             .title = QStringLiteral("Error")};
    system.dialogs.expectWholeBox(refusal);
    QStringList log;
    const QString completed = QStringLiteral("Audio CD Ripping Completed!");
    system.dialogs.expectWholeBox({.text = completed, .title = completed}, BoxAnswer::Ok, [&] {
        auto *hidden = control<QListWidget>(*QApplication::activeModalWidget(), QStringLiteral("lstStatus"));
        for (int i = 0; i < hidden->count(); ++i)
            log << hidden->item(i)->text();
    });
    system.dialogs.expectWholeBox(refusal); // of the command that shows the folder
    rip();
    EXPECT_TRUE(log.contains(QStringLiteral("Error Creating File.")));
    EXPECT_TRUE(QFile(system.folder() + QStringLiteral("/blocked")).exists());
}

} // namespace
