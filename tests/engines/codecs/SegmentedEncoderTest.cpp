#include "engines/codecs/SegmentedEncoder.h"

#include "base/RunTimeFailure.h"
#include "base/Thread.h"
#include "engines/codecs/Mp3Encoder.h"
#include "engines/codecs/Mp3Tag.h"
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
    low.bitRate = 64;
    Mp3Settings untagged = low;
    untagged.bitRate = 32; // its frames are too small for the tag
    return {{"constant", constant}, {"variable", variable}, {"low", low}, {"untagged", untagged}};
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

/// CRC-16 of the tag, bit by bit.
quint16 crc16(QByteArrayView bytes)
{
    unsigned crc = 0;
    for (const char byte : bytes) {
        crc ^= static_cast<quint8>(byte);
        for (int bit = 0; bit < 8; ++bit)
            crc = (crc >> 1) ^ ((crc & 1) ? 0xA001 : 0);
    }
    return static_cast<quint16>(crc);
}

TEST(SegmentedMp3, theTagTellsTheWholeStream)
{
    for (const Mp3Row &row : mp3Rows()) {
        SCOPED_TRACE(row.name);
        const int channels = row.settings.channelMode == Mp3Settings::Mono ? 1 : 2;
        const PcmFormat format{row.settings.rate, channels};
        const QByteArray file = testkit::encode(*mp3InPieces(row.settings), format,
                                                testkit::music(format.rate, channels, 15LL * format.rate));
        const qsizetype tag = file.indexOf(row.settings.variable ? "Xing" : "Info");
        ASSERT_EQ(tag > 0, row.settings.bitRate > 32);
        if (tag < 0)
            continue;
        const auto number = [&](qsizetype at) {
            return qFromBigEndian<quint32>(file.constData() + tag + at);
        };
        const auto half = [&](qsizetype at) { return qFromBigEndian<quint16>(file.constData() + tag + at); };
        const auto bytes = [&](qsizetype at) {
            return reinterpret_cast<const quint8 *>(file.constData()) + at;
        };
        const qsizetype first = qsizetype(mp3FrameSize(bytes(0)));
        quint32 frames = 0;
        qsizetype middle = 0;
        for (qsizetype at = first; at < file.size(); at += qsizetype(mp3FrameSize(bytes(at)))) {
            ASSERT_GT(mp3FrameSize(bytes(at)), 0U);
            if (++frames == number(8) / 2)
                middle = at;
        }
        EXPECT_EQ(number(8), frames);
        EXPECT_EQ(number(12), quint32(file.size()));
        EXPECT_NEAR(quint8(file[tag + 16 + 50]), double(middle) * 256 / double(file.size()), 2);
        EXPECT_EQ(number(148), quint32(file.size()));
        EXPECT_EQ(half(152), crc16(QByteArrayView(file).sliced(first)));
        EXPECT_EQ(half(154), crc16(QByteArrayView(file).first(tag + 154)));
    }
}

TEST(SegmentedMp3, noFrameNeedsMoreOfThoseBeforeThanTheyHold)
{
    for (const Mp3Row &row : mp3Rows()) {
        const int channels = row.settings.channelMode == Mp3Settings::Mono ? 1 : 2;
        const PcmFormat format{row.settings.rate, channels};
        const QByteArray file = testkit::encode(*mp3InPieces(row.settings), format,
                                                testkit::music(format.rate, channels, 15LL * format.rate));
        const bool mpeg1 = format.rate >= 32000;
        const qint64 pieceFrames = mp3Pieces(row.settings, 2)->plan().length / (mpeg1 ? 1152 : 576);
        const qint64 overhead = 4 + (mpeg1 ? (channels == 2 ? 32 : 17) : (channels == 2 ? 17 : 9));
        qint64 held = 0;                                   // bytes of main data in the frames before
        qint64 frame = row.settings.bitRate > 32 ? -1 : 0; // the first one is the tag's
        bool reached = false;
        for (qsizetype at = 0; at < file.size(); ++frame) {
            const auto *bytes = reinterpret_cast<const quint8 *>(file.constData()) + at;
            const int begin = mpeg1 ? bytes[4] << 1 | bytes[5] >> 7 : bytes[4];
            if (frame == 0)
                held = 0;
            EXPECT_LE(begin, held) << row.name << ", frame " << frame;
            if (frame % pieceFrames == 0 && frame < 6 * pieceFrames) {
                EXPECT_EQ(begin, 0) << row.name << ", frame " << frame;
            }
            reached |= begin > 0;
            held += qint64(mp3FrameSize(bytes)) - overhead;
            at += qsizetype(mp3FrameSize(bytes));
        }
        EXPECT_TRUE(reached) << row.name;
    }
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
        explicit Joiner(files::ByteSink &output) : m_output(output) {}
        void add(EncodedPiece &piece) override
        {
            const auto byte = static_cast<std::uint8_t>(static_cast<Encoded &>(piece).number);
            m_output.write(&byte, 1);
        }
        void finish() override {}

    private:
        files::ByteSink &m_output;
    };

    PiecePlan plan() const override { return {.warmUp = 2, .lookAhead = 1, .length = 8}; }
    std::unique_ptr<EncodedPiece> encode(Piece piece, const std::atomic<bool> &cancelled) const override
    {
        ++m_begun;
        const int now = ++m_atWork;
        int most = m_most;
        while (now > most && !m_most.compare_exchange_weak(most, now)) {
        }
        while ((piece.number == blocked || m_most < together) && !cancelled)
            std::this_thread::yield();
        --m_atWork;
        if (piece.number >= failing)
            throw RunTimeFailure(1000 + static_cast<int>(piece.number), QStringLiteral("piece"));
        EXPECT_EQ(piece.samples.front(), piece.begin - piece.warmUp);
        auto encoded = std::make_unique<Encoded>();
        encoded->number = piece.number;
        return encoded;
    }
    std::unique_ptr<PieceJoiner> joiner(files::ByteSink &output) const override
    {
        return std::make_unique<Joiner>(output);
    }

    qint64 failing = 1000;
    qint64 blocked = -1;
    int together = 1; ///< no piece is done before so many are at work
    mutable std::atomic<int> m_begun = 0;
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

TEST(SegmentedEncoder, asManyPiecesAsThreadsAreMadeAtATimeAndComeOutInOrder)
{
    auto codec = std::make_shared<FakePieces>();
    codec->together = 3;
    testkit::MemorySink sink;
    SegmentedEncoder encoder(codec, 1, sink, 3);
    encoder.whileWaiting([calls = 0]() mutable {
        if (++calls == 3000)
            throw RunTimeFailure(1234, QStringLiteral("three never are at work"));
    });
    const auto samples = countUp(100); // twelve pieces of 8 and one of 4
    for (int i = 0; i < 100; ++i)
        encoder.encode(samples.data() + i, 1);
    encoder.finish();
    EXPECT_EQ(sink.content(), QByteArray("\0\1\2\3\4\5\6\7\10\11\12\13\14", 13));
    EXPECT_EQ(codec->m_most, 3);
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

TEST(SegmentedEncoder, theThreadsThatThereAreDoTheWorkAndNoneIsAFailure)
{
    const auto samples = countUp(100);
    for (const int there : {0, 1}) {
        const ThreadShortage shortage(there);
        testkit::MemorySink sink;
        SegmentedEncoder encoder(std::make_shared<FakePieces>(), 1, sink, 3);
        EXPECT_EQ(testkit::failureOf([&] {
                      encoder.encode(samples.data(), 100);
                      encoder.finish();
                  }),
                  there == 0 ? RunTimeFailure::OutOfMemory : 0);
        EXPECT_EQ(sink.content().size(), there == 0 ? 0 : 13);
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
    EXPECT_LE(codec->m_begun, 3) << "however slow the first one, one piece more than threads is open";
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
