#pragma once

#include "Measurement.h"
#include "engines/dsp/BitWriter.h"

#include <cmath>
#include <functional>
#include <vector>

namespace wma {

inline void put(dsp::BitWriter &writer, const Code &code)
{
    writer.put(code.bits, code.length);
}

constexpr Code extended(const Code &code, unsigned bit)
{
    return {code.bits << 1 | bit, static_cast<std::uint8_t>(code.length + 1)};
}

inline constexpr int TestGain =
    60; ///< dB; the smallest level becomes TestLevel, and escaped levels have 9 bits
inline constexpr double TestLevel = 1000;

/// Calls `visit` with each word of a prefix code, from the shortest on, until it has been told of each leaf:
/// `visit` says whether the word is one. Words beyond `longest` bits aren't looked at.
inline void walkCode(int longest, const std::function<bool(const Code &)> &visit, const Code &from = {})
{
    if (from.length > longest || (from.length > 0 && visit(from)))
        return;
    walkCode(longest, visit, extended(from, 0));
    walkCode(longest, visit, extended(from, 1));
}

/// The sum over all words of a complete prefix code is 1.
template <typename Codes>
double kraftSum(const Codes &codes)
{
    double sum = 0;
    for (const Code &code : codes)
        sum += 1.0 / static_cast<double>(1U << code.length);
    return sum;
}

/// Coefficients that are all one level up or down, by a fixed pattern of signs.
class SignPattern
{
public:
    explicit SignPattern(const MeasuredCoefficients &code) : m_code(code.symbols.at(0)) {}

    void put(dsp::BitWriter &writer, int count)
    {
        for (int k = 0; k < count; ++k) {
            wma::put(writer, m_code);
            writer.put(isPositive(k), 1);
        }
    }

    /// Whether the first `count` coefficients have these signs, and none is missing.
    bool matches(const std::vector<double> &spectrum, int count) const
    {
        for (int k = 0; k < count; ++k)
            if ((spectrum[k] > 0) != isPositive(k) || std::abs(spectrum[k]) < Faintest)
                return false;
        return true;
    }

    static bool isPositive(int k) { return (static_cast<unsigned>(k) * 2654435761U >> 20 & 1) != 0; }

private:
    static constexpr double Faintest =
        1e-5 * TestLevel; ///< below the largest exponent's by sixty steps: 1.8e-4

    Code m_code;
};

} // namespace wma
