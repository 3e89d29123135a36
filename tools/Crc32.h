#pragma once

#include <cstdint>

/// The usual checksum, for tables whose right values are known.
class Crc32
{
public:
    /// The value's bytes, the least significant first.
    template <typename Integer>
    void add(Integer value)
    {
        for (unsigned shift = 0; shift < 8 * sizeof value; shift += 8)
            addByte(static_cast<std::uint8_t>(static_cast<std::uint64_t>(value) >> shift));
    }
    std::uint32_t value() const { return ~m_value; }

private:
    void addByte(std::uint32_t byte)
    {
        m_value ^= byte;
        for (int bit = 0; bit < 8; ++bit)
            m_value = m_value >> 1 ^ (m_value & 1 ? 0xedb88320U : 0);
    }

    std::uint32_t m_value = 0xffffffffU;
};
