#pragma once

#include "engines/wma/Streams.h"

#include <array>
#include <cstdint>

namespace wma {

inline constexpr int SmallestBlock = 128;
inline constexpr int MaxFrameSize = 2048;
inline constexpr int MaxHalvings = 4; ///< from the largest frame to the smallest block
inline constexpr int MaxChannels = 2;

/// Bits of the options in a stream's header; above them stands the number of halvings less one, in two bits.
enum Option : std::uint16_t { CodedExponents = 1, BitReservoir = 2, VariableBlocks = 4, AllHalvings = 0x18 };

/// What follows from a stream's rate, channels and bit rate, which decoders go by.
class StreamFormat
{
public:
    /// `bitRate` is the nominal one, in bits per second.
    StreamFormat(int rate, int channels, int bitRate);
    explicit StreamFormat(const StreamKind &kind)
        : StreamFormat(kind.rate, kind.channels, 1000 * kind.bitRate)
    {}

    int rate() const { return m_rate; }
    int channels() const { return m_channels; }
    int bitRate() const { return m_bitRate; }

    int frameSize() const { return m_frameSize; } ///< samples per channel
    int halvings() const { return m_halvings; }   ///< from the frame to the smallest block
    int sizeBits() const { return m_sizeBits; }   ///< of a block's number of halvings
    int runBits() const { return m_runBits; }     ///< of an escaped run
    int blockSize(int halvings) const { return m_frameSize >> halvings; }
    /// From this coefficient on nothing is coded.
    int codedEnd(int halvings) const { return (m_frameSize - 9 * m_frameSize / 100) >> halvings; }

    /// Whether bands of high frequencies may be replaced by noise.
    bool hasNoise() const { return m_noisePart > 0; }
    /// The first coefficient that may belong to such a band; codedEnd where the stream has none.
    int noiseBegin(int halvings) const;

    /// Which of the three pairs of coefficient tables.
    int tablePair() const { return m_tablePair; }

    int framesPerPacket() const { return m_frameSize == MaxFrameSize ? 4 : 8; } ///< on average
    /// What the bit rate allows, less what the file adds to each packet.
    int packetBytes() const;
    /// Of the file's own packets. Each holds a whole number of the stream's.
    int filePacketBytes() const;
    int packetsPerFilePacket() const;
    /// Of the field that says how many bits of a packet belong to a frame begun in the one before.
    int carryBits() const { return m_carryBits; }

    /// What a container keeps for the decoder.
    std::array<std::uint8_t, 10> header(int options = CodedExponents | BitReservoir | VariableBlocks |
                                                      AllHalvings) const;

private:
    double noisePart() const;
    int dueBytes() const;

    int m_rate;
    int m_channels;
    int m_bitRate;
    int m_runBits;
    int m_frameSize;
    int m_halvings;
    int m_sizeBits;
    int m_carryBits;
    int m_tablePair;
    double m_noisePart; ///< of the block, where noise begins; 0 for none
};

} // namespace wma
