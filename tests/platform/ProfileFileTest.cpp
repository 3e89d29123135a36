#include "platform/ProfileFile.h"

#include "testkit/Printing.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>
#include <thread>

namespace {

class ProfileFileTest : public ::testing::Test
{
protected:
    void write(const QByteArray &content) const
    {
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content);
    }

    QByteArray content() const
    {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("no file");
    }

    QString value(const char *section, const char *key) const
    {
        return ProfileFile::value(QString::fromLatin1(section), QString::fromLatin1(key),
                                  QStringLiteral("default"), path);
    }

    bool set(const char *section, const char *key, const QString &value) const
    {
        return ProfileFile::setValue(QString::fromLatin1(section), QString::fromLatin1(key), value, path);
    }

    QTemporaryDir folder;
    QString path = folder.filePath(QStringLiteral("sett ings äöü.ini"));
};

TEST_F(ProfileFileTest, namesAreFoundWithoutCaseAndTheFirstOneCounts)
{
    write(
        "; Comment\r\n[mp3 SETTINGS]\r\n RATE = 128 \r\nrate=64\r\n[MP3 Settings]\r\nrate=32\r\nother=1\r\n");
    EXPECT_EQ(value("MP3 Settings", "Rate"), QStringLiteral("128"));
    EXPECT_EQ(value("MP3 Settings", "other"), QStringLiteral("default")); // in the second section of the name
    EXPECT_EQ(value("WMA Settings", "rate"), QStringLiteral("default"));
}

TEST_F(ProfileFileTest, valuesLoseOnePairOfQuotesAndKeepTheRest)
{
    write("[a]\nx=\"  in quotes \"\ny='single'\nz=\"\"twice\"\"\nw=\"half\nempty=\ne=a=b;c\n;x=comment\n");
    EXPECT_EQ(value("a", "x"), QStringLiteral("  in quotes "));
    EXPECT_EQ(value("a", "y"), QStringLiteral("single"));
    EXPECT_EQ(value("a", "z"), QStringLiteral("\"twice\""));
    EXPECT_EQ(value("a", "w"), QStringLiteral("\"half"));
    EXPECT_EQ(value("a", "empty"), QString());
    EXPECT_EQ(value("a", "e"), QStringLiteral("a=b;c"));
    EXPECT_EQ(value("a", ";x"), QStringLiteral("default"));
}

TEST_F(ProfileFileTest, writingChangesOneLineAndKeepsEverythingElse)
{
    const QByteArray rest = "; first\nnonsense \xff\xfe\n\n[A]\n;old=1\nRate=1\nrate=2\n\n[B]\nx=1\n";
    write(rest);
    ASSERT_TRUE(set("a", "rate", QStringLiteral("ü日本")));
    EXPECT_EQ(content(), QByteArray(rest).replace("Rate=1", "rate=ü日本"));
    ASSERT_TRUE(set("a", "new", QStringLiteral("3")));
    EXPECT_EQ(content(),
              QByteArray(rest).replace("Rate=1", "rate=ü日本").replace("rate=2\n", "rate=2\nnew=3\n"));
    ASSERT_TRUE(set("C", "k", QStringLiteral("v")));
    EXPECT_TRUE(content().endsWith("[B]\nx=1\n[C]\nk=v\n"));
    EXPECT_EQ(value("A", "RATE"), QStringLiteral("ü日本"));
}

TEST_F(ProfileFileTest, removingTakesAKeyOrASection)
{
    write("[a]\nx=1\nx=2\n[b]\ny=1\n");
    ASSERT_TRUE(ProfileFile::setValue(QStringLiteral("A"), QStringLiteral("X"), std::nullopt, path));
    EXPECT_EQ(content(), "[a]\nx=2\n[b]\ny=1\n");
    ASSERT_TRUE(ProfileFile::removeSection(QStringLiteral("A"), path));
    EXPECT_EQ(content(), "[b]\ny=1\n");
    EXPECT_TRUE(ProfileFile::removeSection(QStringLiteral("none"), path));
    EXPECT_EQ(content(), "[b]\ny=1\n");
}

TEST_F(ProfileFileTest, whatIsWrittenIsReadBack)
{
    for (const QString &text :
         {QStringLiteral("\"quoted\""), QStringLiteral("\tx\t"), QStringLiteral("a\"b\"")}) {
        ASSERT_TRUE(set("s", "k", text));
        EXPECT_EQ(value("s", "k"), text);
    }
    ASSERT_TRUE(set("s", "k", QStringLiteral("two\nlines")));
    EXPECT_EQ(content(), "[s]\nk=two lines\n");
}

TEST_F(ProfileFileTest, badFilesGiveDefaultsAndRefuseWriting)
{
    EXPECT_EQ(value("a", "x"), QStringLiteral("default")); // no file yet
    QDir().mkpath(path);                                   // a folder in its place
    EXPECT_EQ(value("a", "x"), QStringLiteral("default"));
    EXPECT_FALSE(set("a", "x", QStringLiteral("1")));
    const QString nowhere = folder.filePath(QStringLiteral("missing/settings.ini"));
    EXPECT_FALSE(
        ProfileFile::setValue(QStringLiteral("a"), QStringLiteral("x"), QStringLiteral("1"), nowhere));
    EXPECT_FALSE(QFile::exists(folder.filePath(QStringLiteral("missing"))));
}

TEST_F(ProfileFileTest, longLinesAndBytesOfNoMeaningAreBorne)
{
    QByteArray bytes("[a]\nx=");
    bytes += QByteArray(10 * 1024 * 1024, 'y') + '\n';
    for (int i = 0; i < 256; ++i)
        bytes += char(i);
    bytes += "\n[b]\nz=1";
    write(bytes);
    EXPECT_EQ(value("a", "x").size(), 10 * 1024 * 1024);
    EXPECT_EQ(value("b", "z"), QStringLiteral("1"));
    ASSERT_TRUE(set("b", "z", QStringLiteral("2")));
    EXPECT_EQ(content().size(), bytes.size() + 1);
}

TEST_F(ProfileFileTest, twoWritersLoseNothingOfEachOther)
{
    const auto writer = [this](const QString &name) {
        for (int i = 0; i < 20; ++i)
            ProfileFile::setValue(name, QStringLiteral("key%1").arg(i), QString::number(i), path);
    };
    std::thread other(writer, QStringLiteral("one"));
    writer(QStringLiteral("two"));
    other.join();
    for (const char *name : {"one", "two"}) {
        for (int i = 0; i < 20; ++i)
            EXPECT_EQ(value(name, qPrintable(QStringLiteral("key%1").arg(i))), QString::number(i)) << name;
    }
}

} // namespace
