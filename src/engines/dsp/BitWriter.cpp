#include "engines/dsp/BitWriter.h"

#include <utility>

namespace dsp {

void BitWriter::put(unsigned value, int bits)
{
    m_pending = m_pending << bits | value;
    m_pendingBits += bits;
    m_bits += bits;
    for (; m_pendingBits >= 8; m_pendingBits -= 8)
        m_bytes.push_back(static_cast<std::uint8_t>(m_pending >> (m_pendingBits - 8)));
    m_pending &= 0xff;
}

std::vector<std::uint8_t> BitWriter::takeBytes()
{
    return std::exchange(m_bytes, {});
}

std::vector<std::uint8_t> BitWriter::takeAll()
{
    if (m_pendingBits > 0)
        put(0, 8 - m_pendingBits);
    return takeBytes();
}

} // namespace dsp
