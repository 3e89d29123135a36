#pragma once

#include "engines/vqf/Reconstruction.h"

#include <utility>

namespace vqf {

/// The levels that the bands of a frame's blocks should get, and what missing them costs.
struct EnvelopeTarget
{
    struct Band
    {
        float level = 0;     ///< of the codebook entries' factor, gain times envelope
        float ratioCost = 0; ///< of the squared logarithm of the ratio to that level
        float errorCost = 0; ///< of the squared distance to that level
        float least = 0;     ///< the level that the largest coefficient needs
        float leastCost = 0; ///< of the squared logarithm of the ratio to a lower one
    };
    std::array<std::array<Band, MaxBands>, MaxBlocks> bands;
};

/// An envelope as the fields can say it.
struct CodedEnvelope
{
    std::array<std::array<float, MaxBands>, MaxBlocks> levels;
    double cost = 0;
};

/// Finds the gains and envelope indices of one channel's frame. Any one thread at a time.
class EnvelopeCoder
{
public:
    explicit EnvelopeCoder(const Tables &tables);

    /// Sets the gain fields and envelope indices of `fields`. `history` says what the decoder remembers, and
    /// `useHistory` whether every decoder does.
    CodedEnvelope fit(BlockType type, const EnvelopeTarget &target, const ChannelHistory &history,
                      bool useHistory, ChannelFields &fields) const;
    /// The envelope of fields already set.
    CodedEnvelope levels(BlockType type, const ChannelHistory &history, const ChannelFields &fields) const;

private:
    struct BlockFit;
    using Levels = std::array<float, MaxBands>;

    void fitBlock(BlockType type, const std::array<EnvelopeTarget::Band, MaxBands> &bands,
                  const std::vector<std::pair<int, float>> &gains, const Levels *last, BlockFit &best) const;

    const Tables &m_tables;
};

} // namespace vqf
