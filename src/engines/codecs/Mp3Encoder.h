#pragma once

#include "engines/codecs/Pieces.h"

#include <span>

namespace codecs {

/// Bit rates are in kb/s.
struct Mp3Settings
{
    enum ChannelMode { Stereo, JointStereo, ForcedJointStereo, DualChannel, Mono };

    int rate = 44100; ///< hertz, of the sound in the file; one of the nine of MPEG 1, 2 and 2.5
    ChannelMode channelMode = Stereo;
    bool variable = false;         ///< variable bit rate
    int bitRate = 128;             ///< constant bit rate; the nearest that the rate knows is taken
    int quality = 5;               ///< effort, 0 (best, slowest) to 9
    int variableQuality = 0;       ///< 0 (best) to 9
    int minBitRate = 32;           ///< of variable bit rate
    int maxBitRate = 320;          ///< of variable bit rate
    bool strictMinBitRate = false; ///< the minimum holds for silence, too
    bool variableHeader = true;    ///< the header that tells players a variable stream's length
};

/// The bit rates that a stream of this rate knows, rising; none for a rate that MP3 hasn't.
std::span<const int> mp3BitRates(int rate);
/// The nearest of them, the lower one where two are as near.
int nearestMp3BitRate(int rate, int bitRate);

/// The rate at which a source of 44100 Hz sounds best at these settings: low bit rates want a lower one.
int suitableMp3Rate(Mp3Settings settings);

/// What `mp3BitRates` has no rates for is refused, and a minimum above the maximum.
std::shared_ptr<const EncoderRecipe> mp3Recipe(const Mp3Settings &settings);

/// What the recipe's streams are cut by; settings that it takes.
std::shared_ptr<const PieceCodec> mp3Pieces(const Mp3Settings &settings, int pieceSeconds = PieceSeconds);

} // namespace codecs
