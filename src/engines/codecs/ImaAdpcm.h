#pragma once

#include <QtGlobal>
#include <cstdint>
#include <vector>

namespace codecs {

/// IMA ADPCM as it lies in WAV files (format tag 0x11), at 2 to 5 bits per sample. A block begins with each
/// channel's first sample and step index; behind them come groups, in which the channels' codes alternate in
/// words of four bytes.
class ImaAdpcm
{
public:
    ImaAdpcm(int rate, int channels, int bits);

    int blockFrames() const { return 1 + m_groups * m_groupFrames; }
    int blockBytes() const { return m_channels * (4 + m_groups * m_groupBytes); }

    /// Appends one block to `out`. A block of fewer frames than a whole one is cut behind the group that
    /// holds the last of them.
    void encode(const qint16 *samples, int frames, std::vector<std::uint8_t> &out);

private:
    struct Channel
    {
        int predictor = 0;
        int stepIndex = 0;
    };

    int code(Channel &channel, int sample) const;

    const int m_channels;
    const int m_bits;
    const int m_groupBytes; ///< of one channel
    const int m_groupFrames;
    const int m_groups; ///< in a whole block
    Channel m_state[2];
};

} // namespace codecs
