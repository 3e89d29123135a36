#include "engines/vqf/FrameEncoder.h"

#include "engines/vqf/EvenError.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>
#include <tuple>

namespace vqf {

namespace {

/// How much of the power is kept where no bits are left.
constexpr float LeastPower = 0.001F;
/// A faint error counts, too, where all is silent.
constexpr float FaintPower = 1e-6F;

/// How large a sum of two entries may be asked for, as a multiple of their root mean square, and what asking
/// for more costs. Tones far above their surroundings would get lost.
constexpr float LargestEntry = 4;
constexpr float OverloadCost = 8;
/// What the envelope can add to the filter's curve with ease.
constexpr float LargestEnvelope = 1.2F;

constexpr std::array<float, 2> FilterExponents{0.5F, 0.7F}; // of the power

/// What missing the level of some coefficients costs, from their weighted power and number. Nearer to the
/// power itself faint parts would become noisy, further from it strong tones would get lost.
float ratioCost(float audible, float width)
{
    return std::pow(audible + FaintPower, 0.37F) * std::pow(width, 0.13F);
}

} // namespace

FrameEncoder::FrameEncoder(const Tables &tables, dsp::Workers &workers)
    : m_tables(tables),
      m_workers(workers),
      m_layouts{VectorLayout(Short), VectorLayout(Medium), VectorLayout(Long)},
      m_books{SearchBooks(tables.main[Short], Layouts[Short].vectorLength),
              SearchBooks(tables.main[Medium], Layouts[Medium].vectorLength),
              SearchBooks(tables.main[Long], Layouts[Long].vectorLength)},
      m_edges{bandEdges(tables, Short), bandEdges(tables, Medium), bandEdges(tables, Long)},
      m_peakCoder(tables, workers),
      m_filterSearch(tables),
      m_envelopeCoder(tables)
{}

Frame FrameEncoder::encode(int window, const std::array<const float *, Channels> &samples,
                           const NoiseWeights &weights)
{
    Frame frame;
    frame.window = window;
    const BlockType type = frame.type();
    analyse(WindowShapes[window], samples);
    weights.weigh(window, m_weight, &m_balance);
    spendBits();
    m_workers.run(Channels, [&](int c) { fitFilter(type, c, frame.channel[c]); });
    if (type == Long && m_peakCoder.encode(frame, m_channels, m_weight, m_books[type].rms))
        m_workers.run(Channels, [&](int c) { fitEnvelope(type, c, frame.channel[c]); });
    search(frame);
    double error = weightedError();
    refineGain(frame, error);
    refineEnvelope(frame, error);
    remember(frame);
    return frame;
}

void FrameEncoder::analyse(const WindowShape &shape, const std::array<const float *, Channels> &samples)
{
    m_workers.run(Channels, [&](int c) {
        ChannelWork &channel = m_channels[c];
        channel.transform.analyse(shape, samples[c], channel.wanted.data(), channel.sines.data());
        for (int k = 0; k < FrameSize; ++k)
            channel.power[k] = (square(channel.wanted[k]) + square(channel.sines[k])) / 2;
        channel.peaks.fill(0);
        channel.error.fill(0);
    });
}

/// Finds the errors that the frame's bits leave.
void FrameEncoder::spendBits()
{
    std::array<float, Channels * FrameSize> weighted;
    for (int c = 0; c < Channels; ++c)
        for (int k = 0; k < FrameSize; ++k)
            weighted[c * FrameSize + k] = m_weight[k] * m_channels[c].power[k];
    const float error = evenError(weighted);
    for (int k = 0; k < FrameSize; ++k)
        m_left[k] = error / m_weight[k];
}

/// The power that codebook entries should have in place of a coefficient: without the part that the bits
/// leave. Louder ones would be noise.
float FrameEncoder::kept(const ChannelWork &channel, int k) const
{
    const float power = (square(channel.wanted[k] - channel.peaks[k]) + channel.power[k]) / 2;
    return std::max(power - m_left[k], LeastPower * power);
}

/// The level and the cost at points a few of which lie in each band, means over the blocks.
FilterTarget FrameEncoder::filterTarget(BlockType type, const ChannelWork &channel) const
{
    const TypeLayout &layout = Layouts[type];
    std::vector<int> edges{0};
    for (int band = 0; band < layout.bands; ++band) {
        const int begin = m_edges[type][band], width = m_edges[type][band + 1] - begin;
        constexpr int PointsOfBlock = 32;
        const int parts = std::max(width * PointsOfBlock / layout.blockSize, std::min(2, width));
        for (int n = 1; n <= parts; ++n)
            edges.push_back(begin + width * n / parts);
    }
    std::vector<FilterPoint> points;
    for (std::size_t n = 0; n + 1 < edges.size(); ++n)
        points.push_back({std::numbers::pi * (edges[n] + edges[n + 1]) / 2 / layout.blockSize, 0, 0,
                          std::numeric_limits<float>::lowest()});
    float loudest = std::numeric_limits<float>::lowest();
    for (int block = 0; block < layout.blocks; ++block) {
        std::vector<FilterPoint> levels = points;
        float mean = 0, costs = 1e-20F;
        for (std::size_t n = 0; n < levels.size(); ++n) {
            float energy = FaintPower, audible = 0, peak = FaintPower;
            for (int k = block * layout.blockSize + edges[n]; k < block * layout.blockSize + edges[n + 1];
                 ++k) {
                energy += kept(channel, k);
                audible += channel.power[k] * m_weight[k];
                peak = std::max(peak, channel.power[k]);
            }
            points[n].least =
                std::max(points[n].least, std::log(peak / square(LargestEntry * LargestEnvelope)) / 2);
            const auto width = static_cast<float>(edges[n + 1] - edges[n]);
            levels[n].logLevel = std::log(energy / width) / 2;
            levels[n].cost = ratioCost(audible, width);
            mean += levels[n].logLevel * levels[n].cost;
            costs += levels[n].cost;
        }
        loudest = std::max(loudest, mean / costs);
        for (std::size_t n = 0; n < levels.size(); ++n) {
            points[n].logLevel += (levels[n].logLevel - mean / costs) * levels[n].cost;
            points[n].cost += levels[n].cost;
        }
    }
    for (FilterPoint &point : points) {
        point.logLevel /= std::max(point.cost, 1e-20F);
        point.least -= loudest;
    }
    const double most = gainValue(type, Gains - 1, BlockGains - 1) * m_books[type].rms;
    return {points, static_cast<float>(std::log(most)) - loudest};
}

/// The filter whose rest the envelope can follow best.
void FrameEncoder::fitFilter(BlockType type, int channelNumber, ChannelFields &fields)
{
    ChannelWork &channel = m_channels[channelNumber];
    std::vector<Lsp> starts;
    for (const float exponent : FilterExponents)
        if (const std::optional<Lsp> lsp = m_lspAnalysis.analyse(type, channel.power.data(), exponent))
            starts.push_back(*lsp);
    CodedEnvelope bestEnvelope;
    bestEnvelope.cost = std::numeric_limits<double>::max();
    ChannelFields best = fields;
    for (ChannelFields &trial :
         m_filterSearch.best(filterTarget(type, channel), starts, channel.history.lsp, fields)) {
        setFilter(type, channel, trial);
        const CodedEnvelope envelope =
            m_envelopeCoder.fit(type, envelopeTarget(type, channel), channel.history, m_seen[type], trial);
        if (envelope.cost < bestEnvelope.cost) {
            best = trial;
            bestEnvelope = envelope;
        }
    }
    fields = best;
    setFilter(type, channel, fields);
    setLevels(type, channel, bestEnvelope);
}

void FrameEncoder::setFilter(BlockType type, ChannelWork &channel, const ChannelFields &fields) const
{
    const DecodedLsp lsp = decodeLsp(m_tables, fields, channel.history.lsp);
    channel.raw = lsp.raw;
    const int size = Layouts[type].blockSize;
    lpcCurve(type, lsp.lsp, std::span(channel.curve.data(), size));
    for (int k = size; k < FrameSize; ++k)
        channel.curve[k] = channel.curve[k - size];
}

/// A band's level is the one at which the codebooks' entries are as loud as its coefficients.
EnvelopeTarget FrameEncoder::envelopeTarget(BlockType type, const ChannelWork &channel) const
{
    const TypeLayout &layout = Layouts[type];
    EnvelopeTarget target;
    for (int block = 0; block < layout.blocks; ++block) {
        const int start = block * layout.blockSize;
        for (int band = 0; band < layout.bands; ++band) {
            float energy = 0, audible = 0, largest = 0, ofLargest = 0;
            for (int k = start + m_edges[type][band]; k < start + m_edges[type][band + 1]; ++k) {
                energy += kept(channel, k) / square(channel.curve[k]);
                audible += channel.power[k] * m_weight[k];
                const float rest = std::abs(channel.wanted[k] - channel.peaks[k]);
                if (rest > largest * channel.curve[k]) {
                    largest = rest / channel.curve[k];
                    ofLargest = m_weight[k] * square(rest);
                }
            }
            const auto width = static_cast<float>(m_edges[type][band + 1] - m_edges[type][band]);
            EnvelopeTarget::Band &of = target.bands[block][band];
            of.level = std::sqrt(energy / width) / m_books[type].rms;
            of.ratioCost = ratioCost(audible, width);
            of.least = largest / (LargestEntry * m_books[type].rms);
            of.leastCost = OverloadCost * ratioCost(ofLargest, 1);
        }
    }
    return target;
}

void FrameEncoder::fitEnvelope(BlockType type, int channelNumber, ChannelFields &fields)
{
    ChannelWork &channel = m_channels[channelNumber];
    setLevels(
        type, channel,
        m_envelopeCoder.fit(type, envelopeTarget(type, channel), channel.history, m_seen[type], fields));
}

void FrameEncoder::setLevels(BlockType type, ChannelWork &channel, const CodedEnvelope &envelope) const
{
    const TypeLayout &layout = Layouts[type];
    for (int block = 0; block < layout.blocks; ++block) {
        const int start = block * layout.blockSize;
        for (int band = 0; band < layout.bands; ++band)
            for (int k = start + m_edges[type][band]; k < start + m_edges[type][band + 1]; ++k)
                channel.level[k] = channel.curve[k] * envelope.levels[block][band];
    }
}

/// The codebook entries of all vectors for the levels as they are. Every other coefficient of mid and side is
/// settled first, the rest so that its errors and those of its counterparts cancel on the side that hides
/// less.
void FrameEncoder::search(Frame &frame)
{
    const BlockType type = frame.type();
    const VectorLayout &places = m_layouts[type];
    const SearchBooks &books = m_books[type];
    const int vectors = Layouts[type].vectors;
    constexpr int Parts = 8;
    for (int half = 0; half < 2; ++half) {
        m_workers.run(Parts, [&](int part) {
            for (int vector = vectors * part / Parts; vector < vectors * (part + 1) / Parts; ++vector) {
                if (vector / Layouts[type].blocks % 2 != half)
                    continue;
                SearchVector search{places.length(vector), {}, {}};
                for (int n = 0; n < search.length; ++n) {
                    const VectorLayout::Place &place = places.place(vector, n);
                    const ChannelWork &channel = m_channels[place.channel];
                    const int k = place.offset;
                    const float hidden = m_balance[k] * m_channels[1 - place.channel].error[k];
                    search.target[n] = (channel.wanted[k] - channel.peaks[k] + hidden) / channel.level[k];
                    search.weight[n] = m_weight[k] * square(channel.level[k]);
                }
                const PairIndex pair = bestPair(books, search, vector < Layouts[type].signedVectors);
                frame.main[vector] = pair;
                for (int n = 0; n < search.length; ++n) {
                    const VectorLayout::Place &place = places.place(vector, n);
                    m_channels[place.channel].coded[place.offset] = pairValue(books, pair, n);
                }
            }
        });
        for (int vector = 0; vector < vectors; ++vector) {
            if (vector / Layouts[type].blocks % 2 != half)
                continue;
            for (int n = 0; n < places.length(vector); ++n) {
                const VectorLayout::Place &place = places.place(vector, n);
                ChannelWork &channel = m_channels[place.channel];
                const int k = place.offset;
                channel.error[k] = channel.wanted[k] - channel.peaks[k] - channel.level[k] * channel.coded[k];
            }
        }
    }
}

double FrameEncoder::weightedError() const
{
    double error = 0;
    for (int k = 0; k < FrameSize; ++k)
        error += m_weight[k] * (square(m_channels[0].error[k]) + square(m_channels[1].error[k]) +
                                2 * m_balance[k] * m_channels[0].error[k] * m_channels[1].error[k]);
    return error;
}

/// Searches again with the changed gains or envelopes, and keeps what is better: indices are good only for
/// the levels that they were searched with.
void FrameEncoder::tryChange(Frame &frame, double &error, Frame changed)
{
    std::array<std::tuple<Spectrum, Spectrum, Spectrum>, Channels> saved;
    for (int c = 0; c < Channels; ++c) {
        saved[c] = {m_channels[c].level, m_channels[c].coded, m_channels[c].error};
        setLevels(frame.type(), m_channels[c],
                  m_envelopeCoder.levels(frame.type(), m_channels[c].history, changed.channel[c]));
    }
    search(changed);
    const double changedError = weightedError();
    if (changedError < error) {
        frame = changed;
        error = changedError;
        return;
    }
    for (int c = 0; c < Channels; ++c)
        std::tie(m_channels[c].level, m_channels[c].coded, m_channels[c].error) = saved[c];
}

/// The weighted products over coefficients begin to end: what is coded with what is wanted, and with itself.
FrameEncoder::Products FrameEncoder::products(const ChannelWork &channel, int begin, int end) const
{
    Products sums{};
    for (int k = begin; k < end; ++k) {
        const float coded = channel.level[k] * channel.coded[k];
        sums.wanted += m_weight[k] * coded * (channel.wanted[k] - channel.peaks[k]);
        sums.coded += m_weight[k] * square(coded);
    }
    return sums;
}

void FrameEncoder::refineGain(Frame &frame, double &error)
{
    const BlockType type = frame.type();
    Frame changed = frame;
    bool differs = false;
    for (int c = 0; c < Channels; ++c) {
        const Products sums = products(m_channels[c], 0, FrameSize);
        if (sums.coded <= 0 || sums.wanted <= 0)
            continue;
        std::uint8_t &gain = changed.channel[c].gain;
        const double wanted = gainValue(type, gain, 30) * sums.wanted / sums.coded;
        int best = gain;
        for (int trial = 0; trial < Gains; ++trial)
            if (std::abs(gainValue(type, trial, 30) - wanted) < std::abs(gainValue(type, best, 30) - wanted))
                best = trial;
        differs |= best != gain;
        gain = static_cast<std::uint8_t>(best);
    }
    if (differs)
        tryChange(frame, error, changed);
}

/// Moves the bands' levels to those that suit the entries found.
void FrameEncoder::refineEnvelope(Frame &frame, double &error)
{
    const BlockType type = frame.type();
    const TypeLayout &layout = Layouts[type];
    Frame changed = frame;
    m_workers.run(Channels, [&](int c) {
        const ChannelWork &channel = m_channels[c];
        EnvelopeTarget target = envelopeTarget(type, channel);
        const CodedEnvelope now = m_envelopeCoder.levels(type, channel.history, frame.channel[c]);
        for (int block = 0; block < layout.blocks; ++block) {
            const int start = block * layout.blockSize;
            for (int band = 0; band < layout.bands; ++band) {
                const Products sums =
                    products(channel, start + m_edges[type][band], start + m_edges[type][band + 1]);
                const float factor =
                    sums.coded > 0 ? std::clamp(sums.wanted / sums.coded, 0.25F, 4.0F) : 1.0F;
                EnvelopeTarget::Band &of = target.bands[block][band];
                of.level = now.levels[block][band] * factor;
                of.ratioCost = of.leastCost = 0;
                of.errorCost = sums.coded / square(now.levels[block][band]);
            }
        }
        m_envelopeCoder.fit(type, target, channel.history, m_seen[type], changed.channel[c]);
    });
    tryChange(frame, error, changed);
}

void FrameEncoder::remember(const Frame &frame)
{
    const BlockType type = frame.type();
    for (int c = 0; c < Channels; ++c) {
        ChannelHistory &history = m_channels[c].history;
        history.lsp = m_channels[c].raw;
        std::array<float, MaxBands> unused;
        for (int block = 0; block < Layouts[type].blocks; ++block)
            barkEnvelope(m_tables, type, frame.channel[c].bark[block], frame.channel[c].barkHistory[block],
                         history.envelope[type], unused);
    }
    m_seen[type] = true;
}

} // namespace vqf
