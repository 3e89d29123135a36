#pragma once

#include <QtGlobal>
#include <optional>

struct AVIOContext;

namespace audiofile {

/// The length, in frames, of an Ogg file whose sound lies in a single page; nothing for any other file. The
/// place of the input is kept.
std::optional<qint64> lengthInOnlyPage(AVIOContext *input);

} // namespace audiofile
