#include "OggSamples.h"
#include "base/Task.h"
#include "engines/tagfile/Id3v2Tag.h"
#include "testkit/FullDisk.h"
#include "testkit/Logged.h"
#include "testkit/faults/Faults.h"

#include <sys/stat.h>
#include <sys/wait.h>
#include <sys/xattr.h>
#include <unistd.h>

namespace {

using namespace samples;

/// Rights count for everybody but the superuser.
class OrdinaryUser
{
public:
    OrdinaryUser() : m_was(::geteuid())
    {
        if (m_was == 0) {
            EXPECT_EQ(::seteuid(65534), 0);
        }
    }
    ~OrdinaryUser() { EXPECT_EQ(::seteuid(m_was), 0); }

private:
    uid_t m_was;
};

class SafetyTest : public TagFileTest
{
protected:
    SafetyTest()
    {
        tags.setTagTitle(QStringLiteral("new"));
        ::chmod(QFile::encodeName(folder.path()).constData(), 0777);
    }

    static mode_t modeOf(const QString &path)
    {
        struct stat status
        {};
        ::stat(QFile::encodeName(path).constData(), &status);
        return status.st_mode & 07777;
    }

    static void setMode(const QString &path, mode_t mode)
    {
        ASSERT_EQ(::chmod(QFile::encodeName(path).constData(), mode), 0);
    }

    const QByteArray mp3 = mp3Frames(3000); // more than any buffer holds
    const QString path = put(QStringLiteral("a.mp3"), mp3);
};

TEST_F(SafetyTest, aFullDiskLeavesTheOldFileAndNothingElse)
{
    const QString ogg = put(QStringLiteral("a.ogg"), vorbisPages(1, comments({"TITLE=old"}), 3000).join());
    const QByteArray oldOgg = content(ogg);
    for (const rlim_t size : {0, 100, 5000, 100'000, 1'000'000}) {
        const testkit::FullDisk full(size);
        EXPECT_NE(failureOfWriting(path), 0) << size;
        if (size < static_cast<rlim_t>(oldOgg.size())) {
            EXPECT_NE(failureOfWriting(ogg), 0) << size;
        }
    }
    EXPECT_EQ(content(path), mp3);
    EXPECT_EQ(content(ogg), oldOgg);
    EXPECT_EQ(entries().size(), 2);
    const QStringList logged = takeLogged("tonelift.tags");
    EXPECT_EQ(logged.value(0).left(path.size()), path);
    EXPECT_EQ(logged.value(1).left(ogg.size()), ogg);
}

TEST_F(SafetyTest, aProcessThatIsKilledInTheMiddleLeavesTheOldFile)
{
    const pid_t child = ::fork();
    if (child == 0) {
        const rlimit limit{600'000, 600'000}; // going beyond kills
        ::setrlimit(RLIMIT_FSIZE, &limit);
        const rlimit noCore{0, 0};
        ::setrlimit(RLIMIT_CORE, &noCore);
        std::signal(SIGXFSZ, SIG_DFL);
        tags.WriteTags(path);
        ::_exit(0);
    }
    int status = 0;
    ASSERT_EQ(::waitpid(child, &status, 0), child);
    ASSERT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == SIGXFSZ);
    EXPECT_EQ(content(path), mp3);
    EXPECT_EQ(failureOfWriting(path), 0); // what it left does no harm
    EXPECT_EQ(read(path).title, QStringLiteral("new"));
}

TEST_F(SafetyTest, aWritingCanBeWatchedAndStopped)
{
    std::stop_source stop;
    TagWriting writing;
    writing.stop = stop.get_token();
    tags.WriteTags(path, &writing);
    EXPECT_EQ(read(path).title, QStringLiteral("new"));
    EXPECT_EQ(writing.written, content(path).size());
    EXPECT_EQ(writing.expected, mp3.size());
    const QByteArray before = content(path);
    stop.request_stop();
    tags.setTagTitle(QStringLiteral("newer"));
    EXPECT_THROW(tags.WriteTags(path, &writing), TaskCancelled);
    EXPECT_EQ(content(path), before);
    EXPECT_EQ(entries().size(), 1);
}

TEST_F(SafetyTest, holesStayHolesAndWhatLiesBetweenThemIsWhole)
{
    constexpr qint64 Size = qint64(1) << 30;
    const QByteArray island = mp3Frames(700);
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::ReadWrite) && file.resize(Size));
    for (const qint64 place : {qint64(256) << 20, (qint64(512) << 20) + 12345, Size - island.size()}) {
        file.seek(place);
        file.write(island);
    }
    file.close();
    const auto bytesOnDisk = [&] {
        struct stat status
        {};
        ::stat(QFile::encodeName(path).constData(), &status);
        return qint64(status.st_blocks) * 512;
    };
    const qint64 before = bytesOnDisk();
    EXPECT_EQ(failureOfWriting(path), 0);
    EXPECT_LT(bytesOnDisk(), before + (1 << 20));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QByteArray head = file.read(1 << 20);
    const qint64 shift = engines::Id3v2Tag(head).size();
    EXPECT_EQ(file.size(), Size + shift + 128);
    file.seek(shift);
    EXPECT_EQ(file.read(mp3.size()), mp3);
    for (const qint64 place : {qint64(256) << 20, (qint64(512) << 20) + 12345, Size - island.size()}) {
        file.seek(place + shift - 5000);
        EXPECT_EQ(file.read(5000), QByteArray(5000, '\0'));
        EXPECT_EQ(file.read(island.size()), island);
    }
    EXPECT_TRUE(file.read(128).startsWith("TAGnew"));
}

TEST_F(SafetyTest, tagsThatGetLostOnTheirWayToTheDiskAreMissed)
{
    faults::arm(folder.path().toStdString(), faults::Call::Write, 1, 0);
    EXPECT_EQ(failureOfWriting(path), RunTimeFailure::DeviceIoError);
    EXPECT_TRUE(faults::disarm());
    EXPECT_EQ(content(path), mp3);
}

TEST_F(SafetyTest, filesThatMayNotBeChangedAreNot)
{
    setMode(path, 0444); // says no to the superuser too, who could
    EXPECT_EQ(failureOfWriting(path), RunTimeFailure::PermissionDenied);
    setMode(path, 0666);
    setMode(folder.path(), 0555);
    {
        const OrdinaryUser user;
        EXPECT_EQ(failureOfWriting(path), RunTimeFailure::PermissionDenied);
    }
    setMode(folder.path(), 0777);
    setMode(path, 0600);
    {
        const OrdinaryUser user;
        EXPECT_EQ(tags.IsAudioFile(path), ::getuid() != 0); // of another one
    }
    EXPECT_EQ(failureOfWriting(folder.filePath(QStringLiteral("missing.mp3"))), RunTimeFailure::FileNotFound);
    const QString pipe = folder.filePath(QStringLiteral("pipe.mp3")); // keeps its readers waiting
    ASSERT_EQ(::mkfifo(QFile::encodeName(pipe).constData(), 0666), 0);
    for (const QString &noFile : {folder.path(), pipe, QStringLiteral("/dev/null")}) {
        EXPECT_FALSE(tags.IsAudioFile(noFile));
        EXPECT_EQ(failureOfWriting(noFile), RunTimeFailure::PathFileAccessError);
    }
    QFile::remove(pipe);
    EXPECT_EQ(failureOfWriting(put(QStringLiteral("b.mp3"), "text")), RunTimeFailure::InvalidCall);
    EXPECT_EQ(content(path), mp3);
    EXPECT_EQ(entries().size(), 2);
}

TEST_F(SafetyTest, linksPermissionsAndAttributesStay)
{
    const QString link = folder.filePath(QStringLiteral("link.mp3"));
    const QString hardLink = folder.filePath(QStringLiteral("hard.mp3"));
    ASSERT_TRUE(QFile::link(QStringLiteral("a.mp3"), link));
    ASSERT_EQ(::link(QFile::encodeName(path).constData(), QFile::encodeName(hardLink).constData()), 0);
    setMode(path, 0640);
    const bool hasAttributes =
        ::setxattr(QFile::encodeName(path).constData(), "user.note", "kept", 4, 0) == 0;
    EXPECT_EQ(failureOfWriting(link), 0);
    EXPECT_TRUE(QFileInfo(link).isSymLink());
    EXPECT_EQ(read(path).title, QStringLiteral("new"));
    EXPECT_EQ(content(hardLink), mp3); // a name of its own from now on
    EXPECT_EQ(modeOf(path), 0640u);
    char note[4]{};
    if (hasAttributes) {
        EXPECT_EQ(::getxattr(QFile::encodeName(path).constData(), "user.note", note, sizeof note), 4);
    }
    ASSERT_TRUE(QFile::remove(path));
    EXPECT_EQ(failureOfWriting(link), RunTimeFailure::FileNotFound);
}

} // namespace
