#pragma once

#include <QIODevice>
#include <optional>

namespace audiofile {

/// The length, in frames, of an Ogg file whose sound lies in a single page; nothing for any other file. The
/// file begins at its current place, which is kept.
std::optional<qint64> lengthInOnlyPage(QIODevice &file);

} // namespace audiofile
