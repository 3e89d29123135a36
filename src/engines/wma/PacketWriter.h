#pragma once

#include "engines/dsp/BitWriter.h"
#include "engines/wma/StreamFormat.h"

#include <vector>

namespace wma {

struct Packet
{
    std::vector<std::uint8_t> bytes; ///< the stream's packetBytes
    int frames = 0;                  ///< that decoders put out upon it
};

/// For frames of up to so many bits there is always room. One in which nothing is coded has fewer, however
/// many blocks it has.
inline constexpr int LeastFrameBits = 200;

/// Lays frames into packets of one size, end to end: a frame may begin in one and end in the next. Each
/// packet has a whole frame of its own.
class PacketWriter
{
public:
    explicit PacketWriter(const StreamFormat &format);

    /// Whether the next frame will be the first one that starts in its packet.
    bool startsPacket() const { return m_complete == 0; }
    /// Whether there is room for a frame of so many bits, and then for `behind` more of LeastFrameBits.
    bool takes(std::int64_t bits, std::size_t behind) const;
    /// Bits of a packet for frames.
    int capacity() const { return m_capacity; }

    /// Bits of the packet that the next frame begins in.
    int left() const { return m_capacity - static_cast<int>(m_content.bits()); }
    /// Bits laid into all packets so far, with what was left empty.
    std::int64_t position() const { return m_closed * m_capacity + m_content.bits(); }

    /// A frame for which there is room.
    void add(dsp::BitWriter frame);
    /// To be called before the stream's last frame, which can't run over into another packet.
    void makeRoomForLast();
    /// Whether the rest of the packet may be left empty, for another frame is whole in it.
    bool canPad() const { return m_complete >= 2; }
    void pad();
    /// Behind the last frame.
    void finish();

    /// Takes the packets that are complete.
    std::vector<Packet> take();

private:
    int room() const;
    void close(int wholeFrames, bool keepsRest, int carried);

    const int m_packetBytes;
    const int m_carryBits;
    const int m_capacity;
    dsp::BitWriter m_content;  ///< of the packet that isn't full yet
    int m_carried = 0;         ///< bits of it that belong to a frame begun in the one before
    int m_complete = 0;        ///< frames that are whole in it
    bool m_hasRest = false;    ///< the packet before ends with a frame that is put out upon this one
    std::int64_t m_closed = 0; ///< packets
    std::vector<Packet> m_packets;
};

} // namespace wma
