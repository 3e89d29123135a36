#pragma once

#include "engines/tagfile/TagEdit.h"

namespace engines {

/// The ID3v2 and ID3v1 tags of an MP3 file; where a field is missing in the one it is taken from the other.
TagFields readMp3Tags(QIODevice &file);
/// Both tags with the fields. Raises a RunTimeFailure where the ID3v2 tag is damaged.
TagEdit editMp3Tags(QIODevice &file, const TagFields &fields);

} // namespace engines
