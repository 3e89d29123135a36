#pragma once

#include "engines/vqf/Format.h"

#include <cstdint>
#include <vector>

namespace vqf {

/// An entry of each of two codebooks with their signs, as the file writes them: bit 6 is the sign.
struct PairIndex
{
    std::uint8_t first = 0;
    std::uint8_t second = 0;
};

constexpr int entryOf(std::uint8_t index)
{
    return index & 63;
}

constexpr bool isNegative(std::uint8_t index)
{
    return index & 64;
}

/// The fields of a frame that belong to one channel.
struct ChannelFields
{
    std::array<std::array<std::uint8_t, MaxBarkIndices>, MaxBlocks> bark{};
    std::array<bool, MaxBlocks> barkHistory{};
    std::uint8_t gain = 0;                           ///< 8 bits
    std::array<std::uint8_t, MaxBlocks> blockGain{}; ///< 5 bits; not of long frames
    std::uint8_t lspPredictor = 0;
    std::uint8_t lspFirst = 0;
    std::array<std::uint8_t, LspSplits> lspSecond{};
    std::uint16_t period = 0;  ///< 9 bits; this and the next of long frames only
    std::uint8_t peakGain = 0; ///< 7 bits
};

struct Frame
{
    int window = 0; ///< index into WindowShapes
    std::array<PairIndex, MaxVectors> main{};
    std::array<PairIndex, PeakVectors> peaks{};
    std::array<ChannelFields, Channels> channel{};

    BlockType type() const { return WindowShapes[window].type; }
};

/// A string of bits, the most significant bit of a byte first.
class BitWriter
{
public:
    void put(unsigned value, int bits);
    void put(const Frame &frame);

    std::int64_t bits() const { return m_bits; }
    /// Takes the whole bytes written so far; an incomplete one stays.
    std::vector<std::uint8_t> takeBytes();
    /// The same with the last byte filled up by zeros.
    std::vector<std::uint8_t> takeAll();

private:
    std::vector<std::uint8_t> m_bytes;
    std::uint64_t m_pending = 0;
    int m_pendingBits = 0;
    std::int64_t m_bits = 0;
};

/// A frame as a decoder takes it: the number of bits to skip (none) in a byte of its own, then the frame.
std::vector<std::uint8_t> packetOf(const Frame &frame);

} // namespace vqf
