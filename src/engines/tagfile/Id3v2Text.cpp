#include "engines/tagfile/Id3v2Text.h"

#include <QStringDecoder>
#include <QtEndian>
#include <algorithm>

namespace engines::Id3v2Text {

namespace {

/// Latin-1 without the control characters that some readers take for letters of a code page.
bool isLatin1(QStringView text)
{
    return std::all_of(text.begin(), text.end(), [](QChar c) {
        return c.unicode() < 0x80 || (c.unicode() >= 0xa0 && c.unicode() <= 0xff);
    });
}

bool isAscii(QStringView text)
{
    return std::all_of(text.begin(), text.end(), [](QChar c) { return c.unicode() < 0x80; });
}

QByteArray encoded(QStringView text, Encoding encoding)
{
    if (encoding == Latin1)
        return text.toLatin1();
    if (encoding == Utf8)
        return text.toUtf8();
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
      m_encoding(!data.isEmpty() && isEncoding(data[0]) ? static_cast<Encoding>(data[0]) : Latin1),
      m_bigEndian(m_encoding == Utf16BigEndian)
{}

QByteArray Reader::bytes(qsizetype count)
{
    const QByteArray taken = m_data.mid(m_place, count);
    m_place += taken.size();
    return taken;
}

QByteArray Reader::bytesToEndMark()
{
    const qsizetype width = m_encoding == Utf16 || m_encoding == Utf16BigEndian ? 2 : 1;
    qsizetype end = m_place;
    while (end + width <= m_data.size() && (m_data[end] != '\0' || m_data[end + width - 1] != '\0'))
        end += width;
    const bool hasMark = end + width <= m_data.size();
    const QByteArray taken = m_data.mid(m_place, hasMark ? end - m_place : -1);
    m_place = hasMark ? end + width : m_data.size();
    return taken;
}

QString Reader::decoded(QByteArrayView bytes)
{
    if (m_encoding == Latin1)
        return QString::fromLatin1(bytes);
    if (m_encoding == Utf8)
        return QString::fromUtf8(bytes);
    const bool isMarked = bytes.startsWith("\xff\xfe") || bytes.startsWith("\xfe\xff");
    if (isMarked) {
        m_bigEndian = bytes[0] == '\xfe';
        bytes = bytes.sliced(2);
    }
    return QStringDecoder(m_bigEndian ? QStringDecoder::Utf16BE : QStringDecoder::Utf16LE)(bytes);
}

QString Reader::text()
{
    return decoded(bytesToEndMark());
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

QByteArray render(int version, const QByteArray &head, const QStringList &texts)
{
    const bool narrow = std::all_of(texts.begin(), texts.end(), [&](const QString &text) {
        return version == 4 ? isAscii(text) : isLatin1(text);
    });
    const Encoding encoding = narrow ? Latin1 : version == 4 ? Utf8 : Utf16;
    QByteArray data = static_cast<char>(encoding) + head;
    for (qsizetype i = 0; i < texts.size(); ++i) {
        if (i > 0)
            data.append(QByteArray(encoding == Utf16 ? 2 : 1, '\0'));
        data.append(encoded(texts[i], encoding));
    }
    return data;
}

} // namespace engines::Id3v2Text
