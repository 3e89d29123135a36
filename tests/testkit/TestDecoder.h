#pragma once

#include <QByteArray>
#include <QMap>
#include <QString>
#include <vector>

namespace testkit {

struct Decoded
{
    QString format; ///< the library's short name of the container
    QString codec;
    int rate = 0;
    int channels = 0;
    int bitsPerCode = 0;
    qint64 bitRate = 0;          ///< as the header says, in bits a second
    double seconds = 0;          ///< as the header says
    QMap<QString, QString> tags; ///< of the file and of its audio stream, names in small letters
    std::vector<qint16> samples;
    bool clean = true; ///< no packet was refused
    int warnings = 0;  ///< that the library gave, errors among them
    double begin = 0;  ///< time of the first sample

    qsizetype frames() const { return channels ? qsizetype(samples.size()) / channels : 0; }
};

/// Decodes a whole file the way players do, gapless information included. An unreadable one has no format.
/// With `from`, in seconds, it goes there first, or to a place a little before.
Decoded decode(QByteArray file, double from = 0);
Decoded decodeFile(const QString &path);

} // namespace testkit
