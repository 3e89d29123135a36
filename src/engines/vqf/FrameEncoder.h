#pragma once

#include "engines/vqf/EnvelopeCoder.h"
#include "engines/vqf/FilterSearch.h"
#include "engines/vqf/Layout.h"
#include "engines/vqf/LspAnalysis.h"
#include "engines/vqf/NoiseWeights.h"
#include "engines/vqf/PeakCoder.h"
#include "engines/vqf/VectorSearch.h"

#include <memory>

namespace vqf {

/// Turns the sound of one frame after the other into fields. It remembers what decoders remember; the frames
/// go through in their order. Any one thread at a time; parts of the work go to `workers`.
class FrameEncoder
{
public:
    FrameEncoder(const Tables &tables, dsp::Workers &workers);

    /// `samples` of mid and side are 2 * FrameSize values in 16-bit units, the frame's region in the middle;
    /// `weights` have heard them.
    Frame encode(int window, const std::array<const float *, Channels> &samples, const NoiseWeights &weights);

private:
    struct Products
    {
        float wanted;
        float coded;
    };

    void analyse(const WindowShape &shape, const std::array<const float *, Channels> &samples);
    void spendBits();
    float kept(const ChannelWork &channel, int k) const;
    FilterTarget filterTarget(BlockType type, const ChannelWork &channel) const;
    void fitFilter(BlockType type, int channelNumber, ChannelFields &fields);
    void setFilter(BlockType type, ChannelWork &channel, const ChannelFields &fields) const;
    EnvelopeTarget envelopeTarget(BlockType type, const ChannelWork &channel) const;
    void fitEnvelope(BlockType type, int channelNumber, ChannelFields &fields);
    void setLevels(BlockType type, ChannelWork &channel, const CodedEnvelope &envelope) const;
    void search(Frame &frame);
    double weightedError() const;
    void tryChange(Frame &frame, double &error, Frame changed);
    Products products(const ChannelWork &channel, int begin, int end) const;
    void refineGain(Frame &frame, double &error);
    void refineEnvelope(Frame &frame, double &error);
    void remember(const Frame &frame);

    const Tables &m_tables;
    dsp::Workers &m_workers;
    std::array<VectorLayout, BlockTypes> m_layouts;
    std::array<SearchBooks, BlockTypes> m_books;
    std::array<std::vector<int>, BlockTypes> m_edges;
    PeakCoder m_peakCoder;
    LspAnalysis m_lspAnalysis;
    FilterSearch m_filterSearch;
    EnvelopeCoder m_envelopeCoder;
    std::array<bool, BlockTypes> m_seen{}; ///< types whose history is known to every decoder

    std::array<ChannelWork, Channels> m_channels;
    Spectrum m_weight;  ///< of a coefficient's error
    Spectrum m_balance; ///< see NoiseWeights
    Spectrum m_left;    ///< power of errors that is left
};

} // namespace vqf
