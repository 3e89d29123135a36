#pragma once

#include <QString>
#include <array>

/// A format as the option buttons `rdFormat` list them, which is another order.
struct RipFormat
{
    QString name;      ///< of its settings and its default folder
    QString extension; ///< of the names in the track list, with its dot
    qint32 encType;    ///< the job's number of the format, see rip/JobKinds.h
    bool usesEncoder;
};

/// By the index of `rdFormat`. VQF lists ".wav" names: the rip writes WAV files, and a second pass turns them
/// into ".vqf" files beside them.
inline const std::array<RipFormat, 5> RipFormats = {{
    {QStringLiteral("MP3"), QStringLiteral(".mp3"), 0, true},
    {QStringLiteral("WAV"), QStringLiteral(".wav"), 1, false},
    {QStringLiteral("WMA"), QStringLiteral(".wma"), 3, true},
    {QStringLiteral("VQF"), QStringLiteral(".wav"), 4, false},
    {QStringLiteral("OGG"), QStringLiteral(".ogg"), 2, true},
}};
