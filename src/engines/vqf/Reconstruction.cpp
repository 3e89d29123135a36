#include "engines/vqf/Reconstruction.h"

#include "engines/vqf/Layout.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace vqf {

namespace {

/// A value of 0 to `limit` from a logarithmic scale of the same range.
double expanded(double value, double limit, double steepness)
{
    return limit * (std::pow(1 + steepness, value / limit) - 1) / steepness;
}

/// The middle of a step of the scale, of which the last one ends in the limit.
double midpoint(int index, int largest, double limit)
{
    return std::min((index + 0.5) * limit / largest, limit);
}

double blockGainValue(int blockGain)
{
    return expanded(midpoint(blockGain, 31, 4500), 4500, 100);
}

/// Moves neighbours apart that are nearer than `least`, once from below.
void keepDistance(Lsp &lsp, double least)
{
    for (int n = 1; n < LspOrder; ++n) {
        if (lsp[n] - lsp[n - 1] < least) {
            const double middle = (lsp[n] + lsp[n - 1]) / 2;
            lsp[n - 1] = middle - least / 2;
            lsp[n] = middle + least / 2;
        }
    }
}

/// Draws straight lines between the exact points of one half of the curve: `step` apart, and twice as dense
/// where the curve bends or falls.
class HalfCurve
{
public:
    HalfCurve(const Lsp &cosines, std::span<float> curve, int step)
        : m_cosines(cosines), m_curve(curve), m_step(step)
    {}

    float exact(int k) const
    {
        const double cosine = std::cos(std::numbers::pi * (k + 0.5) / static_cast<double>(m_curve.size()));
        return static_cast<float>(lspProducts(m_cosines, cosine).curve(cosine));
    }

    void draw(int begin, int end)
    {
        for (int k = begin; k < end; k += m_step)
            m_curve[k] = exact(k);
        for (int k = begin; k + m_step < end; k += m_step) {
            const float left = m_curve[k], right = m_curve[k + m_step];
            const int next = k + 2 * m_step;
            if (next >= end || m_curve[next] + left > 1.95F * right || m_curve[next] >= left) {
                line(k, left, right, m_step);
            } else {
                const float middle = exact(k + m_step / 2);
                line(k, left, middle, m_step / 2);
                line(k + m_step / 2, middle, right, m_step / 2);
                m_curve[k + m_step / 2] = middle;
            }
        }
    }

    /// The points behind `k`, all but the last of `steps` that lead from one value to the other.
    void line(int k, float from, float to, int steps)
    {
        for (int n = 1; n < steps; ++n)
            m_curve[k + n] = from + (to - from) * static_cast<float>(n) / static_cast<float>(steps);
    }

private:
    const Lsp &m_cosines;
    std::span<float> m_curve;
    int m_step;
};

} // namespace

double gainValue(BlockType type, int gain, int blockGain)
{
    const double common = expanded(midpoint(gain, 255, 13000), 13000, 100);
    return type == Long ? common / 8192 : common * blockGainValue(blockGain) / 8388608;
}

double peakGainValue(int gain)
{
    return expanded(midpoint(gain, 127, 25000), 25000, 200) / 8192;
}

DecodedLsp decodeLsp(const Tables &tables, const ChannelFields &fields, const Lsp &last)
{
    constexpr std::array<int, LspSplits> ends{4, 9, 14, 20};
    DecodedLsp decoded;
    for (int n = 0, split = 0; n < LspOrder; ++n) {
        split += n == ends[split];
        decoded.raw[n] =
            (tables.lspFirst[fields.lspFirst][n] + tables.lspSecond[fields.lspSecond[split]][n]) * 0.0001;
    }
    keepDistance(decoded.raw, 0.0001);
    for (int n = 0; n < LspOrder; ++n) {
        const double weight = tables.lspPredictor[fields.lspPredictor][n] * 0.0001;
        decoded.lsp[n] = decoded.raw[n] * (1 - weight) + last[n] * weight;
    }
    keepDistance(decoded.lsp, 0.0001);
    keepDistance(decoded.lsp, 0.000095);
    std::sort(decoded.lsp.begin(), decoded.lsp.end());
    return decoded;
}

void lpcCurve(BlockType type, const Lsp &lsp, std::span<float> curve)
{
    const Lsp cosines = cosinesOf(lsp);
    const int step = Layouts[type].curveStep;
    const int size = static_cast<int>(curve.size());
    HalfCurve lower(cosines, curve, step), upper(cosines, curve, 2 * step);
    if (step == 0) {
        for (int k = 0; k < size; ++k)
            curve[k] = lower.exact(k);
        return;
    }
    lower.draw(0, size / 2);
    upper.draw(size / 2, size);
    const int lastLower = size / 2 - step;
    lower.line(lastLower, curve[lastLower], curve[size / 2], step + 1);
    std::fill(curve.end() - 2 * step, curve.end(), curve[size - 2 * step]);
}

std::vector<int> bandEdges(const Tables &tables, BlockType type)
{
    std::vector<int> edges{0};
    for (int band = 0; band < Layouts[type].bands; ++band)
        edges.push_back(edges.back() + tables.bandWidths[type][band]);
    return edges;
}

void barkEnvelope(const Tables &tables, BlockType type,
                  const std::array<std::uint8_t, MaxBarkIndices> &indices, bool useHistory,
                  std::span<float, MaxBands> last, std::span<float, MaxBands> envelope)
{
    const TypeLayout &layout = Layouts[type];
    const auto history = static_cast<float>(useHistory ? layout.history : 0);
    for (int band = 0; band < layout.bands; ++band) {
        const int entry = indices[band % layout.barkIndices];
        const float value = static_cast<float>(tables.bark[type][entry][band / layout.barkIndices]) / 4096;
        envelope[band] = 1 + (1 - history) * value + history * last[band];
        last[band] = value;
    }
}

SpectrumDecoder::SpectrumDecoder(const Tables &tables) : m_tables(tables) {}

std::array<std::vector<float>, Channels> SpectrumDecoder::decode(const Frame &frame)
{
    const BlockType type = frame.type();
    const TypeLayout &layout = Layouts[type];
    const VectorLayout vectors(type);
    std::array<std::vector<float>, Channels> spectra;
    spectra.fill(std::vector<float>(FrameSize));
    const auto value = [](const auto &book, std::uint8_t index, int element) {
        const int entry = book[entryOf(index)][element];
        return static_cast<float>(isNegative(index) ? -entry : entry);
    };
    for (int vector = 0; vector < layout.vectors; ++vector) {
        for (int element = 0; element < vectors.length(vector); ++element) {
            const VectorLayout::Place &place = vectors.place(vector, element);
            spectra[place.channel][place.offset] =
                value(m_tables.main[type][0], frame.main[vector].first, element) +
                value(m_tables.main[type][1], frame.main[vector].second, element);
        }
    }
    const std::vector<int> edges = bandEdges(m_tables, type);
    std::vector<float> curve(layout.blockSize);
    for (int c = 0; c < Channels; ++c) {
        const ChannelFields &fields = frame.channel[c];
        ChannelHistory &history = m_history[c];
        const DecodedLsp lsp = decodeLsp(m_tables, fields, history.lsp);
        history.lsp = lsp.raw;
        lpcCurve(type, lsp.lsp, curve);
        for (int block = 0; block < layout.blocks; ++block) {
            std::array<float, MaxBands> envelope;
            barkEnvelope(m_tables, type, fields.bark[block], fields.barkHistory[block],
                         history.envelope[type], envelope);
            const auto gain = static_cast<float>(gainValue(type, fields.gain, fields.blockGain[block]));
            float *spectrum = spectra[c].data() + block * layout.blockSize;
            for (int band = 0; band < layout.bands; ++band)
                for (int k = edges[band]; k < edges[band + 1]; ++k)
                    spectrum[k] *= gain * envelope[band];
        }
        if (type == Long) {
            const std::vector<int> positions = peakPositions(fields.period);
            const auto gain = static_cast<float>(peakGainValue(fields.peakGain));
            for (int vector = 0; vector < PeakVectors; ++vector) {
                for (int element = 0; element < PeakVectorLength; ++element) {
                    const PeakPlace place = peakPlace(vector, element);
                    if (place.channel == c)
                        spectra[c][positions[place.value]] +=
                            gain * (value(m_tables.peaks[0], frame.peaks[vector].first, element) +
                                    value(m_tables.peaks[1], frame.peaks[vector].second, element));
                }
            }
        }
        for (int k = 0; k < FrameSize; ++k)
            spectra[c][k] *= curve[k % layout.blockSize];
    }
    return spectra;
}

} // namespace vqf
