#pragma once

#include "engines/codecs/Encoder.h"

#include <vector>

namespace codecs {

/// An encoder that gets its samples in blocks of one size, whatever amounts its caller gives. Several of the
/// libraries look at how much they were handed at a time; so the bytes don't depend on the caller.
class BlockEncoder : public Encoder
{
public:
    void encode(const qint16 *samples, qsizetype frames) final;
    void finish() final;

protected:
    BlockEncoder(int channels, int blockFrames);

    /// All blocks are full ones but the last, which holds at least one frame.
    virtual void encodeBlock(const qint16 *samples, int frames) = 0;
    /// Behind the last block.
    virtual void complete() = 0;

private:
    const int m_channels;
    const int m_blockFrames;
    std::vector<qint16> m_begun; ///< the samples of a block that isn't full yet
};

} // namespace codecs
