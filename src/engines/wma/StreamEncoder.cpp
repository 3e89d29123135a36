#include "engines/wma/StreamEncoder.h"

#include <algorithm>
#include <utility>

namespace wma {

namespace {

constexpr int ReservoirPackets = 2;
/// Steps coarser by so many dB leave nothing of any sound.
constexpr float Coarsest = 1000;

} // namespace

StreamEncoder::StreamEncoder(const Tables &tables, const StreamKind &kind, int threads)
    : m_format(kind),
      m_layouts(blockLayouts(m_format, tables)),
      m_writer(m_format, tables),
      m_frameEncoder(m_format, m_layouts, m_writer),
      m_workers(threads),
      m_plan(m_format),
      m_packets(m_format),
      m_dueBits(double(m_packets.capacity()) / m_format.framesPerPacket()),
      m_reservoir(ReservoirPackets * m_packets.capacity()),
      m_rate(m_dueBits, m_reservoir)
{
    for (std::size_t n = 0; n < Batch; ++n)
        m_analysers.push_back(std::make_unique<Analyser>(m_format, m_layouts));
    for (auto &channel : m_history)
        channel.resize(static_cast<std::size_t>(2 * m_format.frameSize()));
    m_next.blocks = {0};
}

std::vector<Packet> StreamEncoder::encode(const std::int16_t *samples, int count)
{
    const int size = m_format.frameSize();
    // The frame in the samples before; now it is known what comes behind it.
    FrameSound sound = std::move(m_next);
    sound.samples = m_history;
    std::array<const float *, MaxChannels> fresh{};
    for (int c = 0; c < m_format.channels(); ++c) {
        std::vector<float> &history = m_history[c];
        std::copy(history.begin() + size, history.end(), history.begin());
        std::fill(history.begin() + size, history.end(), 0.0F);
        for (int n = 0; n < count; ++n)
            history[size + n] = samples[m_format.channels() * n + c];
        fresh[c] = history.data() + size;
    }
    m_next = {};
    m_next.halvingsBefore = sound.blocks.back();
    m_next.blocks = m_plan.push(fresh);
    sound.halvingsBehind = m_next.blocks.front();
    m_sounds.push_back(std::move(sound));
    if (m_sounds.size() == Batch)
        analyseBatch();
    return m_packets.take();
}

std::vector<Packet> StreamEncoder::finish()
{
    // The last frame's region reaches half a frame beyond the sound.
    std::vector<Packet> packets = encode(nullptr, 0);
    for (const auto &more : {encode(nullptr, 0)})
        packets.insert(packets.end(), more.begin(), more.end());
    analyseBatch();
    encodeFrames(0, true);
    m_packets.finish();
    for (Packet &packet : m_packets.take())
        packets.push_back(std::move(packet));
    return packets;
}

/// Beside it, frames are encoded of which enough is known.
void StreamEncoder::analyseBatch()
{
    std::vector<FrameAnalysis> analyses(m_sounds.size());
    m_workers.run(static_cast<int>(m_sounds.size()) + 1, [&](int part) {
        if (part == 0)
            encodeFrames(LookAhead, false);
        else
            analyses[part - 1] = m_analysers[part - 1]->analyse(m_sounds[part - 1]);
    });
    std::move(analyses.begin(), analyses.end(), std::back_inserter(m_ahead));
    m_sounds.clear();
}

/// All but the last `remaining`.
void StreamEncoder::encodeFrames(std::size_t remaining, bool ending)
{
    while (m_ahead.size() > remaining)
        encodeFrame(ending ? m_ahead.size() - 1 : LookAhead);
}

/// `behind` frames follow, or more than two.
void StreamEncoder::encodeFrame(std::size_t behind)
{
    const bool last = behind == 0;
    if (last)
        m_packets.makeRoomForLast();
    const FrameAnalysis &analysis = m_ahead.front();
    const FrameSurroundings surroundings{m_packets.startsPacket(), analysis.halvingsBefore,
                                         analysis.halvingsBehind};
    const double most = m_reservoir + m_dueBits - ahead();
    float quality = m_rate.quality(m_ahead, ahead(), m_packets.left());
    dsp::BitWriter bits;
    // Coarser and coarser; there is room for a frame of which nothing is left.
    for (float increase = 0.5F;; increase *= 1.5F) {
        bits = {};
        m_writer.write(m_frameEncoder.encode(analysis, quality), surroundings, bits);
        m_rate.learn(analysis, quality, static_cast<double>(bits.bits()));
        const bool fits = m_packets.takes(bits.bits(), behind) && static_cast<double>(bits.bits()) <= most;
        if (fits || quality > Coarsest)
            break;
        quality += increase;
    }
    m_packets.add(std::move(bits));
    ++m_frames;
    // Two frames come out before the sound begins. A packet of their own keeps the others' times simple.
    constexpr int RunIn = 2;
    if (m_frames == RunIn + 1 && !last && m_packets.canPad())
        m_packets.pad();
    if (ahead() < -m_reservoir && m_packets.canPad())
        m_packets.pad();
    m_ahead.pop_front();
}

/// By how many bits the packets are fuller than due.
double StreamEncoder::ahead() const
{
    return static_cast<double>(m_packets.position()) - m_dueBits * static_cast<double>(m_frames);
}

} // namespace wma
