#pragma once

#include "engines/codecs/Encoder.h"

#include <QString>

namespace audiofile {

/// Decodes a file that was made of so many frames, as a reader would later. Failure 57 unless it is whole and
/// as long as they are. Any thread.
void checkReadBack(const QString &path, const codecs::PcmFormat &input, qint64 frames);

} // namespace audiofile
