#include "engines/audiofile/ReadAhead.h"

#include "Pump.h"
#include "testkit/Signals.h"

#include <QElapsedTimer>
#include <future>
#include <gtest/gtest.h>

namespace {

using namespace Qt::Literals::StringLiterals;
using audiofile::AudioSource;
using audiofile::ReadAhead;

class ReadAheadTest : public ::testing::Test
{
protected:
    /// A file whose opening hangs until it is released, as on a net that doesn't answer.
    ReadAhead::Open hanging()
    {
        return [hold = m_hold, path = wav](const std::stop_token &stop) {
            hold->begun.set_value();
            hold->released.get_future().wait();
            return std::make_unique<AudioSource>(path, stop);
        };
    }
    ReadAhead::Open ready() const
    {
        return
            [path = wav](const std::stop_token &stop) { return std::make_unique<AudioSource>(path, stop); };
    }
    void awaitBegin() { m_hold->begun.get_future().wait(); }
    void release() { m_hold->released.set_value(); }

    const Folder folder;
    const std::vector<qint16> sound = testkit::music(44100, 2, 441'000);
    const QString wav = folder.put(u"a.wav"_s, testkit::encode(*codecs::wavRecipe(), {}, sound));

private:
    struct Hold
    {
        std::promise<void> begun;
        std::promise<void> released;
    };
    const std::shared_ptr<Hold> m_hold = std::make_shared<Hold>();
};

TEST_F(ReadAheadTest, aFileThatHangsIsGivenUpAtOnce)
{
    QElapsedTimer sinceStop;
    int asked = 0;
    EXPECT_EQ(testkit::failureOf([&] {
                  const ReadAhead source(hanging(), [&] {
                      if (++asked < 5)
                          return true;
                      awaitBegin();
                      sinceStop.start();
                      return false;
                  });
              }),
              RunTimeFailure::DeviceIoError);
    EXPECT_LT(sinceStop.elapsed(), 100);
    EXPECT_EQ(asked, 5);
    release(); // the thread that was left behind ends by itself
}

TEST_F(ReadAheadTest, whoWaitsIsCalledUntilTheFileIsThere)
{
    bool released = false;
    ReadAhead source(hanging(), [&] {
        if (!std::exchange(released, true))
            release();
        return true;
    });
    EXPECT_TRUE(released);
    EXPECT_EQ(source.format(), (codecs::PcmFormat{44100, 2}));
    EXPECT_EQ(source.seconds(), 10);
    std::vector<qint16> all;
    for (std::vector<qint16> some; !(some = source.read(50'000, [] { return true; })).empty();)
        all.insert(all.end(), some.begin(), some.end());
    EXPECT_TRUE(all == sound);
    EXPECT_FALSE(source.wasDamaged());
}

TEST_F(ReadAheadTest, aReadingThatIsGivenUpGivesNothing)
{
    // Sound stands behind so long a hole that its search takes a while.
    const QByteArray mp3 = testkit::encode(*codecs::mp3Recipe({}), {}, sound);
    const QByteArray half = mp3.left(mp3.size() / 2);
    const QString path = folder.put(u"hole.mp3"_s, half + QByteArray(100 << 20, '\0') + half);
    ReadAhead source([&](const std::stop_token &stop) { return std::make_unique<AudioSource>(path, stop); },
                     {});
    std::size_t values = 0;
    bool asked = false;
    for (std::vector<qint16> some; !(some = source.read(88'200, [&] { return !(asked = true); })).empty();)
        values += some.size();
    EXPECT_TRUE(asked);
    EXPECT_LT(values, sound.size() * 3 / 4);
    EXPECT_FALSE(source.wasDamaged());
}

TEST_F(ReadAheadTest, aDamagedSourceIsToldAtItsEnd)
{
    ASSERT_TRUE(QFile::resize(wav, 100'000));
    ReadAhead source(ready(), {});
    while (!source.read(88'200, {}).empty())
        continue;
    EXPECT_TRUE(source.wasDamaged());
}

} // namespace
