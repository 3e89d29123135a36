#include "SampleFiles.h"
#include "engines/tagfile/Id3v2Tag.h"

#include <QBuffer>

namespace {

using namespace samples;
using engines::Id3v2Frame;
using engines::Id3v2Tag;

/// Every frame as "id flags data", flags only where there are some.
QByteArrayList described(const Id3v2Tag &tag)
{
    QByteArrayList frames;
    for (const Id3v2Frame &frame : tag.frames)
        frames.append(frame.id + (frame.flags ? ' ' + QByteArray::number(frame.flags, 16) : QByteArray()) +
                      ' ' + frame.data);
    return frames;
}

Id3v2Tag tagOf(QByteArray bytes)
{
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::ReadOnly);
    return Id3v2Tag(buffer);
}

const QByteArray Picture = QByteArray("\0image/png\0\x03", 12) + QByteArray("front\0\x89PNG\xff\x00\x01", 13);

class Id3v2Test : public TagFileTest
{
protected:
    /// The frames of an MP3 file with this tag after all fields were written, without those of the fields.
    QByteArrayList otherFramesAfterWriting(const QByteArray &tag)
    {
        const QByteArray audio = mp3Frames(4);
        const QString path = put(QStringLiteral("a.mp3"), tag + audio);
        set({.title = QStringLiteral("new"),
             .artist = QStringLiteral("A"),
             .album = QStringLiteral("B"),
             .comment = QStringLiteral("C"),
             .year = 2000,
             .genre = 17,
             .track = 3});
        EXPECT_EQ(failureOfWriting(path), 0);
        const QByteArray written = content(path);
        const Id3v2Tag after = tagOf(written);
        EXPECT_EQ(written[3], 3);
        EXPECT_EQ(written.mid(after.size()).chopped(128), audio);
        QByteArrayList frames = described(after);
        for (const char *field : {"TIT2 \0new", "TPE1 \0A", "TALB \0B",
                                  "TYER \0"
                                  "2000",
                                  "TCON \0(17)",
                                  "TRCK \0"
                                  "3",
                                  "COMM \0eng\0C"}) {
            const QByteArray name(field, 4);
            QByteArrayList mine;
            for (const QByteArray &frame : frames) {
                if (frame.startsWith(name) && !(name == "COMM" && frame.contains("note")))
                    mine.append(frame);
            }
            EXPECT_EQ(mine.size(), 1) << name.toStdString();
            for (const QByteArray &frame : mine)
                frames.removeOne(frame);
        }
        return frames;
    }
};

TEST_F(Id3v2Test, framesOfNoConcernStayToTheByte)
{
    const QByteArrayList others{frame23("APIC", Picture),
                                frame23("TXXX", latin1(QByteArray("replaygain_track_gain\0-6.10 dB", 30))),
                                frame23("RVAD", "old"),
                                frame23("TSIZ", latin1("12")),
                                frame23("XYZ1", QByteArray("\x00\xff\x00\xfe unknown", 13)),
                                frame23("GEOB", "packed", 0x0080),
                                frame23("PRIV", "secret", 0x8040),
                                frame23("TPE2", "\x05"
                                                "no encoding"),
                                frame23("COMM", QByteArray("\0engnote\0text", 13))};
    QByteArrayList expected;
    for (const QByteArray &frame : others)
        expected.append(described(tagOf(id3v2(3, frame))));
    const QByteArray fields = frame23("TIT2", latin1("old")) + frame23("COMM", QByteArray("\0deu\0old", 8)) +
                              frame23("TCON", latin1("(9)Metal"));
    EXPECT_EQ(otherFramesAfterWriting(id3v2(3, fields + others.join())), expected);
    EXPECT_EQ(otherFramesAfterWriting(id3v2(3, others.join() + QByteArray(5000, '\0')) + id3v2(3, fields)),
              expected);
}

TEST_F(Id3v2Test, aTagOfVersion24ComesTo23WithAllThatIsInIt)
{
    const QByteArray utf8 = "\x03";
    const QByteArray body =
        frame24("TIT2", utf8 + "old") + frame24("TDRC", utf8 + "1999-05-03T12:34:56") +
        frame24("TPE2", utf8 + "Caf\xc3\xa9") + frame24("TSOP", utf8 + QByteArray("\xe6\x97\xa5\0b", 5)) +
        frame24("TXXX", utf8 + QByteArray("\xe6\x97\xa5\0v", 5)) + frame24("APIC", Picture) +
        frame24("RVA2", QByteArray("x\0\1", 3)) +
        frame24("TIPL", utf8 + QByteArray("mix\0"
                                          "Ann\0",
                                          8)) +
        frame24("PRIV", QByteArray("\xff\x00\xe0", 3), 0x0002) +          // unsynchronised
        frame24("GEOB", synchsafe(300) + "zip", 0x0009) +                 // compressed
        frame24("AENC", QByteArray("g") + synchsafe(4) + "data", 0x6041); // in a group, with flags
    EXPECT_EQ(otherFramesAfterWriting(id3v2(4, body)),
              (QByteArrayList{"TDAT " + latin1("0305"), "TIME " + latin1("1234"), "TPE2 " + latin1("Caf\xe9"),
                              QByteArray("TSOP \x01\xff\xfe\xe5\x65/\0b\0", 14),
                              QByteArray("TXXX \x01\xff\xfe\xe5\x65\0\0\xff\xfev\0", 16), "APIC " + Picture,
                              QByteArray("RVA2 x\0\1", 8), QByteArray("TIPL \0mix\0Ann\0", 14),
                              "PRIV \xff\xe0", "GEOB 80 " + bigEndian(300) + "zip", "AENC c020 gdata"}));
}

TEST_F(Id3v2Test, aTagOfVersion22ComesTo23WithAllThatIsInIt)
{
    const QByteArray body = frame22("TT2", latin1("old")) + frame22("TP2", latin1("band")) +
                            frame22("PIC", QByteArray("\0PNG\3f\0data", 11)) + frame22("RVA", "gain") +
                            frame22("QQQ", "unknown");
    EXPECT_EQ(otherFramesAfterWriting(id3v2(2, body)),
              (QByteArrayList{"TPE2 " + latin1("band"),
                              "APIC " + latin1("image/png") + QByteArray("\0\3f\0data", 8), "RVAD gain",
                              "QQQ0 unknown"}));
}

TEST_F(Id3v2Test, sizesInTheWrongFormAndUnsynchronisedTagsAreUnderstood)
{
    const QByteArray data(200, 'd'); // 200 looks different in both forms
    const auto frameCount = [](const QByteArray &tag) {
        const Id3v2Tag read = tagOf(tag + mp3Frames(2));
        return read.isDamaged() ? -1 : read.frames.size();
    };
    EXPECT_EQ(frameCount(id3v2(4, frame23("PRIV", data) + frame23("PRIV", data))), 2);
    EXPECT_EQ(frameCount(id3v2(3, frame24("PRIV", data) + frame24("PRIV", data))), 2);
    EXPECT_EQ(frameCount(id3v2(3, QByteArray("\0\0\0\6\0\0\0\0\0\0", 10) + frame23("PRIV", data), 0x40)), 1);
    const QByteArray unsynchronised =
        frame23("PRIV", "a\xff\xe0z").replace("\xff\xe0", QByteArray("\xff\0\xe0", 3));
    EXPECT_EQ(described(tagOf(id3v2(3, unsynchronised, 0x80) + mp3Frames(2))),
              QByteArrayList{"PRIV a\xff\xe0z"});
}

TEST_F(Id3v2Test, fieldsThatSayTheSameKeepTheirForm)
{
    const QByteArray body = frame23("TIT2", latin1("title")) + frame23("TYER", latin1("1999")) +
                            frame23("TRCK", latin1("3/12")) + frame23("TCON", latin1("Synthwave")) +
                            frame23("COMM", QByteArray("\0deu\0text", 9));
    const QString path = put(QStringLiteral("a.mp3"), id3v2(3, body + QByteArray(100, '\0')) + mp3Frames(4));
    tags.ReadTags(path);
    EXPECT_EQ(tags.TagGenre(), engines::TagFields::OtherGenre);
    tags.setTagArtist(QStringLiteral("A"));
    tags.setTagTrack(4);
    const qint64 before = content(path).size();
    tags.WriteTags(path);
    EXPECT_EQ(described(tagOf(content(path))),
              (QByteArrayList{"TIT2 " + latin1("title"), "TYER " + latin1("1999"), "TRCK " + latin1("4/12"),
                              "TCON " + latin1("Synthwave"), QByteArray("COMM \0deu\0text", 14),
                              "TPE1 " + latin1("A")}));
    EXPECT_EQ(content(path).size(),
              before + 128); // the new frame took padding, the old tag is new at the end
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::ReadWrite) && file.setFileTime(QDateTime(QDate(2001, 1, 1), QTime(1, 0)),
                                                                    QFileDevice::FileModificationTime));
    file.close();
    tags.WriteTags(path); // nothing to change: the file isn't touched
    EXPECT_EQ(QFileInfo(path).lastModified().date().year(), 2001);
}

TEST_F(Id3v2Test, whatIsMissingIsTakenFromTheOldTagAndNumbersOfAllKindsAreRead)
{
    const QByteArray old = "TAG" + QByteArray("old title").leftJustified(30, '\0') + QByteArray(60, '\0') +
                           "1968" + QByteArray(30, '\0') + '\x91';
    const auto reading = [&](const QByteArray &frames) {
        return read(put(QStringLiteral("a.mp3"),
                        (frames.isEmpty() ? QByteArray() : id3v2(3, frames)) + mp3Frames(4) + old));
    };
    EXPECT_EQ(reading({}).title, QStringLiteral("old title"));
    EXPECT_EQ(reading({}).year, 1968);
    EXPECT_EQ(reading({}).genre, 0x91);
    EXPECT_EQ(reading(frame23("TIT2", latin1("new"))).title, QStringLiteral("new"));
    EXPECT_EQ(reading(frame23("TIT2", latin1("new"))).year, 1968);
    EXPECT_EQ(reading(frame23("TCON", latin1("(4)Eurodisco"))).genre, 4);
    EXPECT_EQ(reading(frame23("TCON", latin1("hip hop"))).genre, 7);
    EXPECT_EQ(reading(frame23("TCON", latin1("(190)"))).genre, 190);
    EXPECT_EQ(reading(frame23("TYER", latin1("99"))).year, 99);
    EXPECT_EQ(reading(frame23("COMM", QByteArray("\0eng"
                                                 "iTunNORM\0 0000",
                                                 18)))
                  .comment,
              QString());
}

TEST_F(Id3v2Test, tagsAtTheEndOfOtherKindsStay)
{
    const QByteArray ape =
        "APETAGEX" + QByteArray("\xd0\x07\0\0\x30\0\0\0\1\0\0\0\0\0\0\x80\0\0\0\0\0\0\0\0", 24) + "items";
    const QString path = put(QStringLiteral("a.mp3"), mp3Frames(4) + ape + id3v1("old"));
    tags.setTagTitle(QStringLiteral("new"));
    tags.WriteTags(path);
    const QByteArray written = content(path);
    EXPECT_TRUE(written.chopped(128).endsWith(mp3Frames(4) + ape));
    EXPECT_TRUE(written.right(128).startsWith("TAGnew"));
}

} // namespace
