#include "engines/codecs/VorbisPieces.h"

#include "engines/codecs/VorbisLibrary.h"

#include <optional>

namespace codecs {

namespace {

/// Where one and the same block lies among the packets of two pieces.
struct Joint
{
    std::size_t inFirst = 0;
    std::size_t inSecond = 0;
};

std::optional<Joint> findJoint(const std::vector<VorbisPacket> &first,
                               const std::vector<VorbisPacket> &second)
{
    for (std::size_t i = 0, j = 0; i < first.size() && j < second.size();) {
        if (first[i].canStandFor(second[j]))
            return Joint{i, j};
        if (first[i].centre <= second[j].centre)
            ++i;
        else
            ++j;
    }
    return std::nullopt;
}

class VorbisJoiner final : public PieceJoiner
{
public:
    VorbisJoiner(const VorbisPieces &codec, VorbisAnalysis &&headers, files::ByteSink &sink)
        : m_codec(codec), m_file(headers, sink)
    {}

    void add(EncodedPiece &piece) override
    {
        auto &next = static_cast<VorbisPiece &>(piece);
        if (next.source.number == 0) {
            m_held = std::move(next);
        } else if (const auto joint = findJoint(m_held.packets, next.packets)) {
            write(joint->inFirst + 1);
            m_held = std::move(next);
            m_written = joint->inSecond + 1;
        } else {
            // The same samples as before come first; so the packets that have been written come again.
            m_held = m_codec.encodeAsOne(m_held, next);
        }
    }

    void finish() override
    {
        write(m_held.packets.size());
        m_file.finish();
    }

private:
    /// Of the piece that is held, up to that packet.
    void write(std::size_t end)
    {
        for (; m_written < end; ++m_written) {
            const VorbisPacket &packet = m_held.packets[m_written];
            m_file.add({.packet = m_held.bytes.data() + packet.begin,
                        .bytes = static_cast<long>(packet.size),
                        .b_o_s = 0,
                        .e_o_s = packet.last,
                        .granulepos = packet.granule,
                        .packetno = 0});
        }
    }

    const VorbisPieces &m_codec;
    VorbisFile m_file;
    VorbisPiece m_held; ///< the latest piece, until its joint with the next one is known
    std::size_t m_written = 0;
};

} // namespace

VorbisPieces::VorbisPieces(const VorbisSettings &settings, const VorbisGrid &grid)
    : m_settings(settings), m_grid(grid)
{}

PiecePlan VorbisPieces::plan() const
{
    const qint64 unit = m_grid.unit;
    return {.warmUp = m_grid.warmUpUnits * unit,
            .lookAhead = m_grid.lookAheadUnits * unit,
            .length = m_grid.pieceUnits * unit};
}

std::unique_ptr<EncodedPiece> VorbisPieces::encode(Piece piece, const std::atomic<bool> &cancelled) const
{
    auto encoded = std::make_unique<VorbisPiece>();
    encoded->source = std::move(piece);
    if (!encodeVorbisPiece(m_settings, m_grid, *encoded, cancelled))
        return nullptr;
    return encoded;
}

std::unique_ptr<PieceJoiner> VorbisPieces::joiner(files::ByteSink &output) const
{
    return std::make_unique<VorbisJoiner>(*this, VorbisAnalysis(m_settings), output);
}

VorbisPiece VorbisPieces::encodeAsOne(const VorbisPiece &first, const VorbisPiece &second) const
{
    const auto values = [this](qint64 frames) {
        return static_cast<std::ptrdiff_t>(frames * m_settings.format.channels);
    };
    VorbisPiece whole;
    whole.source = first.source;
    Piece &piece = whole.source;
    piece.samples.resize(static_cast<std::size_t>(values(piece.warmUp + piece.frames)));
    const Piece &behind = second.source;
    piece.samples.insert(piece.samples.end(), behind.samples.begin() + values(behind.warmUp),
                         behind.samples.end());
    piece.frames += behind.frames;
    piece.last = behind.last;
    encodeVorbisPiece(m_settings, m_grid, whole, false);
    return whole;
}

} // namespace codecs
