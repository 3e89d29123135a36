#include "engines/common/OutputFile.h"

#include "base/RunTimeFailure.h"
#include "testkit/Printing.h"

#include <QDir>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace {

using engines::OutputFile;

class OutputFileTest : public ::testing::Test
{
protected:
    static void put(OutputFile &file, const char *text)
    {
        file.write(reinterpret_cast<const std::uint8_t *>(text), qstrlen(text));
    }

    static QByteArray content(const QString &path)
    {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("no file");
    }

    QStringList entries() const
    {
        return QDir(folder.path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
    }

    QTemporaryDir folder;
    QString path = folder.filePath(QStringLiteral("a 'ü' \"日本\".mp3"));
};

TEST_F(OutputFileTest, theTargetAppearsAtTheCommitAndKeepsItsOldFileUntilThen)
{
    QFile old(path);
    ASSERT_TRUE(old.open(QIODevice::WriteOnly));
    old.write("old");
    old.close();
    {
        OutputFile abandoned(path);
        put(abandoned, "half");
    }
    EXPECT_EQ(content(path), "old");
    EXPECT_EQ(entries().size(), 1);
    OutputFile file(path);
    put(file, "head....tail");
    file.seek(4);
    put(file, "body");
    EXPECT_EQ(file.size(), 12);
    EXPECT_EQ(content(path), "old");
    file.commit();
    EXPECT_EQ(content(path), "headbodytail");
    EXPECT_EQ(entries().size(), 1);
}

TEST_F(OutputFileTest, placesThatTakeNoFileFailAtOnce)
{
    const auto failure = [](const QString &target) {
        try {
            OutputFile file(target);
        } catch (const RunTimeFailure &failure) {
            return failure.number();
        }
        return 0;
    };
    EXPECT_EQ(failure(folder.filePath(QStringLiteral("missing/a.mp3"))), RunTimeFailure::PathNotFound);
    EXPECT_EQ(failure(folder.filePath(QString(256, u'x'))), RunTimeFailure::PathFileAccessError);
    EXPECT_EQ(failure(folder.filePath(QString(255, u'x'))), 0);
    EXPECT_EQ(failure(folder.path()), RunTimeFailure::PathFileAccessError);
    EXPECT_TRUE(entries().isEmpty());
}

} // namespace
