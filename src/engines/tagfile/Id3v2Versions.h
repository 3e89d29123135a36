#pragma once

#include "engines/tagfile/Id3v2Frames.h"

namespace engines {

/// How the data of a frame are put away.
namespace Id3v2Flags23 {
enum : quint16 { Compressed = 0x80, Encrypted = 0x40, Grouped = 0x20 };
}
namespace Id3v2Flags24 {
enum : quint16 {
    Grouped = 0x40,
    Compressed = 0x08,
    Encrypted = 0x04,
    Unsynchronised = 0x02,
    HasLength = 0x01
};
}

/// Without the zero bytes that unsynchronisation puts behind each 0xff; as they are where they hold what it
/// wouldn't have left: such data only bear its mark.
QByteArray withoutUnsynchronisation(const QByteArray &data);

/// A frame of version 2.2, which has an id of three characters, or one of these in a tag of 2.3, in the form
/// of version 2.3. Others come back as they are.
Id3v2Frame withLongId(const Id3v2Frame &frame);

/// The frames of a tag of version 2.3 in the form of 2.4: the parts of a date in one frame, sizes and flags
/// as they are there. What 2.4 has no form for stays under its own id.
QList<Id3v2Frame> toVersion24(const QList<Id3v2Frame> &frames);

} // namespace engines
