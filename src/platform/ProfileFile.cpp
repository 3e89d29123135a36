#include "platform/ProfileFile.h"

#include <QByteArrayList>
#include <QFile>
#include <QFileInfo>
#include <QLockFile>
#include <QSaveFile>
#include <functional>

namespace {

constexpr int LockPatience = 5000; // milliseconds; a holder needs a few

bool sameName(const QByteArray &bytes, const QString &name)
{
    return QString::fromUtf8(bytes.trimmed()).compare(name.trimmed(), Qt::CaseInsensitive) == 0;
}

/// The lines of a profile file, each without its line end.
class Profile
{
public:
    explicit Profile(const QByteArray &content)
    {
        m_lineEnd = content.contains("\r\n") ? "\r\n" : "\n";
        m_lines = content.split('\n');
        for (QByteArray &line : m_lines) {
            if (line.endsWith('\r'))
                line.chop(1);
        }
        if (m_lines.last().isEmpty())
            m_lines.removeLast();
    }

    QByteArray content() const
    {
        return m_lines.isEmpty() ? QByteArray() : m_lines.join(m_lineEnd) + m_lineEnd;
    }

    std::optional<QByteArray> value(const QString &section, const QString &key) const
    {
        const qsizetype at = keyLine(sectionLine(section), key);
        if (at < 0)
            return {};
        return m_lines[at].mid(m_lines[at].indexOf('=') + 1);
    }

    void set(const QString &section, const QString &key, const QByteArray &value)
    {
        const QByteArray line = key.toUtf8() + '=' + value;
        qsizetype head = sectionLine(section);
        if (head < 0) {
            head = m_lines.size();
            m_lines.append('[' + section.toUtf8() + ']');
        }
        const qsizetype at = keyLine(head, key);
        if (at >= 0)
            m_lines[at] = line;
        else
            m_lines.insert(endOfEntries(head), line);
    }

    /// True where anything was there to remove.
    bool remove(const QString &section, const QString &key)
    {
        const qsizetype at = keyLine(sectionLine(section), key);
        if (at >= 0)
            m_lines.removeAt(at);
        return at >= 0;
    }

    bool removeSection(const QString &section)
    {
        const qsizetype head = sectionLine(section);
        if (head >= 0)
            m_lines.remove(head, endOfSection(head) - head);
        return head >= 0;
    }

private:
    static bool isHead(const QByteArray &line) { return line.trimmed().startsWith('['); }

    qsizetype sectionLine(const QString &section) const
    {
        for (qsizetype i = 0; i < m_lines.size(); ++i) {
            const QByteArray line = m_lines[i].trimmed();
            const qsizetype close = line.indexOf(']');
            if (line.startsWith('[') && close > 0 && sameName(line.mid(1, close - 1), section))
                return i;
        }
        return -1;
    }

    qsizetype endOfSection(qsizetype head) const
    {
        qsizetype i = head + 1;
        while (i < m_lines.size() && !isHead(m_lines[i]))
            ++i;
        return i;
    }

    /// Behind the section's last line that isn't empty, so that a gap before the next section stays one.
    qsizetype endOfEntries(qsizetype head) const
    {
        qsizetype i = endOfSection(head);
        while (i > head + 1 && m_lines[i - 1].trimmed().isEmpty())
            --i;
        return i;
    }

    qsizetype keyLine(qsizetype head, const QString &key) const
    {
        if (head < 0)
            return -1;
        for (qsizetype i = head + 1; i < endOfSection(head); ++i) {
            const QByteArray &line = m_lines[i];
            const qsizetype equals = line.indexOf('=');
            if (equals >= 0 && !line.trimmed().startsWith(';') && sameName(line.left(equals), key))
                return i;
        }
        return -1;
    }

    QByteArrayList m_lines;
    QByteArray m_lineEnd;
};

bool isQuoted(const QString &text)
{
    return text.size() >= 2 && text.front() == text.back() && (text.front() == u'"' || text.front() == u'\'');
}

/// Nothing where there is no such file; `ok` tells whether one that is there could be read.
QByteArray readAll(const QString &path, bool *ok)
{
    QFile file(path);
    const bool isPlainFile = QFileInfo(path).isFile();
    *ok = !QFileInfo::exists(path) || (isPlainFile && file.open(QIODevice::ReadOnly));
    return *ok && isPlainFile ? file.readAll() : QByteArray();
}

/// Read, change and replace under the lock; a file that stays the same isn't touched. `edit` gives false
/// where there is nothing to change.
bool change(const QString &path, const std::function<bool(Profile &)> &edit)
{
    QLockFile lock(path + QStringLiteral(".lock"));
    if (!lock.tryLock(LockPatience))
        return false;
    bool readable = false;
    const QByteArray before = readAll(path, &readable);
    Profile profile(before);
    if (!readable)
        return false;
    if (!edit(profile) || profile.content() == before)
        return true;
    QSaveFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(profile.content()) >= 0 && file.commit();
}

} // namespace

QString ProfileFile::value(const QString &section, const QString &key, const QString &defaultValue,
                           const QString &file)
{
    bool readable = false;
    const std::optional<QByteArray> stored = Profile(readAll(file, &readable)).value(section, key);
    if (!stored)
        return defaultValue;
    const QString text = QString::fromUtf8(*stored).trimmed();
    return isQuoted(text) ? text.mid(1, text.size() - 2) : text;
}

bool ProfileFile::setValue(const QString &section, const QString &key, const std::optional<QString> &value,
                           const QString &file)
{
    return change(file, [&](Profile &profile) {
        if (!value)
            return profile.remove(section, key);
        // A line holds one value, and quotes that belong to it must outlast the reader's stripping.
        QString text = *value;
        text.replace(u'\r', u' ').replace(u'\n', u' ');
        if (isQuoted(text) || text != text.trimmed())
            text = u'"' + text + u'"';
        profile.set(section, key, text.toUtf8());
        return true;
    });
}

bool ProfileFile::removeSection(const QString &section, const QString &file)
{
    return change(file, [&](Profile &profile) { return profile.removeSection(section); });
}
