#pragma once

#include "engines/codecs/Encoder.h"

#include <atomic>
#include <memory>
#include <vector>

namespace codecs {

/// Of sound in a piece. Shorter ones show in the size of files with a variable bit rate.
inline constexpr int PieceSeconds = 10;

/// Where the pieces of a stream are cut, in sample frames. It depends on the settings alone; so a stream has
/// the same pieces for any number of threads.
struct PiecePlan
{
    qint64 warmUp = 0; ///< before the piece, for an encoder to get into its stride; what it gives is dropped
    qint64 lookAhead = 0; ///< behind the piece
    qint64 length = 0; ///< of each piece but the last, which lies between a quarter of it and one and a half
    bool inOrder = false; ///< one piece after another, on one thread

    /// The least that the last piece holds.
    qint64 shortestTail() const { return length / 4; }
};

/// A stretch of a stream with what surrounds it, as one encoder gets it.
struct Piece
{
    qint64 number = 0;           ///< from 0
    qint64 begin = 0;            ///< its place in the stream, in frames
    qint64 frames = 0;           ///< that are its own
    qint64 warmUp = 0;           ///< frames in front of them
    bool last = false;           ///< then nothing follows its own frames
    std::vector<qint16> samples; ///< all of it, interleaved
};

/// What an encoder made of a piece, in a form of the codec's own.
class EncodedPiece
{
public:
    virtual ~EncodedPiece() = default;
};

/// Puts the encoded pieces of one stream together, in order.
class PieceJoiner
{
public:
    virtual ~PieceJoiner() = default;

    virtual void add(EncodedPiece &piece) = 0;
    /// After the last piece.
    virtual void finish() = 0;
};

/// An encoder to whom a stream may be given piece by piece, with nothing kept from one to the next.
class PieceCodec
{
public:
    virtual ~PieceCodec() = default;

    virtual PiecePlan plan() const = 0;
    /// Of any thread, several at a time. Nothing where `cancelled` became true meanwhile; that is looked at
    /// once per frame of the codec.
    virtual std::unique_ptr<EncodedPiece> encode(Piece piece, const std::atomic<bool> &cancelled) const = 0;
    virtual std::unique_ptr<PieceJoiner> joiner(files::ByteSink &output) const = 0;
};

} // namespace codecs
