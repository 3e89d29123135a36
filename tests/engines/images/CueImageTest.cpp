#include "engines/images/CueImage.h"

#include "base/RunTimeFailure.h"
#include "testkit/DiscFolder.h"
#include "testkit/Printing.h"

#include <map>
#include <vector>

namespace {

using namespace images;

/// "0+100 150+50d | 200": start and length of each track, "d" for data, and the lead-out.
QString shape(const DiscToc &toc)
{
    QStringList parts;
    for (const DiscTrack &track : toc.tracks)
        parts.append(
            QStringLiteral("%1+%2%3").arg(track.start).arg(track.length).arg(track.audio ? "" : "d"));
    return parts.join(u' ') + QStringLiteral(" | %1").arg(toc.leadOut);
}

/// "1:30" for sector 30 of file 1, "-" for silence, "x" for a failed read.
QString soundAt(CueImage &image, qint32 sector)
{
    qint16 samples[SamplesPerSector];
    if (!image.read(sector, 1, samples))
        return QStringLiteral("x");
    return samples[0] == 0 ? QStringLiteral("-") : QStringLiteral("%1:%2").arg(samples[0]).arg(samples[1]);
}

struct Row
{
    const char *name;
    QByteArray sheet;
    const char *shape;
    std::map<qint32, const char *> sounds;
};

void PrintTo(const Row &row, std::ostream *out)
{
    *out << row.name;
}

class CueImageRows : public ::testing::TestWithParam<Row>
{
protected:
    CueImageRows()
    {
        folder.write(QStringLiteral("One.BIN"), markedSectors(1, 400));
        folder.write(QStringLiteral("two.bin"), markedSectors(2, 200));
        folder.write(QStringLiteral("ä 3.wav"), waveOf(markedSectors(3, 100)));
        folder.write(QStringLiteral("short.wav"), waveOf(markedSectors(4, 2).chopped(2000)));
        folder.write(QStringLiteral("mixed.bin"), QByteArray(50 * 2048, 'd') + markedSectors(5, 100));
        QByteArray swapped = markedSectors(6, 80);
        qbswap<2>(swapped.data(), swapped.size() / 2, swapped.data());
        folder.write(QStringLiteral("motorola.bin"), swapped);
    }

    DiscFolder folder;
};

TEST_P(CueImageRows, areLaidOutAsOnADisc)
{
    const Row &row = GetParam();
    CueImage image(folder.write(QStringLiteral("a.cue"), row.sheet));
    EXPECT_EQ(shape(image.toc()), QString::fromLatin1(row.shape));
    for (const auto &[sector, sound] : row.sounds)
        EXPECT_EQ(soundAt(image, sector), QString::fromLatin1(sound)) << "at " << sector;
}

const Row rows[] = {
    {"oneFileFoundInOtherLetterCases",
     "FILE \"C:\\Rips\\ONE.bin\" BINARY\nTRACK 01 AUDIO\nINDEX 01 00:00:00\nTRACK 02 AUDIO\nINDEX 01 "
     "00:02:50\n",
     "0+200 200+200 | 400",
     {{0, "1:0"}, {199, "1:199"}, {200, "1:200"}, {399, "1:399"}}},
    {"gapsInTheFileBelongToTheTrackBefore",
     "FILE one.bin BINARY\n TRACK 01 AUDIO\n  INDEX 00 00:00:00\n  INDEX 01 00:00:30\n TRACK 02 AUDIO\n"
     "  INDEX 00 00:02:00\n  INDEX 01 00:02:10\n  INDEX 02 00:03:00\n",
     "30+130 160+240 | 400",
     {{0, "1:0"}, {150, "1:150"}, {160, "1:160"}, {399, "1:399"}}},
    {"pregapsAndPostgapsAreSilenceBetween",
     "FILE one.bin BINARY\r\nTRACK 01 AUDIO\r\nINDEX 01 00:00:00\r\nPOSTGAP 00:00:05\r\nTRACK 02 AUDIO\r\n"
     "PREGAP 00:02:00\r\nINDEX 01 00:02:00\r\n",
     "0+305 305+250 | 555",
     {{149, "1:149"}, {150, "-"}, {304, "-"}, {305, "1:150"}, {554, "1:399"}}},
    {"aPregapBehindIndexZeroLiesBeforeTheStart",
     "FILE one.bin BINARY\nTRACK 01 AUDIO\nINDEX 01 00:00:00\nTRACK 02 AUDIO\nINDEX 00 00:02:00\nPREGAP "
     "00:00:10\n"
     "INDEX 01 00:03:00\n",
     "0+235 235+175 | 410",
     {{224, "1:224"}, {225, "-"}, {235, "1:225"}}},
    {"severalFilesOfSeveralKinds",
     "FILE one.bin BINARY\nTRACK 01 AUDIO\nINDEX 01 00:00:00\nFILE two.bin BINARY\nTRACK 02 AUDIO\n"
     "INDEX 01 00:00:00\nFILE \"\xc3\xa4 3.wav\" WAVE\nTRACK 03 AUDIO\nINDEX 01 00:00:00\n"
     "FILE motorola.bin MOTOROLA\nTRACK 04 AUDIO\nINDEX 01 00:00:00\n",
     "0+400 400+200 600+100 700+80 | 780",
     {{399, "1:399"}, {400, "2:0"}, {600, "3:0"}, {699, "3:99"}, {700, "6:0"}, {779, "6:79"}}},
    {"aGapAtTheEndOfTheFileBefore",
     "FILE one.bin BINARY\nTRACK 01 AUDIO\nINDEX 01 00:00:00\nTRACK 02 AUDIO\nINDEX 00 00:05:00\n"
     "FILE two.bin BINARY\nINDEX 01 00:00:00\n",
     "0+400 400+200 | 600",
     {{399, "1:399"}, {400, "2:0"}}},
    {"theLastSectorOfSoundMayBeShort",
     "FILE short.wav WAVE\nTRACK 01 AUDIO\nINDEX 01 00:00:00\nFILE two.bin BINARY\nTRACK 02 AUDIO\n"
     "INDEX 01 00:00:00\n",
     "0+2 2+200 | 202",
     {{1, "4:1"}, {2, "2:0"}}},
    {"dataFirstWithSmallerSectors",
     "FILE mixed.bin BINARY\nTRACK 01 MODE1/2048\nINDEX 01 00:00:00\nTRACK 02 AUDIO\nINDEX 01 00:00:50\n",
     "0+50d 50+100 | 150",
     {{0, "x"}, {50, "5:0"}, {149, "5:99"}}},
    {"aSecondSessionStands11400SectorsBehindTheFirst",
     "FILE one.bin BINARY\nTRACK 01 AUDIO\nINDEX 01 00:00:00\nREM SESSION 02\nTRACK 02 MODE2/2352\n"
     "INDEX 01 00:04:00\n",
     "0+300 11700+100d | 11800",
     {{299, "1:299"}, {300, "-"}}},
    {"theGapOfASecondSessionIsPartOfItsLeadIn",
     "REM SESSION 01\nFILE one.bin BINARY\nTRACK 01 AUDIO\nINDEX 01 00:00:00\nREM LEAD-OUT 01:30:00\n"
     "REM SESSION 02\nREM LEAD-IN 01:00:00\nTRACK 02 MODE2/2352\nPREGAP 00:02:00\nINDEX 01 00:04:00\n"
     "REM SESSION 03\nTRACK 03 MODE2/2352\nINDEX 00 00:04:50\nINDEX 01 00:05:00\n",
     "0+300 11700+50d 18650+25d | 18675",
     {}},
};

INSTANTIATE_TEST_SUITE_P(All, CueImageRows, ::testing::ValuesIn(rows),
                         [](const auto &info) { return std::string(info.param.name); });

TEST(CueImageTest, whatMakesNoDiscFailsAndSaysWhy)
{
    DiscFolder folder;
    folder.write(QStringLiteral("a.bin"), markedSectors(1, 100));
    folder.write(QStringLiteral("slow.wav"), waveOf(markedSectors(1, 100), 22050));
    folder.write(QStringLiteral("empty.bin"), "");
    const std::pair<QByteArray, const char *> sheets[] = {
        {"", "there is no track"},
        {QByteArray(1000, '\xff'), "there is no track"},
        {"TRACK 01 AUDIO\nINDEX 01 00:00:00", "line 1: a track without a file"},
        {"FILE a.mp3 MP3\nTRACK 01 AUDIO\nINDEX 01 00:00:00", "line 1: files of the kind \"MP3\""},
        {"FILE a.bin BINARY\nTRACK 01 VIDEO\n", "line 2: no track can be"},
        {"FILE a.bin BINARY\nTRACK 01 AUDIO\nINDEX 01 00:60:00", "line 3: \"60\""},
        {"FILE a.bin BINARY\nTRACK 01 AUDIO\nINDEX 01 -1:00:00", "line 3: \"-1\""},
        {"FILE a.bin BINARY\nTRACK 01 AUDIO\nINDEX 01 now", "line 3: \"now\" is no time"},
        {"FILE a.bin BINARY\nTRACK 01 AUDIO\nINDEX 00 00:00:00\nTRACK 02 AUDIO\n", "no INDEX 01"},
        {"FILE a.bin BINARY\nTRACK 01 AUDIO\nINDEX 02 00:00:00\nINDEX 01 00:00:01", "out of order"},
        {"FILE gone.bin BINARY\nTRACK 01 AUDIO\nINDEX 01 00:00:00", "gone.bin: No such file"},
        {"FILE a.bin BINARY\nTRACK 01 AUDIO\nINDEX 01 00:00:00\nTRACK 02 AUDIO\nINDEX 01 00:02:00",
         "ends before"},
        {"FILE a.bin BINARY\nTRACK 01 AUDIO\nINDEX 01 00:01:00\nTRACK 02 AUDIO\nINDEX 01 00:00:50",
         "ends before"},
        {"FILE empty.bin BINARY\nTRACK 01 AUDIO\nINDEX 01 00:00:00", "no sectors"},
        {"FILE a.bin WAVE\nTRACK 01 AUDIO\nINDEX 01 00:00:00", "no WAVE file"},
        {"FILE slow.wav WAVE\nTRACK 01 AUDIO\nINDEX 01 00:00:00", "aren't 44100 Hz"},
    };
    for (const auto &[sheet, reason] : sheets) {
        try {
            CueImage image(folder.write(QStringLiteral("a.cue"), sheet));
            ADD_FAILURE() << "a disc of " << sheet.toStdString();
        } catch (const RunTimeFailure &failure) {
            EXPECT_EQ(failure.number(), RunTimeFailure::DeviceIoError);
            EXPECT_TRUE(failure.description().contains(QLatin1String(reason)))
                << failure.description().toStdString() << " for " << sheet.toStdString();
        }
    }
}

TEST(CueImageTest, textsAndFlagsAreTakenFromTheSheet)
{
    const CueSheet sheet = CueSheet::parse("\xef\xbb\xbfTITLE \"S\xc3\xa9rie, 1\"\nFILE a.bin BINARY\n"
                                           "TRACK 01 AUDIO\nTITLE \"x\"\nFLAGS PRE dcp\nINDEX 01 00:00:00\n"
                                           "TRACK 02 AUDIO\nINDEX 01 00:01:00\n");
    EXPECT_EQ(sheet.title, QStringLiteral("Série, 1"));
    EXPECT_TRUE(sheet.tracks[0].mayBeCopied);
    EXPECT_FALSE(sheet.tracks[1].mayBeCopied);
    EXPECT_EQ(CueSheet::parse("TITLE S\xe9rie\nFILE a BINARY\nTRACK 1 AUDIO\nINDEX 1 0:0:0").title,
              QStringLiteral("Série"));
}

TEST(CueImageTest, aShortLastSectorIsFilledUpAndAFileCutLaterAFailedRead)
{
    DiscFolder folder;
    const QString cue =
        folder.write(QStringLiteral("a.cue"), "FILE a.bin BINARY\nTRACK 01 AUDIO\nINDEX 01 00:00:00");
    folder.write(QStringLiteral("a.bin"), markedSectors(1, 100).chopped(1));
    CueImage image(cue);
    EXPECT_EQ(shape(image.toc()), QStringLiteral("0+100 | 100"));
    EXPECT_EQ(soundAt(image, 99), QStringLiteral("1:99"));
    QFile::resize(folder.path(QStringLiteral("a.bin")), 50 * 2352 + 7);
    EXPECT_EQ(soundAt(image, 49), QStringLiteral("1:49"));
    EXPECT_EQ(soundAt(image, 50), QStringLiteral("x"));
}

} // namespace
