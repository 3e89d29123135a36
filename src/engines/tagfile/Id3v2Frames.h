#pragma once

#include <QByteArray>
#include <QList>
#include <optional>

namespace engines {

/// A frame of an ID3v2 tag, in the form of the tag's version.
struct Id3v2Frame
{
    QByteArray id;     ///< four characters
    quint16 flags = 0; ///< as in the frame's header
    QByteArray data;   ///< all behind the header, which may begin with what the flags announce
};

/// Four bytes of seven bits each; nothing where one has its eighth.
std::optional<quint32> synchsafeNumber(const char *bytes);
void appendSynchsafe(QByteArray &bytes, quint32 number);

/// Frames of version 2, 3 or 4, one behind the other up to padding or to the end. Those of version 2 come in
/// the form of version 3.
struct Id3v2Frames
{
    static Id3v2Frames parse(const QByteArray &bytes, int version);

    QList<Id3v2Frame> frames;
    bool damaged = false; ///< something can't be understood; the frames are those before that place
};

/// The bytes of frames of version 3 or 4. One without data is left out, since readers stop at it.
QByteArray bytesOfFrames(const QList<Id3v2Frame> &frames, int version);

} // namespace engines
