#pragma once

#include "engines/dsp/Workers.h"
#include "engines/wma/Analyser.h"
#include "engines/wma/BlockPlan.h"
#include "engines/wma/FrameEncoder.h"
#include "engines/wma/PacketWriter.h"
#include "engines/wma/RateControl.h"
#include "engines/wma/Streams.h"

#include <deque>
#include <memory>

namespace wma {

/// Encodes one stream of PCM to packets, on up to `threads` threads inside each call. The packets are the
/// same for any number of them. Decoded, the sound stands at its place; silence up to a whole frame, and one
/// frame, follow it.
class StreamEncoder
{
public:
    StreamEncoder(const Tables &tables, const StreamKind &kind, int threads);

    const StreamFormat &format() const { return m_format; }
    /// The next samples, interleaved: frameSize of each channel; fewer are the stream's last.
    std::vector<Packet> encode(const std::int16_t *samples, int count);
    std::vector<Packet> finish();

private:
    static constexpr std::size_t Batch = 16; ///< frames that are analysed at a time

    void analyseBatch();
    void encodeFrames(std::size_t remaining, bool ending);
    void encodeFrame(std::size_t behind);
    double ahead() const;

    const StreamFormat m_format;
    const std::vector<BlockLayout> m_layouts;
    const FrameWriter m_writer;
    const FrameEncoder m_frameEncoder;
    dsp::Workers m_workers;
    std::vector<std::unique_ptr<Analyser>> m_analysers; ///< of each frame in a batch

    BlockPlan m_plan;
    std::array<std::vector<float>, MaxChannels> m_history; ///< the last two frames' samples of each channel
    FrameSound m_next;                                     ///< the blocks of the frame that comes next
    std::vector<FrameSound> m_sounds;                      ///< of frames to be analysed

    std::deque<FrameAnalysis> m_ahead; ///< frames to be encoded
    PacketWriter m_packets;
    const double m_dueBits; ///< of each frame
    const double m_reservoir;
    RateControl m_rate;
    std::int64_t m_frames = 0; ///< encoded
};

} // namespace wma
