#include "naming/Paths.h"

#include "naming/FileNames.h"
#include "testkit/Printing.h"

#include <gtest/gtest.h>

namespace {

QString changed(QString file, QString from, QString to)
{
    return FileExtChange(file, from, to);
}

TEST(Paths, aPathComesApartAtItsLastSeparator)
{
    const QString windows = QStringLiteral("c:\\music\\ä b\\file.mp3");
    EXPECT_EQ(ExtractPath(windows, u'\\'), QStringLiteral("c:\\music\\ä b\\"));
    EXPECT_EQ(ExtractFile(windows, u'\\'), QStringLiteral("file.mp3"));
    EXPECT_EQ(ExtractFile(windows, u'/'), windows); // the other separator means nothing
    EXPECT_EQ(ExtractFile(QStringLiteral("/music/"), u'/'), QString());
    EXPECT_EQ(ExtractPath(QStringLiteral("file.mp3")), QString());
    EXPECT_EQ(ExtractExt(QStringLiteral("c:\\a.b\\c")), QStringLiteral(".b\\c"));
    EXPECT_EQ(ExtractExt(QStringLiteral("name")), QString());
    EXPECT_EQ(ExtractExt(QStringLiteral("name.")), QStringLiteral("."));
}

TEST(Paths, onlyTheGivenEndingIsReplaced)
{
    EXPECT_EQ(changed(QStringLiteral("Track01.MP3"), QStringLiteral(".mp3"), QStringLiteral(".wav")),
              QStringLiteral("Track01.wav"));
    EXPECT_EQ(changed(QStringLiteral("Track01.wma"), QStringLiteral(".mp3"), QStringLiteral(".wav")),
              QStringLiteral("Track01.wma.wav"));
    EXPECT_EQ(changed(QStringLiteral("name"), QString(), QStringLiteral(".wma")), QStringLiteral("name.wma"));
    EXPECT_EQ(changed(QStringLiteral("a"), QStringLiteral(".mp3"), QStringLiteral(".wav")),
              QStringLiteral("a.wav"));
    QString file = QStringLiteral(" x.wav ");
    QString from = QStringLiteral(" .wav");
    QString to = QStringLiteral(".vqf ");
    EXPECT_EQ(FileExtChange(file, from, to), QStringLiteral("x.vqf"));
    EXPECT_EQ(file + from + to, QStringLiteral("x.wav.wav.vqf")); // they come back trimmed
}

TEST(Paths, folderAndNameAreJoinedByOneSeparator)
{
    EXPECT_EQ(JoinPathFile(QStringLiteral("  c:\\music  "), QStringLiteral("a.mp3"), u'\\'),
              QStringLiteral("c:\\music\\a.mp3"));
    EXPECT_EQ(JoinPathFile(QStringLiteral("/music/"), QStringLiteral("a.mp3"), u'/'),
              QStringLiteral("/music/a.mp3"));
    EXPECT_EQ(JoinPathFile(QStringLiteral("  "), QStringLiteral("a.mp3")), QStringLiteral("a.mp3"));
}

TEST(Paths, theTwoCleaningsDifferInColonAndQuote)
{
    EXPECT_EQ(MakeSafeFileName(QStringLiteral(" a:b?c\"d|<>*\\/ ")), QStringLiteral("a:b_c_d______"));
    EXPECT_EQ(MakeTrackFileName(QStringLiteral(" a:b?c\"d|<>*\\/ "), QStringLiteral(".mp3")),
              QStringLiteral("a_b_c\"d______.mp3"));
    EXPECT_EQ(MakeTrackFileName(QStringLiteral("   "), QStringLiteral(".mp3")), QString());
    EXPECT_EQ(MakeTrackFileName(QString(QChar(u'\0')), QStringLiteral(".mp3")), QString());
    EXPECT_EQ(MakeTrackFileName(QStringLiteral("AC/DC: Live?"), QStringLiteral(".ogg")),
              QStringLiteral("AC_DC_ Live_.ogg"));
}

} // namespace
