#pragma once

#include "base/RunTimeFailure.h"
#include "engines/tagfile/AudioInformation.h"
#include "testkit/Printing.h"

#include <QByteArray>
#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QtEndian>
#include <gtest/gtest.h>

inline void PrintTo(const QByteArray &bytes, std::ostream *out)
{
    *out << bytes.left(300).toPercentEncoding(" ()/:").toStdString();
}

inline void PrintTo(const QByteArrayList &list, std::ostream *out)
{
    for (const QByteArray &bytes : list) {
        *out << "\n  ";
        PrintTo(bytes, out);
    }
}

namespace engines {

inline void PrintTo(const TagFields &fields, std::ostream *out)
{
    *out << fields.title.toStdString() << " | " << fields.artist.toStdString() << " | "
         << fields.album.toStdString() << " | " << fields.comment.toStdString() << " | " << fields.year
         << " | " << fields.genre << " | " << fields.track;
}

} // namespace engines

/// Files with tags, put together byte by byte or made by other programs.
namespace samples {

inline QByteArray bigEndian(quint32 number)
{
    QByteArray bytes(4, '\0');
    qToBigEndian(number, bytes.data());
    return bytes;
}

inline QByteArray synchsafe(quint32 number)
{
    QByteArray bytes(4, '\0');
    for (int i = 0; i < 4; ++i)
        bytes[i] = static_cast<char>((number >> (21 - 7 * i)) & 0x7f);
    return bytes;
}

/// Silent frames of an MP3 stream, 128 kb/s, each with its number inside so that none can be exchanged.
inline QByteArray mp3Frames(int count)
{
    QByteArray frames;
    for (int i = 0; i < count; ++i)
        frames.append(QByteArray("\xff\xfb\x90\x00", 4) +
                      bigEndian(static_cast<quint32>(i)).replace('\xff', 'f') + QByteArray(409, '\x11'));
    return frames;
}

inline QByteArray frame23(const QByteArray &id, const QByteArray &data, quint16 flags = 0)
{
    return id + bigEndian(static_cast<quint32>(data.size())) + static_cast<char>(flags >> 8) +
           static_cast<char>(flags) + data;
}

inline QByteArray frame24(const QByteArray &id, const QByteArray &data, quint16 flags = 0)
{
    return id + synchsafe(static_cast<quint32>(data.size())) + static_cast<char>(flags >> 8) +
           static_cast<char>(flags) + data;
}

inline QByteArray frame22(const QByteArray &id, const QByteArray &data)
{
    return id + bigEndian(static_cast<quint32>(data.size())).mid(1) + data;
}

/// A Latin-1 text with its encoding byte.
inline QByteArray latin1(const QByteArray &text)
{
    return '\0' + text;
}

inline QByteArray id3v2(int version, const QByteArray &body, int flags = 0)
{
    return QByteArray("ID3") + static_cast<char>(version) + '\0' + static_cast<char>(flags) +
           synchsafe(static_cast<quint32>(body.size())) + body;
}

inline QByteArray id3v1(const QByteArray &title)
{
    return "TAG" + title.leftJustified(124, '\0') + '\xff';
}

inline QByteArray content(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("no file");
}

/// What a program prints; a failing one fails the test.
inline QByteArray output(const QString &program, const QStringList &arguments)
{
    QProcess process;
    process.start(program, arguments);
    process.waitForFinished(60000);
    EXPECT_EQ(process.exitCode(), 0) << program.toStdString() << ": "
                                     << process.readAllStandardError().toStdString();
    return process.readAllStandardOutput();
}

/// Bytes of a short sound that ffmpeg makes, by the ending of the name; each is made once.
inline QByteArray made(const QString &ending, const QStringList &options = {})
{
    static QMap<QString, QByteArray> known;
    QByteArray &bytes = known[ending + options.join(u' ')];
    if (bytes.isEmpty()) {
        QTemporaryDir folder;
        const QString path = folder.filePath(QStringLiteral("sound.") + ending);
        const QStringList source{
            QStringLiteral("-v"), QStringLiteral("error"),
            QStringLiteral("-f"), QStringLiteral("lavfi"),
            QStringLiteral("-i"), QStringLiteral("sine=440:duration=3:sample_rate=48000")};
        output(QStringLiteral("ffmpeg"), source + options + QStringList{path});
        bytes = content(path);
    }
    return bytes;
}

} // namespace samples

/// Files in a folder of their own, and the component.
class TagFileTest : public ::testing::Test
{
protected:
    QString put(const QString &name, const QByteArray &bytes) const
    {
        const QString path = folder.filePath(name);
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size());
        return path;
    }

    QStringList entries() const
    {
        return QDir(folder.path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
    }

    void set(const engines::TagFields &fields)
    {
        tags.setTagTitle(fields.title);
        tags.setTagAlbum(fields.album);
        tags.setTagArtist(fields.artist);
        tags.setTagComment(fields.comment);
        tags.setTagYear(fields.year);
        tags.setTagGenre(fields.genre);
        tags.setTagTrack(fields.track);
    }

    /// What another instance reads; the track number isn't read by anybody.
    static engines::TagFields read(const QString &path)
    {
        engines::AudioInformation other;
        other.ReadTags(path);
        return {.title = other.TagTitle(),
                .artist = other.TagArtist(),
                .album = other.TagAlbum(),
                .comment = other.TagComment(),
                .year = other.TagYear(),
                .genre = other.TagGenre()};
    }

    int failureOfWriting(const QString &path)
    {
        try {
            tags.WriteTags(path);
        } catch (const RunTimeFailure &failure) {
            return failure.number();
        }
        return 0;
    }

    QTemporaryDir folder;
    engines::AudioInformation tags;
};
