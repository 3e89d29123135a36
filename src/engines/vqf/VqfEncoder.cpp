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
    explicit VqfFile(files::ByteSink &sink) : m_sink(sink) { writeHeader(0); }

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

    files::ByteSink &m_sink;
    BitWriter m_frames;
    std::uint32_t m_dataBytes = 0;
};

class VqfEncoder : public codecs::BlockEncoder
{
public:
    VqfEncoder(const Tables &tables, int threads, files::ByteSink &sink)
        : BlockEncoder(Channels, FrameSize), m_workers(threads), m_encoder(tables, m_workers), m_file(sink)
    {
        for (std::size_t n = 0; n < Pending; ++n)
            m_pending.push_back(std::make_unique<PendingFrame>());
        push(nullptr, 0); // the first frame lies before the sound
    }

private:
    /// A frame whose window isn't chosen yet.
    struct PendingFrame
    {
        std::array<const float *, Channels> pointers() const
        {
            return {samples[0].data(), samples[1].data()};
        }

        std::array<std::array<float, 2 * FrameSize>, Channels> samples{}; ///< of mid and side
        NoiseWeights weights;
    };

    PendingFrame &pending(std::size_t frame) { return *m_pending[frame % Pending]; }

    void encodeBlock(const qint16 *samples, int frames) override
    {
        push(samples, frames);
        if (m_pushed >= Pending) {
            PendingFrame &frame = pending(m_pushed - Pending);
            m_file.write(m_encoder.encode(m_plan.next(), frame.pointers(), frame.weights));
        }
    }

    /// Adds the frame of the block before and this one.
    void push(const qint16 *samples, int frames)
    {
        PendingFrame &frame = pending(m_pushed);
        if (m_pushed > 0) {
            const PendingFrame &last = pending(m_pushed - 1);
            for (int c = 0; c < Channels; ++c)
                std::copy_n(last.samples[c].begin() + FrameSize, FrameSize, frame.samples[c].begin());
        }
        std::array<std::array<float, FrameSize>, 2> channels{}; // left and right
        for (int n = 0; n < FrameSize; ++n) {
            const float left = n < frames ? samples[2 * n] : 0, right = n < frames ? samples[2 * n + 1] : 0;
            channels[0][n] = left;
            channels[1][n] = right;
            frame.samples[0][FrameSize + n] = (left + right) / 2;
            frame.samples[1][FrameSize + n] = (left - right) / 2;
        }
        frame.weights.listen(frame.pointers(), m_workers);
        m_plan.push(channels[0].data(), channels[1].data(),
                    m_trial.costs(frame.pointers(), frame.weights, m_workers));
        ++m_pushed;
    }

    void complete() override
    {
        // The last frame's region reaches half a frame beyond the sound, and its window looks ahead.
        for (std::size_t n = 0; n < Pending; ++n)
            encodeBlock(nullptr, 0);
        m_file.complete();
    }

    /// How many frames are known when the window of the first of them is chosen.
    static constexpr std::size_t Pending = 4;

    dsp::Workers m_workers;
    FrameEncoder m_encoder;
    WindowTrial m_trial;
    WindowPlan m_plan;
    std::vector<std::unique_ptr<PendingFrame>> m_pending; ///< a ring
    std::size_t m_pushed = 0;                             ///< frames
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
    return codecs::makeRecipe({SampleRate, Channels}, [tables, threads](files::ByteSink &sink) {
        return std::make_unique<VqfEncoder>(*tables, threads, sink);
    });
}

} // namespace vqf
