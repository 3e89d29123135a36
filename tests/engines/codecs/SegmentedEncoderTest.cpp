#include "engines/codecs/SegmentedEncoder.h"

#include "base/RunTimeFailure.h"
#include "engines/codecs/Mp3Encoder.h"
#include "engines/codecs/Recipe.h"
#include "testkit/Encoding.h"
#include "testkit/Signals.h"
#include "testkit/TestDecoder.h"

#include <QtEndian>
#include <gtest/gtest.h>
#include <thread>

namespace {

using namespace codecs;

struct Mp3Row
{
    const char *name;
    Mp3Settings settings;
};

std::vector<Mp3Row> mp3Rows()
{
    Mp3Settings constant;
    Mp3Settings variable;
    variable.variable = true;
    variable.variableQuality = 4;
    Mp3Settings low;
    low.rate = 22050;
    low.channelMode = Mp3Settings::Mono;
    low.bitRate = 32;
    return {{"constant", constant}, {"variable", variable}, {"low", low}};
}

std::shared_ptr<const EncoderRecipe> mp3InPieces(const Mp3Settings &settings, int seconds = 2)
{
    return makeRecipe({settings.rate, settings.channelMode == Mp3Settings::Mono ? 1 : 2},
                      mp3Pieces(settings, seconds));
}

TEST(SegmentedMp3, theBytesAreTheSameForAnyNumberOfThreadsAndAnyAmounts)
{
    for (const Mp3Row &row : mp3Rows()) {
        const int channels = row.settings.channelMode == Mp3Settings::Mono ? 1 : 2;
        const PcmFormat format{row.settings.rate, channels};
        const auto sound = testkit::music(format.rate, channels, 11LL * format.rate);
        const auto recipe = mp3InPieces(row.settings);
        const QByteArray one = testkit::encode(*recipe, format, sound, 44100, 1);
        EXPECT_TRUE(testkit::encode(*recipe, format, sound, 1000, 2) == one) << row.name;
        EXPECT_TRUE(testkit::encode(*recipe, format, sound, 1'000'000, 3) == one) << row.name;
        EXPECT_TRUE(testkit::encode(*recipe, format, sound, 1, 16) == one) << row.name;
    }
}

TEST(SegmentedMp3, decodersGetEachSampleBackWhereverThePiecesEnd)
{
    for (const int rate : {44100, 22050}) {
        Mp3Settings settings;
        settings.rate = rate;
        const PcmFormat format{rate, 2};
        const PiecePlan plan = mp3Pieces(settings, 2)->plan();
        const qint64 piece = plan.length;
        const qint64 cut = piece + plan.lookAhead + plan.shortestTail(); // then a piece is cut off
        const auto sound = testkit::music(rate, 2, 10 * piece + 777);
        for (const qint64 frames : {qint64(0), qint64(1), piece - 1, piece, piece + 1, cut - 1, cut, cut + 1,
                                    piece + cut, 10 * piece + 777}) {
            if (rate < 32000 && frames < 100)
                continue; // the test's decoder can't take off more than one of the short frames at the end
            const std::vector<qint16> part(sound.begin(), sound.begin() + frames * 2);
            const auto decoded = testkit::decode(testkit::encode(*mp3InPieces(settings), format, part));
            EXPECT_EQ(decoded.frames(), frames);
            EXPECT_TRUE(decoded.clean) << frames;
            if (frames > 1152) {
                EXPECT_GT(testkit::signalToNoise(part, decoded.samples), 10) << frames;
            }
        }
    }
}

TEST(SegmentedMp3, theJointsSoundAsInOnePiece)
{
    constexpr qint64 Frames = 13LL * 44100;
    Mp3Settings variable;
    variable.variable = true;
    const qint64 piece = mp3Pieces({}, 2)->plan().length;
    for (const auto &sound : {testkit::music(44100, 2, Frames), testkit::chord(44100, 2, Frames)}) {
        for (const Mp3Settings &settings : {Mp3Settings(), variable}) {
            const auto decoded = [&](int seconds) {
                return testkit::decode(testkit::encode(*mp3InPieces(settings, seconds), {}, sound)).samples;
            };
            const auto pieces = decoded(2), one = decoded(1000);
            for (qint64 joint = piece; joint < 5 * piece; joint += piece) {
                const auto around = [joint](const std::vector<qint16> &all) {
                    constexpr qint64 Reach = 3 * 1152;
                    return std::vector<qint16>(all.begin() + (joint - Reach) * 2,
                                               all.begin() + (joint + Reach) * 2);
                };
                EXPECT_GT(testkit::signalToNoise(around(sound), around(pieces)),
                          testkit::signalToNoise(around(sound), around(one)) - 2);
            }
        }
    }
}

TEST(SegmentedMp3, theTagTellsTheWholeStream)
{
    const auto sound = testkit::music(44100, 2, 35 * 44100);
    const QByteArray file = testkit::encode(*mp3InPieces({}), {}, sound);
    const qsizetype tag = file.indexOf("Info");
    ASSERT_GT(tag, 0);
    const auto number = [&](qsizetype at) { return qFromBigEndian<quint32>(file.constData() + tag + at); };
    const quint32 frames = (35 * 44100 + 1152 + 576) / 1152 + 1;
    EXPECT_NEAR(number(8), frames, 1);
    EXPECT_EQ(number(12), quint32(file.size()));
    EXPECT_NEAR(quint8(file[tag + 16 + 50]), 128, 2); // a constant rate: half the time is half the bytes
}

/// A codec of one byte a piece, for the frame around all codecs.
class FakePieces final : public PieceCodec
{
public:
    struct Encoded : EncodedPiece
    {
        qint64 number = 0;
    };
    class Joiner : public PieceJoiner
    {
    public:
        explicit Joiner(engines::ByteSink &output) : m_output(output) {}
        void add(EncodedPiece &piece) override
        {
            const auto byte = static_cast<std::uint8_t>(static_cast<Encoded &>(piece).number);
            m_output.write(&byte, 1);
        }
        void finish() override {}

    private:
        engines::ByteSink &m_output;
    };

    PiecePlan plan() const override { return {.warmUp = 2, .lookAhead = 1, .length = 8}; }
    std::unique_ptr<EncodedPiece> encode(Piece piece, const std::atomic<bool> &cancelled) const override
    {
        const int now = ++m_atWork;
        int most = m_most;
        while (now > most && !m_most.compare_exchange_weak(most, now)) {
        }
        while (piece.number == blocked && !cancelled)
            std::this_thread::yield();
        --m_atWork;
        if (piece.number >= failing)
            throw RunTimeFailure(1000 + static_cast<int>(piece.number), QStringLiteral("piece"));
        EXPECT_EQ(piece.samples.front(), piece.begin - piece.warmUp);
        auto encoded = std::make_unique<Encoded>();
        encoded->number = piece.number;
        return encoded;
    }
    std::unique_ptr<PieceJoiner> joiner(engines::ByteSink &output) const override
    {
        return std::make_unique<Joiner>(output);
    }

    qint64 failing = 1000;
    qint64 blocked = -1;
    mutable std::atomic<int> m_atWork = 0;
    mutable std::atomic<int> m_most = 0;
};

std::vector<qint16> countUp(int frames)
{
    std::vector<qint16> samples(static_cast<std::size_t>(frames));
    for (int i = 0; i < frames; ++i)
        samples[static_cast<std::size_t>(i)] = static_cast<qint16>(i);
    return samples;
}

TEST(SegmentedEncoder, piecesComeOutInOrder)
{
    auto codec = std::make_shared<FakePieces>();
    testkit::MemorySink sink;
    SegmentedEncoder encoder(codec, 1, sink, 3);
    const auto samples = countUp(100); // twelve pieces of 8 and one of 4
    for (int i = 0; i < 100; ++i)
        encoder.encode(samples.data() + i, 1);
    encoder.finish();
    EXPECT_EQ(sink.content(), QByteArray("\0\1\2\3\4\5\6\7\10\11\12\13\14", 13));
    EXPECT_LE(codec->m_most, 3);
}

TEST(SegmentedEncoder, theEarliestFailureReachesTheCallerForAnyNumberOfThreads)
{
    for (const int threads : {1, 2, 16}) {
        auto codec = std::make_shared<FakePieces>();
        codec->failing = 2;
        testkit::MemorySink sink;
        SegmentedEncoder encoder(codec, 1, sink, threads);
        const auto samples = countUp(200);
        EXPECT_EQ(testkit::failureOf([&] {
                      encoder.encode(samples.data(), 200);
                      encoder.finish();
                  }),
                  1002);
        EXPECT_EQ(sink.content().size(), 2);
    }
}

TEST(SegmentedEncoder, whoWaitsIsCalledAndMayEndTheWait)
{
    auto codec = std::make_shared<FakePieces>();
    codec->blocked = 0;
    testkit::MemorySink sink;
    SegmentedEncoder encoder(codec, 1, sink, 2);
    int calls = 0;
    encoder.whileWaiting([&calls] {
        if (++calls == 3)
            throw RunTimeFailure(1234, QStringLiteral("enough"));
    });
    const auto samples = countUp(200);
    EXPECT_EQ(testkit::failureOf([&] { encoder.encode(samples.data(), 200); }), 1234);
    EXPECT_EQ(calls, 3);
}

TEST(SegmentedEncoder, destroyingItEndsTheWorkAtOnceAndAFullSinkIsTold)
{
    auto codec = std::make_shared<FakePieces>();
    codec->blocked = 1;
    testkit::MemorySink sink;
    const auto samples = countUp(200);
    {
        SegmentedEncoder encoder(codec, 1, sink, 2);
        encoder.encode(samples.data(), 30);
    }
    testkit::MemorySink full(1);
    SegmentedEncoder encoder(std::make_shared<FakePieces>(), 1, full, 2);
    EXPECT_EQ(testkit::failureOf([&] {
                  encoder.encode(samples.data(), 200);
                  encoder.finish();
              }),
              RunTimeFailure::DiskFull);
}

} // namespace
