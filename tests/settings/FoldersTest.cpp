#include "settings/Folders.h"

#include "testkit/TestDesktop.h"

#include <QDir>
#include <gtest/gtest.h>

namespace {

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
