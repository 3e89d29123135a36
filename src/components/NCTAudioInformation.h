#pragma once

#include <QObject>
#include <QString>
#include <atomic>
#include <stop_token>

/// What the thread that writes a file's tags and the one that waits for it tell each other.
struct TagWriting
{
    std::stop_token stop;             ///< asked for: TaskCancelled is thrown, and the file stays as it was
    std::atomic<qint64> written = 0;  ///< bytes of the file
    std::atomic<qint64> expected = 0; ///< of them all
};

/// Tags of audio files, recognition of files, and the genre list. `ReadTags` fills the properties,
/// `WriteTags` puts them into a file; between the calls they keep their values. Which tag formats a file gets
/// is decided here. A file that can't be read or written changes nothing. A writing
/// may run in any thread while nobody else uses the component. The number behind each operation is
/// its dispatch id.
class NCTAudioInformation : public QObject
{
    Q_OBJECT

public:
    static constexpr qint16 GenreCount = 148;

    using QObject::QObject;

    virtual void ReadTags(const QString &path) = 0;                                 // 1
    virtual void WriteTags(const QString &path, TagWriting *watched = nullptr) = 0; // 2
    virtual QString GenreName(qint16 index) const = 0;                              // 19, index 0 to 147
    virtual QString TagAlbum() const = 0;                                           // 21
    virtual void setTagAlbum(const QString &album) = 0;                             // 21
    virtual QString TagArtist() const = 0;                                          // 22
    virtual void setTagArtist(const QString &artist) = 0;                           // 22
    virtual QString TagComment() const = 0;                                         // 23
    virtual void setTagComment(const QString &comment) = 0;                         // 23
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
