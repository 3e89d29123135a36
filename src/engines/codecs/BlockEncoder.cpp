#include "engines/codecs/BlockEncoder.h"

#include <algorithm>

namespace codecs {

BlockEncoder::BlockEncoder(int channels, int blockFrames) : m_channels(channels), m_blockFrames(blockFrames)
{
    m_begun.reserve(static_cast<std::size_t>(channels) * static_cast<std::size_t>(blockFrames));
}

void BlockEncoder::encode(const qint16 *samples, qsizetype frames)
{
    const qsizetype blockValues = qsizetype(m_blockFrames) * m_channels;
    for (qsizetype left = frames * m_channels; left > 0;) {
        qsizetype taken = blockValues;
        if (m_begun.empty() && left >= blockValues) {
            encodeBlock(samples, m_blockFrames);
        } else {
            taken = std::min(left, blockValues - qsizetype(m_begun.size()));
            m_begun.insert(m_begun.end(), samples, samples + taken);
            if (qsizetype(m_begun.size()) == blockValues) {
                encodeBlock(m_begun.data(), m_blockFrames);
                m_begun.clear();
            }
        }
        samples += taken;
        left -= taken;
    }
}

void BlockEncoder::finish()
{
    if (!m_begun.empty())
        encodeBlock(m_begun.data(), static_cast<int>(m_begun.size()) / m_channels);
    m_begun.clear();
    complete();
}

} // namespace codecs
