#include "engines/vqf/VqfEncoder.h"

#include "base/RunTimeFailure.h"
#include "engines/codecs/BlockEncoder.h"
#include "engines/codecs/Recipe.h"
#include "engines/vqf/FrameEncoder.h"
#include "engines/vqf/WindowPlan.h"

#include <algorithm>
#include <deque>

namespace vqf {

namespace {

/// The container: a few chunks, then all frames as one string of bits.
class VqfFile
{
public:
    explicit VqfFile(engines::ByteSink &sink) : m_sink(sink) { writeHeader(0); }

    void write(const Frame &frame)
    {
        m_frames.put(frame);
        write(m_frames.takeBytes());
    }

    void complete()
    {
        write(m_frames.takeAll());
        m_sink.seek(0);
        writeHeader(m_dataBytes);
    }

private:
    void write(const std::vector<std::uint8_t> &bytes)
    {
        m_sink.write(bytes.data(), bytes.size());
        m_dataBytes += static_cast<std::uint32_t>(bytes.size());
    }

    void writeHeader(std::uint32_t dataBytes)
    {
        BitWriter header;
        const auto text = [&header](const char *characters) {
            for (; *characters; ++characters)
                header.put(static_cast<std::uint8_t>(*characters), 8);
        };
        const auto number = [&header](std::uint32_t value) { header.put(value, 32); };
        constexpr std::uint32_t ChunkHead = 8, FormatBytes = 16, SizeBytes = 4;
        text("TWIN97012000");
        number(2 * ChunkHead + FormatBytes + SizeBytes);
        text("COMM");
        number(FormatBytes);
        number(Channels - 1);
        number(KilobitsPerSecond);
        number(SampleRate / 1000);
        number(0);
        text("DSIZ");
        number(SizeBytes);
        number(dataBytes);
        text("DATA");
        const std::vector<std::uint8_t> bytes = header.takeBytes();
        m_sink.write(bytes.data(), bytes.size());
    }

    engines::ByteSink &m_sink;
    BitWriter m_frames;
    std::uint32_t m_dataBytes = 0;
};

class VqfEncoder : public codecs::BlockEncoder
{
public:
    VqfEncoder(const Tables &tables, int threads, engines::ByteSink &sink)
        : BlockEncoder(Channels, FrameSize), m_workers(threads), m_encoder(tables, m_workers), m_file(sink)
    {}

private:
    /// Of mid and side.
    struct Block
    {
        std::array<std::array<float, FrameSize>, Channels> samples{};
    };

    void encodeBlock(const qint16 *samples, int frames) override
    {
        Block block;
        std::array<std::array<float, FrameSize>, 2> channels{}; // left and right
        for (int n = 0; n < frames; ++n) {
            const float left = samples[2 * n], right = samples[2 * n + 1];
            channels[0][n] = left;
            channels[1][n] = right;
            block.samples[0][n] = (left + right) / 2;
            block.samples[1][n] = (left - right) / 2;
        }
        m_plan.push(channels[0].data(), channels[1].data());
        m_blocks.push_back(block);
        if (m_blocks.size() > Lookahead + 2)
            m_blocks.pop_front();
        if (m_pushed++ >= Lookahead - 1)
            encodeFrame();
    }

    /// The frame in the oldest two blocks; before the first one is silence.
    void encodeFrame()
    {
        constexpr std::size_t Span = 2;
        std::array<std::array<float, Span * FrameSize>, Channels> samples{};
        const std::size_t missing = Lookahead + Span - m_blocks.size();
        for (int c = 0; c < Channels; ++c)
            for (std::size_t n = missing; n < Span; ++n)
                std::copy_n(m_blocks[n - missing].samples[c].begin(), FrameSize,
                            samples[c].begin() + static_cast<std::ptrdiff_t>(n * FrameSize));
        m_file.write(m_encoder.encode(m_plan.window(), {samples[0].data(), samples[1].data()}));
    }

    void complete() override
    {
        // The last frame's region reaches half a frame beyond the sound, and its window looks ahead.
        for (std::size_t n = 0; n < Lookahead + 1; ++n)
            encodeBlock(nullptr, 0);
        m_file.complete();
    }

    static constexpr std::size_t Lookahead = 3; ///< blocks behind those that a frame spans

    dsp::Workers m_workers;
    FrameEncoder m_encoder;
    WindowPlan m_plan;
    std::deque<Block> m_blocks;
    std::size_t m_pushed = 0;
    VqfFile m_file;
};

} // namespace

bool isAvailable()
{
    return measuredTables() != nullptr;
}

std::shared_ptr<const codecs::EncoderRecipe> vqfRecipe(int threads)
{
    const Tables *tables = measuredTables();
    if (!tables)
        throw RunTimeFailure(
            RunTimeFailure::CantCreateComponent,
            QStringLiteral("This build has no VQF encoder, since the system that it was built on "
                           "has no decoder for VQF"));
    return codecs::makeRecipe({SampleRate, Channels}, [tables, threads](engines::ByteSink &sink) {
        return std::make_unique<VqfEncoder>(*tables, threads, sink);
    });
}

} // namespace vqf
