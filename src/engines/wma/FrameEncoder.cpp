#include "engines/wma/FrameEncoder.h"

#include "engines/wma/LevelPlan.h"
#include "engines/wma/Levels.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <span>

namespace wma {

namespace {

/// A level of 1 needs at least this size, in steps, to be worth its bits; often more.
constexpr float SmallestLive = 0.64F;
/// A high band becomes noise, a little fainter than the sound, if coefficients that could be coded have no
/// larger share of its power: tones stay.
constexpr float NoiseShare = 0.1F;
constexpr float NoiseLevel = -3;  ///< dB
constexpr float FaintNoise = -12; ///< dB, to the step: what is still fainter isn't worth being coded
/// Zeros' noise lies under the step's by this less than needed, and under the band's sound by this.
constexpr float QuietZeros = 15;   ///< dB
constexpr float QuieterZeros = 14; ///< dB
/// The same at 8000 Hz, where more brings nothing for the steep exponents that it takes.
constexpr float QuieterZerosAtLowRate = 6; ///< dB
/// For streams without noise.
constexpr float AnyStep = 1000;

/// Of the noise that such streams have on zeros, to the step.
constexpr float ZeroNoise = -34;    ///< dB
constexpr float EasyNoiseFall = 12; ///< dB from band to band

int largestExponent(const BlockLayout &layout, const ChannelFields &fields)
{
    return *std::max_element(fields.exponents.begin(), fields.exponents.begin() + layout.bands);
}

/// The gain with which exponents make about the steps that are wanted, of all channels added.
class GainMean
{
public:
    void add(const BlockLayout &layout, std::span<const WantedExponent> wanted,
             const ChannelAnalysis &analysis, const ChannelFields &fields)
    {
        const int largest = largestExponent(layout, fields);
        for (std::size_t band = 0; band < wanted.size(); ++band) {
            if (wanted[band].live == 0)
                continue;
            const float above = ExponentLevel * static_cast<float>(largest - fields.exponents[band]);
            m_live += wanted[band].live;
            m_sum += static_cast<float>(wanted[band].live) * (wanted[band].step + above);
            m_least = std::max(m_least, analysis.leastSteps[band] + above);
        }
    }

    /// In dB; 0 of nothing.
    float gain() const { return m_live > 0 ? std::max(m_sum / static_cast<float>(m_live), m_least) : 0; }

private:
    int m_live = 0;
    float m_sum = 0, m_least = 0;
};

/// Where noise begins in a band; at its end if none does.
int noiseBeginIn(const BlockLayout &layout, const ChannelFields &fields, int band)
{
    const bool isNoise = band >= layout.firstNoiseBand && fields.isNoise[band - layout.firstNoiseBand];
    return isNoise ? std::max(layout.edges[band], layout.noiseBegin) : layout.edges[band + 1];
}

float meanPower(const std::vector<float> &coefficients, int begin, int end)
{
    const auto first = coefficients.begin() + begin;
    return std::inner_product(first, coefficients.begin() + end, first, 0.0F) /
           static_cast<float>(end - begin);
}

} // namespace

FrameEncoder::FrameEncoder(const StreamFormat &format, const std::vector<BlockLayout> &layouts,
                           const FrameWriter &writer)
    : m_format(format),
      m_layouts(layouts),
      m_writer(writer),
      m_quieterZeros(format.rate() > 8000 ? QuieterZeros : QuieterZerosAtLowRate)
{}

Frame FrameEncoder::encode(const FrameAnalysis &analysis, float quality) const
{
    Frame frame;
    for (const BlockAnalysis &block : analysis.blocks) {
        const bool sameSize = !frame.empty() && frame.back().halvings == block.halvings;
        const BlockFields *before = sameSize ? &frame.back() : nullptr;
        Trial best = tryBlock(block, false, quality, before);
        if (m_format.channels() == 2)
            if (Trial midSide = tryBlock(block, true, quality, before); midSide.cost < best.cost)
                best = std::move(midSide);
        frame.push_back(std::move(best.block));
    }
    return frame;
}

FrameEncoder::Trial FrameEncoder::tryBlock(const BlockAnalysis &analysis, bool midSide, float quality,
                                           const BlockFields *before) const
{
    const BlockLayout &layout = m_layouts[analysis.halvings];
    Trial trial;
    BlockFields &block = trial.block;
    block.halvings = analysis.halvings;
    block.midSide = midSide;
    Channels channels;
    float gain = 1;
    for (int c = 0; c < m_format.channels(); ++c) {
        channels[c].analysis = &analysis.channels[block.midSide][c];
        chooseSteps(layout, quality, channels[c]);
        if (channels[c].fields.coded)
            chooseExponents(layout, channels[c]);
        gain = std::max(gain, channels[c].gain);
    }
    block.gain = static_cast<int>(std::lround(gain));
    for (Channel &channel : channels) {
        if (!channel.fields.coded)
            continue;
        const float missing = static_cast<float>(block.gain) - channel.gain;
        if (const auto by = static_cast<int>(std::lround(missing / ExponentLevel)); by > 0)
            raiseLargestExponent(layout, by, static_cast<float>(block.gain), channel);
        slopeNoiseExponents(layout, channel);
    }
    block.newExponents = !before || !keepExponents(layout, *before, block, channels);
    for (int c = 0; c < m_format.channels(); ++c) {
        Channel &channel = channels[c];
        if (channel.fields.coded) {
            if (block.newExponents)
                trial.cost += BitCost * static_cast<float>(m_writer.exponentBits(layout, channel.fields));
            trial.cost += quantise(layout, block.gain, m_writer.levelCode(midSide, c), channel);
            setNoiseLevels(layout, block.gain, channel);
        } else {
            for (int band = 0; band < layout.visibleBands(); ++band)
                trial.cost += omission(layout, channel, band, layout.edges[band]);
        }
        block.channels[c] = std::move(channel.fields);
    }
    return trial;
}

/// Takes those of the block before if that is cheaper. Decoders have them of the channels that were coded.
bool FrameEncoder::keepExponents(const BlockLayout &layout, const BlockFields &before, BlockFields &block,
                                 Channels &channels) const
{
    const auto wantedOf = [&](const Channel &channel) {
        return std::span(channel.wanted.begin(), static_cast<std::size_t>(layout.visibleBands()));
    };
    const auto errors = [&](const Channel &channel, const ChannelFields &fields, int gain) {
        return exponentErrors(wantedOf(channel), fields.exponents, static_cast<float>(gain),
                              largestExponent(layout, fields));
    };
    GainMean mean;
    for (int c = 0; c < m_format.channels(); ++c) {
        if (channels[c].fields.coded && !before.channels[c].coded)
            return false;
        if (channels[c].fields.coded)
            mean.add(layout, wantedOf(channels[c]), *channels[c].analysis, before.channels[c]);
    }
    const int gain = std::max(static_cast<int>(std::lround(mean.gain())), 1);
    float gained = 0;
    for (int c = 0; c < m_format.channels(); ++c) {
        const Channel &channel = channels[c];
        if (channel.fields.coded)
            gained += static_cast<float>(m_writer.exponentBits(layout, channel.fields)) +
                      errors(channel, channel.fields, block.gain) - errors(channel, before.channels[c], gain);
    }
    if (gained < 0)
        return false;
    block.gain = gain;
    for (int c = 0; c < m_format.channels(); ++c)
        channels[c].fields.exponents = before.channels[c].exponents;
    return true;
}

void FrameEncoder::chooseSteps(const BlockLayout &layout, float quality, Channel &channel) const
{
    const ChannelAnalysis &analysis = *channel.analysis;
    for (int band = 0; band < layout.visibleBands(); ++band) {
        const float step = std::max(analysis.steps[band] + quality, analysis.leastSteps[band]);
        channel.wanted[band] = {step, coarsestStep(layout, band, step, analysis), 0};
        if (band >= layout.firstNoiseBand)
            chooseNoise(layout, band, channel);
        const int end = noiseBeginIn(layout, channel.fields, band);
        const bool isNoise = end < layout.edges[band + 1];
        const float least = SmallestLive * amplitude(step);
        const auto first = analysis.coefficients.begin() + layout.edges[band];
        const auto last = analysis.coefficients.begin() + end;
        channel.wanted[band].live =
            static_cast<int>(std::count_if(first, last, [least](float y) { return std::abs(y) >= least; }));
        channel.fields.coded = channel.fields.coded || isNoise || channel.wanted[band].live > 0;
    }
}

/// How coarse the steps of a band may be in which nothing is coded. Streams with noise have it on zeros, too,
/// as a share of the step: it mustn't be louder than what should be there.
float FrameEncoder::coarsestStep(const BlockLayout &layout, int band, float step,
                                 const ChannelAnalysis &analysis) const
{
    if (!m_format.hasNoise())
        return step + AnyStep;
    const float power = meanPower(analysis.coefficients, layout.edges[band], layout.edges[band + 1]);
    return std::min(step + QuietZeros, std::max(decibels(power + 1e-9F), 0.0F) - ZeroNoise - m_quieterZeros);
}

void FrameEncoder::chooseNoise(const BlockLayout &layout, int band, Channel &channel) const
{
    const std::vector<float> &coefficients = channel.analysis->coefficients;
    const int begin = std::max(layout.edges[band], layout.noiseBegin), end = layout.edges[band + 1];
    const float step = channel.wanted[band].step;
    const float least = SmallestLive * amplitude(step);
    float live = 0, power = 0;
    for (int k = begin; k < end; ++k) {
        const float square = coefficients[k] * coefficients[k];
        power += square;
        live += square < least * least ? 0 : square;
    }
    const float level = decibels(meanPower(coefficients, begin, end) + 1e-9F);
    const int noiseBand = band - layout.firstNoiseBand;
    channel.noise[noiseBand] = std::max(level + NoiseLevel, float(LowestNoiseLevel));
    channel.fields.isNoise[noiseBand] = live < NoiseShare * power && level > step + FaintNoise;
}

void FrameEncoder::chooseExponents(const BlockLayout &layout, Channel &channel) const
{
    const std::span wanted(channel.wanted.begin(), static_cast<std::size_t>(layout.visibleBands()));
    channel.fields.exponents = planExponents(wanted, layout.bands, m_writer);
    GainMean mean;
    mean.add(layout, wanted, *channel.analysis, channel.fields);
    channel.gain = mean.gain();
}

/// The gain belongs to the largest exponent of either channel: the finer one gets a large exponent where it
/// has nothing to code. If there is no such place all its steps grow.
void FrameEncoder::raiseLargestExponent(const BlockLayout &layout, int by, float gain, Channel &channel) const
{
    ChannelFields &fields = channel.fields;
    const int raised = std::min(largestExponent(layout, fields) + by, HighestExponent);
    const auto raise = [&](int band) {
        fields.exponents[band] = static_cast<std::int8_t>(
            std::min(raised, fields.exponents[std::max(band - 1, 0)] + LargestExponentStep));
    };
    if (layout.bands > layout.visibleBands())
        return raise(layout.bands - 1);
    const int top = layout.visibleBands() - 1;
    // Noise that is coded doesn't grow with the step. But what lies above all bands does with the last one's:
    // only where nobody hears it.
    constexpr int HighRate = 44100;
    if (layout.noiseBands() > 0 && m_format.rate() >= HighRate && channel.wanted[top].live == 0) {
        fields.isNoise[layout.noiseBands() - 1] = true;
        const int noise = firstPureNoise(layout, channel);
        // Noise of finer bands could have no level beside those.
        std::fill_n(fields.isNoise.begin(), noise - layout.firstNoiseBand, false);
        return raise(noise);
    }
    for (int band = top; band > 0; --band)
        if (channel.wanted[band].live == 0 && channel.wanted[band].coarsest >= gain &&
            (band < layout.firstNoiseBand || !fields.isNoise[band - layout.firstNoiseBand]))
            return raise(band);
}

/// Where the bands at the top begin that are nothing but noise.
int FrameEncoder::firstPureNoise(const BlockLayout &layout, const Channel &channel) const
{
    int first = layout.visibleBands();
    while (first > layout.firstNoiseBand && channel.fields.isNoise[first - 1 - layout.firstNoiseBand] &&
           channel.wanted[first - 1].live == 0)
        --first;
    return first;
}

/// Levels of noise depend on twice the differences of its bands' exponents, and the code has no large steps.
void FrameEncoder::slopeNoiseExponents(const BlockLayout &layout, Channel &channel) const
{
    for (int band = firstPureNoise(layout, channel) + 1; band < layout.visibleBands(); ++band) {
        const int noiseBand = band - layout.firstNoiseBand;
        const float fall = channel.noise[noiseBand - 1] - channel.noise[noiseBand] - EasyNoiseFall;
        const auto steps = static_cast<int>(std::lround(std::max(fall, 0.0F) / (2 * ExponentLevel)));
        channel.fields.exponents[band] =
            static_cast<std::int8_t>(std::max(channel.fields.exponents[band - 1] - steps, LowestExponent));
    }
    // Behind them comes one that may have been raised.
    for (int band = layout.visibleBands(); band < layout.bands; ++band)
        channel.fields.exponents[band] = static_cast<std::int8_t>(std::min<int>(
            channel.fields.exponents[band], channel.fields.exponents[band - 1] + LargestExponentStep));
}

/// What it costs to leave out what a band has from here on, in squared steps.
float FrameEncoder::omission(const BlockLayout &layout, const Channel &channel, int band, int begin) const
{
    const int end = layout.edges[band + 1];
    return meanPower(channel.analysis->coefficients, begin, end) * static_cast<float>(end - begin) *
           amplitude(-2 * channel.wanted[band].step);
}

/// Gives what errors and bits cost.
float FrameEncoder::quantise(const BlockLayout &layout, int gain, const LevelCode &code,
                             Channel &channel) const
{
    ChannelFields &fields = channel.fields;
    const float *coefficients = channel.analysis->coefficients.data();
    fields.levels.assign(static_cast<std::size_t>(layout.codedEnd), 0);
    const int largest = largestExponent(layout, fields);
    std::vector<WantedLevel> wanted;
    std::vector<int> places;
    float cost = 0;
    bool coded = false;
    for (int band = 0; band < layout.visibleBands(); ++band) {
        const float step =
            static_cast<float>(gain) + ExponentLevel * static_cast<float>(fields.exponents[band] - largest);
        const float inverse = 1 / amplitude(step);
        const float weight = amplitude(2 * (step - channel.wanted[band].step));
        const int noiseBegin = noiseBeginIn(layout, fields, band);
        for (int k = layout.edges[band]; k < noiseBegin; ++k) {
            wanted.push_back({std::abs(coefficients[k]) * inverse, weight});
            places.push_back(k);
        }
        if (noiseBegin < layout.edges[band + 1]) {
            coded = true;
            cost += omission(layout, channel, band, noiseBegin);
        }
    }
    std::vector<std::int16_t> levels;
    cost += planLevels(wanted, largestLevel(gain), code, levels);
    for (std::size_t n = 0; n < levels.size(); ++n) {
        const int k = places[n];
        fields.levels[k] = coefficients[k] < 0 ? static_cast<std::int16_t>(-levels[n]) : levels[n];
        coded = coded || levels[n] != 0;
    }
    fields.coded = coded;
    return cost;
}

/// A band whose low level the code can't reach from the one before may stay empty, if that is quieter.
void FrameEncoder::setNoiseLevels(const BlockLayout &layout, int gain, Channel &channel) const
{
    ChannelFields &fields = channel.fields;
    const auto exponentOf = [&](int noiseBand) {
        return fields.exponents[layout.firstNoiseBand + noiseBand];
    };
    const auto last = std::find(fields.isNoise.rbegin(), fields.isNoise.rend(), true);
    if (last == fields.isNoise.rend())
        return;
    const int largest = largestExponent(layout, fields);
    const int lastExponent = exponentOf(static_cast<int>(fields.isNoise.rend() - last) - 1);
    int lowest = LowestNoiseLevel, highest = HighestNoiseLevel;
    for (int band = 0; band < layout.noiseBands(); ++band) {
        if (!fields.isNoise[band])
            continue;
        const float level = channel.noise[band] +
                            ExponentLevel * static_cast<float>(lastExponent + largest - 2 * exponentOf(band));
        const auto wanted = static_cast<int>(std::lround(level));
        const float step =
            static_cast<float>(gain) + ExponentLevel * static_cast<float>(exponentOf(band) - largest);
        const float excess = static_cast<float>(lowest - wanted);
        if (excess > 0 && channel.noise[band] + excess > step + ZeroNoise) {
            fields.isNoise[band] = false;
            return setNoiseLevels(layout, gain, channel); // another band may be the last one now
        }
        const int written = std::clamp(wanted, lowest, highest);
        fields.noiseLevels[band] = static_cast<std::int8_t>(written);
        lowest = std::max(LowestNoiseLevel, written - LargestNoiseStep);
        highest = std::min(HighestNoiseLevel, written + LargestNoiseStep);
    }
}

} // namespace wma
