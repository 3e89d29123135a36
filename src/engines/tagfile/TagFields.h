#pragma once

#include <QString>

namespace engines {

/// What the program knows of a file's tags.
struct TagFields
{
    static constexpr qint16 OtherGenre = 12;

    QString title;
    QString artist;
    QString album;
    QString comment;
    qint32 year = 0;           ///< 0 where there is none
    qint16 genre = OtherGenre; ///< place in the genre list, also for a genre that has no place there
    qint16 track = 0;          ///< 0 where there is none

    bool operator==(const TagFields &) const = default;

    /// As a file can hold it: texts of whole characters and without NUL, numbers in the range of a tag.
    TagFields writable() const;
};

/// The number that a text begins with, of at most `digits` digits; 0 where it begins otherwise.
qint32 leadingNumber(const QString &text, int digits);
/// A year of four digits, or nothing for 0.
QString yearText(qint32 year);
/// The place in the genre list of a number in a tag; `OtherGenre` for a number beyond the list.
qint16 genreIndex(int number);
/// The track number that a text such as "5" or "5/12" begins with.
qint16 trackNumber(const QString &text);
/// A track number, with what the text so far has behind its number: "/12", the count of all tracks.
QString trackText(qint16 track, const QString &textSoFar);

} // namespace engines
