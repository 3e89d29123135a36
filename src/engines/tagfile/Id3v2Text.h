#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

/// Texts in frames that begin with an encoding byte.
namespace engines::Id3v2Text {

enum Encoding : char { Latin1 = 0, Utf16 = 1, Utf16BigEndian = 2, Utf8 = 3 };

inline bool isEncoding(char byte)
{
    return byte >= Latin1 && byte <= Utf8;
}

/// Takes a frame's data apart, part after part. What isn't there comes empty.
class Reader
{
public:
    /// The data begin with the encoding byte.
    explicit Reader(const QByteArray &data);

    QByteArray bytes(qsizetype count);
    /// Up to the next NUL, which is left out.
    QByteArray bytesToEndMark();
    /// The text up to its end mark or to the end.
    QString text();
    /// All texts to the end.
    QStringList allTexts();
    QByteArray rest() { return bytes(m_data.size()); }

private:
    QByteArray m_data;
    qsizetype m_place = 1;
    Encoding m_encoding;
};

enum class Kind {
    Bytes,      ///< as they are
    MarkedText, ///< with its end mark
    LastText,   ///< without one
};

/// A part of a frame's data.
struct Piece
{
    QByteArray bytes;
    QString text;
    Kind kind;
};

/// The data of a frame from its encoding byte on: Latin-1 where that holds all the texts, else UTF-16.
QByteArray render(const QList<Piece> &pieces);

} // namespace engines::Id3v2Text
