#include "engines/codecs/VorbisPieces.h"

#include "engines/codecs/Recipe.h"
#include "testkit/Encoding.h"
#include "testkit/Signals.h"
#include "testkit/TestDecoder.h"

#include <gtest/gtest.h>
#include <vorbis/codec.h>

namespace {

using namespace codecs;
using testkit::chord;
using testkit::music;
using testkit::signalToNoise;

using Sound = std::vector<qint16>;

constexpr int OnePiece = 1000; ///< seconds

std::shared_ptr<const EncoderRecipe> recipeOf(const VorbisSettings &settings, int pieceSeconds)
{
    const VorbisGrid grid(settings, pieceSeconds);
    return makeRecipe(settings.format, std::make_shared<VorbisPieces>(settings, grid));
}

VorbisSettings ofQuality(const PcmFormat &format, int quality)
{
    return {format, 0, 0, 0, quality};
}

std::vector<VorbisSettings> settingsOfEachKind()
{
    return {{},
            {{44100, 2}, 320, 0, 0, {}},
            ofQuality({44100, 1}, 0),
            ofQuality({48000, 2}, 1000),
            ofQuality({22050, 1}, 300),
            {{8000, 1}, 16, 0, 0, {}}};
}

std::string nameOf(const VorbisSettings &settings)
{
    return std::to_string(settings.format.rate) + " Hz, " + std::to_string(settings.nominalBitRate);
}

/// Silence, but for a burst of noise at each of the places.
Sound bursts(qint64 frames, const std::vector<qint64> &places)
{
    Sound sound(static_cast<std::size_t>(frames) * 2);
    quint32 hiss = 1;
    for (const qint64 place : places) {
        for (qint64 i = 0; i < 4000; ++i) {
            hiss = hiss * 1664525 + 1013904223;
            const double value = (double(hiss >> 16) - 32768) * 0.6 * std::exp(-double(i) / 600);
            for (qint64 c = 0; c < 2; ++c)
                sound[static_cast<std::size_t>((place + i) * 2 + c)] = static_cast<qint16>(value);
        }
    }
    return sound;
}

TEST(VorbisPiecesTest, theBytesAreTheSameForAnyNumberOfThreadsAndAnyAmounts)
{
    for (const VorbisSettings &settings : settingsOfEachKind()) {
        const PcmFormat &format = settings.format;
        const Sound sound = music(format.rate, format.channels, 11LL * format.rate);
        const auto recipe = recipeOf(settings, 2);
        const QByteArray one = testkit::encode(*recipe, format, sound, 44100, 1);
        EXPECT_TRUE(testkit::encode(*recipe, format, sound, 1000, 2) == one) << nameOf(settings);
        EXPECT_TRUE(testkit::encode(*recipe, format, sound, 1'000'000, 3) == one) << nameOf(settings);
        EXPECT_TRUE(testkit::encode(*recipe, format, sound, 1, 16) == one) << nameOf(settings);
    }
}

TEST(VorbisPiecesTest, decodersGetEachSampleBackWhereverThePiecesEnd)
{
    for (const VorbisSettings &settings : {VorbisSettings(), ofQuality({22050, 1}, 300)}) {
        const PcmFormat &format = settings.format;
        const auto recipe = recipeOf(settings, 2);
        const PiecePlan plan = VorbisPieces(settings, VorbisGrid(settings, 2)).plan();
        const qint64 piece = plan.length;
        const qint64 cut = piece + plan.lookAhead + plan.shortestTail(); // then a piece is cut off
        const Sound sound = music(format.rate, format.channels, 10 * piece + 777);
        for (const qint64 frames :
             {qint64(0), qint64(1), qint64(64), qint64(2049), piece - 1, piece, piece + 1, cut - 1, cut,
              cut + 1, piece + cut - 1, piece + cut, piece + cut + 1, 10 * piece + 777}) {
            const Sound part(sound.begin(), sound.begin() + frames * format.channels);
            const auto decoded = testkit::decode(testkit::encode(*recipe, format, part));
            EXPECT_EQ(decoded.frames(), frames);
            EXPECT_TRUE(decoded.clean) << frames;
            if (frames > 2049) {
                EXPECT_GT(signalToNoise(part, decoded.samples), 8) << frames;
            }
        }
    }
}

/// Reads a stream with the library's own reader of headers.
class StreamReader
{
public:
    explicit StreamReader(const QByteArray &file)
    {
        ogg_sync_init(&m_sync);
        vorbis_info_init(&m_info);
        vorbis_comment_init(&m_comment);
        std::copy_n(file.constData(), file.size(), ogg_sync_buffer(&m_sync, long(file.size())));
        ogg_sync_wrote(&m_sync, long(file.size()));
        ogg_page page;
        while (ogg_sync_pageout(&m_sync, &page) == 1) {
            if (ogg_page_bos(&page))
                ogg_stream_init(&m_stream, ogg_page_serialno(&page));
            EXPECT_EQ(ogg_stream_pagein(&m_stream, &page), 0);
            ends += ogg_page_eos(&page) ? 1 : 0;
            ogg_packet packet;
            while (ogg_stream_packetout(&m_stream, &packet) == 1)
                take(packet);
        }
    }
    ~StreamReader()
    {
        vorbis_comment_clear(&m_comment);
        vorbis_info_clear(&m_info);
        ogg_stream_clear(&m_stream);
        ogg_sync_clear(&m_sync);
    }
    StreamReader(const StreamReader &) = delete;
    StreamReader &operator=(const StreamReader &) = delete;

    int ends = 0;    ///< pages that say that they're the last
    int packets = 0; ///< of sound
    int longBlocks = 0;
    qint64 place = 0;       ///< of the latest packet's centre, by the sizes of all blocks
    qint64 granule = 0;     ///< the latest that a page tells
    bool consistent = true; ///< each block's window fits its neighbours', and granules tell the places

private:
    void take(ogg_packet &packet)
    {
        if (m_headers < 3) {
            EXPECT_EQ(vorbis_synthesis_headerin(&m_info, &m_comment, &packet), 0);
            ++m_headers;
            return;
        }
        const long size = vorbis_packet_blocksize(&m_info, &packet);
        const bool isLong = size != vorbis_info_blocksize(&m_info, 0);
        if (packets++ > 0)
            place += (m_size + size) / 4;
        // Behind the bits of kind and mode, a long block tells whether those beside it are long.
        if (m_size && isLong)
            consistent &= bool(packet.packet[0] & 4) == m_isLong;
        if (m_size && m_isLong)
            consistent &= m_nextIsLong == isLong;
        m_nextIsLong = packet.packet[0] & 8;
        m_isLong = isLong;
        m_size = size;
        longBlocks += isLong ? 1 : 0;
        if (packet.granulepos < 0)
            return;
        granule = packet.granulepos;
        if (!packet.e_o_s)
            consistent &= granule == place;
    }

    ogg_sync_state m_sync;
    ogg_stream_state m_stream{};
    vorbis_info m_info;
    vorbis_comment m_comment;
    int m_headers = 0;
    long m_size = 0;
    bool m_isLong = false;
    bool m_nextIsLong = false;
};

TEST(VorbisPiecesTest, windowsAndGranulesFitAcrossTheJoints)
{
    for (const VorbisSettings &settings : settingsOfEachKind()) {
        const PcmFormat &format = settings.format;
        const qint64 frames = 13LL * format.rate + 5;
        const StreamReader stream(
            testkit::encode(*recipeOf(settings, 2), format, music(format.rate, format.channels, frames)));
        EXPECT_TRUE(stream.consistent) << nameOf(settings);
        EXPECT_EQ(stream.ends, 1) << nameOf(settings);
        EXPECT_EQ(stream.granule, frames) << nameOf(settings);
        EXPECT_GT(stream.packets, 100) << nameOf(settings);
    }
}

/// How much worse, in dB, the stretches around joints come back than those of a stream in one piece.
double lossAtJoints(const Sound &sound)
{
    const VorbisSettings settings;
    const auto decoded = [&](int pieceSeconds) {
        return testkit::decode(testkit::encode(*recipeOf(settings, pieceSeconds), {}, sound)).samples;
    };
    const Sound pieces = decoded(2), one = decoded(OnePiece);
    const qint64 length = VorbisPieces(settings, VorbisGrid(settings, 2)).plan().length;
    double loss = -100;
    for (qint64 joint = length; joint + length < qint64(sound.size()) / 2; joint += length) {
        const auto around = [joint](const Sound &all) {
            return Sound(all.begin() + (joint - 3000) * 2, all.begin() + (joint + 3000) * 2);
        };
        loss = std::max(loss, signalToNoise(around(sound), around(one)) -
                                  signalToNoise(around(sound), around(pieces)));
    }
    return loss;
}

TEST(VorbisPiecesTest, theJointsSoundAsInOnePiece)
{
    const qint64 frames = 13LL * 44100;
    EXPECT_LT(lossAtJoints(chord(44100, 2, frames)), 1);
    EXPECT_LT(lossAtJoints(music(44100, 2, frames)), 2);
    // Attacks before, on and behind joints, where one piece sees them late and the other early.
    const qint64 length = VorbisPieces(VorbisSettings(), VorbisGrid({}, 2)).plan().length;
    std::vector<qint64> places;
    for (qint64 k = 1; k < 6; ++k)
        places.push_back(k * length + (k - 3) * 700);
    EXPECT_LT(lossAtJoints(bursts(frames, places)), 2);
}

TEST(VorbisPiecesTest, silenceStaysSilenceAndIsSmall)
{
    const Sound silence(2 * 9 * 44100);
    const QByteArray file = testkit::encode(*recipeOf({}, 2), {}, silence);
    const auto decoded = testkit::decode(file);
    EXPECT_EQ(decoded.samples, silence);
    EXPECT_LT(file.size(), 6000);
}

TEST(VorbisPiecesTest, piecesWithoutAJointAreEncodedInOneGo)
{
    const VorbisSettings settings;
    const Sound sound = music(44100, 2, 7LL * 44100);
    VorbisGrid grid(settings, 2);
    grid.jointUnits = -1; // a piece's packets end before its neighbour's begin
    const auto recipe = makeRecipe({}, std::make_shared<VorbisPieces>(settings, grid));
    const QByteArray one = testkit::encode(*recipeOf(settings, OnePiece), {}, sound);
    EXPECT_TRUE(testkit::encode(*recipe, {}, sound) == one);
    EXPECT_FALSE(testkit::encode(*recipeOf(settings, 2), {}, sound) == one);
}

TEST(VorbisPiecesTest, aPieceThatIsCancelledGivesNothing)
{
    const VorbisPieces codec{VorbisSettings()};
    Piece piece;
    piece.frames = 441'000;
    piece.last = true;
    piece.samples.resize(882'000);
    EXPECT_EQ(codec.encode(std::move(piece), true), nullptr);
}

TEST(VorbisPiecesTest, eachRateOfTheListIsWritten)
{
    const Sound sound = music(44100, 2, 5LL * 44100);
    for (const int rate : {0, 48, 56, 64, 80, 96, 112, 128, 160, 192, 224, 256, 320}) {
        SCOPED_TRACE(rate);
        const VorbisSettings settings{{}, rate, 0, 0, {}};
        const StreamReader stream(testkit::encode(*recipeOf(settings, 2), {}, sound));
        EXPECT_TRUE(stream.consistent);
        EXPECT_EQ(stream.granule, 5 * 44100);
    }
}

} // namespace
