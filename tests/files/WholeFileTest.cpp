#include "files/WholeFile.h"

#include "base/RunTimeFailure.h"
#include "testkit/Printing.h"
#include "testkit/faults/Faults.h"

#include <QDir>
#include <QTemporaryDir>
#include <cerrno>
#include <csignal>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>

namespace {

using files::WholeFile;

void put(WholeFile &file, const QByteArray &text)
{
    file.write(reinterpret_cast<const std::uint8_t *>(text.constData()), std::size_t(text.size()));
}

QByteArray content(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("no file");
}

mode_t modeOf(const QString &path)
{
    struct stat status
    {};
    return ::lstat(QFile::encodeName(path).constData(), &status) == 0 ? status.st_mode & 07777 : 0;
}

/// On a file system that has files without names, and as on one that hasn't.
class WholeFileTest : public ::testing::TestWithParam<bool>
{
protected:
    WholeFileTest() { faults::refuseNameless(!GetParam()); }
    ~WholeFileTest() override
    {
        faults::disarm();
        faults::refuseNameless(false);
    }

    void write(const QString &name, const QByteArray &text)
    {
        QFile file(name);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(text);
    }
    QStringList entries(const QString &below = {}) const
    {
        return QDir(folder.filePath(below))
            .entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
    }
    static int failureOf(const std::function<void()> &action)
    {
        try {
            action();
        } catch (const RunTimeFailure &failure) {
            return failure.number();
        }
        return 0;
    }
    static int failureFor(const QString &target)
    {
        return failureOf([&] { WholeFile file(target); });
    }

    QTemporaryDir folder;
    QString path = folder.filePath(QStringLiteral("a 'ü' \"日本\".mp3"));
};

TEST_P(WholeFileTest, theTargetAppearsAtTheCommitAndKeepsItsOldFileUntilThen)
{
    for (const QByteArray &old : {QByteArray("no file"), QByteArray("old")}) {
        if (old != "no file")
            write(path, old);
        const QStringList before = entries();
        {
            WholeFile abandoned(path);
            put(abandoned, "half");
            abandoned.flush();
        }
        EXPECT_EQ(content(path), old);
        EXPECT_EQ(entries(), before);
        WholeFile file(path);
        const QByteArray much(200'000, 'x');
        put(file, "head....tail" + much);
        file.seek(4);
        put(file, "body");
        file.flush();
        EXPECT_EQ(file.size(), 200'012);
        EXPECT_EQ(content(file.temporaryPath()), "headbodytail" + much);
        EXPECT_EQ(content(path), old);
        file.commit();
        EXPECT_EQ(content(path), "headbodytail" + much);
        EXPECT_EQ(entries().size(), 1);
        QFile::remove(path);
    }
}

TEST_P(WholeFileTest, placesThatTakeNoFileFailAtOnce)
{
    const QString pipe = folder.filePath(QStringLiteral("pipe"));
    ASSERT_EQ(::mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
    ASSERT_TRUE(QFile::link(QStringLiteral("round"), folder.filePath(QStringLiteral("round"))));
    EXPECT_EQ(failureFor(folder.filePath(QStringLiteral("missing/a.mp3"))), RunTimeFailure::PathNotFound);
    EXPECT_EQ(failureFor(folder.filePath(QString(256, u'x'))), RunTimeFailure::PathFileAccessError);
    EXPECT_EQ(failureFor(folder.filePath(QString(255, u'x'))), 0);
    EXPECT_EQ(failureFor(folder.path()), RunTimeFailure::PathFileAccessError);
    EXPECT_EQ(failureFor(pipe), RunTimeFailure::PathFileAccessError);
    EXPECT_EQ(failureFor(folder.filePath(QStringLiteral("round"))), RunTimeFailure::PathFileAccessError);
    EXPECT_EQ(entries(), (QStringList{QStringLiteral("pipe"), QStringLiteral("round")}));
}

TEST_P(WholeFileTest, theBytesAreOnTheDiskBeforeTheirNameAndTheNameIsBeforeTheEnd)
{
    for (const QByteArray &steps :
         {QByteArray("link"), QByteArray(GetParam() ? "link link rename" : "rename")}) {
        WholeFile file(path);
        put(file, "new");
        faults::arm(folder.path().toStdString());
        file.commit();
        faults::disarm();
        const QByteArray expected = GetParam() ? steps : QByteArray("rename");
        EXPECT_EQ(QByteArray::fromStdString(faults::calls()), "write flush open " + expected + " flush ");
    }
}

TEST_P(WholeFileTest, whateverFailsIsToldAndLeavesTheOldFileAlone)
{
    const std::pair<faults::Call, int> kinds[] = {
        {faults::Call::Open, EMFILE}, {faults::Call::Write, ENOSPC}, {faults::Call::Flush, EIO},
        {faults::Call::Link, ENOSPC}, {faults::Call::Rename, EIO},
    };
    for (const auto &[call, error] : kinds) {
        for (int n = 1;; ++n) {
            SCOPED_TRACE(std::string(faults::Names[int(call)]) + std::to_string(n));
            ASSERT_LT(n, 10);
            write(path, "old");
            faults::arm(folder.path().toStdString(), call, n, error);
            const int failure = failureOf([&] {
                WholeFile file(path);
                put(file, "new");
                file.commit();
            });
            const bool failed = faults::disarm();
            EXPECT_EQ(entries().size(), 1);
            EXPECT_EQ(failure != 0, failed);
            if (!failed)
                break;
            // The folder is flushed behind the change: both files are whole ones, and the failure is told.
            const bool behindTheChange = call == faults::Call::Flush && n == 2;
            EXPECT_EQ(content(path), behindTheChange ? "new" : "old");
        }
        EXPECT_EQ(content(path), "new");
    }
}

TEST_P(WholeFileTest, whatIsReplacedKeepsItsOwnerPermissionsAndLinks)
{
    const QString real = folder.filePath(QStringLiteral("elsewhere/real.mp3"));
    ASSERT_TRUE(QDir(folder.path()).mkpath(QStringLiteral("elsewhere")));
    ASSERT_TRUE(QFile::link(QStringLiteral("elsewhere/real.mp3"), path));
    for (const QByteArray text : {"made behind a link that led nowhere", "replaced"}) {
        WholeFile file(path);
        put(file, text);
        file.commit();
        EXPECT_TRUE(QFileInfo(path).isSymLink());
        EXPECT_EQ(content(real), text);
        ASSERT_EQ(::chmod(QFile::encodeName(real).constData(), 0640), 0);
    }
    const bool mayGiveAway = ::chown(QFile::encodeName(real).constData(), 12, 34) == 0;
    WholeFile(path).commit();
    EXPECT_EQ(modeOf(real), 0640);
    if (mayGiveAway) {
        EXPECT_EQ(QFileInfo(real).ownerId(), 12u);
        EXPECT_EQ(QFileInfo(real).groupId(), 34u);
    }
    WholeFile(path, files::Access::OwnerOnly).commit();
    EXPECT_EQ(modeOf(real), 0600);
    EXPECT_EQ(entries(QStringLiteral("elsewhere")), QStringList{QStringLiteral("real.mp3")});
}

/// Runs it in a process of its own, which is killed when that is done.
void inAKilledProcess(const std::function<void()> &action)
{
    const pid_t child = ::fork();
    if (child == 0) {
        try {
            action();
        } catch (...) { // then nothing is left behind, and the test finds out
        }
        ::raise(SIGKILL);
    }
    int status = 0;
    ASSERT_EQ(::waitpid(child, &status, 0), child);
    ASSERT_TRUE(WIFSIGNALED(status));
}

TEST_P(WholeFileTest, whatAKilledProcessLeavesIsSweptAndNothingElse)
{
    const QString strange = folder.filePath(
        QStringLiteral(".tonelift-0123456789abcdef0123456789abcdef-%1-1.part").arg(::getpid()));
    write(strange, "of another machine");
    const QString other = folder.filePath(QStringLiteral("other.mp3"));
    inAKilledProcess([&] {
        auto *half = new WholeFile(other);
        put(*half, "half");
        half->flush();
    });
    EXPECT_EQ(entries().size(), GetParam() ? 1 : 2);
    // Killed between the two steps of a replacement.
    write(path, "old");
    inAKilledProcess([&] {
        auto *half = new WholeFile(path);
        put(*half, "half");
        faults::arm(folder.path().toStdString(), faults::Call::Rename, 1, EIO);
        half->commit();
    });
    WholeFile alive(other);
    put(alive, "whole");
    WholeFile next(path);
    put(next, "next");
    next.commit();
    alive.commit();
    EXPECT_EQ(content(path), "next");
    EXPECT_EQ(content(other), "whole");
    EXPECT_EQ(entries().size(), 3);
    EXPECT_TRUE(QFile::exists(strange));
}

INSTANTIATE_TEST_SUITE_P(FileSystems, WholeFileTest, ::testing::Bool(), [](const auto &info) {
    return info.param ? "WithNamelessFiles" : "WithNamedParts";
});

} // namespace
