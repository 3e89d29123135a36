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
    /// The text up to its end mark or to the end. In UTF-16 a text without a byte-order mark has the order of
    /// the text before it.
    QString text();
    /// All texts to the end.
    QStringList allTexts();

private:
    QByteArray bytesToEndMark();
    QString decoded(QByteArrayView bytes);

    QByteArray m_data;
    qsizetype m_place = 1;
    Encoding m_encoding;
    bool m_bigEndian;
};

/// The data of a frame in the form of version 3 or 4: the encoding byte, the bytes `head`, and the texts with
/// end marks between them. Latin-1 where that holds all the texts, else UTF-16 in version 3. Version 4 takes
/// ASCII or UTF-8, in which there is no byte that unsynchronisation would change.
QByteArray render(int version, const QByteArray &head, const QStringList &texts);

} // namespace engines::Id3v2Text
