#pragma once

#include "engines/audiofile/AudioFile.h"
#include "testkit/Encoding.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

/// What the converter does with a file: read a second, write it, until nothing comes. False where one of the
/// two files couldn't be opened.
inline bool pump(audiofile::AudioFile &reader, const QString &source, audiofile::AudioFile &writer,
                 const QString &target)
{
    reader.OpenRead(source);
    if (reader.Status() < 0)
        return false;
    writer.OpenWrite(target);
    if (writer.Status() < 0)
        return false;
    writer.SetInputFormat(reader.SampleRate(), reader.ChannelCount());
    for (;;) {
        const QList<qint16> samples = reader.ReadSamples(reader.SamplesPerSecond());
        if (samples.isEmpty())
            break;
        writer.WriteSamples(samples);
    }
    writer.CloseFile();
    reader.CloseFile();
    return true;
}

/// All that a reader gives, asked for in pieces of this many values.
inline std::vector<qint16> readAll(audiofile::AudioFile &reader, const QString &path, qint32 piece = 88200)
{
    std::vector<qint16> all;
    reader.OpenRead(path);
    if (reader.Status() < 0)
        return all;
    for (;;) {
        const QList<qint16> samples = reader.ReadSamples(piece);
        if (samples.isEmpty())
            return all;
        all.insert(all.end(), samples.begin(), samples.end());
    }
}

/// A folder for the files of one test.
struct Folder
{
    QTemporaryDir folder;

    Folder() {} // written out, so that there can be constant ones

    QString path(const QString &name) const { return folder.filePath(name); }

    QString put(const QString &name, const QByteArray &content) const
    {
        QFile file(path(name));
        file.open(QIODevice::WriteOnly);
        file.write(content);
        return file.fileName();
    }

    QByteArray content(const QString &name) const
    {
        QFile file(path(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    QStringList names() const
    {
        return QDir(folder.path()).entryList(QDir::Files | QDir::Hidden | QDir::NoDotAndDotDot);
    }
};
