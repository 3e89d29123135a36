#include "base/Formats.h"
#include "base/RunTimeFailure.h"
#include "converter/OutputNames.h"
#include "converter/Progress.h"
#include "converter/SourceFiles.h"
#include "converter/WmaProfiles.h"
#include "testkit/Printing.h"
#include "testkit/TestDesktop.h"

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace {

TEST(OutputNames, theLastFourCharactersGiveWayToTheFormatsEnding)
{
    struct Case
    {
        QString source;
        qint16 format;
        QString folder, expected;
        QChar separator = u'/';
    };
    const Case cases[] = {
        {u"/in/Song ü.MP3"_s, ConvertWAV, u"/out"_s, u"/out/Song ü.wav"_s},
        {u"/in/歌.wav"_s, ConvertOGG, u" /out/ "_s, u"/out/歌.ogg"_s}, // no second separator
        {u"/in/a.b.flac"_s, ConvertMP3, u"/out"_s, u"/out/a.b..mp3"_s},
        {u"/in/Live at home"_s, ConvertWMA, u"/out"_s, u"/out/Live at .wma"_s},
        {u"/in/song"_s, ConvertWMA, u"/out"_s, u"/out/.wma"_s},
        {u"/in/abc"_s, ConvertWMA, u"/out"_s, u"/out/.wma"_s},
        {u"   "_s, ConvertWMA, u"/out"_s, QString()},
        {u"c:\\in\\a.mp3"_s, ConvertOGG, u"d:\\"_s, u"d:\\a.ogg"_s, u'\\'},
    };
    for (const Case &c : cases)
        EXPECT_EQ(MakeOutputFileName(c.source, c.format, c.folder, c.separator), c.expected);
}

TEST(Progress, halvesGoToTheEvenPercentAndTheJobCountsTheCurrentFile)
{
    EXPECT_EQ(Progress::text(0.5), u"0%"_s);
    EXPECT_EQ(Progress::text(1.5), u"2%"_s);
    EXPECT_EQ(Progress::text(99.6), u"100%"_s);
    EXPECT_DOUBLE_EQ(Progress::ofJob(1, 4, 50), 37.5);
    EXPECT_EQ(Progress::barWidth(301, 37.5), 113);
    EXPECT_THROW(Progress::ofJob(0, 0, 0), RunTimeFailure);
}

TEST(SourceFiles, aSelectionIsJoinedAnewOnlyWhereItHoldsSeveralFiles)
{
    EXPECT_EQ(SourceFiles::selected({u"\\\\server\\a.mp3"_s}, u'\\'), QStringList{u"\\\\server\\a.mp3"_s});
    EXPECT_EQ(SourceFiles::selected({u"\\\\server\\a.mp3"_s, u"\\\\server\\b.mp3"_s}, u'\\'),
              (QStringList{u"\\server\\a.mp3"_s, u"\\server\\b.mp3"_s}));
    EXPECT_EQ(SourceFiles::selected({u"//a.mp3"_s, u"//b.mp3"_s}, u'/'),
              (QStringList{u"/a.mp3"_s, u"/b.mp3"_s}));
    EXPECT_EQ(SourceFiles::selected({}), QStringList());
}

TEST(SourceFiles, aSelectionTooLongForTheDialogIsNone)
{
    // The folder "/m/" counts once, each name with its NUL: 3 + 1 + a + 1 + b.
    const QString longName = u"/m/"_s + QString(10000, u'a');
    const QString fits = u"/m/"_s + QString(235, u'b');
    EXPECT_EQ(SourceFiles::selected({longName, fits}, u'/').size(), 2);
    EXPECT_EQ(SourceFiles::selected({longName, fits + u'b'}, u'/').size(), 0);
    EXPECT_EQ(SourceFiles::selected({QString(10241, u'a')}).size(), 0);
}

TEST(SourceFiles, aDropTakesWhatCanBeReadAndOfFoldersTheChosenFormat)
{
    const TestDesktop system;
    const QString one = system.write(u"music/b/one.MP3"_s, "x");
    const QString two = system.write(u"music/a ü/two.mp3"_s, "x");
    system.write(u"music/cover.jpg"_s, "x");
    system.write(u"music/three.wav"_s, "x");
    const QString single = system.write(u"four.Ogg"_s, "x");
    const QString text = system.write(u"five.txt"_s, "x");
    EXPECT_EQ(SourceFiles::dropped({single, text, system.folder() + u"/music"_s}, ConvertMP3),
              (QStringList{single, two, one}));
}

TEST(WmaProfiles, thereIsADescriptionForEachOfThe51Profiles)
{
    using WmaProfiles::WMAProfileDescriptions;
    ASSERT_EQ(WMAProfileDescriptions.size(), 51);
    EXPECT_TRUE(WMAProfileDescriptions[1].startsWith(u" Video for LAN"_s));
    EXPECT_EQ(WMAProfileDescriptions[38], u"Windows Media Video 8 for Broadband (NTSC, 1400 Kbps)"_s);
    EXPECT_FALSE(WMAProfileDescriptions[48].endsWith(u'.'));
    EXPECT_TRUE(WMAProfileDescriptions[50].endsWith(u"Broadband."_s));
}

} // namespace
