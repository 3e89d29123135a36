#include "engines/wma/PacketWriter.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

namespace wma {

namespace {

constexpr int CounterBits = 4;
constexpr int FrameCountBits = 4;
constexpr int MostFrames = 14; ///< so that one more can be told of

/// A part of a string of bits, whose first byte is the first one of `bytes`.
void append(dsp::BitWriter &to, const std::vector<std::uint8_t> &bytes, std::int64_t begin, std::int64_t end)
{
    while (begin < end) {
        const int used = static_cast<int>(begin % 8);
        const int count = static_cast<int>(std::min<std::int64_t>(8 - used, end - begin));
        const unsigned byte = bytes[static_cast<std::size_t>(begin / 8)];
        to.put(byte >> (8 - used - count) & ((1U << count) - 1), count);
        begin += count;
    }
}

} // namespace

PacketWriter::PacketWriter(const StreamFormat &format)
    : m_packetBytes(format.packetBytes()),
      m_carryBits(format.carryBits()),
      m_capacity(8 * m_packetBytes - CounterBits - FrameCountBits - m_carryBits)
{}

/// The most bits that a frame may have, if it isn't the last one.
int PacketWriter::room() const
{
    // A packet of only the end of a frame is one that decoders get wrong.
    return m_complete == 0 ? left() : left() + std::min(m_capacity / 2, (1 << m_carryBits) - 1);
}

/// There is room for some more wherever a frame ends: the first one of a packet has half of it at least, and
/// the others may run over. Only the last one may not; so it begins another packet if it has to. That the one
/// before has to allow.
bool PacketWriter::takes(std::int64_t bits, std::size_t behind) const
{
    if (behind == 0)
        return bits <= left();
    const bool lastLacksRoom = behind == 1 && bits < left() && bits > left() - LeastFrameBits;
    const bool canPadThen = m_complete >= 1;
    return bits <= room() && (canPadThen || !lastLacksRoom);
}

void PacketWriter::makeRoomForLast()
{
    if (left() < LeastFrameBits && canPad())
        pad();
}

void PacketWriter::add(dsp::BitWriter frame)
{
    const std::int64_t bits = frame.bits();
    if (bits > room())
        throw std::logic_error("No room for a WMA frame");
    const std::vector<std::uint8_t> bytes = frame.takeAll();
    const std::int64_t fitting = std::min<std::int64_t>(bits, left());
    append(m_content, bytes, 0, fitting);
    if (fitting == bits)
        ++m_complete;
    if (m_content.bits() == m_capacity) {
        close(m_complete, fitting < bits, static_cast<int>(bits - fitting));
        append(m_content, bytes, fitting, bits);
    } else if (m_complete == MostFrames) {
        pad();
    }
}

/// Decoders keep what lies behind the frames that the packet tells of and take the next frame from it.
void PacketWriter::pad()
{
    close(m_complete - 1, true, 0);
}

void PacketWriter::finish()
{
    if (m_complete > 0)
        close(m_complete, false, 0);
}

std::vector<Packet> PacketWriter::take()
{
    return std::exchange(m_packets, {});
}

void PacketWriter::close(int wholeFrames, bool keepsRest, int carried)
{
    dsp::BitWriter packet;
    packet.put(static_cast<unsigned>(m_closed++ % 16), CounterBits);
    packet.put(static_cast<unsigned>(wholeFrames + 1), FrameCountBits);
    packet.put(static_cast<unsigned>(m_carried), m_carryBits);
    const std::int64_t bits = m_content.bits();
    append(packet, m_content.takeAll(), 0, bits);
    Packet done{packet.takeAll(), wholeFrames + (m_hasRest ? 1 : 0)};
    done.bytes.resize(static_cast<std::size_t>(m_packetBytes));
    m_packets.push_back(std::move(done));
    m_content = {};
    m_carried = carried;
    m_complete = 0;
    m_hasRest = keepsRest;
}

} // namespace wma
