#pragma once

#include "engines/vqf/Frame.h"
#include "engines/vqf/Lsp.h"
#include "engines/vqf/Tables.h"

#include <span>
#include <vector>

/// What a decoder makes of a frame's fields. Spectra are in the units of the codebooks' scale: the transform
/// of samples in 16-bit units, times 2 / sqrt(block size).
namespace vqf {

/// The factor of a block's codebook entries. `blockGain` is ignored for long blocks.
double gainValue(BlockType type, int gain, int blockGain);
/// The gain factor of the peaks' shape.
double peakGainValue(int gain);

/// What one frame of a channel leaves behind for the next.
struct ChannelHistory
{
    Lsp lsp{};
    /// Of each type, the last block's envelope less 1, without its own history.
    std::array<std::array<float, MaxBands>, BlockTypes> envelope{};
};

struct DecodedLsp
{
    Lsp lsp; ///< what the curve is made of
    Lsp raw; ///< what the next frame is predicted from
};
DecodedLsp decodeLsp(const Tables &tables, const ChannelFields &fields, const Lsp &last);

/// The filter's curve at each coefficient of a block, interpolated as decoders do.
void lpcCurve(BlockType type, const Lsp &lsp, std::span<float> curve);

/// The first coefficient of each band of a block, and its end.
std::vector<int> bandEdges(const Tables &tables, BlockType type);

/// The spectral envelope of one block in bands from its indices; `last` is updated for the block that
/// follows.
void barkEnvelope(const Tables &tables, BlockType type,
                  const std::array<std::uint8_t, MaxBarkIndices> &indices, bool useHistory,
                  std::span<float, MaxBands> last, std::span<float, MaxBands> envelope);

/// The spectrum of one channel, block after block; updates the history.
class SpectrumDecoder
{
public:
    explicit SpectrumDecoder(const Tables &tables);

    /// Each spectrum has FrameSize coefficients.
    std::array<std::vector<float>, Channels> decode(const Frame &frame);

private:
    const Tables &m_tables;
    std::array<ChannelHistory, Channels> m_history;
};

} // namespace vqf
