#include "platform/Profile.h"

#include <QtEndian>

namespace {

bool sameName(const QByteArray &bytes, const QString &name)
{
    return QString::fromUtf8(bytes.trimmed()).compare(name.trimmed(), Qt::CaseInsensitive) == 0;
}

bool isHead(const QByteArray &line)
{
    return line.trimmed().startsWith('[');
}

bool isQuoted(const QString &text)
{
    return text.size() >= 2 && text.front() == text.back() && (text.front() == u'"' || text.front() == u'\'');
}

} // namespace

Profile::Profile(const QByteArray &content)
{
    const QByteArray text = decoded(content);
    m_lineEnd = text.contains("\r\n") ? "\r\n" : "\n";
    m_lines = text.split('\n');
    for (QByteArray &line : m_lines) {
        if (line.endsWith('\r'))
            line.chop(1);
    }
    if (m_lines.last().isEmpty())
        m_lines.removeLast();
}

/// The text in UTF-8, without a mark. Where UTF-16 has none, the NUL of its first character tells it.
QByteArray Profile::decoded(const QByteArray &content)
{
    for (const auto &[mark, encoding] : {std::pair(QByteArray("\xef\xbb\xbf"), Encoding::Utf8),
                                         std::pair(QByteArray("\xff\xfe"), Encoding::Utf16LittleEnd),
                                         std::pair(QByteArray("\xfe\xff"), Encoding::Utf16BigEnd)}) {
        if (content.startsWith(mark)) {
            m_mark = mark;
            m_encoding = encoding;
        }
    }
    if (m_mark.isEmpty() && content.size() >= 2 && (content[0] == '\0') != (content[1] == '\0'))
        m_encoding = content[0] == '\0' ? Encoding::Utf16BigEnd : Encoding::Utf16LittleEnd;
    const QByteArray bytes = content.mid(m_mark.size());
    if (m_encoding == Encoding::Utf8)
        return bytes;
    QString text(bytes.size() / 2, Qt::Uninitialized);
    if (m_encoding == Encoding::Utf16LittleEnd)
        qFromLittleEndian<char16_t>(bytes.constData(), text.size(), text.data());
    else
        qFromBigEndian<char16_t>(bytes.constData(), text.size(), text.data());
    const QByteArray utf8 = text.toUtf8();
    m_faithful = encoded(utf8) == content;
    return utf8;
}

QByteArray Profile::encoded(const QByteArray &text) const
{
    if (m_encoding == Encoding::Utf8)
        return m_mark + text;
    const QString wide = QString::fromUtf8(text);
    QByteArray bytes(wide.size() * 2, Qt::Uninitialized);
    if (m_encoding == Encoding::Utf16LittleEnd)
        qToLittleEndian<char16_t>(wide.constData(), wide.size(), bytes.data());
    else
        qToBigEndian<char16_t>(wide.constData(), wide.size(), bytes.data());
    return m_mark + bytes;
}

QByteArray Profile::content() const
{
    return encoded(m_lines.isEmpty() ? QByteArray() : m_lines.join(m_lineEnd) + m_lineEnd);
}

std::optional<QString> Profile::value(const QString &section, const QString &key) const
{
    const qsizetype at = keyLine(sectionLine(section), key);
    if (at < 0)
        return {};
    const QString text = QString::fromUtf8(m_lines[at].mid(m_lines[at].indexOf('=') + 1)).trimmed();
    return isQuoted(text) ? text.mid(1, text.size() - 2) : text;
}

void Profile::set(const QString &section, const QString &key, const std::optional<QString> &value)
{
    qsizetype head = sectionLine(section);
    const qsizetype at = keyLine(head, key);
    if (!value) {
        if (at >= 0)
            m_lines.removeAt(at);
        return;
    }
    // A line holds one value, and quotes that belong to it must outlast the reader's stripping.
    QString text = *value;
    text.replace(u'\r', u' ').replace(u'\n', u' ');
    if (isQuoted(text) || text != text.trimmed())
        text = u'"' + text + u'"';
    const QByteArray line = key.toUtf8() + '=' + text.toUtf8();
    if (at >= 0) {
        m_lines[at] = line;
        return;
    }
    if (head < 0) {
        head = m_lines.size();
        m_lines.append('[' + section.toUtf8() + ']');
    }
    m_lines.insert(endOfEntries(head), line);
}

void Profile::removeSection(const QString &section)
{
    const qsizetype head = sectionLine(section);
    if (head >= 0)
        m_lines.remove(head, endOfSection(head) - head);
}

qsizetype Profile::sectionLine(const QString &section) const
{
    for (qsizetype i = 0; i < m_lines.size(); ++i) {
        const QByteArray line = m_lines[i].trimmed();
        const qsizetype close = line.indexOf(']');
        if (line.startsWith('[') && close > 0 && sameName(line.mid(1, close - 1), section))
            return i;
    }
    return -1;
}

qsizetype Profile::endOfSection(qsizetype head) const
{
    qsizetype i = head + 1;
    while (i < m_lines.size() && !isHead(m_lines[i]))
        ++i;
    return i;
}

/// Behind the section's last line that isn't empty, so that a gap before the next section stays one.
qsizetype Profile::endOfEntries(qsizetype head) const
{
    qsizetype i = endOfSection(head);
    while (i > head + 1 && m_lines[i - 1].trimmed().isEmpty())
        --i;
    return i;
}

qsizetype Profile::keyLine(qsizetype head, const QString &key) const
{
    if (head < 0)
        return -1;
    for (qsizetype i = head + 1; i < m_lines.size() && !isHead(m_lines[i]); ++i) {
        const QByteArray &line = m_lines[i];
        const qsizetype equals = line.indexOf('=');
        if (equals >= 0 && !line.trimmed().startsWith(';') && sameName(line.left(equals), key))
            return i;
    }
    return -1;
}
