#include "engines/images/CueSheet.h"

#include "base/RunTimeFailure.h"
#include "engines/images/Disc.h"

#include <QMap>
#include <QStringDecoder>
#include <QStringList>

namespace images {

namespace {

/// The words of a line; a quoted one may hold blanks.
QStringList wordsOf(const QString &line)
{
    QStringList words;
    qsizetype i = 0;
    while (i < line.size()) {
        if (line[i].isSpace()) {
            ++i;
            continue;
        }
        const bool quoted = line[i] == u'"';
        const qsizetype start = quoted ? i + 1 : i;
        for (i = start; i < line.size() && (quoted ? line[i] != u'"' : !line[i].isSpace());)
            ++i;
        words.append(line.mid(start, i - start));
        if (quoted)
            ++i;
    }
    return words;
}

QString textOf(const QByteArray &bytes)
{
    QStringDecoder utf8(QStringDecoder::Utf8);
    const QString text = utf8.decode(bytes);
    return utf8.hasError() ? QString::fromLatin1(bytes) : text;
}

class Parser
{
public:
    CueSheet parse(const QByteArray &bytes)
    {
        const QStringList lines = textOf(bytes).split(u'\n');
        for (const QString &line : lines) {
            ++m_line;
            QStringList words = wordsOf(line);
            if (words.isEmpty())
                continue;
            const QString command = words.takeFirst().toUpper();
            take(command, words);
        }
        if (m_sheet.tracks.empty())
            fail(QStringLiteral("there is no track"));
        endTrack();
        return m_sheet;
    }

private:
    [[noreturn]] void fail(const QString &what) const
    {
        throw RunTimeFailure(RunTimeFailure::DeviceIoError,
                             QStringLiteral("CUE sheet, line %1: %2").arg(m_line).arg(what));
    }

    void take(const QString &command, const QStringList &words)
    {
        if (command == u"FILE")
            takeFile(words);
        else if (command == u"TRACK")
            takeTrack(words);
        else if (command == u"INDEX")
            takeIndex(words);
        else if (command == u"PREGAP")
            track().pregap = time(words.value(0));
        else if (command == u"POSTGAP")
            track().postgap = time(words.value(0));
        else if (command == u"FLAGS")
            track().mayBeCopied = words.contains(QStringLiteral("DCP"), Qt::CaseInsensitive);
        else if (command == u"TITLE" && m_sheet.tracks.empty())
            m_sheet.title = words.value(0).trimmed();
        else if (command == u"REM" && words.value(0).toUpper() == u"SESSION")
            m_session = number(words.value(1), 1, MaxTracks);
    }

    void takeFile(const QStringList &words)
    {
        static const QMap<QString, CueFile::Kind> kinds = {
            {QStringLiteral("BINARY"), CueFile::Kind::LittleEndian},
            {QStringLiteral("MOTOROLA"), CueFile::Kind::BigEndian},
            {QStringLiteral("WAVE"), CueFile::Kind::Wave},
        };
        const auto kind = kinds.find(words.value(1).toUpper());
        if (kind == kinds.end())
            fail(QStringLiteral("files of the kind \"%1\" can't be read").arg(words.value(1)));
        m_sheet.files.push_back({words.value(0), *kind});
    }

    void takeTrack(const QStringList &words)
    {
        static const QMap<QString, int> sectorSizes = {
            {QStringLiteral("AUDIO"), 2352},      {QStringLiteral("CDG"), 2448},
            {QStringLiteral("MODE1/2048"), 2048}, {QStringLiteral("MODE1/2352"), 2352},
            {QStringLiteral("MODE2/2048"), 2048}, {QStringLiteral("MODE2/2324"), 2324},
            {QStringLiteral("MODE2/2336"), 2336}, {QStringLiteral("MODE2/2352"), 2352},
            {QStringLiteral("CDI/2336"), 2336},   {QStringLiteral("CDI/2352"), 2352},
        };
        endTrack();
        if (m_sheet.files.empty())
            fail(QStringLiteral("a track without a file"));
        number(words.value(0), 1, MaxTracks);
        const QString mode = words.value(1).toUpper();
        if (!sectorSizes.contains(mode) || m_sheet.tracks.size() == MaxTracks)
            fail(QStringLiteral("no track can be \"%1\"").arg(words.join(u' ')));
        CueTrack track;
        track.audio = mode == u"AUDIO" || mode == u"CDG";
        track.sectorSize = sectorSizes[mode];
        track.session = m_session;
        m_sheet.tracks.push_back(track);
    }

    void takeIndex(const QStringList &words)
    {
        CueTrack &current = track();
        CueIndex index;
        index.number = number(words.value(0), 0, MaxTracks);
        index.file = m_sheet.files.size() - 1;
        index.sector = time(words.value(1));
        if (!current.indices.empty() && index.number <= current.indices.back().number)
            fail(QStringLiteral("the index is out of order"));
        current.indices.push_back(index);
    }

    void endTrack() const
    {
        if (m_sheet.tracks.empty())
            return;
        for (const CueIndex &index : m_sheet.tracks.back().indices)
            if (index.number == 1)
                return;
        fail(QStringLiteral("the track before this has no INDEX 01"));
    }

    CueTrack &track()
    {
        if (m_sheet.tracks.empty())
            fail(QStringLiteral("there is no track yet"));
        return m_sheet.tracks.back();
    }

    int number(const QString &word, int least, int most) const
    {
        bool ok = false;
        const int value = word.toInt(&ok);
        if (!ok || value < least || value > most)
            fail(QStringLiteral("\"%1\" is no number here").arg(word));
        return value;
    }

    qint32 time(const QString &word) const
    {
        const QStringList parts = word.split(u':');
        if (parts.size() != 3)
            fail(QStringLiteral("\"%1\" is no time").arg(word));
        return (number(parts[0], 0, 999) * 60 + number(parts[1], 0, 59)) * SectorsPerSecond +
               number(parts[2], 0, SectorsPerSecond - 1);
    }

    CueSheet m_sheet;
    int m_line = 0;
    int m_session = 1;
};

} // namespace

CueSheet CueSheet::parse(const QByteArray &text)
{
    return Parser().parse(text);
}

} // namespace images
