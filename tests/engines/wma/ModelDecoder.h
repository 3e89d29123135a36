#pragma once

#include "engines/dsp/DecoderProbe.h"
#include "engines/dsp/Mdct.h"
#include "engines/wma/Frame.h"
#include "engines/wma/PacketWriter.h"

#include <algorithm>
#include <cmath>
#include <map>

using Samples = std::vector<std::vector<double>>; ///< of each channel, in 16-bit units

/// Plays frames as the format says, by our own code. Sample 0 is the first one that a decoder gives which
/// drops nothing.
class ModelDecoder
{
public:
    ModelDecoder(const wma::StreamFormat &format, const wma::Tables &tables)
        : m_format(format), m_layouts(blockLayouts(format, tables))
    {
        for (const wma::BlockLayout &layout : m_layouts)
            m_transforms.emplace(layout.size, layout.size);
        m_exponents.resize(2);
    }

    Samples decode(const std::vector<wma::Frame> &frames)
    {
        const auto size = static_cast<std::size_t>(m_format.frameSize());
        Samples samples(m_format.channels(), std::vector<double>(size * (frames.size() + 1)));
        std::vector<const wma::BlockFields *> blocks;
        for (const wma::Frame &frame : frames)
            for (const wma::BlockFields &block : frame)
                blocks.push_back(&block);
        std::size_t begin = size / 2; // of the block's region
        for (std::size_t n = 0; n < blocks.size(); ++n) {
            const int length = m_layouts[blocks[n]->halvings].size;
            const int before = n > 0 ? m_layouts[blocks[n - 1]->halvings].size : length;
            const int behind = n + 1 < blocks.size() ? m_layouts[blocks[n + 1]->halvings].size : length;
            auto spectra = reconstruct(*blocks[n]);
            for (std::size_t c = 0; c < spectra.size(); ++c) {
                std::vector<double> sound(2 * static_cast<std::size_t>(length));
                m_transforms.at(length).inverse(spectra[c].data(), sound.data());
                dsp::applyLeftSlope(sound.data(), length, std::min(length, before));
                dsp::applyRightSlope(sound.data(), length, std::min(length, behind));
                for (int i = 0; i < 2 * length; ++i)
                    samples[c][begin - length / 2 + i] += 2.0 / length * sound[i];
            }
            begin += static_cast<std::size_t>(length);
        }
        for (auto &channel : samples)
            channel.resize(size * frames.size()); // the last frame lacks its successor's share
        return samples;
    }

private:
    /// Left and right.
    Samples reconstruct(const wma::BlockFields &block)
    {
        Samples spectra;
        for (int c = 0; c < m_format.channels(); ++c)
            spectra.push_back(spectrum(block, c));
        if (block.midSide)
            for (std::size_t k = 0; k < spectra[0].size(); ++k) {
                const double mid = spectra[0][k], side = spectra[1][k];
                spectra[0][k] = mid + side;
                spectra[1][k] = mid - side;
            }
        return spectra;
    }

    std::vector<double> spectrum(const wma::BlockFields &block, int number)
    {
        const wma::BlockLayout &layout = m_layouts[block.halvings];
        const wma::ChannelFields &channel = block.channels[number];
        std::vector<double> spectrum(layout.size);
        if (!channel.coded)
            return spectrum;
        if (block.newExponents)
            m_exponents[number] = channel.exponents;
        const auto &exponents = m_exponents[number];
        const int largest = *std::max_element(exponents.begin(), exponents.begin() + layout.bands);
        const double gain = std::pow(10.0, block.gain / 20.0);
        double step = 0;
        int lastNoise = 0;
        for (int band = 0; band < layout.noiseBands(); ++band)
            if (channel.isNoise[band])
                lastNoise = exponents[layout.firstNoiseBand + band];
        for (int band = 0; band < layout.visibleBands(); ++band) {
            step = gain * std::pow(10.0, (exponents[band] - largest) / 16.0);
            const int noiseBand = band - layout.firstNoiseBand;
            for (int k = layout.edges[band]; k < layout.edges[band + 1]; ++k) {
                if (noiseBand >= 0 && k >= layout.noiseBegin && channel.isNoise[noiseBand])
                    spectrum[k] = -nextNoise() / 0.02 *
                                  std::pow(10.0, channel.noiseLevels[noiseBand] / 20.0) *
                                  std::pow(10.0, (2 * exponents[band] - lastNoise - largest) / 16.0);
                else
                    spectrum[k] = (channel.levels[k] - nextNoise()) * step;
            }
        }
        for (int k = layout.codedEnd; k < layout.size; ++k)
            spectrum[k] = -nextNoise() * step;
        return spectrum;
    }

    double nextNoise()
    {
        if (!m_format.hasNoise())
            return 0;
        if (m_noisePlace++ % 8192 == 0)
            m_noise = 1;
        m_noise = m_noise * 314159 + 1;
        return static_cast<std::int32_t>(m_noise) / 2147483648.0 * std::sqrt(3.0) * 0.02;
    }

    const wma::StreamFormat m_format;
    const std::vector<wma::BlockLayout> m_layouts;
    std::map<int, dsp::Mdct<double>> m_transforms;
    std::vector<std::array<std::int8_t, wma::MaxBands>> m_exponents;
    std::uint32_t m_noise = 1;
    int m_noisePlace = 0;
};

/// The same by the system's decoder, from packets.
inline Samples decodeBySystem(const wma::StreamFormat &format, const std::vector<wma::Packet> &packets)
{
    dsp::ProbedStream stream;
    stream.codec = "wmav2";
    stream.rate = format.rate();
    stream.channels = format.channels();
    stream.bitRate = format.bitRate();
    stream.packetSize = format.packetBytes();
    const auto header = format.header();
    stream.extradata.assign(header.begin(), header.end());
    dsp::DecoderProbe probe(stream);
    Samples samples(format.channels());
    for (const wma::Packet &packet : packets) {
        const auto decoded = probe.decode(packet.bytes);
        for (std::size_t c = 0; c < decoded.size(); ++c)
            for (const float sample : decoded[c])
                samples[c].push_back(sample * 32768.0);
    }
    return samples;
}
