#include "engines/tagfile/OggTags.h"

#include "base/RunTimeFailure.h"
#include "engines/common/OggPage.h"
#include "engines/tagfile/AudioKind.h"
#include "engines/tagfile/GenreNames.h"
#include "engines/tagfile/VorbisComments.h"

namespace engines {

namespace {

constexpr qint64 LargestHeader = 64 << 20; ///< of comments, which may hold pictures

/// The headers of a Vorbis stream, and the pages around them.
struct VorbisHeaders
{
    qint64 begin = 0;          ///< place of the file's first page
    quint32 serial = 0;        ///< of the stream
    quint32 firstSequence = 0; ///< of the pages below
    quint32 pageCount = 0;     ///< with comments and setup
    qint64 end = 0;            ///< behind the last of these
    QByteArray comments;
    QByteArray setup;
};

[[noreturn]] void failDamaged()
{
    throw RunTimeFailure(RunTimeFailure::DeviceIoError, QStringLiteral("The file's headers are damaged"));
}

VorbisHeaders readHeaders(QIODevice &file)
{
    VorbisHeaders headers;
    headers.begin = headers.end = sizeOfTagsInFront(file);
    file.seek(headers.begin);
    QList<QByteArray> packets{{}};
    bool inStream = false;
    qint64 size = 0;
    while (packets.size() <= 2) {
        const std::optional<OggPage> page = OggPage::read(file);
        if (!page)
            failDamaged();
        headers.end += page->size();
        if (page->beginsStream()) {
            if (page->body().startsWith("\x01vorbis") && !inStream) {
                inStream = true;
                headers.serial = page->serial();
                headers.firstSequence = page->sequence() + 1;
            }
            continue;
        }
        if (!inStream || page->serial() != headers.serial)
            continue;
        size += page->size();
        if (size > LargestHeader)
            failDamaged();
        ++headers.pageCount;
        qsizetype place = 0;
        for (const char lace : page->lacing()) {
            if (packets.size() > 2)
                failDamaged(); // audio has to begin on a page of its own
            const qsizetype segment = static_cast<quint8>(lace);
            packets.last().append(page->body().constData() + place, segment);
            place += segment;
            if (segment < 255)
                packets.append(QByteArray());
        }
    }
    headers.comments = packets[0];
    headers.setup = packets[1];
    return headers;
}

VorbisComments commentsOf(const VorbisHeaders &headers)
{
    const std::optional<VorbisComments> comments = VorbisComments::parse(headers.comments);
    if (!comments || !headers.setup.startsWith("\x05vorbis"))
        failDamaged();
    return *comments;
}

/// The keys of each field; the first is the one to write.
const QList<QByteArray> TitleKeys{"TITLE"}, ArtistKeys{"ARTIST"}, AlbumKeys{"ALBUM"},
    CommentKeys{"COMMENT", "DESCRIPTION"}, YearKeys{"DATE", "YEAR"}, GenreKeys{"GENRE"},
    TrackKeys{"TRACKNUMBER", "TRACKNUM"};

/// The first text that says something under one of the keys.
QString textOf(const VorbisComments &comments, const QList<QByteArray> &keys)
{
    for (const QByteArray &key : keys) {
        for (const QString &value : comments.values(key)) {
            if (!value.isEmpty())
                return value;
        }
    }
    return {};
}

TagFields fieldsOf(const VorbisComments &comments)
{
    return {.title = textOf(comments, TitleKeys),
            .artist = textOf(comments, ArtistKeys),
            .album = textOf(comments, AlbumKeys),
            .comment = textOf(comments, CommentKeys),
            .year = leadingNumber(textOf(comments, YearKeys), 4),
            .genre = genreIndex(genreNumber(textOf(comments, GenreKeys)).value_or(TagFields::OtherGenre)),
            .track = trackNumber(textOf(comments, TrackKeys))};
}

/// A description beside a comment says something of its own, and stays; unless the comment goes, since it
/// would be taken for the comment then.
QList<QByteArray> commentKeys(const VorbisComments &comments, const QString &text)
{
    if (text.isEmpty())
        return CommentKeys;
    return {textOf(comments, {"COMMENT"}).isEmpty() && !textOf(comments, {"DESCRIPTION"}).isEmpty()
                ? QByteArray("DESCRIPTION")
                : QByteArray("COMMENT")};
}

/// Replaces what differs; a field that says the same already stays in the form it has.
void change(VorbisComments &comments, const TagFields &fields)
{
    const TagFields old = fieldsOf(comments);
    const auto text = [&](const QList<QByteArray> &keys, const QString &value, const QString &oldValue) {
        if (value != oldValue)
            comments.replace(keys, value);
    };
    text(TitleKeys, fields.title, old.title);
    text(ArtistKeys, fields.artist, old.artist);
    text(AlbumKeys, fields.album, old.album);
    text(commentKeys(comments, fields.comment), fields.comment, old.comment);
    if (fields.year != old.year)
        comments.replace(YearKeys, yearText(fields.year));
    if (fields.genre != old.genre || textOf(comments, GenreKeys).isEmpty())
        comments.replace(GenreKeys, GenreNames[fields.genre].toString());
    if (fields.track != old.track)
        comments.replace(TrackKeys, trackText(fields.track, textOf(comments, TrackKeys)));
}

void writeOgg(QIODevice &file, const VorbisHeaders &headers, const QByteArray &comments, files::ByteSink &out)
{
    const QList<QByteArray> pages =
        oggPages({comments, headers.setup}, headers.serial, headers.firstSequence);
    const auto shift = static_cast<quint32>(pages.size()) - headers.pageCount;
    copyBytes(file, 0, headers.begin, out);
    qint64 place = headers.begin;
    quint32 left = headers.pageCount;
    bool ended = false; // another stream of the same number follows
    while (place < headers.end || (shift != 0 && !ended)) {
        file.seek(place);
        std::optional<OggPage> page = OggPage::read(file);
        if (!page)
            break; // what follows isn't Ogg
        const qint64 size = page->size();
        const bool isOurs = page->serial() == headers.serial;
        if (isOurs && !page->beginsStream() && left > 0) {
            if (--left == 0) {
                for (const QByteArray &header : pages)
                    writeBytes(header, out);
            }
        } else if (isOurs && left == 0 && !page->beginsStream()) {
            page->setSequence(page->sequence() + shift);
            writeBytes(page->bytes(), out);
        } else {
            ended = ended || (isOurs && left == 0);
            copyBytes(file, place, size, out);
        }
        place += size;
    }
    copyBytes(file, place, file.size() - place, out);
}

} // namespace

TagFields readOggTags(QIODevice &file)
{
    return fieldsOf(commentsOf(readHeaders(file)));
}

TagEdit editOggTags(QIODevice &file, const TagFields &fields)
{
    const VorbisHeaders headers = readHeaders(file);
    VorbisComments comments = commentsOf(headers);
    change(comments, fields);
    const QByteArray packet = comments.render();
    if (packet == headers.comments)
        return {};
    return [&file, headers, packet](files::ByteSink &out) { writeOgg(file, headers, packet, out); };
}

} // namespace engines
