#pragma once

#include "testkit/WaveFile.h"

#include <QDir>
#include <QFile>
#include <QString>
#include <QTemporaryDir>
#include <gtest/gtest.h>

/// A folder for disc images and for what is made of them; it goes with the test.
class DiscFolder
{
public:
    QString path(const QString &name) const { return m_folder.filePath(name); }
    QString path() const { return m_folder.path(); }

    QString write(const QString &name, const QByteArray &content) const
    {
        QFile file(path(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly)) << path(name).toStdString();
        file.write(content);
        return path(name);
    }

    QByteArray read(const QString &name) const
    {
        QFile file(path(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("no file");
    }

    /// Everything in the folder, hidden files too.
    QStringList entries() const
    {
        return QDir(m_folder.path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
    }

private:
    QTemporaryDir m_folder;
};

/// Audio sectors that can be told apart: the samples of each are the file's number, the sector's number, and
/// then a pattern of both.
inline QByteArray markedSectors(qint16 file, qint32 count)
{
    QByteArray bytes(qsizetype(count) * 2352, '\0');
    for (qint32 sector = 0; sector < count; ++sector)
        for (qint32 i = 0; i < 1176; ++i) {
            const qint32 value = i == 0 ? file : i == 1 ? sector : (file * 77 + sector) * 1176 + i * 3;
            qToLittleEndian(static_cast<qint16>(value), bytes.data() + qsizetype(sector) * 2352 + i * 2);
        }
    return bytes;
}

/// A WAVE file of a disc's sound; `rate` is what its header says.
inline QByteArray waveOf(const QByteArray &samples, int rate = 44100)
{
    return chunk("RIFF", "WAVE" + wavFormat(1, rate, 2, 16) + chunk("LIST", "ab") + chunk("data", samples));
}
