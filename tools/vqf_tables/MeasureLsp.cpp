// The filter's codebooks. Short frames show the curve at all points, and in absolute units once the rest is
// known; the angles are fitted to it. A silent frame before the test sets what the angles are predicted from.
#include "Measurement.h"
#include "engines/vqf/Reconstruction.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <stdexcept>

namespace vqf {

namespace {

constexpr int Gain = 200;

struct LspFields
{
    int predictor = 0;
    int first = 0;
    int second = 0; ///< the same for all splits

    void putInto(Frame &frame) const
    {
        for (ChannelFields &channel : frame.channel) {
            channel.lspPredictor = static_cast<std::uint8_t>(predictor);
            channel.lspFirst = static_cast<std::uint8_t>(first);
            channel.lspSecond.fill(static_cast<std::uint8_t>(second));
        }
    }
};

constexpr int Points = Layouts[Short].blockSize;
using Curve = std::array<double, Points>;

double cosineAt(int k)
{
    return std::cos(std::numbers::pi * (k + 0.5) / Points);
}

/// The curve behind the decoder's spectrum: the quotient to what it would be without a filter.
Curve curveOf(FrameProbe &probe, const Tables &tables, const LspFields &fields, const LspFields &before)
{
    Frame frame = FrameProbe::testFrame(Short, Gain);
    fields.putInto(frame);
    for (int vector = 0; vector < Layouts[Short].vectors; ++vector)
        frame.main[vector].first = frame.main[vector].second = static_cast<std::uint8_t>(vector % BookSize);
    Frame silence = FrameProbe::silence();
    before.putInto(silence);
    const FrameProbe::Spectra shown = probe.spectra(frame, silence);
    // What it would be is our own decoding, with any filter, divided by that filter's curve.
    const auto expected = SpectrumDecoder(tables).decode(frame);
    std::array<float, Points> ownCurve;
    lpcCurve(Short, decodeLsp(tables, frame.channel[0], Lsp{}).lsp, ownCurve);
    Curve above{}, below{};
    for (int c = 0; c < Channels; ++c) {
        for (int k = 0; k < FrameSize; ++k) {
            const double plain = expected[c][k] / ownCurve[k % Points];
            above[k % Points] += shown[c][k] * plain;
            below[k % Points] += plain * plain;
        }
    }
    Curve curve;
    std::transform(above.begin(), above.end(), below.begin(), curve.begin(), std::divides<>());
    return curve;
}

/// Angles whose power response the curve is about: sampled sharp peaks leave an error.
Lsp firstGuess(const Curve &curve)
{
    std::array<double, LspOrder + 1> correlation{};
    for (int lag = 0; lag <= LspOrder; ++lag)
        for (int k = 0; k < Points; ++k)
            correlation[lag] += curve[k] * std::cos(std::numbers::pi * (k + 0.5) / Points * lag);
    const auto lsp = lspOf(correlation);
    if (!lsp)
        throw std::runtime_error("the filter's curve has no angles");
    return *lsp;
}

/// Solves the equations in place by elimination; the matrix is symmetric and positive.
Lsp solve(std::array<Lsp, LspOrder> matrix, Lsp right)
{
    for (int row = 0; row < LspOrder; ++row) {
        for (int below = row + 1; below < LspOrder; ++below) {
            const double factor = matrix[below][row] / matrix[row][row];
            for (int column = row; column < LspOrder; ++column)
                matrix[below][column] -= factor * matrix[row][column];
            right[below] -= factor * right[row];
        }
    }
    for (int row = LspOrder - 1; row >= 0; --row) {
        for (int column = row + 1; column < LspOrder; ++column)
            right[row] -= matrix[row][column] * right[column];
        right[row] /= matrix[row][row];
    }
    return right;
}

/// One step towards the angles with the least squared error of the curve's logarithm; its largest part.
double improve(Lsp &lsp, const Curve &curve)
{
    const Lsp cosines = cosinesOf(lsp);
    std::array<Lsp, LspOrder> matrix{};
    Lsp right{};
    for (int k = 0; k < Points; ++k) {
        const double cosine = cosineAt(k);
        const LspProducts products = lspProducts(cosines, cosine);
        const double value = products.curve(cosine);
        const double error = std::log(curve[k] / value);
        Lsp slope;
        for (int n = 0; n < LspOrder; ++n) {
            const double part = n % 2 == 0 ? products.even * products.even * (2 + 2 * cosine)
                                           : products.odd * products.odd * (2 - 2 * cosine);
            slope[n] = 2 * value * 2 * part * std::sin(lsp[n]) / (cosines[n] - cosine);
        }
        for (int row = 0; row < LspOrder; ++row) {
            right[row] += slope[row] * error;
            for (int column = 0; column < LspOrder; ++column)
                matrix[row][column] += slope[row] * slope[column];
        }
    }
    const Lsp step = solve(matrix, right);
    double largest = 0;
    for (const double part : step)
        largest = std::max(largest, std::abs(part));
    for (int n = 0; n < LspOrder; ++n)
        lsp[n] += step[n] * std::min(1.0, 0.01 / largest);
    return largest;
}

Lsp anglesOf(FrameProbe &probe, const Tables &tables, const LspFields &fields, const LspFields &before)
{
    const Curve curve = curveOf(probe, tables, fields, before);
    Lsp lsp = firstGuess(curve);
    for (int round = 0; round < 100 && improve(lsp, curve) > 1e-8; ++round) {
    }
    return lsp;
}

std::int16_t tableUnits(double angle)
{
    return static_cast<std::int16_t>(std::lround(angle * 10000));
}

} // namespace

void measureLsp(FrameProbe &probe, Tables &tables)
{
    for (auto &row : tables.lspFirst)
        for (int n = 0; n < LspOrder; ++n)
            row[n] = static_cast<std::int16_t>(1400 * (n + 1)); // any will do until they are known
    std::array<Lsp, BookSize> first;
    for (int entry = 0; entry < BookSize; ++entry) {
        const LspFields fields{0, entry, 0};
        first[entry] = anglesOf(probe, tables, fields, fields);
    }
    // Second stages move angles by up to 0.08; beside the widest first stage they don't collide.
    const auto narrowest = [](const Lsp &lsp) {
        double least = lsp[0];
        for (int n = 1; n < LspOrder; ++n)
            least = std::min(least, lsp[n] - lsp[n - 1]);
        return least;
    };
    const int widest = static_cast<int>(
        std::max_element(first.begin(), first.end(),
                         [&](const Lsp &a, const Lsp &b) { return narrowest(a) < narrowest(b); }) -
        first.begin());
    for (int entry = 0; entry < LspSecondSize; ++entry) {
        const LspFields fields{0, widest, entry};
        const Lsp angles = anglesOf(probe, tables, fields, fields);
        for (int n = 0; n < LspOrder; ++n)
            tables.lspSecond[entry][n] = tableUnits(angles[n] - first[widest][n]);
    }
    for (int predictor = 0; predictor < 2; ++predictor) {
        Lsp above{}, below{};
        for (int pair = 0; pair < 16; ++pair) {
            const int now = pair, last = BookSize - 1 - pair;
            const Lsp angles = anglesOf(probe, tables, {predictor, now, 0}, {predictor, last, 0});
            for (int n = 0; n < LspOrder; ++n) {
                const double distance = first[last][n] - first[now][n];
                above[n] += (angles[n] - first[now][n]) * distance;
                below[n] += distance * distance;
            }
        }
        for (int n = 0; n < LspOrder; ++n)
            tables.lspPredictor[predictor][n] = tableUnits(above[n] / below[n]);
    }
    // Only sums of both stages show; the second stage's entry 0 counts as none.
    for (int entry = 0; entry < BookSize; ++entry)
        std::transform(first[entry].begin(), first[entry].end(), tables.lspFirst[entry].begin(), tableUnits);
}

} // namespace vqf
