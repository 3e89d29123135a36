#include "engines/vqf/FilterSearch.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <limits>
#include <numbers>

namespace vqf {

namespace {

constexpr std::array<int, LspSplits + 1> SplitEdges{0, 4, 9, 14, 20};
constexpr int MaxPoints = 160;
/// How many of the coarse choices are refined, and how often each part of them.
constexpr std::size_t Refined = 4;
constexpr int Rounds = 2;
constexpr std::size_t Kept = 2;

/// The natural logarithm of a positive number to three digits.
inline float quickLog(float x)
{
    const auto bits = std::bit_cast<std::int32_t>(x);
    const float mantissa = std::bit_cast<float>((bits & 0x007fffff) | 0x3f800000);
    const float exponent = static_cast<float>((bits >> 23) - 127);
    const float polynomial =
        -2.505615F +
        mantissa * (4.049617F + mantissa * (-2.099402F + mantissa * (0.635511F - 0.080011F * mantissa)));
    return 0.6931472F * (exponent + polynomial);
}

/// Where angles are close together the curve has a peak, and a small error moves it.
Lsp sensitivity(const Lsp &wanted)
{
    Lsp weight;
    for (int n = 0; n < LspOrder; ++n) {
        const double below = n == 0 ? wanted[n] : wanted[n] - wanted[n - 1];
        const double above = n == LspOrder - 1 ? std::numbers::pi - wanted[n] : wanted[n + 1] - wanted[n];
        weight[n] = 1 / std::max(below, 0.003) + 1 / std::max(above, 0.003);
    }
    return weight;
}

} // namespace

/// The curve at the target's points, as the product of what the splits of the angles contribute.
class FilterSearch::Curve
{
public:
    struct Part
    {
        alignas(32) float odd[MaxPoints];
        alignas(32) float even[MaxPoints];
    };

    explicit Curve(const FilterTarget &target)
        : m_count(static_cast<int>(target.points.size())), m_mostGain(target.mostGain)
    {
        for (int p = 0; p < m_count; ++p) {
            m_cosine[p] = static_cast<float>(2 * std::cos(target.points[p].angle));
            m_logLevel[p] = target.points[p].logLevel;
            m_costs[p] = target.points[p].cost;
            m_least[p] = target.points[p].least - target.points[p].logLevel - HalfCurve - m_mostGain;
            m_sum += target.points[p].cost;
        }
    }

    void set(Part &part, int split, const Lsp &lsp) const
    {
        std::fill_n(part.odd, m_count, 1.0F);
        std::fill_n(part.even, m_count, 1.0F);
        for (int n = SplitEdges[split]; n < SplitEdges[split + 1]; ++n) {
            float *product = n % 2 ? part.odd : part.even;
            const auto cosine = static_cast<float>(2 * std::cos(lsp[n]));
            for (int p = 0; p < m_count; ++p)
                product[p] *= cosine - m_cosine[p];
        }
    }

    /// All splits but one.
    void setRest(Part &rest, int without, const Lsp &lsp) const
    {
        std::fill_n(rest.odd, m_count, 1.0F);
        std::fill_n(rest.even, m_count, 1.0F);
        Part part;
        for (int split = 0; split < LspSplits; ++split) {
            if (split == without)
                continue;
            set(part, split, lsp);
            for (int p = 0; p < m_count; ++p) {
                rest.odd[p] *= part.odd[p];
                rest.even[p] *= part.even[p];
            }
        }
    }

    /// What is missed with the best gain there is.
    float cost(const Part &rest, const Part &part) const
    {
        alignas(32) float ratio[MaxPoints];
        float mean = 0, squares = 0;
        for (int p = 0; p < m_count; ++p) {
            const float odd = rest.odd[p] * part.odd[p], even = rest.even[p] * part.even[p];
            const float inverse = odd * odd * (2 - m_cosine[p]) + even * even * (2 + m_cosine[p]) + 1e-30F;
            ratio[p] = quickLog(inverse) + m_logLevel[p];
            mean += m_costs[p] * ratio[p];
            const float overload = std::max(ratio[p] + m_least[p], 0.0F);
            squares += m_costs[p] * (ratio[p] * ratio[p] + overload * overload);
        }
        const float gain = mean / m_sum - HalfCurve;
        const float missing = std::max(gain - m_mostGain, 0.0F);
        return squares - mean * mean / m_sum + m_sum * missing * missing;
    }

private:
    /// The curve is twice the inverse that is computed here, in logarithm.
    static constexpr float HalfCurve = std::numbers::ln2_v<float>;

    int m_count;
    float m_mostGain;
    float m_sum = 1e-20F;
    alignas(32) float m_cosine[MaxPoints];
    alignas(32) float m_logLevel[MaxPoints];
    alignas(32) float m_costs[MaxPoints];
    alignas(32) float m_least[MaxPoints]; ///< what to add to the ratio for the overload with the most gain
};

FilterSearch::FilterSearch(const Tables &tables) : m_tables(tables) {}

std::array<std::uint8_t, LspSplits> FilterSearch::nearestSeconds(const Lsp &target, const Lsp &weight,
                                                                 int first) const
{
    std::array<std::uint8_t, LspSplits> seconds{};
    for (int split = 0; split < LspSplits; ++split) {
        double best = std::numeric_limits<double>::max();
        for (int second = 0; second < LspSecondSize; ++second) {
            double sum = 0;
            for (int n = SplitEdges[split]; n < SplitEdges[split + 1]; ++n) {
                const double off = target[n] - m_tables.lspFirst[first][n] - m_tables.lspSecond[second][n];
                sum += weight[n] * off * off;
            }
            if (sum < best) {
                best = sum;
                seconds[split] = static_cast<std::uint8_t>(second);
            }
        }
    }
    return seconds;
}

/// Adds what lies nearest to the start with each predictor and first stage.
void FilterSearch::addCoarse(const Curve &curve, const Lsp &start, const Lsp &last,
                             const ChannelFields &fields, std::vector<Candidate> &candidates) const
{
    const Lsp weight = sensitivity(start);
    for (int predictor = 0; predictor < 2; ++predictor) {
        Lsp wanted, cost;
        for (int n = 0; n < LspOrder; ++n) {
            const double history = m_tables.lspPredictor[predictor][n] * 0.0001;
            wanted[n] = (start[n] - last[n] * history) / (1 - history) * 10000;
            cost[n] = weight[n] * (1 - history) * (1 - history);
        }
        for (int first = 0; first < BookSize; ++first) {
            ChannelFields trial = fields;
            trial.lspPredictor = static_cast<std::uint8_t>(predictor);
            trial.lspFirst = static_cast<std::uint8_t>(first);
            trial.lspSecond = nearestSeconds(wanted, cost, first);
            const Lsp lsp = decodeLsp(m_tables, trial, last).lsp;
            Curve::Part rest, part;
            curve.setRest(rest, 0, lsp);
            curve.set(part, 0, lsp);
            candidates.push_back({trial, curve.cost(rest, part)});
        }
    }
}

/// Tries all second stages of one split after the other.
void FilterSearch::refine(const Curve &curve, const Lsp &last, Candidate &candidate) const
{
    Curve::Part rest, part;
    for (int round = 0; round < Rounds; ++round) {
        const float before = candidate.cost;
        for (int split = 0; split < LspSplits; ++split) {
            curve.setRest(rest, split, decodeLsp(m_tables, candidate.fields, last).lsp);
            ChannelFields trial = candidate.fields;
            for (int second = 0; second < LspSecondSize; ++second) {
                trial.lspSecond[split] = static_cast<std::uint8_t>(second);
                curve.set(part, split, decodeLsp(m_tables, trial, last).lsp);
                const float cost = curve.cost(rest, part);
                if (cost < candidate.cost)
                    candidate = {trial, cost};
            }
        }
        if (candidate.cost >= before)
            break;
    }
}

std::vector<ChannelFields> FilterSearch::best(const FilterTarget &target, const std::vector<Lsp> &starts,
                                              const Lsp &last, const ChannelFields &fields) const
{
    const Curve curve(target);
    std::vector<Candidate> candidates;
    for (const Lsp &start : starts)
        addCoarse(curve, start, last, fields, candidates);
    const auto cheaper = [](const Candidate &a, const Candidate &b) { return a.cost < b.cost; };
    std::sort(candidates.begin(), candidates.end(), cheaper);
    candidates.resize(std::min(Refined, candidates.size()));
    for (Candidate &candidate : candidates)
        refine(curve, last, candidate);
    std::sort(candidates.begin(), candidates.end(), cheaper);
    std::vector<ChannelFields> found;
    for (const Candidate &candidate : candidates)
        if (found.size() < Kept)
            found.push_back(candidate.fields);
    return found;
}

} // namespace vqf
