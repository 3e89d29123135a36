#include "metadata/TrackTitles.h"

#include "metadata/Genres.h"
#include "testkit/FakeNCTAudioInformation.h"
#include "testkit/Printing.h"

#include <gtest/gtest.h>

namespace {

/// A list in which two names differ in nothing that counts.
class DoubledGenres : public FakeNCTAudioInformation
{
public:
    using FakeNCTAudioInformation::FakeNCTAudioInformation;
    QString GenreName(qint16 index) const override
    {
        return index == 5 || index == 90 ? QStringLiteral(" Twin ")
                                         : FakeNCTAudioInformation::GenreName(index);
    }
};

TEST(TrackTitlesTest, oneSoundExtensionIsCutOff)
{
    const std::pair<const char *, const char *> rows[] = {
        {"a.mp3", "a"},
        {" A b.WAV ", "A b"},
        {"a.wma.ogg", "a.wma"},
        {"x.vqf", "x"},
        {"song.flac", "song.flac"},
        {".mp3", ""},
        {"mp3", "mp3"},
        {"", ""},
        {"a .ogg", "a "},
        {"xmp3", "xmp3"},
    };
    for (const auto &[name, title] : rows)
        EXPECT_EQ(StripAudioExtension(QString::fromLatin1(name)), QString::fromLatin1(title)) << name;
}

TEST(TrackTitlesTest, theLastGenreOfThatNameCounts)
{
    CallLog log;
    const DoubledGenres AInfo(log);
    EXPECT_EQ(GenreIndexFromName(QStringLiteral("  fOLk-rOCk "), AInfo), 81);
    EXPECT_EQ(GenreIndexFromName(QStringLiteral("twin"), AInfo), 90);
    EXPECT_EQ(GenreIndexFromName(AInfo.GenreName(147), AInfo), 147);
    EXPECT_EQ(GenreIndexFromName(QStringLiteral("Unheard of"), AInfo), 0);
    EXPECT_EQ(GenreIndexFromName(QString(), AInfo), 0);
}

} // namespace
