#include "Files.h"
#include "Pump.h"
#include "engines/audiofile/AudioSource.h"
#include "engines/codecs/VorbisEncoder.h"
#include "testkit/Signals.h"

#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

using namespace Qt::Literals::StringLiterals;

constexpr int Most = 1'000'000; // bytes of a file

/// The address sanitizer keeps what was freed; so a process' memory says nothing under it.
#if defined(__SANITIZE_ADDRESS__)
constexpr bool KeepsFreedMemory = true;
#elif defined(__has_feature)
constexpr bool KeepsFreedMemory = __has_feature(address_sanitizer);
#else
constexpr bool KeepsFreedMemory = false;
#endif

struct Cost
{
    double seconds = 0; ///< of work
    long megabytes = 0; ///< at the most
};

/// What it costs a process of its own.
Cost costOf(const std::function<void()> &work)
{
    const pid_t child = fork();
    if (child == 0) {
        work();
        _exit(0);
    }
    int status = 0;
    rusage usage = {};
    EXPECT_EQ(wait4(child, &status, 0, &usage), child);
    EXPECT_TRUE(WIFEXITED(status)) << "signal " << WTERMSIG(status);
    return {double(usage.ru_utime.tv_sec + usage.ru_stime.tv_sec) +
                1e-6 * double(usage.ru_utime.tv_usec + usage.ru_stime.tv_usec),
            usage.ru_maxrss / 1024};
}

class HostileTest : public ::testing::Test
{
protected:
    /// Reads it to the end, or to its failure.
    void expectCheap(const char *what, const QByteArray &file)
    {
        SCOPED_TRACE(what);
        ASSERT_LE(file.size(), Most + 100'000);
        const QString path = m_folder.put(u"file"_s, file);
        const Cost cost = costOf([&] {
            testkit::failureOf([&] {
                audiofile::AudioSource source(path);
                while (!source.read().empty())
                    continue;
            });
        });
        EXPECT_LT(cost.seconds, 2);
        if (!KeepsFreedMemory)
            EXPECT_LT(cost.megabytes, 200 + usual.megabytes);
    }

    const QByteArray ogg = testkit::encode(*codecs::vorbisRecipe({}), {}, testkit::music(44100, 2, 60'000));
    const Cost usual = costOf([] {});

private:
    const Folder m_folder;
};

/// `count` texts that all differ.
QList<QByteArray> names(int count)
{
    QList<QByteArray> texts;
    for (int i = 0; i < count; ++i)
        texts.append(QByteArray::number(10'000 + i));
    return texts;
}

TEST_F(HostileTest, sizesAreClaims)
{
    expectCheap("a word of two gigabytes",
                "RIFF" + bytesOf(quint32(0x7fffffff)) + "WAVE" + wavFormat(1, 44100, 2, 16) + "LIST" +
                    bytesOf(quint32(0x7ffffff0)) + "INFOINAM" + bytesOf(quint32(0x7fffff00)) + 'x');
    expectCheap("chunks of no length", "RIFF" + bytesOf(quint32(Most)) + "WAVE" + wavFormat(1, 44100, 2, 16) +
                                           chunk("none", {}).repeated(Most / 8));
}

TEST_F(HostileTest, rowsOfTagsAreLeftAtSomePoint)
{
    expectCheap("empty tags", QByteArray("ID3\3\0\0\0\0\0\0", 10).repeated(Most / 10));
}

TEST_F(HostileTest, ofManyWordsAboutTheSoundFewAreRead)
{
    QByteArray list = "INFO";
    QByteArray attributes;
    for (const QByteArray &name : names(Most / 25)) {
        list += chunk(name.right(4), QByteArray("abc", 4));
        QByteArray wide;
        for (const char letter : name)
            wide += letter + QByteArray(1, '\0');
        attributes += bytesOf(quint16(12)) + wide + QByteArray(2, '\0') + bytesOf(quint16(0)) +
                      bytesOf(quint16(4)) + QByteArray("a\0\0\0", 4);
    }
    expectCheap("WAV", chunk("RIFF", "WAVE" + wavFormat(1, 44100, 2, 16) + chunk("LIST", list) +
                                         chunk("data", QByteArray(1000, 'x'))));
    const QByteArray header = QByteArray::fromHex("3026b2758e66cf11a6d900aa0062ce6c");
    const QByteArray description = QByteArray::fromHex("40a4d0d207e3d21197f000a0c95ea850");
    expectCheap("WMA", header + bytesOf(quint64(attributes.size() + 56)) + bytesOf(quint32(1)) + "\1\2" +
                           description + bytesOf(quint64(attributes.size() + 26)) +
                           bytesOf(quint16(Most / 25)) + attributes);
}

TEST_F(HostileTest, commentsOfOggFilesAreCountedBeforeTheyAreRead)
{
    const auto withComments = [&](const QList<QByteArray> &comments, int serial) {
        return remadeOgg(ogg, 4096, serial, [&](QByteArray &packet, qint64 number) {
            if (number == 1)
                packet = vorbisComments(comments);
        });
    };
    QList<QByteArray> different;
    for (const QByteArray &name : names(80'000))
        different.append(name + '=');
    expectCheap("all different", withComments(different, 1));
    expectCheap("all alike", withComments(QList<QByteArray>(110'000, "a=b"), 1));
    expectCheap("in a stream that follows", ogg + withComments(different, 7));
    // No file has so many; and up to there it is read.
    const Folder folder;
    EXPECT_EQ(testkit::failureOf([&] {
                  audiofile::AudioSource(folder.put(u"a"_s, withComments(different.mid(0, 1000), 1)));
              }),
              0);
}

TEST_F(HostileTest, aStreamThatFollowsAtOneHertzIsPassedOver)
{
    const QByteArray slow = remadeOgg(ogg, 4096, 7, [](QByteArray &packet, qint64 number) {
        if (number == 0)
            packet.replace(12, 4, bytesOf(quint32(1)));
    });
    expectCheap("one hertz behind 44,100", ogg + slow);
}

} // namespace
