#pragma once

#include "engines/vqf/Reconstruction.h"

namespace vqf {

/// What a filter's curve should be at a point of a block's spectrum, and what missing it costs.
struct FilterPoint
{
    double angle;
    float logLevel; ///< natural logarithm of the amplitude
    float cost;     ///< of the squared logarithm of the ratio to that level
    float least;    ///< natural logarithm of the smallest level that isn't overloaded there
};

/// The wanted curve up to its gain.
struct FilterTarget
{
    std::vector<FilterPoint> points;
    float mostGain; ///< natural logarithm of the largest factor that may be between the curve and the levels
};

/// Finds the fields whose filter comes nearest to a target.
class FilterSearch
{
public:
    explicit FilterSearch(const Tables &tables);

    /// Good choices, the best one by the target first. `starts` are the filters that the search sets out
    /// from, `last` is what the fields are predicted from.
    std::vector<ChannelFields> best(const FilterTarget &target, const std::vector<Lsp> &starts,
                                    const Lsp &last, const ChannelFields &fields) const;

private:
    struct Candidate
    {
        ChannelFields fields;
        float cost;
    };
    class Curve;

    void addCoarse(const Curve &curve, const Lsp &start, const Lsp &last, const ChannelFields &fields,
                   std::vector<Candidate> &candidates) const;
    void refine(const Curve &curve, const Lsp &last, Candidate &candidate) const;
    std::array<std::uint8_t, LspSplits> nearestSeconds(const Lsp &target, const Lsp &weight, int first) const;

    const Tables &m_tables;
};

} // namespace vqf
