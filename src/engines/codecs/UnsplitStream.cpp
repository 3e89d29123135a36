#include "engines/codecs/UnsplitStream.h"

#include <algorithm>
#include <optional>

namespace codecs {

namespace {

constexpr qint64 FramesAtOnce = 4096;

/// What an encoder wrote during a piece.
struct WrittenPiece final : EncodedPiece
{
    struct Stretch
    {
        std::optional<std::int64_t> place; ///< none: behind the stretch before
        std::vector<std::uint8_t> bytes;
    };
    std::vector<Stretch> stretches;
};

/// Where the encoder writes to.
class Recorder final : public files::ByteSink
{
public:
    void begin() { m_written = std::make_unique<WrittenPiece>(); }
    std::unique_ptr<WrittenPiece> take() { return std::move(m_written); }

    void write(const std::uint8_t *bytes, std::size_t count) override
    {
        if (m_written->stretches.empty())
            m_written->stretches.emplace_back();
        std::vector<std::uint8_t> &target = m_written->stretches.back().bytes;
        target.insert(target.end(), bytes, bytes + count);
    }

    void seek(std::int64_t position) override { m_written->stretches.push_back({position, {}}); }

private:
    std::unique_ptr<WrittenPiece> m_written;
};

class Writer final : public PieceJoiner
{
public:
    explicit Writer(files::ByteSink &sink) : m_sink(sink) {}

    void add(EncodedPiece &piece) override
    {
        for (const auto &[place, bytes] : static_cast<WrittenPiece &>(piece).stretches) {
            if (place)
                m_sink.seek(*place);
            m_sink.write(bytes.data(), bytes.size());
        }
    }

    void finish() override {}

private:
    files::ByteSink &m_sink;
};

} // namespace

struct UnsplitStream::Progress
{
    Recorder recorder;
    std::unique_ptr<Encoder> encoder;
};

UnsplitStream::UnsplitStream(const PcmFormat &format, MakeEncoder make)
    : m_format(format), m_make(std::move(make)), m_progress(std::make_unique<Progress>())
{}

UnsplitStream::~UnsplitStream() = default;

PiecePlan UnsplitStream::plan() const
{
    return {.length = qint64(PieceSeconds) * m_format.rate, .inOrder = true};
}

std::unique_ptr<EncodedPiece> UnsplitStream::encode(Piece piece, const std::atomic<bool> &cancelled) const
{
    auto &[recorder, kept] = *m_progress;
    recorder.begin();
    std::unique_ptr<Encoder> encoder = piece.number == 0 ? m_make(recorder) : std::move(kept);
    if (!encoder)
        return nullptr; // a piece before this one failed, and with it the stream
    for (qint64 at = 0; at < piece.frames; at += FramesAtOnce) {
        if (cancelled)
            return nullptr;
        encoder->encode(piece.samples.data() + at * m_format.channels,
                        std::min(FramesAtOnce, piece.frames - at));
    }
    if (piece.last)
        encoder->finish();
    kept = std::move(encoder);
    return recorder.take();
}

std::unique_ptr<PieceJoiner> UnsplitStream::joiner(files::ByteSink &output) const
{
    return std::make_unique<Writer>(output);
}

} // namespace codecs
