#pragma once

#include "engines/tagfile/TagFields.h"

#include <QByteArray>
#include <optional>

namespace engines {

/// The tag of fixed size at the end of a file.
namespace Id3v1Tag {

inline constexpr qsizetype Size = 128;

/// What the tag says, with texts as they stand there, cut. Nothing where the bytes are no such tag.
std::optional<TagFields> parse(const QByteArray &bytes);
/// Texts are cut to their room; one that isn't Latin-1 is left out. `genre` is the number for the genre's
/// place, which may be one that the list hasn't.
QByteArray render(const TagFields &fields, quint8 genre);
/// The number in the genre's place.
quint8 genreOf(const QByteArray &tag);

} // namespace Id3v1Tag

} // namespace engines
