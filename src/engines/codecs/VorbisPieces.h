#pragma once

#include "engines/codecs/VorbisPiece.h"

namespace codecs {

/// Encodes a stream without limits of its bit rate piece by piece. Any decoder plays it as if it had been
/// encoded in one go; its length is exact.
class VorbisPieces final : public PieceCodec
{
public:
    /// The settings are possible ones.
    explicit VorbisPieces(const VorbisSettings &settings) : VorbisPieces(settings, VorbisGrid(settings)) {}
    VorbisPieces(const VorbisSettings &settings, const VorbisGrid &grid);

    PiecePlan plan() const override;
    std::unique_ptr<EncodedPiece> encode(Piece piece, const std::atomic<bool> &cancelled) const override;
    std::unique_ptr<PieceJoiner> joiner(files::ByteSink &output) const override;

    /// Both pieces, neighbours, encoded in one go: what is left where they can't be joined.
    VorbisPiece encodeAsOne(const VorbisPiece &first, const VorbisPiece &second) const;

private:
    const VorbisSettings m_settings;
    const VorbisGrid m_grid;
};

} // namespace codecs
