#include "OggSamples.h"
#include "engines/common/OggPage.h"
#include "engines/tagfile/AudioKind.h"
#include "engines/tagfile/Id3v2Tag.h"
#include "engines/tagfile/Mp3Tags.h"
#include "engines/tagfile/OggTags.h"
#include "testkit/MemorySink.h"

#include <QBuffer>
#include <QElapsedTimer>
#include <sys/resource.h>

namespace {

using namespace samples;
using engines::AudioKind;

/// The same numbers in every run.
class Random
{
public:
    explicit Random(quint32 seed) : m_state(seed) {}
    quint32 below(quint32 limit) { return (m_state = m_state * 1664525 + 1013904223) / 65536 % limit; }

private:
    quint32 m_state;
};

/// The file with a few bytes exchanged, taken out or put in, most of them in its first part.
QByteArray spoiled(QByteArray file, qsizetype head, Random &random)
{
    static constexpr char Nasty[] = {'\0', '\x7f', '\x80', '\xff', '\1', '\3', 'T', '\x40'};
    for (quint32 i = 0, count = 1 + random.below(6); i < count; ++i) {
        const qsizetype place = random.below(static_cast<quint32>(random.below(8) ? head : file.size()));
        switch (random.below(5)) {
        case 0:
            file.remove(place, random.below(40));
            break;
        case 1:
            file.insert(place, file.mid(random.below(static_cast<quint32>(head)), random.below(60)));
            break;
        default:
            file[std::min(place, file.size() - 1)] =
                random.below(2) ? Nasty[random.below(sizeof Nasty)] : static_cast<char>(random.below(256));
        }
    }
    return random.below(10) ? file : file.left(random.below(static_cast<quint32>(file.size())));
}

long peakMemory()
{
    rusage usage{};
    ::getrusage(RUSAGE_SELF, &usage);
    return usage.ru_maxrss / 1024;
}

class HostileTest : public TagFileTest
{
protected:
    /// Reads and writes a file as the component does. What is written must be a good file with the fields;
    /// 1 where it was written.
    static int survives(QByteArray bytes)
    {
        QBuffer file(&bytes);
        file.open(QIODevice::ReadOnly);
        const AudioKind kind = engines::audioKind(file);
        if (kind != AudioKind::Mp3 && kind != AudioKind::OggVorbis)
            return 0;
        const bool mp3 = kind == AudioKind::Mp3;
        const engines::TagFields fields{.title = QStringLiteral("Tü"),
                                        .artist = QStringLiteral("日本"),
                                        .album = {},
                                        .comment = QStringLiteral("C"),
                                        .year = 1999,
                                        .genre = 9,
                                        .track = 3};
        testkit::MemorySink out;
        try {
            (mp3 ? engines::readMp3Tags : engines::readOggTags)(file);
            const engines::TagEdit edit = (mp3 ? engines::editMp3Tags : engines::editOggTags)(file, fields);
            if (!edit)
                return 0;
            edit(out);
        } catch (const RunTimeFailure &) {
            return 0; // and the file is as it was
        }
        QByteArray content = out.content();
        QBuffer written(&content);
        written.open(QIODevice::ReadOnly);
        EXPECT_EQ(engines::audioKind(written), kind);
        EXPECT_EQ((mp3 ? engines::readMp3Tags : engines::readOggTags)(written), fields);
        if (mp3) {
            const qsizetype audio = engines::Id3v2Tag(bytes).size();
            EXPECT_EQ(
                content.mid(engines::Id3v2Tag(content).size()).chopped(128),
                bytes.mid(audio, bytes.size() - audio - (bytes.right(128).startsWith("TAG") ? 128 : 0)));
        }
        return 1;
    }
};

TEST_F(HostileTest, spoiledFilesNeitherCrashNorTakeMemoryNorAreMadeWorse)
{
    const QByteArray utf16("\x01\xff\xfet\0\0\0\xff\xfeu\0", 11);
    const auto body = [&](auto frame, const char *title, const char *comment, const char *picture) {
        return frame(title, utf16) +
               frame(comment, QByteArray("\1eng\xff\xfe\0\0\xff\xfe"
                                         "c\0",
                                         12)) +
               frame(picture, latin1(QByteArray("image/png\0\3front\0data", 21)));
    };
    const auto old = [](const char *id, const QByteArray &data) { return frame22(id, data); };
    const auto plain = [](const char *id, const QByteArray &data) { return frame23(id, data); };
    const auto safe = [](const char *id, const QByteArray &data) { return frame24(id, data, 0x0003); };
    const QByteArrayList heads{
        id3v2(2, body(old, "TT2", "COM", "PIC") + QByteArray(20, '\0')),
        id3v2(3, body(plain, "TIT2", "COMM", "APIC") + QByteArray(20, '\0'), 0x80),
        id3v2(4, body(safe, "TIT2", "COMM", "APIC") + frame24("TDRC", latin1("1999-01-01")) +
                     frame24("TCON", latin1("9"))),
        id3v2(4, QByteArray("\0\0\0\6\1\0", 6) + body(plain, "TIT2", "COMM", "APIC"), 0x40),
    };
    Random random(1);
    const long before = peakMemory();
    int written = 0;
    constexpr int Rounds = 1500;
    for (int round = 0; round < Rounds; ++round) {
        for (const QByteArray &head : heads)
            written += survives(spoiled(head + mp3Frames(4) + id3v1("old"), head.size(), random));
        const QByteArrayList pages = vorbisPages(1, comments({"TITLE=old", "COMMENT=old", "X=y"}));
        written += survives(spoiled(pages.join(), pages[0].size() + pages[1].size(), random));
    }
    EXPECT_GT(written, Rounds); // most are spoiled beyond use, but not all
    EXPECT_LT(peakMemory() - before, 400);
}

TEST_F(HostileTest, sizesThatLieLeaveTheFileAsItWas)
{
    const QByteArray audio = mp3Frames(4);
    const QByteArray goodFrame = frame23("TIT2", latin1("title"));
    const QByteArrayList files{
        id3v2(3, goodFrame + QByteArray("APIC\xff\xff\xff\xff\0\0 data", 15)) + audio,      // 4 GB
        id3v2(3, goodFrame + "APIC" + bigEndian(5000) + QByteArray("\0\0 cut", 6)) + audio, // truncated
        id3v2(4, goodFrame + "no frame at all, but more than a header") + audio,            // garbage
        id3v2(5, goodFrame) + audio,                                                        // unknown version
        id3v2(2, "data", 0x40) + audio,                                                     // undefined
        id3v2(3, QByteArray("\x7f\xff\xff\xff\0\0", 6) + goodFrame, 0x40) + audio,          // extended header
        id3v2(3, frame23("PRIV", "x").repeated(20'000)) + audio,                            // too many
        vorbisPages(1, "\x03vorbis\xff\xff\xff\xff vendor").join(),                         // 4 GB
        vorbisPages(1, "\x03vorbis" + littleEndian(0) + littleEndian(0xffffffff) + '\1').join(), // 4 G fields
        vorbisPages(1, comments({"TITLE=x"}).chopped(1)).join(), // no end mark
        vorbisPages(1, comments({"TITLE=x"})).join().left(200),  // ends in headers
        oggPage(2, 1, 0, {"\x01vorbis"}) +
            oggPage(0, 1, 1, {comments({}), VorbisSetup, "audio"}), // audio too early
    };
    tags.setTagTitle(QStringLiteral("new"));
    for (const QByteArray &file : files) {
        const QString path = put(QStringLiteral("a"), file);
        EXPECT_NE(failureOfWriting(path), 0) << files.indexOf(file);
        EXPECT_EQ(content(path), file) << files.indexOf(file);
    }
    EXPECT_EQ(entries().size(), 1);
    // What stands before the damage can be read all the same.
    EXPECT_EQ(read(put(QStringLiteral("a"), files[1])).title, QStringLiteral("title"));
}

TEST_F(HostileTest, whatIsRepeatedWithoutEndIsLimited)
{
    const long before = peakMemory();
    QElapsedTimer clock;
    clock.start();
    const QByteArray emptyTag = id3v2(3, {});
    const QByteArray titled = id3v2(3, frame23("TIT2", latin1("title"))) + mp3Frames(4);
    const QString rows = put(QStringLiteral("rows"), emptyTag.repeated(100'000) + titled);
    EXPECT_FALSE(tags.IsAudioFile(rows));
    EXPECT_EQ(failureOfWriting(rows), RunTimeFailure::InvalidCall);
    EXPECT_EQ(
        read(put(QStringLiteral("few"), emptyTag.repeated(engines::Id3v2Tag::MostTags - 1) + titled)).title,
        QStringLiteral("title"));
    const QString tooMany =
        put(QStringLiteral("many"), emptyTag.repeated(engines::Id3v2Tag::MostTags) + titled);
    EXPECT_EQ(failureOfWriting(tooMany), RunTimeFailure::DeviceIoError);

    const QByteArray fields(16'000'000, '\0'); // each of no length
    const QByteArray packet = "\x03vorbis" + littleEndian(0) + littleEndian(4'000'000) + fields + '\1';
    const auto pages = engines::oggPages({packet, VorbisSetup}, 1, 1);
    const QString ogg = put(QStringLiteral("a.ogg"), vorbisPages(1, {})[0] + pages.join());
    EXPECT_TRUE(tags.IsOGGFile(ogg));
    EXPECT_EQ(failureOfWriting(ogg), RunTimeFailure::DeviceIoError);
    EXPECT_LT(peakMemory() - before, 250); // the file's own bytes, some times over
    EXPECT_LT(clock.elapsed(), 5000);
}

TEST_F(HostileTest, compressedFramesAreNotUnpacked)
{
    const QByteArray bomb = qCompress(QByteArray(200'000'000, '\0')).mid(4);
    const QByteArray frames = frame23("TIT2", bigEndian(200'000'000) + bomb, 0x80) +
                              frame23("APIC", bomb, 0x80) + frame23("TPE1", latin1("artist"));
    const long before = peakMemory();
    const QString path = put(QStringLiteral("a.mp3"), id3v2(3, frames) + mp3Frames(4));
    EXPECT_EQ(read(path).artist, QStringLiteral("artist"));
    tags.setTagTitle(QStringLiteral("new"));
    EXPECT_EQ(failureOfWriting(path), 0);
    EXPECT_TRUE(content(path).contains(frame23("APIC", bomb, 0x80)));
    EXPECT_LT(peakMemory() - before, 60);
}

} // namespace
