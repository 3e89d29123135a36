#include "engines/codecs/ImaAdpcm.h"

#include <algorithm>
#include <array>
#include <cstdlib>

namespace codecs {

namespace {

constexpr std::array<int, 89> Steps = {
    7,    8,     9,     10,    11,    12,    13,    14,    16,    17,    19,    21,    23,    25,   28,
    31,   34,    37,    41,    45,    50,    55,    60,    66,    73,    80,    88,    97,    107,  118,
    130,  143,   157,   173,   190,   209,   230,   253,   279,   307,   337,   371,   408,   449,  494,
    544,  598,   658,   724,   796,   876,   963,   1060,  1166,  1282,  1411,  1552,  1707,  1878, 2066,
    2272, 2499,  2749,  3024,  3327,  3660,  4026,  4428,  4871,  5358,  5894,  6484,  7132,  7845, 8630,
    9493, 10442, 11487, 12635, 13899, 15289, 16818, 18500, 20350, 22385, 24623, 27086, 29794, 32767};

/// How far the step index moves by a code's magnitude, for 2, 3, 4 and 5 bits.
constexpr int IndexMoves[4][16] = {{-1, 2},
                                   {-1, -1, 1, 2},
                                   {-1, -1, -1, -1, 2, 4, 6, 8},
                                   {-1, -1, -1, -1, -1, -1, -1, -1, 1, 2, 4, 6, 8, 10, 13, 16}};

/// The smallest numbers of codes that fill whole words of four bytes.
constexpr int GroupBytes[4] = {4, 12, 4, 20};

int groupsOfBlock(int rate, int groupBytes)
{
    // The customary block: 256 bytes a channel at 11 kHz, growing with the rate.
    const int bytes = 256 * std::max(1, rate / 11025);
    return (bytes - 4) / groupBytes;
}

} // namespace

ImaAdpcm::ImaAdpcm(int rate, int channels, int bits)
    : m_channels(channels),
      m_bits(bits),
      m_groupBytes(GroupBytes[bits - 2]),
      m_groupFrames(m_groupBytes * 8 / bits),
      m_groups(groupsOfBlock(rate, m_groupBytes))
{}

void ImaAdpcm::encode(const qint16 *samples, int frames, std::vector<std::uint8_t> &out)
{
    const int groups = (frames - 1 + m_groupFrames - 1) / m_groupFrames;
    const std::size_t begin = out.size();
    out.resize(begin + static_cast<std::size_t>(m_channels * (4 + groups * m_groupBytes)));
    std::uint8_t *const block = out.data() + begin;
    for (int c = 0; c < m_channels; ++c) {
        Channel &channel = m_state[c];
        channel.predictor = samples[c];
        std::uint8_t *const head = block + 4 * c;
        head[0] = static_cast<std::uint8_t>(channel.predictor & 0xff);
        head[1] = static_cast<std::uint8_t>((channel.predictor >> 8) & 0xff);
        head[2] = static_cast<std::uint8_t>(channel.stepIndex);
        for (int group = 0; group < groups; ++group) {
            std::uint8_t *const bytes = block + m_channels * (4 + group * m_groupBytes) + 4 * c;
            std::uint32_t bits = 0;
            int held = 0;
            int written = 0;
            for (int i = 0; i < m_groupFrames; ++i) {
                const int frame = std::min(1 + group * m_groupFrames + i, frames - 1);
                bits |= static_cast<std::uint32_t>(code(channel, samples[frame * m_channels + c])) << held;
                for (held += m_bits; held >= 8; held -= 8, bits >>= 8, ++written)
                    bytes[written / 4 * 4 * m_channels + written % 4] = static_cast<std::uint8_t>(bits);
            }
        }
    }
}

/// The nearest code, and the state in which it leaves a decoder.
int ImaAdpcm::code(Channel &channel, int sample) const
{
    const int sign = 1 << (m_bits - 1);
    const int step = Steps[static_cast<std::size_t>(channel.stepIndex)];
    const int difference = sample - channel.predictor;
    const int magnitude = std::min(std::abs(difference) * sign / (2 * step), sign - 1);
    const int moved = (2 * magnitude + 1) * step / sign;
    channel.predictor = std::clamp(channel.predictor + (difference < 0 ? -moved : moved), -32768, 32767);
    channel.stepIndex = std::clamp(channel.stepIndex + IndexMoves[m_bits - 2][magnitude], 0, 88);
    return difference < 0 ? magnitude | sign : magnitude;
}

} // namespace codecs
