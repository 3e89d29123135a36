#include "engines/vqf/WavReader.h"

#include "base/RunTimeFailure.h"
#include "engines/common/WaveSound.h"

#include <QtEndian>
#include <algorithm>
#include <cmath>

namespace vqf {

WavReader::WavReader(const QString &path) : m_file(path)
{
    try {
        m_isOpen = m_file.open(QIODevice::ReadOnly) && readHeader();
    } catch (const RunTimeFailure &) { // no WAVE file
    }
}

bool WavReader::readHeader()
{
    const engines::WaveSound sound = engines::findWaveSound(m_file);
    const bool pcm = sound.coding == engines::WaveSound::Pcm &&
                     (sound.bits == 8 || sound.bits == 16 || sound.bits == 24 || sound.bits == 32);
    m_isFloat = sound.coding == engines::WaveSound::Float && sound.bits == 32;
    if (!(pcm || m_isFloat) || sound.channels < 1 || sound.channels > 2 || sound.rate < 1000 ||
        sound.rate > 384000)
        return false;
    m_format.channels = sound.channels;
    m_format.rate = static_cast<int>(sound.rate);
    m_bytesPerSample = sound.bits / 8;
    m_frames = m_framesLeft = sound.size / (m_bytesPerSample * m_format.channels);
    return m_file.seek(sound.start);
}

qint16 WavReader::sample(const char *bytes) const
{
    if (m_isFloat) {
        const float value = qFromLittleEndian<float>(bytes);
        return static_cast<qint16>(std::lround(std::clamp(value * 32768.0F, -32768.0F, 32767.0F)));
    }
    if (m_bytesPerSample == 1)
        return static_cast<qint16>((static_cast<quint8>(*bytes) - 128) * 256);
    return qFromLittleEndian<qint16>(bytes + m_bytesPerSample - 2); // the upper 16 bits
}

const std::vector<qint16> &WavReader::read(qint64 frames)
{
    const qint64 frameBytes = m_bytesPerSample * m_format.channels;
    const QByteArray bytes = m_file.read(std::min(frames, m_framesLeft) * frameBytes);
    const qint64 got = bytes.size() / frameBytes;
    m_framesLeft -= got;
    m_samples.resize(static_cast<std::size_t>(got * m_format.channels));
    for (std::size_t n = 0; n < m_samples.size(); ++n)
        m_samples[n] = sample(bytes.constData() + n * static_cast<std::size_t>(m_bytesPerSample));
    return m_samples;
}

} // namespace vqf
