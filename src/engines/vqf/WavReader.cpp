#include "engines/vqf/WavReader.h"

#include <QtEndian>
#include <algorithm>
#include <cmath>
#include <cstring>

namespace vqf {

namespace {

constexpr int PcmTag = 1;
constexpr int FloatTag = 3;
constexpr int ExtensibleTag = 0xfffe;
constexpr qint64 ChunkHead = 8;

} // namespace

WavReader::WavReader(const QString &path) : m_file(path)
{
    m_isOpen = m_file.open(QIODevice::ReadOnly) && readHeader();
}

/// Goes through the chunks up to the samples.
bool WavReader::readHeader()
{
    const QByteArray riff = m_file.read(12);
    if (!riff.startsWith("RIFF") || riff.mid(8) != "WAVE")
        return false;
    for (;;) {
        const QByteArray head = m_file.read(ChunkHead);
        if (head.size() < ChunkHead)
            return false;
        const qint64 size = qFromLittleEndian<quint32>(head.constData() + 4);
        const qint64 start = m_file.pos();
        if (head.startsWith("data")) {
            // A header that was never completed says too little or too much.
            const qint64 rest = m_file.size() - start;
            const qint64 frameBytes = m_bytesPerSample * m_format.channels;
            m_frames = m_framesLeft = frameBytes > 0 ? std::min(size, rest) / frameBytes : 0;
            return frameBytes > 0;
        }
        if (head.startsWith("fmt ") && !readFormat(m_file.read(std::min<qint64>(size, 64))))
            return false;
        if (!m_file.seek(start + size + size % 2))
            return false;
    }
}

bool WavReader::readFormat(const QByteArray &chunk)
{
    if (chunk.size() < 16)
        return false;
    const auto number = [&chunk](int place) { return qFromLittleEndian<quint16>(chunk.constData() + place); };
    int tag = number(0);
    if (tag == ExtensibleTag && chunk.size() >= 26)
        tag = number(24);
    const int bits = number(14);
    m_format.channels = number(2);
    m_format.rate = static_cast<int>(qFromLittleEndian<quint32>(chunk.constData() + 4));
    m_isFloat = tag == FloatTag;
    m_bytesPerSample = bits / 8;
    const bool pcm = tag == PcmTag && (bits == 8 || bits == 16 || bits == 24 || bits == 32);
    return (pcm || (m_isFloat && bits == 32)) && m_format.channels >= 1 && m_format.channels <= 2 &&
           m_format.rate >= 1000 && m_format.rate <= 384000;
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
