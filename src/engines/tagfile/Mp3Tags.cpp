#include "engines/tagfile/Mp3Tags.h"

#include "base/RunTimeFailure.h"
#include "engines/tagfile/AudioKind.h"
#include "engines/tagfile/GenreNames.h"
#include "engines/tagfile/Id3v2Tag.h"
#include "engines/tagfile/Id3v2Text.h"

#include <QBuffer>
#include <algorithm>
#include <commentsframe.h>
#include <id3v1tag.h>
#include <id3v2framefactory.h>
#include <id3v2tag.h>
#include <mpegfile.h>
#include <tbytevectorstream.h>
#include <textidentificationframe.h>

namespace engines {

namespace {

constexpr qint64 Id3v1Size = 128;
constexpr unsigned int NoGenre = 255;
constexpr qsizetype LargestField = 1 << 20; ///< of a frame that can be one of our fields

TagLib::ByteVector bytesOf(const QByteArray &bytes)
{
    return {bytes.constData(), static_cast<unsigned int>(bytes.size())};
}

QByteArray bytesOf(const TagLib::ByteVector &bytes)
{
    return {bytes.data(), static_cast<qsizetype>(bytes.size())};
}

/// TagLib holds UTF-16 units, each in a wide character.
QString textOf(const TagLib::String &text)
{
    QString result;
    for (const wchar_t unit : text)
        result.append(QChar(static_cast<char16_t>(unit)));
    return result;
}

TagLib::String textOf(const QString &text)
{
    return {text.toUtf8().constData(), TagLib::String::UTF8};
}

bool isPlain(const Id3v2Frame &frame)
{
    return (frame.flags & 0xff) == 0;
}

/// A comment without a description is the comment; others are notes of some program.
bool isComment(const Id3v2Frame &frame)
{
    if (frame.id != "COMM" || !isPlain(frame))
        return false;
    Id3v2Text::Reader reader(frame.data);
    reader.bytes(3); // the language
    return reader.text().isEmpty();
}

bool isField(const Id3v2Frame &frame)
{
    static const QList<QByteArray> ids{"TIT2", "TPE1", "TALB", "TYER", "TDRC", "TCON", "TRCK"};
    return isPlain(frame) && frame.data.size() <= LargestField &&
           (ids.contains(frame.id) || isComment(frame));
}

/// A file of the two tags alone. TagLib is shown nothing but the frames of our fields, uncompressed, so that
/// no other frame can make it work or take memory.
TagLib::ByteVector tagsAlone(const Id3v2Tag &tag, const QByteArray &id3v1)
{
    Id3v2Tag fieldsOnly;
    std::copy_if(tag.frames.begin(), tag.frames.end(), std::back_inserter(fieldsOnly.frames), isField);
    return bytesOf(fieldsOnly.frames.isEmpty() ? id3v1 : fieldsOnly.render() + id3v1);
}

QByteArray readId3v1(QIODevice &file)
{
    const QByteArray bytes = bytesAt(file, std::max<qint64>(0, file.size() - Id3v1Size), Id3v1Size);
    return bytes.size() == Id3v1Size && bytes.startsWith("TAG") ? bytes : QByteArray();
}

/// An MP3 file's tags as they stand.
class Mp3Tags
{
public:
    explicit Mp3Tags(QIODevice &file)
        : tag(file),
          id3v1(readId3v1(file)),
          m_bytes(tagsAlone(tag, id3v1)),
          m_stream(m_bytes),
          m_file(&m_stream, TagLib::ID3v2::FrameFactory::instance(), false)
    {}

    /// The text of a frame; empty where there is none.
    QString text(const char *id)
    {
        const TagLib::ID3v2::FrameList &frames = m_file.ID3v2Tag(true)->frameList(id);
        return frames.isEmpty() ? QString() : textOf(frames.front()->toString());
    }

    /// The first of the genres.
    QString genreText()
    {
        const TagLib::ID3v2::FrameList &frames = m_file.ID3v2Tag(true)->frameList("TCON");
        const auto *genres = frames.isEmpty()
                                 ? nullptr
                                 : dynamic_cast<TagLib::ID3v2::TextIdentificationFrame *>(frames.front());
        return genres && !genres->fieldList().isEmpty() ? textOf(genres->fieldList().front()) : QString();
    }

    TagFields fields()
    {
        const TagLib::ID3v1::Tag &old = *m_file.ID3v1Tag(true);
        const auto either = [](const QString &text, const TagLib::String &oldText) {
            return text.isEmpty() ? textOf(oldText) : text;
        };
        TagFields fields{.title = either(text("TIT2"), old.title()),
                         .artist = either(text("TPE1"), old.artist()),
                         .album = either(text("TALB"), old.album()),
                         .comment = either(text("COMM"), old.comment()),
                         .year = leadingNumber(either(text("TDRC"), TagLib::String::number(old.year())), 4),
                         .track = trackNumber(either(text("TRCK"), TagLib::String::number(old.track())))};
        const QString genre = genreText();
        if (!genre.isEmpty())
            fields.genre = genreNumber(genre).value_or(TagFields::OtherGenre);
        else if (old.genreNumber() != NoGenre)
            fields.genre = static_cast<qint16>(old.genreNumber());
        return fields;
    }

    Id3v2Tag tag;
    QByteArray id3v1; ///< empty where there is none

private:
    TagLib::ByteVector m_bytes;
    TagLib::ByteVectorStream m_stream;
    TagLib::MPEG::File m_file;
};

/// A frame of TagLib's making in the form of version 2.3.
Id3v2Frame rendered(TagLib::ID3v2::Frame *frame)
{
    TagLib::ID3v2::Tag tag;
    tag.addFrame(frame); // is owned by the tag now
    QByteArray bytes = bytesOf(tag.render(TagLib::ID3v2::v3));
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::ReadOnly);
    return Id3v2Tag(buffer).frames.value(0);
}

Id3v2Frame textFrame(const char *id, const QString &text)
{
    auto *frame = new TagLib::ID3v2::TextIdentificationFrame(id, TagLib::String::Latin1);
    frame->setText(textOf(text));
    return rendered(frame);
}

Id3v2Frame commentFrame(const QString &text, const QByteArray &language)
{
    auto *frame = new TagLib::ID3v2::CommentsFrame(TagLib::String::Latin1);
    frame->setLanguage(bytesOf(language));
    frame->setText(textOf(text));
    return rendered(frame);
}

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

void replaceText(QList<Id3v2Frame> &frames, const QList<QByteArray> &ids, const QString &text)
{
    replaceFrames(
        frames, [&](const Id3v2Frame &frame) { return ids.contains(frame.id); },
        text.isEmpty() ? Id3v2Frame() : textFrame(ids.first().constData(), text));
}

/// The frames with the fields. One that says the same already stays in the form it has.
QList<Id3v2Frame> changed(Mp3Tags &tags, const TagFields &fields)
{
    QList<Id3v2Frame> frames = tags.tag.frames;
    const auto text = [&](const char *id, const QString &value) {
        if (tags.text(id) != value)
            replaceText(frames, {id}, value);
    };
    text("TIT2", fields.title);
    text("TPE1", fields.artist);
    text("TALB", fields.album);
    if (leadingNumber(tags.text("TDRC"), 4) != fields.year)
        replaceText(frames, {"TYER", "TDRC"}, yearText(fields.year));
    const QString genre = tags.genreText();
    if (genre.isEmpty() || genreNumber(genre).value_or(TagFields::OtherGenre) != fields.genre)
        replaceText(frames, {"TCON"}, QString::number(fields.genre));
    if (trackNumber(tags.text("TRCK")) != fields.track)
        replaceText(frames, {"TRCK"}, trackText(fields.track, tags.text("TRCK")));
    if (tags.text("COMM") != fields.comment) {
        const auto old = std::find_if(frames.begin(), frames.end(), isComment);
        const QByteArray language = old == frames.end() ? QByteArray("eng") : old->data.mid(1, 3);
        replaceFrames(frames, isComment,
                      fields.comment.isEmpty() ? Id3v2Frame() : commentFrame(fields.comment, language));
    }
    return frames;
}

QByteArray renderId3v1(const TagFields &fields)
{
    TagLib::ID3v1::Tag tag;
    tag.setTitle(textOf(fields.title));
    tag.setArtist(textOf(fields.artist));
    tag.setAlbum(textOf(fields.album));
    tag.setComment(textOf(fields.comment));
    tag.setYear(static_cast<unsigned int>(fields.year));
    tag.setGenreNumber(static_cast<unsigned int>(fields.genre));
    tag.setTrack(fields.track > 255 ? 0 : static_cast<unsigned int>(fields.track));
    return bytesOf(tag.render());
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
    const QList<Id3v2Frame> frames = changed(tags, fields);
    const QByteArray id3v1 = renderId3v1(fields);
    const qint64 begin = tags.tag.size();
    const qint64 count = file.size() - tags.id3v1.size() - begin;
    tags.tag.frames = frames;
    const QByteArray id3v2 = tags.tag.render();
    if (id3v1 == tags.id3v1 && id3v2 == bytesAt(file, 0, begin))
        return {};
    return [&file, id3v2, id3v1, begin, count](ByteSink &out) {
        writeBytes(id3v2, out);
        copyBytes(file, begin, count, out);
        writeBytes(id3v1, out);
    };
}

} // namespace engines
