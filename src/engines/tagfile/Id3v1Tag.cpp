#include "engines/tagfile/Id3v1Tag.h"

#include <algorithm>

namespace engines::Id3v1Tag {

namespace {

/// Where each field begins and how many bytes it takes.
struct Room
{
    qsizetype place;
    qsizetype size;
};
constexpr Room Title{3, 30}, Artist{33, 30}, Album{63, 30}, Year{93, 4}, Comment{97, 30};
constexpr Room CommentBesideTrack{97, 28}; ///< then a NUL and the track number
constexpr qsizetype TrackMark = 125, Track = 126, Genre = 127;

QString textAt(const QByteArray &bytes, Room room)
{
    const QByteArray text = bytes.mid(room.place, room.size);
    const qsizetype end = text.indexOf('\0');
    return QString::fromLatin1(text.left(end < 0 ? room.size : end)).trimmed();
}

void put(QByteArray &tag, Room room, const QString &text)
{
    if (std::all_of(text.begin(), text.end(), [](QChar c) { return c.unicode() <= 0xff; }))
        tag.replace(room.place, room.size, text.toLatin1().leftJustified(room.size, '\0', true));
}

} // namespace

std::optional<TagFields> parse(const QByteArray &bytes)
{
    if (bytes.size() != Size || !bytes.startsWith("TAG"))
        return {};
    const bool hasTrack = bytes[TrackMark] == '\0' && bytes[Track] != '\0';
    return TagFields{.title = textAt(bytes, Title),
                     .artist = textAt(bytes, Artist),
                     .album = textAt(bytes, Album),
                     .comment = textAt(bytes, hasTrack ? CommentBesideTrack : Comment),
                     .year = leadingNumber(textAt(bytes, Year), 4),
                     .genre = genreIndex(genreOf(bytes)),
                     .track = static_cast<qint16>(hasTrack ? static_cast<quint8>(bytes[Track]) : 0)};
}

QByteArray render(const TagFields &fields, quint8 genre)
{
    QByteArray tag = QByteArray("TAG").leftJustified(Size, '\0');
    put(tag, Title, fields.title);
    put(tag, Artist, fields.artist);
    put(tag, Album, fields.album);
    put(tag, Year, yearText(fields.year));
    put(tag, CommentBesideTrack, fields.comment);
    tag[Track] = static_cast<char>(fields.track > 255 ? 0 : fields.track);
    tag[Genre] = static_cast<char>(genre);
    return tag;
}

quint8 genreOf(const QByteArray &tag)
{
    return static_cast<quint8>(tag[Genre]);
}

} // namespace engines::Id3v1Tag
