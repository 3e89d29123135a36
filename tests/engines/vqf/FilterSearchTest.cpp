#include "engines/vqf/FilterSearch.h"

#include "engines/vqf/LspAnalysis.h"

#include <cmath>
#include <gtest/gtest.h>
#include <numbers>
#include <numeric>
#include <random>

namespace {

using namespace vqf;

constexpr int Size = FrameSize; // of a long block
constexpr float AnyGain = 100;
constexpr float NeverOverloaded = -1000; // a least level

std::array<float, Size> curveOf(const Lsp &lsp)
{
    std::array<float, Size> curve;
    lpcCurve(Long, lsp, curve);
    return curve;
}

ChannelFields randomFields(std::mt19937 &random)
{
    ChannelFields fields;
    fields.lspPredictor = static_cast<std::uint8_t>(random() % 2);
    fields.lspFirst = static_cast<std::uint8_t>(random() % BookSize);
    for (std::uint8_t &second : fields.lspSecond)
        second = static_cast<std::uint8_t>(random() % LspSecondSize);
    return fields;
}

/// A filter that fields stand for, and a target made of its curve.
class KnownFilter
{
public:
    /// `hasHistory`: it's predicted from another one.
    KnownFilter(unsigned seed, bool hasHistory) : m_random(seed)
    {
        if (hasHistory)
            m_last = decodeLsp(*measuredTables(), randomFields(m_random), m_last).raw;
        m_curve = curveOf(decodeLsp(*measuredTables(), randomFields(m_random), m_last).lsp);
        std::uniform_real_distribution<float> any(-2, 2);
        for (int k = 8; k < Size; k += 16)
            m_target.points.push_back({std::numbers::pi * (k + 0.5) / Size, std::log(m_curve[k]) + LogGain,
                                       std::exp(any(m_random)), NeverOverloaded});
    }

    ChannelFields find(float mostGain) const
    {
        static const LspAnalysis analysis;
        std::array<float, Size> power;
        for (int k = 0; k < Size; ++k)
            power[k] = 1e6F * m_curve[k] * m_curve[k];
        FilterTarget target = m_target;
        target.mostGain = mostGain;
        return FilterSearch(*measuredTables())
            .best(target, {analysis.analyse(Long, power.data(), 0.5F).value()}, m_last, {})
            .at(0);
    }

    struct Distance
    {
        double gain; ///< natural logarithm of the factor that is between the curve and the target
        double rms;  ///< of what is missed with it, in dB
    };
    Distance distance(const ChannelFields &fields) const
    {
        const std::array<float, Size> curve = curveOf(decodeLsp(*measuredTables(), fields, m_last).lsp);
        double costs = 0, sum = 0, squares = 0;
        for (const FilterPoint &point : m_target.points) {
            const auto k = static_cast<std::size_t>(point.angle / std::numbers::pi * Size);
            const double ratio = point.logLevel - std::log(curve[k]);
            costs += point.cost;
            sum += point.cost * ratio;
            squares += point.cost * ratio * ratio;
        }
        const double gain = sum / costs;
        return {gain, 20 / std::numbers::ln10 * std::sqrt(std::max(squares / costs - gain * gain, 0.0))};
    }

    static constexpr float LogGain = 3;

private:
    std::mt19937 m_random;
    Lsp m_last{};
    std::array<float, Size> m_curve;
    FilterTarget m_target;
};

TEST(FilterSearchTest, aCurveThatFieldsStandForIsFound)
{
    for (const bool hasHistory : {false, true}) {
        constexpr unsigned Filters = 30;
        double sum = 0;
        for (unsigned seed = 0; seed < Filters; ++seed) {
            const KnownFilter filter(seed, hasHistory);
            const KnownFilter::Distance distance = filter.distance(filter.find(AnyGain));
            EXPECT_NEAR(distance.gain, KnownFilter::LogGain, 0.3) << seed;
            EXPECT_LT(distance.rms, hasHistory ? 2 : 8) << seed;
            sum += distance.rms;
        }
        // Out of nothing all angles are small, and few start values are near enough.
        EXPECT_LT(sum / Filters, hasHistory ? 0.2 : 2.5);
    }
}

TEST(FilterSearchTest, whereGainIsShortAFilterThatNeedsLessOfItIsTaken)
{
    for (unsigned seed = 0; seed < 15; ++seed) {
        const KnownFilter filter(seed, true);
        const double wanted = filter.distance(filter.find(AnyGain)).gain;
        const double some = filter.distance(filter.find(KnownFilter::LogGain - 1)).gain;
        const double less = filter.distance(filter.find(KnownFilter::LogGain - 3)).gain;
        EXPECT_LT(some, wanted) << seed;
        EXPECT_LT(less, some) << seed;
        EXPECT_LT(less, wanted - 0.05) << seed;
    }
}

} // namespace
