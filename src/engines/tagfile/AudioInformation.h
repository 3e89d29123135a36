#pragma once

#include "components/NCTAudioInformation.h"
#include "engines/tagfile/TagFields.h"

namespace engines {

/// Tags of MP3 files (ID3v2.3 and ID3v1) and of Ogg Vorbis files (comments). Everything else that is in a
/// file's tags stays in it.
///
/// A file is changed as a whole: a copy with the new tags is written beside it, read back, and takes its name
/// at the end, so that the old file stays whole whatever happens. A link stays one, and the file that it
/// leads to is changed; of several hard links only the one named is. Reading raises failure 53 where there is
/// no file, 75 where it can't be read or is a pipe, a device or a folder, and 5 where it is no MP3 or Ogg
/// Vorbis file; so does writing, which also raises 70 for a file or folder that is read-only, 61 for a full
/// disk, 57 for a file whose tags are damaged. Any one thread at a time.
class AudioInformation : public NCTAudioInformation
{
public:
    using NCTAudioInformation::NCTAudioInformation;

    void ReadTags(const QString &path) override;
    void WriteTags(const QString &path, TagWriting *watched = nullptr) override;
    QString GenreName(qint16 index) const override;
    QString TagAlbum() const override { return m_fields.album; }
    void setTagAlbum(const QString &album) override { m_fields.album = album; }
    QString TagArtist() const override { return m_fields.artist; }
    void setTagArtist(const QString &artist) override { m_fields.artist = artist; }
    QString TagComment() const override { return m_fields.comment; }
    void setTagComment(const QString &comment) override { m_fields.comment = comment; }
    qint16 TagGenre() const override { return m_fields.genre; }
    void setTagGenre(qint16 index) override { m_fields.genre = index; }
    QString TagTitle() const override { return m_fields.title; }
    void setTagTitle(const QString &title) override { m_fields.title = title; }
    qint32 TagYear() const override { return m_fields.year; }
    void setTagYear(qint32 year) override { m_fields.year = year; }
    bool IsMP3File(const QString &path) const override;
    bool IsOGGFile(const QString &path) const override;
    bool IsAudioFile(const QString &path) const override;
    void setTagTrack(qint16 track) override { m_fields.track = track; }

private:
    TagFields m_fields;
};

} // namespace engines
