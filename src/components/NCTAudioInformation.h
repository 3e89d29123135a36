#pragma once

#include <QObject>
#include <QString>

/// Tags of audio files, recognition of files, and the genre list. `ReadTags` fills the properties,
/// `WriteTags` puts them into a file; between the calls they keep their values. Which tag formats a file gets
/// is decided here. A file that can't be read or written changes nothing. The number behind each operation is
/// its dispatch id.
class NCTAudioInformation : public QObject
{
    Q_OBJECT

public:
    static constexpr qint16 GenreCount = 148;

    using QObject::QObject;

    virtual void ReadTags(const QString &path) = 0;          // 1
    virtual void WriteTags(const QString &path) = 0;         // 2
    virtual QString GenreName(qint16 index) const = 0;       // 19, index 0 to 147
    virtual QString TagAlbum() const = 0;                    // 21
    virtual void setTagAlbum(const QString &album) = 0;      // 21
    virtual QString TagArtist() const = 0;                   // 22
    virtual void setTagArtist(const QString &artist) = 0;    // 22
    virtual QString TagComment() const = 0;                  // 23
    virtual void setTagComment(const QString &comment) = 0;  // 23
    virtual qint16 TagGenre() const = 0;                     // 25, index into the genre list
    virtual void setTagGenre(qint16 index) = 0;              // 25
    virtual QString TagTitle() const = 0;                    // 26
    virtual void setTagTitle(const QString &title) = 0;      // 26
    virtual qint32 TagYear() const = 0;                      // 27
    virtual void setTagYear(qint32 year) = 0;                // 27
    virtual bool IsMP3File(const QString &path) const = 0;   // 30
    virtual bool IsOGGFile(const QString &path) const = 0;   // 31, Ogg Vorbis alone
    virtual bool IsAudioFile(const QString &path) const = 0; // 37
    virtual void setTagTrack(qint16 track) = 0;              // 57
};
