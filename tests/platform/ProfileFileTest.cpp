#include "platform/ProfileFile.h"

#include "base/RunTimeFailure.h"
#include "testkit/Logged.h"
#include "testkit/Printing.h"
#include "testkit/faults/Faults.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>
#include <cerrno>
#include <csignal>
#include <gtest/gtest.h>
#include <sys/file.h>
#include <sys/wait.h>
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
        return ProfileFile::read(path)
            .value(QString::fromLatin1(section), QString::fromLatin1(key))
            .value_or(QStringLiteral("default"));
    }

    void change(const std::function<void(Profile &)> &edit) const
    {
        ProfileFile::change(path, [&](Profile &profile) {
            edit(profile);
            return files::Access::AsUsual;
        });
    }

    void set(const char *section, const char *key, const QString &value) const
    {
        change([&](Profile &profile) {
            profile.set(QString::fromLatin1(section), QString::fromLatin1(key), value);
        });
    }
    /// The failure of setting a key, as a box would end with it; empty where there is none.
    QString reasonNotToSet() const
    {
        try {
            set("a", "x", QStringLiteral("new"));
        } catch (const RunTimeFailure &failure) {
            return failure.reason();
        }
        return {};
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
    set("a", "rate", QStringLiteral("ü日本"));
    EXPECT_EQ(content(), QByteArray(rest).replace("Rate=1", "rate=ü日本"));
    set("a", "new", QStringLiteral("3"));
    EXPECT_EQ(content(),
              QByteArray(rest).replace("Rate=1", "rate=ü日本").replace("rate=2\n", "rate=2\nnew=3\n"));
    set("C", "k", QStringLiteral("v"));
    EXPECT_TRUE(content().endsWith("[B]\nx=1\n[C]\nk=v\n"));
    EXPECT_EQ(value("A", "RATE"), QStringLiteral("ü日本"));
}

TEST_F(ProfileFileTest, removingTakesAKeyOrASection)
{
    write("[a]\nx=1\nx=2\n[b]\ny=1\n");
    change([](Profile &profile) { profile.set(QStringLiteral("A"), QStringLiteral("X"), std::nullopt); });
    EXPECT_EQ(content(), "[a]\nx=2\n[b]\ny=1\n");
    change([](Profile &profile) { profile.removeSection(QStringLiteral("A")); });
    EXPECT_EQ(content(), "[b]\ny=1\n");
    change([](Profile &profile) { profile.removeSection(QStringLiteral("none")); });
    EXPECT_EQ(content(), "[b]\ny=1\n");
}

TEST_F(ProfileFileTest, whatIsWrittenIsReadBack)
{
    for (const QString &text :
         {QStringLiteral("\"quoted\""), QStringLiteral("\tx\t"), QStringLiteral("a\"b\"")}) {
        set("s", "k", text);
        EXPECT_EQ(value("s", "k"), text);
    }
    set("s", "k", QStringLiteral("two\nlines"));
    EXPECT_EQ(content(), "[s]\nk=two lines\n");
}

TEST_F(ProfileFileTest, badFilesGiveDefaultsAndRefuseWriting)
{
    EXPECT_EQ(value("a", "x"), QStringLiteral("default")); // no file yet
    QDir().mkpath(path);                                   // a folder in its place
    EXPECT_EQ(value("a", "x"), QStringLiteral("default"));
    EXPECT_THROW(set("a", "x", QStringLiteral("1")), RunTimeFailure);
    path = folder.filePath(QStringLiteral("missing/settings.ini"));
    EXPECT_EQ(reasonNotToSet(), QStringLiteral("the folder is missing"));
    EXPECT_TRUE(takeLogged("tonelift.settings").join(u'\n').contains(path));
    EXPECT_FALSE(QFile::exists(folder.filePath(QStringLiteral("missing"))));
}

TEST_F(ProfileFileTest, eachEncodingIsReadAndKept)
{
    const auto utf16 = [](const QString &text, bool littleEnd) {
        QByteArray bytes;
        for (const QChar c : text) {
            bytes += char(littleEnd ? c.cell() : c.row());
            bytes += char(littleEnd ? c.row() : c.cell());
        }
        return bytes;
    };
    const QString text = QStringLiteral("; \u00fc\r\n[a]\r\nx=old \u65e5\r\n");
    const QString changed = QString(text).replace(QStringLiteral("x=old \u65e5"), QStringLiteral("x=new"));
    const std::function<QByteArray(const QString &)> encodings[] = {
        [](const QString &t) { return "\xef\xbb\xbf" + t.toUtf8(); },
        [&](const QString &t) { return "\xff\xfe" + utf16(t, true); },
        [&](const QString &t) { return "\xfe\xff" + utf16(t, false); },
        [&](const QString &t) { return utf16(t, true); },
        [&](const QString &t) { return utf16(t, false); },
    };
    for (const auto &encode : encodings) {
        for (const QString &start : {text, text.mid(5)}) { // a section at the very start is found as well
            write(encode(start));
            EXPECT_EQ(value("a", "x"), QStringLiteral("old \u65e5"));
            EXPECT_EQ(reasonNotToSet(), QString());
            EXPECT_EQ(content(), encode(changed.right(changed.size() - (text.size() - start.size()))));
        }
        const QByteArray damaged = encode(text) + encode(QString(QChar(0xd800))).right(2) + "x";
        write(damaged);
        EXPECT_EQ(value("a", "x"), QStringLiteral("old \u65e5"));
        if (damaged.startsWith("\xef"))
            continue; // bytes of no meaning can be kept there
        EXPECT_EQ(reasonNotToSet(), QStringLiteral("the file's text is damaged"));
        EXPECT_EQ(content(), damaged);
    }
}

TEST_F(ProfileFileTest, whateverFailsIsToldAndTheOldFileStaysToTheByte)
{
    struct Row
    {
        faults::Call call;
        int n, error;
        const char *reason;
    };
    const QByteArray old = "[a]\nx=1 \n;";
    write(old);
    const QStringList before = QDir(folder.path()).entryList(QDir::AllEntries | QDir::Hidden);
    for (const Row &row : {Row{faults::Call::Write, 1, ENOSPC, "the disk is full"},
                           Row{faults::Call::Flush, 1, EIO, "the disk reports an error"},
                           Row{faults::Call::Open, 3, EACCES, "permission denied"},
                           Row{faults::Call::Open, 4, EMFILE, "too many open files"},
                           Row{faults::Call::Rename, 1, EACCES, "permission denied"}}) {
        faults::arm(folder.path().toStdString(), row.call, row.n, row.error);
        EXPECT_EQ(reasonNotToSet(), QLatin1StringView(row.reason));
        EXPECT_TRUE(faults::disarm()) << row.reason;
        EXPECT_EQ(content(), old);
        EXPECT_EQ(QDir(folder.path()).entryList(QDir::AllEntries | QDir::Hidden), before);
    }
    EXPECT_EQ(reasonNotToSet(), QString());
    EXPECT_EQ(content(), "[a]\nx=new\n;\n");
}

TEST_F(ProfileFileTest, theNewTextIsOnTheDiskAndReadBackBeforeItTakesTheName)
{
    write("[a]\n");
    faults::refuseNameless(true);
    faults::arm(folder.path().toStdString());
    set("a", "x", QStringLiteral("1"));
    faults::disarm();
    faults::refuseNameless(false);
    EXPECT_EQ(faults::calls(), "open open " // the lock, the old text
                               "open write flush open open rename flush ");
}

TEST_F(ProfileFileTest, aLockIsNoFileAndEndsWithItsOwner)
{
    int pipe[2];
    ASSERT_EQ(::pipe(pipe), 0);
    const pid_t owner = ::fork();
    if (owner == 0) {
        const int lock = ::open(QFile::encodeName(folder.path()).constData(), O_RDONLY);
        char held = ::flock(lock, LOCK_EX) == 0 ? 'y' : 'n';
        (void)!::write(pipe[1], &held, 1);
        for (;;)
            ::pause();
    }
    char held = 0;
    ASSERT_EQ(::read(pipe[0], &held, 1), 1);
    ASSERT_EQ(held, 'y');
    EXPECT_EQ(reasonNotToSet(), QStringLiteral("another program keeps the folder locked"));
    EXPECT_EQ(value("a", "x"), QStringLiteral("default")); // readers need no lock
    ::kill(owner, SIGKILL);
    ::waitpid(owner, nullptr, 0);
    EXPECT_EQ(reasonNotToSet(), QString());
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files | QDir::Hidden).size(), 1);
}

TEST_F(ProfileFileTest, aLinkStaysOneAndTheFileBehindItChanges)
{
    const QString real = folder.filePath(QStringLiteral("real.ini"));
    ASSERT_TRUE(QFile::link(real, path));
    EXPECT_EQ(reasonNotToSet(), QString());
    EXPECT_TRUE(QFileInfo(path).isSymLink());
    EXPECT_TRUE(QFileInfo(real).isFile());
    EXPECT_EQ(value("a", "x"), QStringLiteral("new"));
}

TEST_F(ProfileFileTest, timeGrowsWithTheFileAndNotWithItsSquare)
{
    QByteArray bytes = "[a]\n";
    for (int i = 0; i < 200'000; ++i)
        bytes += "key" + QByteArray::number(i) + "=1\n";
    write(bytes);
    QElapsedTimer clock;
    clock.start();
    EXPECT_EQ(value("a", "key199999"), QStringLiteral("1"));
    EXPECT_EQ(reasonNotToSet(), QString());
    EXPECT_LT(clock.elapsed(), 5000); // a hundred times as much where each line looks at all others
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
    set("b", "z", QStringLiteral("2"));
    EXPECT_EQ(content().size(), bytes.size() + 1);
}

TEST_F(ProfileFileTest, twoWritersLoseNothingOfEachOther)
{
    const auto writer = [this](const QString &name) {
        for (int i = 0; i < 20; ++i)
            change([&](Profile &profile) {
                profile.set(name, QStringLiteral("key%1").arg(i), QString::number(i));
            });
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
