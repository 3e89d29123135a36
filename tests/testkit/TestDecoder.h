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
    qint64 bitRate = 0; ///< as the header says, in bits a second
    double seconds = 0; ///< as the header says
    QMap<QString, QString> tags; ///< of the file and of its audio stream, names in small letters
    std::vector<qint16> samples;
    bool clean = true; ///< no packet was refused

    qsizetype frames() const { return channels ? qsizetype(samples.size()) / channels : 0; }
};

/// Decodes a whole file the way players do, gapless information included. An unreadable one has no format.
Decoded decode(QByteArray file);
Decoded decodeFile(const QString &path);

} // namespace testkit
