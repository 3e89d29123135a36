#include "FrameProbe.h"
#include "TestFrame.h"
#include "engines/wma/StreamFormat.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <stdexcept>

namespace wma {

namespace {

constexpr int Step = 4; ///< of the exponents, up and down from band to band
constexpr int MostBands = 26;

/// One size of block in a stream whose blocks vary in size.
class BandProbe
{
public:
    BandProbe(const std::string &decoder, const Measured &measured, const StreamFormat &format, int halvings)
        : m_measured(measured),
          m_format(format),
          m_halvings(halvings),
          m_coded(format.codedEnd(halvings)),
          m_probe(decoder, format.rate(), format.channels(), format.bitRate(),
                  CodedExponents | VariableBlocks | AllHalvings, silence(true), silence(false))
    {}

    MeasuredBands measure()
    {
        // Zeros too many among the noise flags would be taken for bands without a step, so the most bands
        // win.
        for (int bands = MostBands; bands > 0; --bands)
            for (int noiseFlags = 0; noiseFlags < (m_format.hasNoise() ? bands : 1); ++noiseFlags)
                if (const auto spectrum = m_probe.spectrum(frame(bands, noiseFlags), blockSize());
                    spectrum && isPattern(*spectrum))
                    return {m_format.rate(), blockSize(), bands, widths(*spectrum)};
        throw std::runtime_error("no number of bands fits a block");
    }

private:
    int blockSize() const { return m_format.blockSize(m_halvings); }

    const MeasuredCoefficients &coefficients() const
    {
        return m_measured.coefficients[m_format.tablePair()][0];
    }

    /// Each coefficient is one level, in a band with the larger or the smaller exponent.
    bool isPattern(const std::vector<double> &spectrum) const
    {
        return SignPattern(coefficients()).matches(spectrum, m_coded) &&
               std::all_of(spectrum.begin(), spectrum.begin() + m_coded, [](double coefficient) {
                   const double steps = -16 * std::log10(std::abs(coefficient) / TestLevel);
                   return std::abs(steps) < 1 || std::abs(steps - Step) < 1;
               });
    }

    void putSize(dsp::BitWriter &writer) const
    {
        writer.put(static_cast<unsigned>(m_halvings), m_format.sizeBits());
    }

    /// Blocks name the size of the next one; the first of all also that of the one before and its own.
    dsp::BitWriter silence(bool first) const
    {
        dsp::BitWriter writer;
        for (int codes = first ? 2 : 0; codes > 0; --codes)
            putSize(writer);
        putSilence(writer, 1 << m_halvings);
        return writer;
    }

    void putSilence(dsp::BitWriter &writer, int blocks) const
    {
        for (; blocks > 0; --blocks) {
            putSize(writer);
            writer.put(0, 1);
        }
    }

    /// The first block holds the pattern, the others are silent.
    dsp::BitWriter frame(int bands, int noiseFlags) const
    {
        dsp::BitWriter writer;
        putSize(writer);
        writer.put(1, 1);
        writer.put(TestGain - 1, 7);
        writer.put(0, noiseFlags);
        if (m_halvings > 0)
            writer.put(1, 1);
        for (int band = 0; band < bands; ++band)
            put(writer, m_measured.exponents[LargestExponentStep + (band % 2 == 0 ? Step : -Step)]);
        SignPattern(coefficients()).put(writer, m_coded);
        putSilence(writer, (1 << m_halvings) - 1);
        return writer;
    }

    /// Of the bands whose first coefficient is coded; the last reaches to the end of the block.
    std::vector<std::uint16_t> widths(const std::vector<double> &spectrum) const
    {
        const double threshold = std::pow(10.0, Step / 16.0 / 2);
        std::vector<std::uint16_t> widths;
        int begin = 0;
        for (int k = 1; k < m_coded; ++k) {
            const double ratio = std::abs(spectrum[k] / spectrum[k - 1]);
            if (ratio > threshold || ratio < 1 / threshold) {
                widths.push_back(static_cast<std::uint16_t>(k - begin));
                begin = k;
            }
        }
        widths.push_back(static_cast<std::uint16_t>(blockSize() - begin));
        return widths;
    }

    const Measured &m_measured;
    const StreamFormat m_format;
    const int m_halvings;
    const int m_coded;
    FrameProbe m_probe;
};

} // namespace

void measureBands(const std::string &decoder, Measured &measured)
{
    for (const int rate : {8000, 11025, 16000, 22050, 32000, 44100, 48000}) {
        const StreamFormat format(rate, 1, rate);
        for (int halvings = 0; halvings <= format.halvings(); ++halvings)
            measured.bands.push_back(BandProbe(decoder, measured, format, halvings).measure());
    }
}

} // namespace wma
