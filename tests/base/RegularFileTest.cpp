#include "base/RegularFile.h"

#include "base/RunTimeFailure.h"

#include <QTemporaryDir>
#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

namespace {

using namespace Qt::Literals::StringLiterals;

class RegularFileTest : public ::testing::Test
{
protected:
    QString path(const QString &name) const { return m_folder.filePath(name); }
    /// The failure's number; 0 for a file that was opened.
    static int openingOf(const QString &path)
    {
        try {
            QFile file;
            openRegularFile(file, path);
        } catch (const RunTimeFailure &failure) {
            return failure.number();
        }
        return 0;
    }

private:
    const QTemporaryDir m_folder;
};

TEST_F(RegularFileTest, aFileIsReadAlsoByALink)
{
    const QString name = u"a ä \"日本\".mp3"_s;
    QFile written(path(name));
    ASSERT_TRUE(written.open(QIODevice::WriteOnly));
    written.write("sound");
    written.close();
    ASSERT_TRUE(QFile::link(path(name), path(u"link"_s)));
    for (const QString &named : {path(name), path(u"link"_s)}) {
        QFile file;
        openRegularFile(file, named);
        EXPECT_EQ(file.readAll(), "sound");
        EXPECT_EQ(file.size(), 5);
    }
    EXPECT_EQ(openingOf(path(u"missing"_s)), RunTimeFailure::FileNotFound);
}

TEST_F(RegularFileTest, whatWouldKeepItsReaderWaitingIsRefusedAtOnce)
{
    const QByteArray pipe = path(u"pipe.mp3"_s).toUtf8();
    ASSERT_EQ(mkfifo(pipe.constData(), 0600), 0);
    ASSERT_TRUE(QFile::link(path(u"pipe.mp3"_s), path(u"link.mp3"_s)));
    const int listener = socket(AF_UNIX, SOCK_STREAM, 0);
    sockaddr_un address{AF_UNIX, {}};
    qstrncpy(address.sun_path, path(u"s"_s).toUtf8().constData(), sizeof address.sun_path);
    ASSERT_EQ(bind(listener, reinterpret_cast<sockaddr *>(&address), sizeof address), 0);
    for (const QString &name : {path(u"pipe.mp3"_s), path(u"link.mp3"_s), path(u"s"_s), u"/dev/zero"_s,
                                u"/dev/tty"_s, path(QString())})
        EXPECT_EQ(openingOf(name), RunTimeFailure::PathFileAccessError) << name.toStdString();
    close(listener);
}

} // namespace
