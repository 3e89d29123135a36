#pragma once

#include "engines/tagfile/TagEdit.h"

namespace engines {

/// The comments of the Vorbis stream of an Ogg file. Raises a RunTimeFailure where its headers are damaged.
TagFields readOggTags(QIODevice &file);
TagEdit editOggTags(QIODevice &file, const TagFields &fields);

} // namespace engines
