#pragma once

#include "engines/codecs/Pieces.h"
#include "engines/codecs/Recipe.h"

namespace codecs {

/// One stream whose pieces go through one encoder, in order; what it writes is written to the output later,
/// when a piece's turn comes. So an encoder that can't be split works beside its caller, too.
class UnsplitStream final : public PieceCodec
{
public:
    UnsplitStream(const PcmFormat &format, MakeEncoder make);
    ~UnsplitStream() override;

    PiecePlan plan() const override;
    std::unique_ptr<EncodedPiece> encode(Piece piece, const std::atomic<bool> &cancelled) const override;
    std::unique_ptr<PieceJoiner> joiner(files::ByteSink &output) const override;

private:
    struct Progress;

    const PcmFormat m_format;
    const MakeEncoder m_make;
    const std::unique_ptr<Progress> m_progress; ///< the encoding thread's
};

} // namespace codecs
