#include "engines/tagfile/Mp3Tags.h"

#include "base/RunTimeFailure.h"
#include "engines/tagfile/AudioKind.h"
#include "engines/tagfile/GenreNames.h"
#include "engines/tagfile/Id3v1Tag.h"
#include "engines/tagfile/Id3v2Tag.h"
#include "engines/tagfile/Id3v2Text.h"

#include <algorithm>

namespace engines {

namespace {

constexpr qsizetype LargestField = 1 << 20; ///< of a frame that can be one of our fields
const QString BetweenValues = QStringLiteral("/");

using Ids = QList<QByteArray>;

/// An MP3 file's tags as they stand.
class Mp3Tags
{
public:
    explicit Mp3Tags(QIODevice &file)
        : tag(bytesAt(file, 0, sizeOfTagsInFront(file))),
          id3v1(bytesAt(file, std::max<qint64>(0, file.size() - Id3v1Tag::Size), Id3v1Tag::Size))
    {
        if (const auto fields = Id3v1Tag::parse(id3v1))
            m_old = *fields;
        else
            id3v1.clear();
    }

    /// All values of the first frame of a kind, tried in this order; none where there is no such frame.
    QStringList texts(const Ids &ids) const
    {
        for (const QByteArray &id : ids) {
            for (const Id3v2Frame &frame : tag.frames) {
                if (const auto content = frame.id == id ? fieldOf(frame) : std::nullopt)
                    return Id3v2Text::Reader(*content).allTexts();
            }
        }
        return {};
    }

    QString text(const char *id) const { return texts({id}).join(BetweenValues); }

    /// The frames with the date, the one that is written first.
    Ids dateIds() const { return tag.version() == 4 ? Ids{"TDRC", "TYER"} : Ids{"TYER", "TDRC"}; }
    qint32 year() const { return leadingNumber(texts(dateIds()).value(0), 4); }
    QString genre() const { return texts({"TCON"}).value(0); }

    /// A comment without a description is the comment; others are notes of some program.
    bool isComment(const Id3v2Frame &frame) const
    {
        const auto content = frame.id == "COMM" ? fieldOf(frame) : std::nullopt;
        if (!content)
            return false;
        Id3v2Text::Reader reader(*content);
        reader.bytes(LanguageSize);
        return reader.text().isEmpty();
    }

    QString comment() const
    {
        const auto frame = std::find_if(tag.frames.begin(), tag.frames.end(),
                                        [this](const Id3v2Frame &each) { return isComment(each); });
        if (frame == tag.frames.end())
            return {};
        Id3v2Text::Reader reader(*fieldOf(*frame));
        reader.bytes(LanguageSize);
        reader.text();
        return reader.allTexts().join(BetweenValues);
    }

    /// The number of the genre, be it in the list or not; that of Other where it is told by a name alone.
    qint16 genreNumberOr(qint16 none) const
    {
        const QString text = genre();
        if (!text.isEmpty())
            return genreNumber(text).value_or(TagFields::OtherGenre);
        return id3v1.isEmpty() ? none : Id3v1Tag::genreOf(id3v1);
    }

    TagFields fields() const
    {
        const auto either = [](const QString &text, const QString &old) {
            return text.isEmpty() ? old : text;
        };
        const QString track = text("TRCK");
        return {.title = either(text("TIT2"), m_old.title),
                .artist = either(text("TPE1"), m_old.artist),
                .album = either(text("TALB"), m_old.album),
                .comment = either(comment(), m_old.comment),
                .year = texts(dateIds()).isEmpty() ? m_old.year : year(),
                .genre = genreIndex(genreNumberOr(TagFields::OtherGenre)),
                .track = track.isEmpty() ? m_old.track : trackNumber(track)};
    }

    static constexpr qsizetype LanguageSize = 3;

    Id3v2Tag tag;
    QByteArray id3v1; ///< empty where there is none

private:
    std::optional<QByteArray> fieldOf(const Id3v2Frame &frame) const
    {
        return frame.data.size() <= LargestField ? tag.content(frame) : std::nullopt;
    }

    TagFields m_old;
};

/// Puts the frame in the place of the first of those that go; one without data only takes them away.
template <typename Goes>
void replaceFrames(QList<Id3v2Frame> &frames, Goes goes, const Id3v2Frame &frame)
{
    const auto first = std::find_if(frames.begin(), frames.end(), goes);
    const qsizetype place = first - frames.begin();
    frames.erase(std::remove_if(first, frames.end(), goes), frames.end());
    if (!frame.data.isEmpty())
        frames.insert(place, frame);
}

/// The frames with the fields. One that says the same already stays in the form it has.
QList<Id3v2Frame> changed(const Mp3Tags &tags, const TagFields &fields)
{
    const int version = tags.tag.version();
    QList<Id3v2Frame> frames = tags.tag.frames;
    const auto replace = [&](const Ids &ids, const QString &text) {
        replaceFrames(
            frames, [&](const Id3v2Frame &frame) { return ids.contains(frame.id); },
            text.isEmpty() ? Id3v2Frame()
                           : Id3v2Frame{ids.first(), 0, Id3v2Text::render(version, {}, {text})});
    };
    const auto replaceText = [&](const char *id, const QString &value) {
        if (tags.text(id) != value)
            replace({id}, value);
    };
    replaceText("TIT2", fields.title);
    replaceText("TPE1", fields.artist);
    replaceText("TALB", fields.album);
    if (tags.year() != fields.year)
        replace(tags.dateIds() + Ids{"TDAT", "TIME"}, yearText(fields.year)); // no day of another year
    if (tags.genre().isEmpty() || genreIndex(tags.genreNumberOr(fields.genre)) != fields.genre)
        replace({"TCON"}, (version == 4 ? QStringLiteral("%1") : QStringLiteral("(%1)")).arg(fields.genre));
    const QString track = tags.text("TRCK");
    if (trackNumber(track) != fields.track)
        replace({"TRCK"}, trackText(fields.track, track));
    if (tags.comment() != fields.comment) {
        const auto isComment = [&](const Id3v2Frame &frame) { return tags.isComment(frame); };
        const auto old = std::find_if(frames.begin(), frames.end(), isComment);
        const QByteArray language =
            old == frames.end() ? QByteArray("eng") : tags.tag.content(*old)->mid(1, Mp3Tags::LanguageSize);
        replaceFrames(
            frames, isComment,
            fields.comment.isEmpty()
                ? Id3v2Frame()
                : Id3v2Frame{"COMM", 0, Id3v2Text::render(version, language, {{}, fields.comment})});
    }
    return frames;
}

/// A genre that the list hasn't keeps its number, too.
quint8 oldGenre(const Mp3Tags &tags, const TagFields &fields)
{
    const qint16 number = tags.genreNumberOr(fields.genre);
    return static_cast<quint8>(genreIndex(number) == fields.genre ? number : fields.genre);
}

} // namespace

TagFields readMp3Tags(QIODevice &file)
{
    return Mp3Tags(file).fields();
}

TagEdit editMp3Tags(QIODevice &file, const TagFields &fields)
{
    Mp3Tags tags(file);
    if (tags.tag.isDamaged())
        throw RunTimeFailure(RunTimeFailure::DeviceIoError,
                             QStringLiteral("The file's ID3v2 tag is damaged"));
    const QByteArray id3v1 = Id3v1Tag::render(fields, oldGenre(tags, fields));
    const qint64 begin = tags.tag.size();
    const qint64 count = file.size() - tags.id3v1.size() - begin;
    tags.tag.frames = changed(tags, fields);
    const QByteArray id3v2 = tags.tag.render();
    if (id3v1 == tags.id3v1 && id3v2 == bytesAt(file, 0, begin))
        return {};
    return [&file, id3v2, id3v1, begin, count](files::ByteSink &out) {
        writeBytes(id3v2, out);
        copyBytes(file, begin, count, out);
        writeBytes(id3v1, out);
    };
}

} // namespace engines
