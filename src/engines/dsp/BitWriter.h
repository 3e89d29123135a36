#pragma once

#include <cstdint>
#include <vector>

namespace dsp {

/// A string of bits, the most significant bit of a byte first.
class BitWriter
{
public:
    void put(unsigned value, int bits);

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

} // namespace dsp
