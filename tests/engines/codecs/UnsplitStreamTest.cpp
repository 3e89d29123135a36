#include "engines/codecs/UnsplitStream.h"

#include "base/RunTimeFailure.h"
#include "testkit/Encoding.h"

#include <gtest/gtest.h>
#include <semaphore>
#include <thread>

namespace {

using namespace codecs;

constexpr PcmFormat Format{10, 1}; // a piece of it has 100 frames

/// Writes the low byte of each sample behind a number that it writes at the end: the frames.
class ByteEncoder : public Encoder
{
public:
    explicit ByteEncoder(files::ByteSink &sink) : m_sink(sink) { putCount(); }

    void encode(const qint16 *samples, qsizetype frames) override
    {
        for (qsizetype i = 0; i < frames; ++i) {
            if (samples[i] < 0)
                throw RunTimeFailure(1000 - samples[i], QStringLiteral("sample"));
            const auto byte = static_cast<std::uint8_t>(samples[i]);
            m_sink.write(&byte, 1);
        }
        m_count = static_cast<std::uint8_t>(m_count + frames);
    }

    void finish() override
    {
        m_sink.seek(0);
        putCount();
    }

private:
    void putCount() { m_sink.write(&m_count, 1); }

    files::ByteSink &m_sink;
    std::uint8_t m_count = 0;
};

std::unique_ptr<Encoder> makeBytes(files::ByteSink &sink, int)
{
    return std::make_unique<ByteEncoder>(sink);
}

std::vector<qint16> samplesFrom(qint16 first, int count)
{
    std::vector<qint16> samples;
    for (int i = 0; i < count; ++i)
        samples.push_back(static_cast<qint16>(first + i % 100));
    return samples;
}

TEST(UnsplitStreamTest, theFileIsThatOfTheEncoderAlone)
{
    for (const int frames : {0, 1, 99, 100, 124, 125, 126, 1000}) {
        const auto samples = samplesFrom(7, frames);
        const auto alone = testkit::encode(*makeRecipe(Format, makeBytes), Format, samples);
        EXPECT_EQ(testkit::encode(*makeBackgroundRecipe(Format, makeBytes), Format, samples, 33), alone);
        EXPECT_EQ(alone.size(), frames + 1);
    }
}

TEST(UnsplitStreamTest, failuresOfTheEncoderItsMakingAndTheSinkReachTheCaller)
{
    auto samples = samplesFrom(0, 1000);
    const auto failure = [&](const MakeThreadedEncoder &make, qint64 room) {
        return testkit::failureOf([&] {
            testkit::MemorySink sink(room);
            const auto encoder = makeBackgroundRecipe(Format, make)->create(Format, sink);
            for (int at = 0; at < 1000; at += 50)
                encoder->encode(samples.data() + at, 50);
            encoder->finish();
        });
    };
    EXPECT_EQ(failure(makeBytes, 0), RunTimeFailure::DiskFull);
    EXPECT_EQ(failure(makeBytes, 1000), RunTimeFailure::DiskFull);
    EXPECT_EQ(failure(makeBytes, 1001), 0);
    samples[950] = -2;
    EXPECT_EQ(failure(makeBytes, 2000), 1002);
    samples[150] = -1;
    EXPECT_EQ(failure(makeBytes, 2000), 1001) << "the earlier one";
    EXPECT_EQ(
        failure([](files::ByteSink &, int) -> std::unique_ptr<Encoder> { refuse(QStringLiteral("no")); }, 0),
        RunTimeFailure::InvalidCall);
}

TEST(UnsplitStreamTest, theCallerGoesOnWhileTheEncoderWorks)
{
    std::binary_semaphore mayWork(0);
    std::thread::id worker;
    class Slow : public ByteEncoder
    {
    public:
        Slow(files::ByteSink &sink, std::binary_semaphore &mayWork) : ByteEncoder(sink) { mayWork.acquire(); }
    };
    testkit::MemorySink sink;
    const auto recipe = makeBackgroundRecipe(Format, [&](files::ByteSink &output, int) {
        worker = std::this_thread::get_id();
        return std::make_unique<Slow>(output, mayWork);
    });
    const auto encoder = recipe->create(Format, sink);
    const auto samples = samplesFrom(0, 200);
    encoder->encode(samples.data(), 200); // would wait for ever if the encoder worked here
    mayWork.release();
    encoder->finish();
    EXPECT_EQ(sink.content().size(), 201);
    EXPECT_NE(worker, std::this_thread::get_id());
}

} // namespace
