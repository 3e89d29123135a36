#include "engines/vqf/Layout.h"

#include <cmath>

namespace vqf {

VectorLayout::VectorLayout(BlockType type)
    : m_layout(Layouts[type]), m_places(m_layout.vectors * MaxVectorLength)
{
    const int vectors = m_layout.vectors;
    const int allBlocks = Channels * m_layout.blocks;
    for (int vector = 0; vector < vectors; ++vector) {
        for (int row = 0; row < length(vector); ++row) {
            const bool incomplete = row == m_layout.vectorLength - 1;
            const int shift = incomplete || type == Short ? 0 : type == Long ? row : row * row;
            const int position = row * vectors + (vector + shift) % vectors;
            const int block = position % allBlocks;
            const int coefficient = position / allBlocks;
            m_places[vector * MaxVectorLength + row] = {
                block / m_layout.blocks, block % m_layout.blocks * m_layout.blockSize + coefficient,
                coefficient};
        }
    }
}

int VectorLayout::length(int vector) const
{
    return vector < m_layout.longVectors ? m_layout.vectorLength : m_layout.vectorLength - 1;
}

PeakPlace peakPlace(int vector, int element)
{
    const int position = element * PeakVectors + (vector + element * element) % PeakVectors;
    return {position % Channels, position / Channels};
}

std::vector<int> peakPositions(int period)
{
    const int length = 3724 + static_cast<int>(std::lround(period * 18618 / 511.0));
    const int width = length * 432 / 819200;
    const double distance = static_cast<float>(length / 400.0);
    std::vector<int> positions;
    for (int n = 0; n < width / 2; ++n)
        positions.push_back(n);
    for (int peak = 1; static_cast<int>(positions.size()) < PeakValues; ++peak) {
        const int center = static_cast<int>(std::floor(peak * distance + 0.5));
        for (int n = -(width / 2); n < (width + 1) / 2; ++n)
            positions.push_back(center + n);
    }
    positions.resize(PeakValues);
    return positions;
}

} // namespace vqf
