#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <optional>

namespace engines::freedb {

/// What one entry of the service says of a disc. All texts are plain, without control characters but for the
/// line breaks and tabs of `comments`; what an entry doesn't tell is empty or 0.
struct DiscEntry
{
    QString artist;
    QString album;
    QString year;
    QString genre;
    QString comments;
    QStringList titles;     ///< one a track, in track order; one may be empty
    qint32 discSeconds = 0; ///< length of the whole disc
};

/// What a submission tells beside the entry.
struct Submission
{
    DiscEntry entry;
    QString discId;
    QStringList trackOffsets; ///< start frame of each track, decimal
    QString client;           ///< name and version of the program that sends it
};

/// The service's longest line, its end included.
inline constexpr qsizetype LongestLine = 256;
inline constexpr int MostTracks = 99;

/// Reads the text form of an entry: comments "#", then lines KEY=value, a key that comes again going on with
/// its value. UTF-8, or Latin-1 where a value is no UTF-8. Lines of no meaning are passed over; nothing where
/// neither the disc nor any track has a title.
std::optional<DiscEntry> parseEntry(const QByteArray &text);

/// The text form, in UTF-8 and lines of at most `LongestLine` bytes, never split inside an escape or a
/// character. `parseEntry` of it gives the entry again.
QByteArray entryText(const Submission &submission);

} // namespace engines::freedb
