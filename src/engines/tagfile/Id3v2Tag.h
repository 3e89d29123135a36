#pragma once

#include <QByteArray>
#include <QIODevice>
#include <QList>

namespace engines {

/// A frame in the form of ID3v2.3.
struct Id3v2Frame
{
    QByteArray id;     ///< four characters
    quint16 flags = 0; ///< as in the frame's header
    QByteArray data;   ///< all behind the header, which may begin with what the flags announce
};

/// The ID3v2 tags at the start of a file as a list of frames. The container is handled here and not by
/// TagLib, since every frame has to survive a change byte by byte: those that nobody knows, those that TagLib
/// drops on the way from one version to another, and those that are compressed or encrypted. Tags of version
/// 2.2 and 2.4 are brought to 2.3 on reading.
class Id3v2Tag
{
public:
    /// Bytes of the tag that begins at the place, by its header alone; 0 where none does. May reach beyond
    /// the end of the file.
    static qint64 sizeAt(QIODevice &file, qint64 place);

    Id3v2Tag() = default;
    /// All tags at the start of the file, one behind the other. Memory is bounded by the file's size.
    explicit Id3v2Tag(QIODevice &file);

    /// Bytes that the tags take in the file; what follows is audio.
    qint64 size() const { return m_size; }
    /// Whether something in the tag can't be understood. The frames are those before that place, and the tag
    /// must not be written.
    bool isDamaged() const { return m_damaged; }

    QList<Id3v2Frame> frames;

    /// A tag of version 2.3, of the same size as the tags read where that is enough; nothing where there is
    /// no frame. Failure 6 where the frames are too many for a tag.
    QByteArray render() const;

private:
    bool readNext(QIODevice &file);
    void readFrames(const QByteArray &body, int version);

    qint64 m_size = 0;
    bool m_damaged = false;
};

} // namespace engines
