#pragma once

#include "engines/dsp/DecoderProbe.h"
#include "engines/dsp/Mdct.h"
#include "engines/vqf/Reconstruction.h"

#include <cmath>

/// Plays frames as the format says, by our own code. Samples are in 16-bit units, left and right; sample 0 is
/// the first one that a decoder gives, and there is none before it.
class ModelDecoder
{
public:
    using Samples = std::array<std::vector<double>, 2>;

    static Samples decode(const std::vector<vqf::Frame> &frames)
    {
        using namespace vqf;
        SpectrumDecoder decoder(*measuredTables());
        // Two frames of run-in come before the first sample.
        constexpr int RunIn = 2 * FrameSize;
        Samples samples;
        samples.fill(std::vector<double>(FrameSize * (frames.size() + 1)));
        for (std::size_t k = 0; k < frames.size(); ++k) {
            WindowShape shape = WindowShapes[frames[k].window];
            if (k + 1 < frames.size())
                shape.rightSlope = WindowShapes[frames[k + 1].window].leftSlope;
            const auto spectra = decoder.decode(frames[k]);
            const auto start =
                static_cast<std::size_t>(regionStart(static_cast<long long>(k)) + RunIn - FrameSize / 2);
            for (int c = 0; c < Channels; ++c)
                addFrame(shape, spectra[c], samples[c].data() + start);
        }
        for (auto &channel : samples) {
            channel.erase(channel.begin(), channel.begin() + RunIn);
            channel.resize(FrameSize * (frames.size() - 2)); // the last frame lacks its successor's share
        }
        for (std::size_t n = 0; n < samples[0].size(); ++n) {
            const double mid = samples[0][n], side = samples[1][n];
            samples[0][n] = mid + side;
            samples[1][n] = mid - side;
        }
        return samples;
    }

private:
    /// Adds a frame's windowed contribution to the 2 * FrameSize samples in whose middle half its region
    /// lies.
    static void addFrame(const vqf::WindowShape &shape, const std::vector<float> &spectrum, double *samples)
    {
        const vqf::TypeLayout &layout = vqf::Layouts[shape.type];
        const int size = layout.blockSize;
        dsp::Mdct<double> transform(size);
        std::vector<double> block(2 * size);
        for (int n = 0; n < layout.blocks; ++n) {
            const std::vector<double> coefficients(spectrum.begin() + n * size,
                                                   spectrum.begin() + (n + 1) * size);
            transform.inverse(coefficients.data(), block.data());
            const bool first = n == 0, last = n == layout.blocks - 1;
            dsp::applyLeftSlope(block.data(), size, first ? shape.leftSlope : layout.innerSlope);
            dsp::applyRightSlope(block.data(), size, last ? shape.rightSlope : layout.innerSlope);
            double *start = samples + vqf::FrameSize / 2 + n * size - size / 2;
            for (int i = 0; i < 2 * size; ++i)
                start[i] += block[i] / std::sqrt(size);
        }
    }
};

/// The same by the system's decoder, from packets.
inline ModelDecoder::Samples decodeBySystem(const std::vector<std::vector<std::uint8_t>> &packets)
{
    dsp::ProbedStream stream;
    stream.codec = "twinvq";
    stream.extradata = {0, 0, 0, 1, 0, 0, 0, 96, 0, 0, 0, 44};
    dsp::DecoderProbe probe(stream);
    ModelDecoder::Samples samples;
    for (const std::vector<std::uint8_t> &packet : packets) {
        const auto decoded = probe.decode(packet);
        for (std::size_t c = 0; c < decoded.size(); ++c)
            for (const float sample : decoded[c])
                samples[c].push_back(sample * 32768.0);
    }
    return samples;
}
