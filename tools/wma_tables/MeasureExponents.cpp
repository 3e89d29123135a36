#include "FrameProbe.h"
#include "TestFrame.h"
#include "engines/wma/StreamFormat.h"

#include <cmath>
#include <stdexcept>

namespace wma {

namespace {

constexpr int Rate = 44100, BitRate = 64000;
constexpr int Bands = 25;
constexpr int LastBand = 1440; ///< its first coefficient
constexpr int LongestCode = 19;

using Exponents = decltype(Tables::exponents);

/// The difference in the last band for each word of the code. The band before lies by `lowered` below all
/// others, which `before` holds.
Exponents measure(FrameProbe &probe, const MeasuredCoefficients &coefficients, const dsp::BitWriter &before,
                  int lowered)
{
    const int coded = StreamFormat(Rate, 1, BitRate).codedEnd(0);
    SignPattern pattern(coefficients);
    Exponents exponents{};
    walkCode(LongestCode, [&](const Code &code) {
        dsp::BitWriter frame = before;
        put(frame, code);
        pattern.put(frame, coded);
        const auto spectrum = probe.spectrum(std::move(frame));
        if (!spectrum || !pattern.matches(*spectrum, coded))
            return false;
        double last = 0;
        for (int k = LastBand; k < coded; ++k)
            last += SignPattern::isPositive(k) ? spectrum->at(k) : -spectrum->at(k);
        const double ratio = last / (coded - LastBand) / std::abs(spectrum->at(0));
        const auto step = std::lround(16 * std::log10(ratio)) + lowered;
        if (std::abs(step) <= LargestExponentStep)
            exponents[static_cast<std::size_t>(step + LargestExponentStep)] = code;
        return true;
    });
    return exponents;
}

} // namespace

void measureExponents(const std::string &decoder, Measured &measured)
{
    FrameProbe probe(decoder, Rate, 1, BitRate, CodedExponents);
    const MeasuredCoefficients &coefficients = measured.coefficients[2][0];
    dsp::BitWriter frame;
    frame.put(1, 1);
    frame.put(TestGain - 1, 7);
    frame.put(0, Bands - 2); // equal exponents
    dsp::BitWriter flat = frame;
    flat.put(0, 1);
    measured.exponents = measure(probe, coefficients, flat, 0);
    // The largest difference leaves the legal range from there.
    constexpr int Lowered = 20;
    put(frame, measured.exponents[LargestExponentStep - Lowered]);
    measured.exponents.back() = measure(probe, coefficients, frame, Lowered).back();
    if (kraftSum(measured.exponents) != 1)
        throw std::runtime_error("the code of exponents isn't complete");
}

} // namespace wma
