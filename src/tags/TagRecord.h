#pragma once

#include <QString>

/// A file's tags on their way from the component into the list. Texts have the room of their place, where
/// a longer one is shown cut; blanks around them mean nothing.
struct TagRecord
{
    static constexpr qsizetype AlbumSize = 100, TitleSize = 100, ArtistSize = 50, YearSize = 4,
                               CommentSize = 255;

    bool IsMP3 = false;
    bool IsOGG = false;
    QString album;
    QString title;
    QString artist;
    qint16 genre = 0; ///< place in the genre list
    QString year;     ///< decimal
    QString comment;
};

/// The start of a text, `size` characters at most, without the blanks around it. A character that takes two
/// places isn't cut in half.
QString fixedText(const QString &text, qsizetype size);

/// What is meant by a text that stands in such a place: what was cut to fit there and hasn't been changed
/// since stands for the whole of it.
QString meantText(const QString &shown, const QString &whole, qsizetype size);
