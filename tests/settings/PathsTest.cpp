#include "settings/Paths.h"

#include "settings/Folders.h"
#include "testkit/Printing.h"
#include "testkit/TestDesktop.h"

#include <QDir>
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

class FoldersTest : public ::testing::Test
{
protected:
    TestDesktop system;
};

TEST_F(FoldersTest, everyMissingLevelIsMade)
{
    const QString path = system.folder() + QStringLiteral("/a/ b ü/c/");
    CreateDirectoryPath(system.dialogs, nullptr, path);
    CreateDirectoryPath(system.dialogs, nullptr, path);
    EXPECT_TRUE(QDir(path).exists());
    CreateDirectoryPath(system.dialogs, nullptr, QString());
}

TEST_F(FoldersTest, aFailingLevelIsToldWithTheWholePathAndEarlierOnesStay)
{
    system.write(QStringLiteral("made/file"), "x");
    const QString path = system.folder() + QStringLiteral("/new/");
    const QString blocked = system.folder() + QStringLiteral("/made/file/deeper");
    CreateDirectoryPath(system.dialogs, nullptr, path);
    system.dialogs.expectWholeBox({.text = QStringLiteral("Create directory error: ") + blocked,
                                   .icon = BoxIcon::Critical,
                                   .title = QStringLiteral("Error")});
    CreateDirectoryPath(system.dialogs, nullptr, blocked);
    EXPECT_TRUE(QDir(path).exists());
}

TEST_F(FoldersTest, aNetworkShareIsTakenRelativeToTheCurrentFolder)
{
    const QString before = QDir::currentPath();
    QDir::setCurrent(system.folder());
    CreateDirectoryPath(system.dialogs, nullptr, QStringLiteral("\\\\server\\share"), u'\\');
    QDir::setCurrent(before);
    // Each level is made as the text that it is; on this system that is one name with the separators in it.
    EXPECT_TRUE(QDir(system.folder() + QStringLiteral("/server\\")).exists());
}

} // namespace
