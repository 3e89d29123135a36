#pragma once

#include <array>

/// The one mode that is written: 44.1 kHz stereo at 96 kb/s. A frame holds 2048 samples of each of two
/// channels, coded as the mid M = (L + R) / 2 and the side S = (L - R) / 2, in a fixed number of bits.
namespace vqf {

constexpr int SampleRate = 44100;
constexpr int KilobitsPerSecond = 96;
constexpr int Channels = 2;
constexpr int FrameSize = 2048;
constexpr int FrameBits = 4458;
constexpr int BookSize = 64; ///< entries of each codebook but the second one of the spectral pairs
constexpr int LspOrder = 20;
constexpr int LspSplits = 4;
constexpr int LspSecondSize = 16;
constexpr int MaxBlocks = 16; ///< of a frame
constexpr int MaxVectors = 304;
constexpr int MaxVectorLength = 15;
constexpr int MaxBands = 40;
constexpr int MaxBarkIndices = 4; ///< of a block
constexpr int Gains = 256;        ///< of a frame
constexpr int BlockGains = 32;

/// How a frame is divided into blocks, the units of the transform.
enum BlockType { Short, Medium, Long, BlockTypes };

struct TypeLayout
{
    int blocks;
    int blockSize;
    int innerSlope; ///< window slope between two blocks of the frame, in samples
    // The coefficients of both channels are spread over vectors, each the sum of an entry of two codebooks.
    int vectors;
    int longVectors;   ///< the first ones have `vectorLength` elements, the rest one less
    int signedVectors; ///< the first ones have a sign on the second codebook's entry, too
    int vectorLength;
    // The spectral envelope of a block, in bands.
    int bands;
    int barkIndices; ///< band n takes index n % barkIndices, column n / barkIndices
    double history;  ///< weight of the previous block's envelope where its flag is set
    // The filter's curve is exact at every `curveStep`-th coefficient of the lower half; 0: at all.
    int curveStep;
};

constexpr std::array<TypeLayout, BlockTypes> Layouts{{
    {16, 128, 64, 287, 78, 277, 15, 10, 1, 0.40, 0},
    {4, 512, 512, 304, 144, 296, 14, 20, 2, 0.35, 2},
    {1, 2048, 0, 296, 248, 294, 14, 40, 4, 0.28, 8},
}};

constexpr int BarkColumns = 10; ///< bands / barkIndices of every type

// Periodic peaks, of long frames only.
constexpr int PeakVectors = 12;
constexpr int PeakVectorLength = 9;
constexpr int PeakValues = PeakVectors * PeakVectorLength / Channels; ///< of a channel
constexpr int PeakPeriods = 512;
constexpr int PeakGains = 128;

/// A window code says the block type and the slopes to the frames before and behind.
struct WindowShape
{
    BlockType type;
    int leftSlope;
    int rightSlope;
};

constexpr std::array<WindowShape, 9> WindowShapes{{
    {Long, 2048, 2048},
    {Long, 2048, 64},
    {Short, 64, 64},
    {Long, 64, 2048},
    {Medium, 64, 512},
    {Long, 512, 2048},
    {Long, 2048, 512},
    {Medium, 512, 64},
    {Medium, 512, 512},
}};

/// The decoder gives nothing for the first two frames; with this start of frame k's region the samples come
/// out with no delay.
constexpr long long regionStart(long long frame)
{
    return FrameSize / 2 + FrameSize * (frame - 2);
}

} // namespace vqf
