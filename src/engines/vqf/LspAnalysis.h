#pragma once

#include "engines/vqf/Lsp.h"

#include <vector>

namespace vqf {

/// Finds the filter whose curve follows a spectrum.
class LspAnalysis
{
public:
    LspAnalysis();

    /// The angles for the amplitudes power^exponent of a frame's blocks; nothing for silence. `power` has
    /// FrameSize values.
    std::optional<Lsp> analyse(BlockType type, const float *power, float exponent) const;

private:
    std::array<std::vector<float>, BlockTypes> m_cosines; ///< [point][lag]
};

} // namespace vqf
