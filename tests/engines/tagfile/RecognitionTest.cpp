#include "SampleFiles.h"

namespace {

using namespace samples;

enum Kind { None, Other, Ogg, Mp3 };

class RecognitionTest : public TagFileTest
{
protected:
    Kind kindOf(const QString &path) const
    {
        const bool mp3 = tags.IsMP3File(path);
        const bool ogg = tags.IsOGGFile(path);
        EXPECT_FALSE(mp3 && ogg);
        EXPECT_TRUE(tags.IsAudioFile(path) || (!mp3 && !ogg));
        return mp3 ? Mp3 : ogg ? Ogg : tags.IsAudioFile(path) ? Other : None;
    }

    Kind kindOf(const QByteArray &bytes) const { return kindOf(put(QStringLiteral("x"), bytes)); }
};

TEST_F(RecognitionTest, realFilesOfEveryKind)
{
    const struct
    {
        const char *ending;
        QStringList options;
        Kind kind;
    } rows[] = {
        {"mp3", {}, Mp3},
        {"mp3",
         {QStringLiteral("-write_xing"), QStringLiteral("0"), QStringLiteral("-ar"), QStringLiteral("8000"),
          QStringLiteral("-id3v2_version"), QStringLiteral("0")},
         Mp3}, // MPEG 2.5, no tag
        {"mp3", {QStringLiteral("-ar"), QStringLiteral("22050")}, Mp3},
        {"ogg", {}, Ogg},
        {"oga", {QStringLiteral("-c:a"), QStringLiteral("libopus")}, Other},
        {"oga", {QStringLiteral("-c:a"), QStringLiteral("flac")}, Other},
        {"spx", {QStringLiteral("-ar"), QStringLiteral("16000")}, Other},
        {"ogv",
         {QStringLiteral("-f"), QStringLiteral("lavfi"), QStringLiteral("-i"),
          QStringLiteral("testsrc=d=1:s=64x64"), QStringLiteral("-c:v"), QStringLiteral("libtheora"),
          QStringLiteral("-c:a"), QStringLiteral("libvorbis")},
         None},
        {"wav", {}, Other},
        {"wav", {QStringLiteral("-rf64"), QStringLiteral("always")}, Other},
        {"wma", {}, Other},
        {"flac", {}, Other},
        {"mp2", {}, Other},
        {"aac", {}, Other},
        {"m4a", {}, Other},
        {"aiff", {}, Other},
        {"avi", {QStringLiteral("-c:a"), QStringLiteral("libmp3lame")}, None},
        {"mkv", {QStringLiteral("-c:a"), QStringLiteral("libmp3lame")}, None},
    };
    for (const auto &row : rows)
        EXPECT_EQ(kindOf(made(QString::fromLatin1(row.ending), row.options)), row.kind)
            << row.ending << " " << row.options.join(u' ').toStdString();
}

TEST_F(RecognitionTest, theContentCountsAndNotTheName)
{
    EXPECT_EQ(kindOf(put(QStringLiteral("song.txt"), mp3Frames(3))), Mp3);
    EXPECT_EQ(kindOf(put(QStringLiteral("song"), made(QStringLiteral("ogg")))), Ogg);
    EXPECT_EQ(kindOf(put(QStringLiteral("日本 'ö\".MP3"), mp3Frames(3))), Mp3);
    EXPECT_EQ(kindOf(put(QStringLiteral("text.mp3"), QByteArray("All of this is text.\n").repeated(1000))),
              None);
    EXPECT_EQ(kindOf(put(QStringLiteral("text.ogg"), "OggS and more text, but no pages of any kind")), None);
    EXPECT_EQ(kindOf(put(QStringLiteral("empty.mp3"), {})), None);
    EXPECT_EQ(kindOf(folder.path()), None);
    EXPECT_EQ(kindOf(folder.filePath(QStringLiteral("missing.mp3"))), None);
}

TEST_F(RecognitionTest, tagsAndPaddingInFrontArePassedOver)
{
    const QByteArray large = id3v2(3, frame23("APIC", QByteArray(3'000'000, 'p')));
    EXPECT_EQ(kindOf(large + mp3Frames(3)), Mp3);
    EXPECT_EQ(kindOf(large + large + mp3Frames(3)), Mp3);
    EXPECT_EQ(kindOf(large + QByteArray(200'000, '\0') + mp3Frames(3)), Mp3);
    EXPECT_EQ(kindOf(large + made(QStringLiteral("flac"))), Other);
    EXPECT_EQ(kindOf(large + made(QStringLiteral("ogg"))), Ogg);
    EXPECT_EQ(kindOf(large), None);
    EXPECT_EQ(kindOf(large.left(2'000'000)), None);
    EXPECT_EQ(kindOf(id3v2(3, {}) + "text behind a tag"), None);
}

TEST_F(RecognitionTest, streamsThatBeginOrEndAnyhow)
{
    EXPECT_EQ(kindOf(mp3Frames(1)), Mp3);
    EXPECT_EQ(kindOf(mp3Frames(1) + id3v1("one")), Mp3);
    EXPECT_EQ(kindOf(mp3Frames(8).mid(300)), Mp3);   // cut out of a longer stream
    EXPECT_EQ(kindOf(mp3Frames(3).chopped(9)), Mp3); // the last frame isn't whole
    const QByteArray freeFrame = QByteArray("\xff\xfb\x00\x00", 4) + QByteArray(700, '\x22');
    EXPECT_EQ(kindOf(freeFrame.repeated(5)), Mp3);
    // Single frame headers turn up in anything.
    EXPECT_EQ(kindOf(QByteArray(2000, 'x') + mp3Frames(1) + QByteArray(2000, 'x')), None);
    EXPECT_EQ(kindOf(QByteArray(200'000, '\xff')), None);
    quint32 random = 1;
    QByteArray noise;
    for (int i = 0; i < 300'000; ++i)
        noise.append(static_cast<char>((random = random * 1664525 + 1013904223) >> 24));
    EXPECT_EQ(kindOf(noise), None);
}

} // namespace
