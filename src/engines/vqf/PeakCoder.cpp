#include "engines/vqf/PeakCoder.h"

#include "engines/vqf/Layout.h"

#include <algorithm>
#include <cmath>

namespace vqf {

namespace {

/// Where the largest peak of a channel may lie in the shapes, as multiples of their root mean square. With
/// the first a lone peak is met best, with the last many alike.
constexpr std::array<float, 3> LargestOfShape{5, 3, 1.5F};

} // namespace

PeakCoder::PeakCoder(const Tables &tables, dsp::Workers &workers) : m_workers(workers), m_books(tables.peaks)
{
    for (int period = 0; period < PeakPeriods; ++period)
        m_positions.push_back(peakPositions(period));
}

bool PeakCoder::encode(Frame &frame, std::array<ChannelWork, Channels> &channels, const Spectrum &weight,
                       float rms)
{
    if (!choosePeriods(frame, channels, weight, rms))
        return false;
    Coding start;
    for (int c = 0; c < Channels; ++c) {
        for (int n = 0; n < PeakValues; ++n) {
            const int k = m_positions[frame.channel[c].period][n];
            start.peaks[c].target[n] = channels[c].wanted[k] / channels[c].curve[k];
            start.peaks[c].weight[n] = weight[k] * square(channels[c].curve[k]);
        }
    }
    std::array<Coding, LargestOfShape.size()> trials;
    m_workers.run(static_cast<int>(trials.size()), [&](int trial) {
        trials[trial] = start;
        for (int c = 0; c < Channels; ++c) {
            float largest = 0;
            for (const float target : start.peaks[c].target)
                largest = std::max(largest, std::abs(target));
            const bool stands = frame.channel[c].peakGain > 0;
            setGain(trials[trial].peaks[c], stands ? largest / (LargestOfShape[trial] * m_books.rms) : 0);
        }
        findShape(trials[trial]);
    });
    const Coding &best = *std::min_element(
        trials.begin(), trials.end(), [](const Coding &a, const Coding &b) { return a.error < b.error; });
    frame.peaks = best.vectors;
    for (int c = 0; c < Channels; ++c) {
        frame.channel[c].peakGain = best.peaks[c].gainField;
        ChannelWork &channel = channels[c];
        for (int n = 0; n < PeakValues; ++n) {
            const int k = m_positions[frame.channel[c].period][n];
            channel.peaks[k] = best.peaks[c].gain * best.peaks[c].shape[n] * channel.curve[k];
            channel.power[k] = square(channel.wanted[k] - channel.peaks[k]);
        }
    }
    return true;
}

/// Where nothing stands out, the gain is set to 0, else to 1.
bool PeakCoder::choosePeriods(Frame &frame, const std::array<ChannelWork, Channels> &channels,
                              const Spectrum &weight, float rms) const
{
    std::array<bool, Channels> found{};
    m_workers.run(Channels, [&](int c) {
        const ChannelWork &channel = channels[c];
        Spectrum outstanding;
        for (int k = 0; k < FrameSize; ++k)
            outstanding[k] =
                weight[k] * std::max(square(channel.wanted[k]) - 1.5F * square(channel.level[k] * rms), 0.0F);
        float best = 0;
        for (int period = 0; period < PeakPeriods; ++period) {
            float sum = 0;
            for (const int position : m_positions[period])
                sum += outstanding[position];
            if (sum > best) {
                best = sum;
                frame.channel[c].period = static_cast<std::uint16_t>(period);
                found[c] = true;
            }
        }
        frame.channel[c].peakGain = found[c] ? 1 : 0;
    });
    return found[0] || found[1];
}

void PeakCoder::setGain(Peaks &peaks, float wanted)
{
    int gain = 0;
    while (gain < PeakGains - 1 &&
           peakGainValue(gain) * peakGainValue(gain + 1) < static_cast<double>(wanted) * wanted)
        ++gain;
    peaks.gainField = static_cast<std::uint8_t>(gain);
    peaks.gain = static_cast<float>(peakGainValue(gain));
}

/// The entries of both channels' shapes for their gains, and gains that suit them better.
void PeakCoder::findShape(Coding &coding) const
{
    constexpr int Rounds = 2;
    for (int round = 0; round < Rounds; ++round) {
        for (int c = 0; round > 0 && c < Channels; ++c) {
            Peaks &of = coding.peaks[c];
            float product = 0, power = 0;
            for (int n = 0; n < PeakValues; ++n) {
                product += of.weight[n] * of.target[n] * of.shape[n];
                power += of.weight[n] * square(of.shape[n]);
            }
            if (of.gainField > 0)
                setGain(of, std::max(product / power, 0.0F));
        }
        coding.error = 0;
        for (int vector = 0; vector < PeakVectors; ++vector) {
            SearchVector search{PeakVectorLength, {}, {}};
            for (int n = 0; n < PeakVectorLength; ++n) {
                const PeakPlace place = peakPlace(vector, n);
                const Peaks &of = coding.peaks[place.channel];
                search.target[n] = of.target[place.value] / of.gain;
                search.weight[n] = of.weight[place.value] * square(of.gain);
            }
            coding.vectors[vector] = bestPair(m_books, search, true);
            for (int n = 0; n < PeakVectorLength; ++n) {
                const PeakPlace place = peakPlace(vector, n);
                const float value = pairValue(m_books, coding.vectors[vector], n);
                coding.peaks[place.channel].shape[place.value] = value;
                coding.error += search.weight[n] * square(search.target[n] - value);
            }
        }
    }
}

} // namespace vqf
