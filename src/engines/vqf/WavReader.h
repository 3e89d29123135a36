#pragma once

#include "engines/codecs/Encoder.h"

#include <QFile>
#include <vector>

namespace vqf {

/// The sound of a WAV file, as it comes: linear PCM of 8, 16, 24 or 32 bits or floating point of 32, one or
/// two channels. One thread at a time.
class WavReader
{
public:
    explicit WavReader(const QString &path);

    /// False where the file can't be read or holds something else.
    bool isOpen() const { return m_isOpen; }
    const codecs::PcmFormat &format() const { return m_format; }
    /// By its header, or what the file really holds of it.
    qint64 frames() const { return m_frames; }
    /// At most `frames` frames from the current place on, in 16 bits; empty at the end.
    const std::vector<qint16> &read(qint64 frames);

private:
    bool readHeader();
    qint16 sample(const char *bytes) const;

    QFile m_file;
    codecs::PcmFormat m_format;
    bool m_isOpen = false;
    int m_bytesPerSample = 0;
    bool m_isFloat = false;
    qint64 m_frames = 0;
    qint64 m_framesLeft = 0;
    std::vector<qint16> m_samples;
};

} // namespace vqf
