#include "SampleFiles.h"
#include "engines/tagfile/Id3v2Tag.h"

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

const QByteArray Picture = QByteArray("\0image/png\0\x03", 12) + QByteArray("front\0\x89PNG\xff\x00\x01", 13);

/// All seven fields anew.
const engines::TagFields NewFields{.title = QStringLiteral("new"),
                                   .artist = QStringLiteral("A"),
                                   .album = QStringLiteral("B"),
                                   .comment = QStringLiteral("C"),
                                   .year = 2000,
                                   .genre = 17,
                                   .track = 3};

class Id3v2Test : public TagFileTest
{
protected:
    Id3v2Tag tagAfterWriting(const QByteArray &tag, const engines::TagFields &fields)
    {
        const QByteArray audio = mp3Frames(4);
        const QString path = put(QStringLiteral("a.mp3"), tag + audio);
        set(fields);
        EXPECT_EQ(failureOfWriting(path), 0);
        const QByteArray written = content(path);
        const Id3v2Tag after(written);
        EXPECT_EQ(written[3], after.version());
        EXPECT_EQ(written.mid(after.size()).chopped(128), audio);
        return after;
    }

    /// The frames of an MP3 file with this tag after all fields were written, without those of the fields.
    QByteArrayList otherFramesAfterWriting(const QByteArray &tag, int version = 3)
    {
        const Id3v2Tag after = tagAfterWriting(tag, NewFields);
        EXPECT_EQ(after.version(), version);
        QByteArrayList frames = described(after);
        const bool v4 = version == 4;
        for (const QByteArray &field :
             {"TIT2 " + latin1("new"), "TPE1 " + latin1("A"), "TALB " + latin1("B"),
              (v4 ? "TDRC " : "TYER ") + latin1("2000"), "TCON " + latin1(v4 ? "17" : "(17)"),
              "TRCK " + latin1("3"), "COMM " + latin1(QByteArray("eng\0C", 5))}) {
            EXPECT_EQ(frames.removeAll(field), 1) << field.toStdString();
            const auto isAnother = [&](const QByteArray &frame) {
                return frame.startsWith(field.left(4)) && !frame.contains("note");
            };
            EXPECT_TRUE(std::none_of(frames.begin(), frames.end(), isAnother)) << field.toStdString();
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
        expected.append(described(Id3v2Tag(id3v2(3, frame))));
    const QByteArray fields = frame23("TIT2", latin1("old")) + frame23("COMM", QByteArray("\0eng\0old", 8)) +
                              frame23("TCON", latin1("(9)Metal"));
    EXPECT_EQ(otherFramesAfterWriting(id3v2(3, fields + others.join())), expected);
    EXPECT_EQ(otherFramesAfterWriting(id3v2(3, others.join() + QByteArray(5000, '\0')) + id3v2(3, fields)),
              expected);
}

/// A chapter with its name as a frame inside it, whose size has another form in each version.
QByteArray chapter(const QByteArray &name)
{
    return QByteArray("c1\0", 3) + QByteArray(16, '\1') + name;
}

TEST_F(Id3v2Test, aTagOfVersion24StaysOneToTheByte)
{
    const QByteArray utf8 = "\x03";
    const QByteArrayList others{
        frame24("TPE2", utf8 + QByteArray("\xe6\x97\xa5\0b", 5)), // two values
        frame24("TXXX", utf8 + QByteArray("\xe6\x97\xa5\0v", 5)),
        frame24("APIC", Picture),
        frame24("CHAP", chapter(frame24("TIT2", utf8 + QByteArray(200, 'n')))),
        frame24("CTOC", QByteArray("t\0\3\1c1\0", 7) + frame24("TIT2", utf8 + QByteArray(200, 'n'))),
        frame24("TIPL", utf8 + QByteArray("mix\0Ann\0", 8)),
        frame24("TORY", latin1("no frame of this version")),
        frame24("PRIV", QByteArray("\xff\x00\xe0", 3), 0x0002),            // unsynchronised
        frame24("GEOB", synchsafe(300) + "zip", 0x0009),                   // compressed
        frame24("AENC", QByteArray("g") + synchsafe(4) + "data", 0x6041)}; // in a group, with flags
    QByteArrayList expected;
    for (const QByteArray &frame : others)
        expected.append(described(Id3v2Tag(id3v2(4, frame))));
    const QByteArray fields = frame24("TIT2", utf8 + "old") + frame24("TDRC", utf8 + "1999-05-03T12:34:56");
    EXPECT_EQ(otherFramesAfterWriting(id3v2(4, fields + others.join()), 4), expected);
    EXPECT_EQ(otherFramesAfterWriting(id3v2(4, others.join()) + id3v2(4, fields), 4), expected);
}

TEST_F(Id3v2Test, anUnsynchronisedTagOfVersion24StaysOne)
{
    const QByteArray stored = QByteArray(Picture).replace(QByteArray("\xff\0", 2), QByteArray("\xff\0\0", 3));
    const QByteArray title("\1\xff\0\xfeo\0\xff\0\0", 9); // "oÿ" in UTF-16 behind its mark
    const QByteArray file = id3v2(4, frame24("APIC", stored) + frame24("TIT2", title), 0x80);
    tags.ReadTags(put(QStringLiteral("a.mp3"), file + mp3Frames(4)));
    EXPECT_EQ(tags.TagTitle(), QStringLiteral("oÿ"));
    // By the tag's header alone: what is added needs no unsynchronisation, whatever letters it has.
    const Id3v2Tag after = tagAfterWriting(file, {.title = QStringLiteral("oÿ"),
                                                  .artist = QStringLiteral("ÿà"),
                                                  .album = {},
                                                  .comment = {},
                                                  .genre = 17,
                                                  .track = 1});
    EXPECT_EQ(described(after),
              (QByteArrayList{"APIC " + stored, "TIT2 " + title, "TPE1 \x03\xc3\xbf\xc3\xa0",
                              "TCON " + latin1("17"), "TRCK " + latin1("1")}));
    EXPECT_EQ(after.content(after.frames[0]), Picture);
    EXPECT_EQ(content(folder.filePath(QStringLiteral("a.mp3")))[5], '\x80');
    // Behind another tag without that mark the frames bear it themselves.
    const Id3v2Tag joined(id3v2(4, frame24("TPE1", latin1("x"))) + file);
    EXPECT_EQ(joined.content(joined.frames[1]), Picture);
    // Data that only bear the mark lose nothing: unsynchronisation leaves no such bytes.
    const QByteArray jpeg("\xff\xd8\xff\xe0 \xff\0 jpeg", 12);
    for (const auto &tag : {id3v2(4, frame24("APIC", jpeg, 0x0002)), id3v2(3, frame23("APIC", jpeg), 0x80)}) {
        const Id3v2Tag read(tag);
        EXPECT_EQ(read.content(read.frames[0]), jpeg);
    }
}

TEST_F(Id3v2Test, tagsOfDifferentVersionsBecomeOneOfVersion24)
{
    const QByteArray name = latin1(QByteArray(200, 'n'));
    const QByteArray third =
        frame23("CHAP", chapter(frame23("TIT2", name))) + frame23("TYER", latin1("1999")) +
        frame23("TDAT", latin1("0305")) + frame23("TIME", latin1("1234")) + frame23("IPLS", latin1("x")) +
        frame23("GEOB", bigEndian(300) + "gzip", 0x80a0) + frame23("TIT2", latin1("first"));
    const QByteArray fourth = frame24("TIT2", latin1("second")) + frame24("APIC", Picture);
    EXPECT_EQ(described(Id3v2Tag(id3v2(3, third) + id3v2(4, fourth + frame24("TYER", latin1("1"))))),
              (QByteArrayList{"CHAP " + chapter(frame24("TIT2", name)), "TDRC " + latin1("1999-05-03T12:34"),
                              "TIPL " + latin1("x"), "GEOB 4049 g" + synchsafe(300) + "zip",
                              "TIT2 " + latin1("first"), "APIC " + Picture, "TYER " + latin1("1")}));
    const Id3v2Tag same(id3v2(3, frame23("APIC", Picture)) + id3v2(2, frame22("TT2", latin1("x"))) +
                        id3v2(3, frame23("APIC", Picture) + frame23("TIT2", latin1("y"))));
    EXPECT_EQ(described(same), (QByteArrayList{"APIC " + Picture, "TIT2 " + latin1("x")}));
    EXPECT_EQ(same.version(), 3);
}

TEST_F(Id3v2Test, aTagOfVersion22ComesTo23WithAllThatIsInIt)
{
    const QByteArray body = frame22("TT2", latin1("old")) + frame22("TP2", latin1("band")) +
                            frame22("PIC", QByteArray("\0PNG\3f\0data", 11)) + frame22("RVA", "gain") +
                            frame22("QQQ", "unknown") + frame22("GP1", latin1("group"));
    EXPECT_EQ(otherFramesAfterWriting(id3v2(2, body)),
              (QByteArrayList{"TPE2 " + latin1("band"),
                              "APIC " + latin1("image/png") + QByteArray("\0\3f\0data", 8), "RVAD gain",
                              "QQQ0 unknown", "GRP1 " + latin1("group")}));
}

TEST_F(Id3v2Test, idsOutOfOrderAreUnderstoodOrStay)
{
    const QByteArray short1 = frame23(QByteArray("TP1\0", 4), latin1("short"));
    const QByteArrayList strange{"TP1  x", "priv y", QByteArray("QQQ\0 z", 6)};
    const QByteArray tag =
        id3v2(3, short1 + frame23("TP1 ", "x") + frame23("priv", "y") + frame23(QByteArray("QQQ\0", 4), "z"));
    EXPECT_EQ(read(put(QStringLiteral("a.mp3"), tag + mp3Frames(4))).artist, QStringLiteral("short"));
    EXPECT_EQ(otherFramesAfterWriting(tag), strange);
}

TEST_F(Id3v2Test, sizesInTheWrongFormAndUnsynchronisedTagsAreUnderstood)
{
    const QByteArray data(200, 'd'); // 200 looks different in both forms
    const auto frameCount = [](const QByteArray &tag) {
        const Id3v2Tag read = Id3v2Tag(tag + mp3Frames(2));
        return read.isDamaged() ? -1 : read.frames.size();
    };
    EXPECT_EQ(frameCount(id3v2(4, frame23("PRIV", data) + frame23("PRIV", data))), 2);
    EXPECT_EQ(frameCount(id3v2(3, frame24("PRIV", data) + frame24("PRIV", data))), 2);
    // The synchsafe reading of 256 is 128, where a zero byte looks like padding.
    const QByteArray zeros(256, '\0');
    EXPECT_EQ(frameCount(id3v2(4, frame23("PRIV", zeros) + frame23("APIC", data) + QByteArray(50, '\0'))), 2);
    // That of 512 is 256, where what looks like a frame is none.
    const QByteArray misleading = QByteArray(256, 'd') + frame23("PRIV", "x") + QByteArray(245, 'e');
    EXPECT_EQ(frameCount(id3v2(4, frame23("PRIV", misleading) + frame23("APIC", data))), 2);
    EXPECT_EQ(frameCount(id3v2(3, QByteArray("\0\0\0\6\0\0\0\0\0\0", 10) + frame23("PRIV", data), 0x40)), 1);
    const QByteArray unsynchronised =
        frame23("PRIV", "a\xff\xe0z").replace("\xff\xe0", QByteArray("\xff\0\xe0", 3));
    EXPECT_EQ(described(Id3v2Tag(id3v2(3, unsynchronised, 0x80) + mp3Frames(2))),
              QByteArrayList{"PRIV a\xff\xe0z"});
}

TEST_F(Id3v2Test, fieldsThatSayTheSameKeepTheirForm)
{
    const QByteArray body = frame23("TIT2", latin1("title")) + frame23("TYER", latin1("1999")) +
                            frame23("TDAT", latin1("0305")) + frame23("TRCK", latin1("3/12")) +
                            frame23("TCON", latin1("Synthwave")) +
                            frame23("COMM", QByteArray("\0deu\0text", 9));
    const QString path = put(QStringLiteral("a.mp3"), id3v2(3, body + QByteArray(100, '\0')) + mp3Frames(4));
    tags.ReadTags(path);
    EXPECT_EQ(tags.TagGenre(), engines::TagFields::OtherGenre);
    tags.setTagArtist(QStringLiteral("A"));
    tags.setTagTrack(4);
    const qint64 before = content(path).size();
    tags.WriteTags(path);
    EXPECT_EQ(described(Id3v2Tag(content(path))),
              (QByteArrayList{"TIT2 " + latin1("title"), "TYER " + latin1("1999"), "TDAT " + latin1("0305"),
                              "TRCK " + latin1("4/12"), "TCON " + latin1("Synthwave"),
                              QByteArray("COMM \0deu\0text", 14), "TPE1 " + latin1("A")}));
    EXPECT_EQ(content(path).size(),
              before + 128); // the new frame took padding, the old tag is new at the end
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::ReadWrite) && file.setFileTime(QDateTime(QDate(2001, 1, 1), QTime(1, 0)),
                                                                    QFileDevice::FileModificationTime));
    file.close();
    tags.WriteTags(path); // nothing to change: the file isn't touched
    EXPECT_EQ(QFileInfo(path).lastModified().date().year(), 2001);
}

TEST_F(Id3v2Test, aNewYearTakesTheDayOfTheOldOneAway)
{
    const QByteArray body = frame23("TDAT", latin1("0305")) + frame23("TIME", latin1("1234"));
    EXPECT_EQ(otherFramesAfterWriting(id3v2(3, frame23("TYER", latin1("1999")) + body)), QByteArrayList());
    EXPECT_EQ(otherFramesAfterWriting(id3v2(3, frame23("TYER", latin1("2000")) + body)),
              (QByteArrayList{"TDAT " + latin1("0305"), "TIME " + latin1("1234")}));
}

TEST_F(Id3v2Test, genresBeyondTheListStayUnlessAnotherIsChosen)
{
    const struct
    {
        int version;
        QByteArray text;
        qint16 shown;
        QByteArray inOldTag;
    } rows[] = {{3, "(190)", 12, "\xbe"},
                {4, "190", 12, "\xbe"},
                {4, QByteArray("Rock\0Synthwave", 14), 17, "\x11"},
                {3, "(17)(4)Synthwave", 17, "\x11"}};
    for (const auto &row : rows) {
        const auto frame = row.version == 4 ? frame24 : frame23;
        const QString path = put(QStringLiteral("a.mp3"),
                                 id3v2(row.version, frame("TCON", latin1(row.text), 0)) + mp3Frames(4));
        tags.ReadTags(path);
        EXPECT_EQ(tags.TagGenre(), row.shown) << row.text.toStdString();
        tags.WriteTags(path);
        EXPECT_EQ(described(Id3v2Tag(content(path))), QByteArrayList{"TCON " + latin1(row.text)});
        EXPECT_EQ(content(path).right(1), row.inOldTag) << row.text.toStdString();
        tags.setTagGenre(9);
        tags.WriteTags(path);
        EXPECT_EQ(described(Id3v2Tag(content(path))),
                  QByteArrayList{"TCON " + latin1(row.version == 4 ? "9" : "(9)")});
    }
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
    EXPECT_EQ(reading(frame23("TCON", latin1("(190)"))).genre,
              engines::TagFields::OtherGenre); // beyond the list
    EXPECT_EQ(reading(frame23("TYER", latin1("99"))).year, 99);
    EXPECT_EQ(reading(frame23("TIT2", QByteArray("\1a\0\xdf\0", 5))).title, QStringLiteral("aß")); // no mark
    EXPECT_EQ(reading(frame23("COMM", QByteArray("\1eng\xfe\xff\0\0\0a\0b", 12))).comment,
              QStringLiteral("ab"));
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
