#pragma once

#include "engines/tagfile/Id3v2Tag.h"

namespace engines {

/// Without the zero bytes that unsynchronisation puts behind each 0xff.
QByteArray withoutUnsynchronisation(const QByteArray &data);

/// A frame of version 2.2, which has an id of three characters, as frames of version 2.3.
QList<Id3v2Frame> fromVersion22(const QByteArray &id, const QByteArray &data);
/// A frame of version 2.4 as frames of version 2.3: texts in the encodings that 2.3 knows, a time as year,
/// date and time of day. What 2.3 has no form for stays under its own id.
QList<Id3v2Frame> fromVersion24(const Id3v2Frame &frame);

} // namespace engines
