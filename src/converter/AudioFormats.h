#pragma once

#include <QString>
#include <QStringList>
#include <array>

/// The four formats that the converter reads and writes, by the code that its steps pass on.
namespace AudioFormats {

enum Code : qint16 { Mp3 = 1, Wav = 2, Wma = 3, Ogg = 4 };

/// Indexed by code minus 1.
inline const std::array<QString, 4> Names = {QStringLiteral("MP3"), QStringLiteral("WAV"),
                                             QStringLiteral("WMA"), QStringLiteral("OGG")};

/// The ending of a format's files, with its point: ".mp3".
inline QString ending(qint16 code)
{
    return u'.' + Names[code - 1].toLower();
}

/// The open dialog's filter: "MP3 Files(*.mp3)".
inline QString filter(qint16 code)
{
    return QStringLiteral("%1 Files(*%2)").arg(Names[code - 1], ending(code));
}

/// The endings of all four formats.
inline QStringList endings()
{
    return {ending(Mp3), ending(Wav), ending(Wma), ending(Ogg)};
}

} // namespace AudioFormats
