#include "engines/freedb/DiscEntry.h"

#include "base/Text.h"

#include <QHash>
#include <QStringDecoder>
#include <algorithm>

namespace engines::freedb {

namespace {

const QString ArtistEnd = QStringLiteral(" / ");

/// The lines of an entry, sorted.
struct Lines
{
    QHash<QByteArray, QByteArray> values; ///< of each key, continued ones joined
    qint32 discSeconds = 0;
    int tracks = 0; ///< by the offsets told and the highest title
};

/// The number behind a word, if there is one.
std::optional<int> numberBehind(const QByteArray &text, const char *word)
{
    if (!text.startsWith(word))
        return {};
    const QByteArray digits = text.mid(qstrlen(word)).trimmed().split(' ').constFirst();
    bool isNumber = false;
    const int number = digits.toInt(&isNumber);
    return isNumber && number >= 0 ? std::optional(number) : std::nullopt;
}

QByteArray titleKey(int track)
{
    return "TTITLE" + QByteArray::number(track);
}

void readComment(const QByteArray &comment, bool &inOffsets, int &offsets, Lines &lines)
{
    if (comment.startsWith("Track frame offsets")) {
        inOffsets = true;
    } else if (inOffsets && numberBehind(comment, "")) {
        ++offsets;
    } else {
        inOffsets = false;
        if (const auto seconds = numberBehind(comment, "Disc length:"))
            lines.discSeconds = *seconds;
    }
}

Lines sortLines(const QByteArray &text)
{
    Lines lines;
    bool inOffsets = false;
    int offsets = 0;
    for (QByteArray line : text.split('\n')) {
        if (line.endsWith('\r'))
            line.chop(1);
        if (line.startsWith('#')) {
            readComment(line.mid(1).trimmed(), inOffsets, offsets, lines);
            continue;
        }
        const qsizetype end = line.indexOf('=');
        if (end <= 0)
            continue;
        const QByteArray key = line.left(end);
        lines.values[key] += line.mid(end + 1);
        const auto track = numberBehind(key, "TTITLE");
        if (track && *track < MostTracks && key == titleKey(*track))
            lines.tracks = std::max(lines.tracks, *track + 1);
    }
    lines.tracks = std::max(lines.tracks, std::min(offsets, MostTracks));
    return lines;
}

QString decoded(const QByteArray &bytes)
{
    QStringDecoder utf8(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    const QString text = utf8(bytes);
    return utf8.hasError() ? QString::fromLatin1(bytes) : text;
}

/// Undoes \n, \t and \\ in one pass, so that an escaped backslash escapes nothing itself.
QString withoutEscapes(const QString &text)
{
    QString plain;
    plain.reserve(text.size());
    for (qsizetype i = 0; i < text.size(); ++i) {
        const QChar next = text[i] == u'\\' && i + 1 < text.size() ? text[i + 1] : QChar();
        if (next == u'n' || next == u't' || next == u'\\') {
            plain += next == u'n' ? u'\n' : next == u't' ? u'\t' : u'\\';
            ++i;
        } else {
            plain += text[i];
        }
    }
    return plain;
}

QString severalLines(const Lines &lines, const QByteArray &key)
{
    QString text = withoutEscapes(decoded(lines.values.value(key)));
    text.removeIf([](QChar c) { return c.category() == QChar::Other_Control && c != u'\n' && c != u'\t'; });
    return text;
}

QString oneLine(const Lines &lines, const QByteArray &key)
{
    return severalLines(lines, key).replace(u'\n', u' ').replace(u'\t', u' ');
}

QByteArray escaped(const QString &text)
{
    QByteArray bytes;
    for (const char byte : text.toUtf8()) {
        if (byte == '\\')
            bytes += "\\\\";
        else if (byte == '\n')
            bytes += "\\n";
        else if (byte == '\t')
            bytes += "\\t";
        else if (static_cast<unsigned char>(byte) >= 0x20 && byte != 0x7f)
            bytes += byte;
    }
    return bytes;
}

/// How many bytes from `i` on must stay together: an escape, or a character of several bytes.
qsizetype unitLength(const QByteArray &bytes, qsizetype i)
{
    qsizetype length = bytes[i] == '\\' ? 2 : 1;
    while (i + length < bytes.size() && (static_cast<unsigned char>(bytes[i + length]) & 0xc0) == 0x80)
        ++length;
    return length;
}

/// Appends "KEY=value", on as many lines as it takes.
void appendField(QByteArray &text, const QByteArray &key, const QString &value)
{
    const QByteArray bytes = escaped(value);
    const qsizetype room = LongestLine - key.size() - 2; // the equals sign and the line's end
    qsizetype start = 0;
    do {
        qsizetype end = start;
        for (qsizetype unit = 0; end < bytes.size(); end += unit) {
            unit = unitLength(bytes, end);
            if (end + unit - start > room)
                break;
        }
        text += key + '=' + bytes.mid(start, end - start) + '\n';
        start = end;
    } while (start < bytes.size());
}

/// An artist's name, or a lone title, that holds the separator would be read back as something else.
QString discTitle(const DiscEntry &entry)
{
    if (entry.artist.isEmpty())
        return (entry.album + u' ').contains(ArtistEnd) ? ArtistEnd + entry.album : entry.album;
    QString artist = QString(entry.artist).replace(ArtistEnd, QStringLiteral("/"));
    if (artist.endsWith(QStringLiteral(" /")))
        artist.chop(2);
    return artist + ArtistEnd + entry.album;
}

} // namespace

std::optional<DiscEntry> parseEntry(const QByteArray &text)
{
    const Lines lines = sortLines(text);
    DiscEntry entry;
    QString title = oneLine(lines, "DTITLE");
    if (title.endsWith(QStringLiteral(" /"))) // an artist without a title, whose last blank was lost
        title += u' ';
    const qsizetype end = title.indexOf(ArtistEnd);
    entry.artist = trimBlanks(title.left(end));
    entry.album = trimBlanks(end < 0 ? title : title.mid(end + ArtistEnd.size()));
    entry.year = trimBlanks(oneLine(lines, "DYEAR"));
    entry.genre = trimBlanks(oneLine(lines, "DGENRE"));
    entry.comments = severalLines(lines, "EXTD").trimmed();
    entry.discSeconds = lines.discSeconds;
    bool hasTitle = !entry.artist.isEmpty() || !entry.album.isEmpty();
    for (int track = 0; track < lines.tracks; ++track) {
        // The separator of joined titles can't stand in one.
        entry.titles += trimBlanks(oneLine(lines, titleKey(track)).replace(ListSeparator, u'/'));
        hasTitle = hasTitle || !entry.titles.constLast().isEmpty();
    }
    return hasTitle ? std::optional(entry) : std::nullopt;
}

QByteArray entryText(const Submission &submission)
{
    const DiscEntry &entry = submission.entry;
    QByteArray text = "# xmcd\n#\n# Track frame offsets:\n";
    for (const QString &offset : submission.trackOffsets)
        text += "#\t" + QByteArray::number(offset.toInt()) + '\n';
    text += "#\n# Disc length: " + QByteArray::number(entry.discSeconds) + " seconds\n";
    text += "#\n# Revision: 0\n# Submitted via: " + escaped(submission.client) + "\n#\n";
    appendField(text, "DISCID", submission.discId);
    appendField(text, "DTITLE", discTitle(entry));
    appendField(text, "DYEAR", entry.year);
    appendField(text, "DGENRE", entry.genre);
    for (qsizetype track = 0; track < entry.titles.size(); ++track)
        appendField(text, titleKey(static_cast<int>(track)), entry.titles[track]);
    appendField(text, "EXTD", entry.comments);
    for (qsizetype track = 0; track < entry.titles.size(); ++track)
        appendField(text, "EXTT" + QByteArray::number(track), {});
    appendField(text, "PLAYORDER", {});
    return text;
}

} // namespace engines::freedb
