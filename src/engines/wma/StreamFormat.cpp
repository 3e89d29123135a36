#include "engines/wma/StreamFormat.h"

#include <algorithm>
#include <bit>
#include <cmath>

namespace wma {

namespace {

/// What ASF adds to each of its packets, and to each of those in them.
constexpr int FilePacketHead = 30, PacketHead = 17;
/// About what packets of such files have.
constexpr int UsualFilePacket = 3200;

int floorLog2(int value)
{
    return std::bit_width(static_cast<unsigned>(value)) - 1;
}

} // namespace

StreamFormat::StreamFormat(int rate, int channels, int bitRate)
    : m_rate(rate),
      m_channels(channels),
      m_bitRate(bitRate),
      m_runBits(rate <= 16000   ? 9
                : rate <= 22050 ? 10
                                : 11),
      m_frameSize(1 << m_runBits),
      m_halvings(floorLog2(m_frameSize / SmallestBlock)),
      m_sizeBits(floorLog2(m_halvings) + 1),
      m_noisePart(noisePart())
{
    const double bitsPerSample = double(bitRate) / (channels * rate);
    m_carryBits = floorLog2(static_cast<int>(bitsPerSample * m_frameSize / 8 + 0.5)) + 2 + 3;
    const double weighted = channels == 2 ? bitsPerSample * 1.6 : bitsPerSample;
    m_tablePair = rate < 32000 || weighted >= 1.16 ? 2 : weighted >= 0.72 ? 1 : 0;
}

double StreamFormat::noisePart() const
{
    const double bitsPerSample = double(m_bitRate) / (m_channels * m_rate);
    const double weighted = m_channels == 2 ? bitsPerSample * 1.6 : bitsPerSample;
    if (m_rate >= 44100)
        return weighted >= 0.61 ? 0 : 0.4;
    if (m_rate >= 22050)
        return weighted >= 1.16 ? 0 : weighted >= 0.72 ? 0.7 : 0.6;
    if (m_rate >= 16000)
        return bitsPerSample > 0.5 ? 0.5 : 0.3;
    if (m_rate >= 11025)
        return 0.7;
    return bitsPerSample > 0.75 ? 0 : bitsPerSample > 0.625 ? 0.65 : 0.5;
}

int StreamFormat::noiseBegin(int halvings) const
{
    if (!hasNoise())
        return codedEnd(halvings);
    return std::min(codedEnd(halvings), static_cast<int>(m_noisePart * blockSize(halvings) + 0.5));
}

/// Of the file, in the time of a packet.
int StreamFormat::dueBytes() const
{
    return static_cast<int>(std::int64_t(m_bitRate) * m_frameSize * framesPerPacket() / m_rate / 8);
}

int StreamFormat::packetsPerFilePacket() const
{
    return std::max(1, UsualFilePacket / dueBytes());
}

int StreamFormat::packetBytes() const
{
    const int packets = packetsPerFilePacket();
    return dueBytes() - PacketHead - (FilePacketHead + packets - 1) / packets;
}

int StreamFormat::filePacketBytes() const
{
    return packetsPerFilePacket() * (packetBytes() + PacketHead) + FilePacketHead;
}

std::array<std::uint8_t, 10> StreamFormat::header(int options) const
{
    const int samples = m_frameSize * framesPerPacket();
    std::array<std::uint8_t, 10> bytes{};
    for (int n = 0; n < 4; ++n)
        bytes[n] = static_cast<std::uint8_t>(samples >> 8 * n & 0xff);
    bytes[4] = static_cast<std::uint8_t>(options);
    return bytes;
}

} // namespace wma
