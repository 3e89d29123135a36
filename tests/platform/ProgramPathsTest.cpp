#include "platform/ProgramPaths.h"

#include "testkit/Printing.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace {

TEST(ProgramPaths, aWritableFolderHoldsEverything)
{
    QTemporaryDir folder;
    const ProgramPaths paths = ProgramPaths::of(folder.filePath(QStringLiteral("my prog.bin")));
    EXPECT_EQ(paths.ProgramFolder, folder.path());
    EXPECT_EQ(paths.ProgramBaseName, QStringLiteral("my prog"));
    EXPECT_EQ(paths.SettingsFilePath(), folder.path() + QStringLiteral("/settings.ini"));
    EXPECT_EQ(paths.DiscsFolder, folder.path() + QStringLiteral("/discs"));
}

TEST(ProgramPaths, anInstalledProgramUsesTheUsersFolders)
{
    const ProgramPaths paths = ProgramPaths::of(QStringLiteral("/usr/bin/tonelift"));
    EXPECT_EQ(paths.ExecutableFolder, QStringLiteral("/usr/bin"));
    const QString home = QDir::homePath();
    for (const QString &folder : {paths.ProgramFolder, paths.SettingsFolder, paths.DiscsFolder})
        EXPECT_TRUE(folder.startsWith(home)) << folder.toStdString();
    EXPECT_TRUE(QDir(paths.SettingsFolder).exists());
}

} // namespace
