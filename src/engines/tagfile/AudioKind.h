#pragma once

#include <QIODevice>

namespace engines {

enum class AudioKind { NoAudio, Mp3, OggVorbis, OtherAudio };

/// What a file holds, told from its content alone. ID3v2 tags in front of it are passed over.
AudioKind audioKind(QIODevice &file);

/// Bytes of a file from a place on, which may lie beyond its end.
QByteArray bytesAt(QIODevice &file, qint64 place, qint64 count);

/// Bytes of ID3v2 tags at the start of a file, one behind the other, as many as a file may have.
qint64 sizeOfTagsInFront(QIODevice &file);

} // namespace engines
