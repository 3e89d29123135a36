#pragma once

#include "engines/wma/ExponentPlan.h"
#include "engines/wma/FrameAnalysis.h"

namespace wma {

/// Turns an analysed frame into fields, at any quality. Nothing is kept from frame to frame.
class FrameEncoder
{
public:
    /// All must outlive the object.
    FrameEncoder(const StreamFormat &format, const std::vector<BlockLayout> &layouts,
                 const FrameWriter &writer);

    /// `quality` in dB: how far the noise lies above what is best at a high rate.
    Frame encode(const FrameAnalysis &analysis, float quality) const;

private:
    /// The work on one channel of a block.
    struct Channel
    {
        const ChannelAnalysis *analysis;
        ChannelFields fields;
        std::array<WantedExponent, MaxBands> wanted;
        std::array<float, MaxBands> noise; ///< level of each noise band, dB
        float gain = 0;                    ///< wanted, dB
    };
    using Channels = std::array<Channel, MaxChannels>;

    /// A block and what its errors and bits cost together, in squared steps.
    struct Trial
    {
        BlockFields block;
        float cost = 0;
    };

    Trial tryBlock(const BlockAnalysis &analysis, bool midSide, float quality,
                   const BlockFields *before) const;
    bool keepExponents(const BlockLayout &layout, const BlockFields &before, BlockFields &block,
                       Channels &channels) const;
    void chooseSteps(const BlockLayout &layout, float quality, Channel &channel) const;
    float coarsestStep(const BlockLayout &layout, int band, float step,
                       const ChannelAnalysis &analysis) const;
    void chooseNoise(const BlockLayout &layout, int band, Channel &channel) const;
    void chooseExponents(const BlockLayout &layout, Channel &channel) const;
    void raiseLargestExponent(const BlockLayout &layout, int by, float gain, Channel &channel) const;
    float omission(const BlockLayout &layout, const Channel &channel, int band, int begin) const;
    float quantise(const BlockLayout &layout, int gain, const LevelCode &code, Channel &channel) const;
    int firstPureNoise(const BlockLayout &layout, const Channel &channel) const;
    void slopeNoiseExponents(const BlockLayout &layout, Channel &channel) const;
    void setNoiseLevels(const BlockLayout &layout, int gain, Channel &channel) const;

    const StreamFormat &m_format;
    const std::vector<BlockLayout> &m_layouts;
    const FrameWriter &m_writer;
    const float m_quieterZeros; ///< dB, by which zeros' noise lies under the sound of their band
};

} // namespace wma
