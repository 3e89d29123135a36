#include "engines/codecs/VorbisPiece.h"

#include "engines/codecs/VorbisLibrary.h"

#include <algorithm>

namespace codecs {

namespace {

/// How libvorbis is fed where it may be asked for a short block. It decides for a long one by looking further
/// ahead than a short one takes up; with steps so small it can't have decided yet.
constexpr int SmallStep = 64;

/// The end of the stream, as if it lay far ahead.
constexpr int FarEnd = 1 << 30;

/// In the last of so many long blocks before its end a piece is brought back to the grid.
constexpr int LongBlocksForReturn = 4;

/// A block's packet depends on those before by their loudness, too. So much of the warm-up is analysed for
/// it; in front of that it's only cut into blocks, which takes next to no time.
constexpr int LoudnessUnits = 2;

class VorbisPieceEncoding
{
public:
    VorbisPieceEncoding(const VorbisSettings &settings, const VorbisGrid &grid, VorbisPiece &encoded)
        : m_grid(grid),
          m_piece(encoded.source),
          m_encoded(encoded),
          m_channels(settings.format.channels),
          m_first(m_piece.begin - m_piece.warmUp),
          m_end(m_piece.begin + m_piece.frames),
          m_analysis(settings)
    {}

    bool run(const std::atomic<bool> &cancelled)
    {
        const qint64 total = static_cast<qint64>(m_piece.samples.size()) / m_channels;
        for (qint64 at = 0; at < total && !m_complete;) {
            if (cancelled)
                return false;
            const qint64 step = std::min<qint64>(stepAt(m_first + at), total - at);
            m_analysis.feed(m_piece.samples.data() + at * m_channels, static_cast<int>(step));
            takeBlocks();
            at += step;
        }
        if (m_piece.last) {
            m_analysis.end();
            m_ended = true;
            takeBlocks();
        }
        return true;
    }

private:
    bool isNearHead(qint64 place, qint64 reach) const
    {
        return m_piece.number > 0 && place < m_piece.begin + reach;
    }
    bool isNearTail(qint64 place) const { return !m_piece.last && place >= m_end - m_grid.rate / 2; }

    int stepAt(qint64 place) const
    {
        // A block comes out when up to two long ones behind it have been fed.
        const bool nearJoint =
            isNearHead(place, m_grid.jointUnits * m_grid.unit + 2 * m_grid.longBlock) || isNearTail(place);
        return nearJoint && m_grid.shortBlock != m_grid.longBlock ? SmallStep : m_grid.unit;
    }

    /// Whether the block behind the next one to come out should be a short one, whatever the sound.
    bool wantsShort() const
    {
        const qint64 centre = m_first + m_analysis.dsp.granulepos;
        const bool isLong = m_analysis.dsp.W != 0;
        if (m_ended || m_grid.isOnGrid(centre, isLong))
            return false;
        // A run of short blocks goes on until the next long one falls on the grid. They come behind an
        // attack, where they do no harm.
        if (!isLong)
            return isNearHead(centre, m_grid.jointUnits * m_grid.unit) || isNearTail(centre);
        return isNearHead(centre, 0) ||
               (!m_piece.last && centre >= m_end - LongBlocksForReturn * m_grid.longBlock);
    }

    void takeBlocks()
    {
        while (!m_complete) {
            const qint64 centre = m_first + m_analysis.dsp.granulepos;
            // At the end of a stream libvorbis makes short blocks of what it can't decide about.
            const bool forced = wantsShort();
            if (forced)
                m_analysis.dsp.eofflag = FarEnd;
            const bool got = vorbis_analysis_blockout(&m_analysis.dsp, &m_analysis.block) == 1;
            if (forced)
                m_analysis.dsp.eofflag = 0;
            if (!got)
                return;
            m_complete = !m_piece.last && centre > m_end + m_grid.jointUnits * m_grid.unit;
            if (!m_complete && centre >= m_piece.begin - LoudnessUnits * m_grid.unit)
                analyse(centre);
        }
    }

    void analyse(qint64 centre)
    {
        vorbis_block &block = m_analysis.block;
        ogg_packet packet;
        vorbis_analysis(&block, &packet);
        if (centre < m_piece.begin)
            return;
        m_encoded.packets.push_back({.centre = centre,
                                     .granule = m_first + packet.granulepos,
                                     .begin = m_encoded.bytes.size(),
                                     .size = static_cast<std::size_t>(packet.bytes),
                                     .isLong = block.W != 0,
                                     .nextIsLong = block.nW != 0,
                                     .last = packet.e_o_s != 0});
        m_encoded.bytes.insert(m_encoded.bytes.end(), packet.packet, packet.packet + packet.bytes);
    }

    const VorbisGrid &m_grid;
    const Piece &m_piece;
    VorbisPiece &m_encoded;
    const int m_channels;
    const qint64 m_first; ///< fed frame
    const qint64 m_end;   ///< of the piece's own frames
    VorbisAnalysis m_analysis;
    bool m_ended = false;
    bool m_complete = false;
};

} // namespace

VorbisGrid::VorbisGrid(const VorbisSettings &settings, int pieceSeconds) : rate(settings.format.rate)
{
    VorbisInfo info;
    if (!info.setUp(settings))
        return;
    shortBlock = vorbis_info_blocksize(info.get(), 0);
    longBlock = vorbis_info_blocksize(info.get(), 1);
    unit = longBlock / 2;
    // At odd low rates blocks are long in comparison.
    pieceUnits = std::max(pieceSeconds * rate / unit, 4 * warmUpUnits);
}

bool encodeVorbisPiece(const VorbisSettings &settings, const VorbisGrid &grid, VorbisPiece &piece,
                       const std::atomic<bool> &cancelled)
{
    return VorbisPieceEncoding(settings, grid, piece).run(cancelled);
}

} // namespace codecs
