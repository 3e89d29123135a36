#pragma once

#include <QByteArray>

namespace engines {

/// The layer (1 to 3) of the MPEG audio at the start of the bytes, or behind a little of something else; 0
/// where they hold none. `isWhole` says that the bytes reach to the end of the audio, so that a single frame
/// can be believed.
int mpegLayer(const QByteArray &bytes, bool isWhole);

} // namespace engines
