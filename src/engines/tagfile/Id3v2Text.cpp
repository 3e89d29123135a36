#include "engines/tagfile/Id3v2Text.h"

#include <QStringDecoder>
#include <algorithm>

namespace engines::Id3v2Text {

namespace {

QString decoded(const QByteArray &bytes, Encoding encoding)
{
    switch (encoding) {
    case Latin1:
        return QString::fromLatin1(bytes);
    case Utf16:
        return QStringDecoder(QStringDecoder::Utf16)(bytes);
    case Utf16BigEndian:
        return QStringDecoder(QStringDecoder::Utf16BE)(bytes);
    case Utf8:
        return QString::fromUtf8(bytes);
    }
    return {};
}

/// Latin-1 without the control characters that some readers take for letters of a code page.
bool isLatin1(const QString &text)
{
    return std::all_of(text.begin(), text.end(), [](QChar c) {
        return c.unicode() < 0x80 || (c.unicode() >= 0xa0 && c.unicode() <= 0xff);
    });
}

QByteArray utf16(const QString &text)
{
    QByteArray bytes("\xff\xfe");
    for (const QChar c : text) {
        bytes.append(static_cast<char>(c.unicode() & 0xff));
        bytes.append(static_cast<char>(c.unicode() >> 8));
    }
    return bytes;
}

} // namespace

Reader::Reader(const QByteArray &data)
    : m_data(data),
      m_encoding(!data.isEmpty() && isEncoding(data[0]) ? static_cast<Encoding>(data[0]) : Latin1)
{}

QByteArray Reader::bytes(qsizetype count)
{
    const QByteArray taken = m_data.mid(m_place, count);
    m_place += taken.size();
    return taken;
}

QByteArray Reader::bytesToEndMark()
{
    const qsizetype end = m_data.indexOf('\0', m_place);
    const QByteArray taken = m_data.mid(m_place, end < 0 ? -1 : end - m_place);
    m_place = end < 0 ? m_data.size() : end + 1;
    return taken;
}

QString Reader::text()
{
    if (m_encoding == Latin1 || m_encoding == Utf8)
        return decoded(bytesToEndMark(), m_encoding);
    qsizetype end = m_place;
    while (end + 1 < m_data.size() && (m_data[end] != '\0' || m_data[end + 1] != '\0'))
        end += 2;
    const bool hasMark = end + 1 < m_data.size();
    const QByteArray taken = m_data.mid(m_place, end - m_place);
    m_place = hasMark ? end + 2 : m_data.size();
    return decoded(taken, m_encoding);
}

QStringList Reader::allTexts()
{
    QStringList texts;
    while (m_place < m_data.size())
        texts.append(text());
    while (!texts.isEmpty() && texts.last().isEmpty())
        texts.removeLast(); // end marks where none belongs
    return texts;
}

QByteArray render(const QList<Piece> &pieces)
{
    const bool narrow =
        std::all_of(pieces.begin(), pieces.end(), [](const Piece &piece) { return isLatin1(piece.text); });
    QByteArray data(1, static_cast<char>(narrow ? Latin1 : Utf16));
    for (const Piece &piece : pieces) {
        if (piece.kind == Kind::Bytes) {
            data.append(piece.bytes);
            continue;
        }
        data.append(narrow ? piece.text.toLatin1() : utf16(piece.text));
        if (piece.kind == Kind::MarkedText)
            data.append(QByteArray(narrow ? 1 : 2, '\0'));
    }
    return data;
}

} // namespace engines::Id3v2Text
