#pragma once

#include "engines/vqf/Reconstruction.h"

namespace vqf {

/// Finds the filter whose curve follows a spectrum, and the fields that come nearest to it.
class LspCoder
{
public:
    explicit LspCoder(const Tables &tables);

    /// The angles for the amplitudes power^exponent of a frame's blocks; nothing for silence. `power` has
    /// FrameSize values.
    std::optional<Lsp> analyse(BlockType type, const float *power, float exponent) const;
    /// Sets the predictor, first and second stage of `fields`; `last` is what they are predicted from.
    void quantize(const Lsp &wanted, const Lsp &last, ChannelFields &fields) const;

private:
    double quantize(const Lsp &wanted, const Lsp &weight, const Lsp &last, ChannelFields &fields) const;

    const Tables &m_tables;
    std::array<std::vector<float>, BlockTypes> m_cosines; ///< [point][lag]
};

} // namespace vqf
