#pragma once

#include "engines/vqf/FrameTransform.h"
#include "engines/vqf/Reconstruction.h"

namespace vqf {

using Spectrum = std::array<float, FrameSize>; ///< of a frame, block after block

inline float square(float x)
{
    return x * x;
}

/// The work on one channel of a frame.
struct ChannelWork
{
    FrameTransform<float> transform;
    Spectrum wanted; ///< the coefficients
    Spectrum sines;
    Spectrum power;
    Spectrum curve; ///< the filter's, repeated for each block
    Spectrum level; ///< of the codebook entries: curve times envelope
    Spectrum peaks; ///< what the periodic peaks add
    Spectrum coded; ///< the codebook entries' sums
    Spectrum error; ///< what the last search left
    Lsp raw;        ///< what the next frame's filter is predicted from
    ChannelHistory history;
};

} // namespace vqf
