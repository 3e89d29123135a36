#include "FrameProbe.h"
#include "TestFrame.h"
#include "engines/wma/StreamFormat.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <stdexcept>

namespace wma {

namespace {

constexpr int Rate = 22050, BitRate = 16000;
constexpr int FirstLevel = 60; ///< dB
constexpr int Averaged = 60;   ///< frames
constexpr int LongestCode = 13;

} // namespace

/// The last two bands are noise: the power of the second, with the level under test, is compared with that of
/// the first.
void measureNoiseLevels(const std::string &decoder, Measured &measured)
{
    const StreamFormat format(Rate, 1, BitRate);
    FrameProbe probe(decoder, Rate, 1, BitRate, CodedExponents);
    SignPattern pattern(measured.coefficients[format.tablePair()][0]);
    const auto bands = std::find_if(measured.bands.begin(), measured.bands.end(), [&](const auto &list) {
        return list.rate == Rate && list.blockSize == format.frameSize();
    });
    const int end = format.codedEnd(0);
    const int last = format.frameSize() - bands->widths.back();
    const int first = std::max(last - bands->widths.end()[-2], format.noiseBegin(0));
    int noiseBands = 0;
    for (int edge = 0; const int width : bands->widths) {
        edge += width;
        noiseBands += edge > format.noiseBegin(0);
    }

    const auto frame = [&](const Code &code) {
        dsp::BitWriter writer;
        writer.put(1, 1);
        writer.put(TestGain - 1, 7);
        writer.put(3, noiseBands);
        writer.put(FirstLevel + 19, 7);
        put(writer, code);
        writer.put(0, bands->bands);
        pattern.put(writer, first);
        return writer;
    };
    const auto power = [](const std::vector<double> &spectrum, int from, int to) {
        return std::inner_product(spectrum.begin() + from, spectrum.begin() + to, spectrum.begin() + from,
                                  0.0) /
               (to - from);
    };
    walkCode(LongestCode, [&](const Code &code) {
        double lower = 0, upper = 0;
        for (int n = 0; n < Averaged; ++n) {
            const auto spectrum = probe.spectrum(frame(code));
            if (!spectrum || !pattern.matches(*spectrum, first))
                return false;
            lower += power(*spectrum, first, last);
            upper += power(*spectrum, last, end);
        }
        const auto step = std::lround(10 * std::log10(upper / lower));
        if (std::abs(step) <= LargestNoiseStep)
            measured.noiseLevels[static_cast<std::size_t>(step + LargestNoiseStep)] = code;
        return true;
    });
    if (kraftSum(measured.noiseLevels) != 1)
        throw std::runtime_error("the code of noise levels isn't complete");
}

} // namespace wma
