#pragma once

#include "engines/tagfile/Id3v2Frames.h"

namespace engines {

/// The ID3v2 tags at the start of a file as a list of frames. Every frame survives a change byte by byte:
/// those that nobody knows, those that are compressed or encrypted. A tag keeps its version, 2.3 or 2.4, so
/// that several values of a text, dates and frames inside frames stay as they are; one of version 2.2, which
/// has another form of frames, becomes one of 2.3.
class Id3v2Tag
{
public:
    static constexpr int MostTags = 64; ///< one behind the other; an honest file has one or two

    /// Bytes of the tag that begins with this header of ten bytes; 0 where none does.
    static qint64 sizeOf(const QByteArray &header);

    /// A tag without frames, of version 2.3.
    Id3v2Tag() = default;
    /// All tags at the start of the bytes, one behind the other. Tags of different versions become one
    /// of 2.4.
    explicit Id3v2Tag(const QByteArray &bytes);

    /// 3 or 4: the form of the frames, and the version that is written.
    int version() const { return m_version; }
    /// Bytes that the tags take; what follows is audio.
    qint64 size() const { return m_size; }
    /// Whether something in the tag can't be understood. The frames are those before that place, and the tag
    /// must not be written.
    bool isDamaged() const { return m_damaged; }

    QList<Id3v2Frame> frames;

    /// What a frame holds, without unsynchronisation and what its flags put in front; nothing where it is
    /// compressed or encrypted.
    std::optional<QByteArray> content(const Id3v2Frame &frame) const;

    /// The tag, of the same size as the tags read where that is enough; nothing where there is no frame.
    /// Failure 6 where the frames are too many for a tag.
    QByteArray render() const;

private:
    struct Part
    {
        int version = 3;
        bool unsynchronised = false; ///< by the tag's header, with the frames left as they are
        QList<Id3v2Frame> frames;
    };

    Part readPart(const QByteArray &bytes);
    void join(QList<Part> &parts);

    int m_version = 3;
    bool m_unsynchronised = false;
    qint64 m_size = 0;
    bool m_damaged = false;
};

} // namespace engines
