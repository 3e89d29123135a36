#pragma once

#include "engines/codecs/Pieces.h"
#include "engines/codecs/VorbisEncoder.h"

namespace codecs {

/// How a stream is cut and what its joints need. Lengths count in frames, or in units of half a long block.
///
/// A packet depends on its block and on the sizes of the blocks beside it alone. So two encoders' packets may
/// follow each other wherever both have a block at the same place, of the same size and with a next one of
/// the same size. But after each run of short blocks the long ones stand at another of several places. A long
/// block is on the grid when it stands as if it followed a short one at a multiple of the unit. Around joints
/// both encoders are kept to that grid; a joint is found there, mostly within a block.
struct VorbisGrid
{
    explicit VorbisGrid(const VorbisSettings &settings, int pieceSeconds = PieceSeconds);

    int rate = 0;
    int shortBlock = 0;
    int longBlock = 0; ///< the same where there is but one size
    int unit = 0;
    int pieceUnits = 0;
    int warmUpUnits = 16;
    int lookAheadUnits = 20;
    int jointUnits = 2; ///< so far behind its end a piece's packets go on, for a joint to be found

    bool isOnGrid(qint64 centre, bool isLong) const
    {
        return (isLong ? centre - (shortBlock + longBlock) / 4 : centre) % unit == 0;
    }
};

struct VorbisPacket
{
    qint64 centre = 0;  ///< of its block, in frames of the stream
    qint64 granule = 0; ///< the same but for the stream's last packet, whose granule tells the length
    std::size_t begin = 0;
    std::size_t size = 0;
    bool isLong = false;
    bool nextIsLong = false;
    bool last = false; ///< of the stream

    bool canStandFor(const VorbisPacket &other) const
    {
        return centre == other.centre && isLong == other.isLong && nextIsLong == other.nextIsLong;
    }
};

/// The packets from a piece's begin on; of any but the last piece some that lie behind its end, too.
struct VorbisPiece final : EncodedPiece
{
    Piece source; ///< what was encoded; wanted once more where no joint is found
    std::vector<VorbisPacket> packets;
    std::vector<std::uint8_t> bytes; ///< of all packets
};

/// Not with rate management, which looks back further than a warm-up reaches. False where `cancelled` became
/// true; that is looked at about once per block.
bool encodeVorbisPiece(const VorbisSettings &settings, const VorbisGrid &grid, VorbisPiece &piece,
                       const std::atomic<bool> &cancelled);

} // namespace codecs
