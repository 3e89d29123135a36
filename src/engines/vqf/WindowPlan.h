#pragma once

#include "engines/dsp/AttackDetector.h"
#include "engines/vqf/Format.h"

namespace vqf {

/// The block type that a frame gets instead of the wanted one so that the succession is legal: a single long
/// frame may not stand between others, nor a single medium one between short ones. Frames are settled in
/// order; `next` is what the frame behind wants.
BlockType legalType(BlockType before, BlockType wanted, BlockType next);

/// The window code of a frame from its type and those around it.
int windowCode(BlockType before, BlockType type, BlockType behind);

/// Chooses the windows, looking ahead: sounds that set in suddenly want short blocks, so that noise doesn't
/// come before them.
class WindowPlan
{
public:
    WindowPlan();

    /// Takes the next FrameSize samples of both channels, in 16-bit units.
    void push(const float *left, const float *right);
    /// After push number m, counted from 0: the window of frame m - 2.
    int window() const;

private:
    struct Block
    {
        std::array<float, 16> attacks{}; ///< of its segments, the channels' larger ones
        double energy = 0;
        double changes = 0; ///< energy of the difference from sample to sample
    };

    BlockType wantedType() const;

    std::array<dsp::AttackDetector, Channels> m_detectors;
    Block m_last, m_new;
    BlockType m_wanted = Medium; ///< of the frame that is settled next
    BlockType m_unsure = Medium; ///< of the one behind it, as long as its own next isn't known
    std::array<BlockType, 3> m_settled{Medium, Medium, Medium};
};

} // namespace vqf
