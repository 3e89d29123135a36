#include "OggSamples.h"
#include "engines/common/OggPage.h"

#include <QBuffer>

namespace {

using namespace samples;
using engines::OggPage;

/// The pages of a file, up to the first place without one.
QList<OggPage> pagesOf(QByteArray bytes)
{
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::ReadOnly);
    QList<OggPage> pages;
    while (const auto page = OggPage::read(buffer))
        pages.append(*page);
    return pages;
}

/// Whether the pages of each stream are counted without a gap.
bool isNumberedThrough(const QList<OggPage> &pages)
{
    QMap<quint32, quint32> next;
    for (const OggPage &page : pages) {
        if (page.sequence() != next.value(page.serial(), 0))
            return false;
        next[page.serial()] = page.sequence() + 1;
    }
    return true;
}

class OggTest : public TagFileTest
{
protected:
    QByteArray afterWriting(const QByteArray &bytes)
    {
        const QString path = put(QStringLiteral("a.ogg"), bytes);
        EXPECT_EQ(failureOfWriting(path), 0);
        return content(path);
    }
};

TEST_F(OggTest, fieldsOfNoConcernStayToTheByteAndInTheirOrder)
{
    const QByteArrayList others{"METADATA_BLOCK_PICTURE=AAAA",
                                "replaygain_track_gain=-6.10 dB",
                                "BAND=Bj\xf6rk",
                                "nofield",
                                "TITLE2=x",
                                "=empty key"};
    const QByteArray packet =
        comments({others[0], "Title=old", others[1], others[2], "title=second", "GENRE=Synthwave", others[3],
                  "DESCRIPTION=long text", "DATE=1999-05-03", others[4], others[5], "TRACKNUMBER=3/12",
                  "COMMENT=short"});
    set({.title = QStringLiteral("new"),
         .artist = QStringLiteral("A"),
         .album = {},
         .comment = QStringLiteral("C"),
         .year = 1999,
         .genre = 12,
         .track = 4});
    EXPECT_EQ(pagesOf(afterWriting(vorbisPages(7, packet).join()))[1].body(),
              comments({others[0], "Title=new", others[1], others[2], "GENRE=Synthwave", others[3],
                        "DESCRIPTION=long text", "DATE=1999-05-03", others[4], others[5], "TRACKNUMBER=4/12",
                        "COMMENT=C", "ARTIST=A"}) +
                  VorbisSetup);
    EXPECT_EQ(
        pagesOf(afterWriting(vorbisPages(7, comments({"description=old"})).join()))[1].body(),
        comments({"description=C", "TITLE=new", "ARTIST=A", "DATE=1999", "GENRE=Other", "TRACKNUMBER=4"}) +
            VorbisSetup);
}

TEST_F(OggTest, headersGrowAndShrinkAndThePagesBehindThemAreCounted)
{
    const QString path = put(QStringLiteral("a.ogg"),
                             made(QStringLiteral("ogg"), {QStringLiteral("-t"), QStringLiteral("300")}));
    const qsizetype before = pagesOf(content(path)).size();
    for (const int length : {10, 200'000, 65025 - 3000, 1'000'000, 0}) {
        tags.setTagComment(QString(length, u'c'));
        tags.WriteTags(path);
        EXPECT_EQ(read(path).comment.size(), length);
        EXPECT_TRUE(isNumberedThrough(pagesOf(content(path))));
        QProcess decoder;
        decoder.start(QStringLiteral("ffmpeg"),
                      {QStringLiteral("-v"), QStringLiteral("warning"), QStringLiteral("-i"), path,
                       QStringLiteral("-f"), QStringLiteral("null"), QStringLiteral("-")});
        ASSERT_TRUE(decoder.waitForFinished());
        EXPECT_EQ(decoder.readAllStandardError(), QByteArray())
            << length; // it checks the pages' sums and counts
    }
    EXPECT_EQ(pagesOf(content(path)).size(), before);
}

TEST_F(OggTest, streamsBesideAndBehindStayAsTheyAre)
{
    const QByteArrayList mine = vorbisPages(1, comments({}));
    const QByteArrayList beside = vorbisPages(2, comments({"TITLE=beside"}));
    const QByteArrayList behind = vorbisPages(3, comments({"TITLE=behind"}));
    const QByteArray tag = id3v2(3, frame23("TIT2", latin1("before")));
    // The headers of two streams lie in each other; a third stream follows, and then something else.
    const QByteArray file = tag + mine[0] + beside[0] + beside[1] + mine[1] + mine[2] + beside[2] + mine[3] +
                            mine[4] + behind.join() + "no page";
    tags.setTagComment(QString(100'000, u'c'));
    const QByteArray written = afterWriting(file);
    EXPECT_TRUE(written.startsWith(tag + mine[0] + beside[0] + beside[1]));
    EXPECT_TRUE(written.endsWith(behind.join() + "no page"));
    EXPECT_TRUE(written.contains(beside[2]));
    const QList<OggPage> pages = pagesOf(written.mid(tag.size()));
    EXPECT_TRUE(isNumberedThrough(pages));
    QByteArrayList audio;
    for (const OggPage &page : pages) {
        if (page.serial() == 1 && page.body().startsWith("audio"))
            audio.append(page.body());
    }
    EXPECT_EQ(audio, (QByteArrayList{"audio 1 0", "audio 1 1", "audio 1 2"}));
}

TEST_F(OggTest, damagedPagesAreNotMadeToLookWhole)
{
    QByteArray file = made(QStringLiteral("ogg"));
    QByteArrayList sums;
    const qsizetype last = file.lastIndexOf("OggS");
    file[last + 100] = static_cast<char>(file[last + 100] ^ 1);
    tags.setTagComment(QString(100'000, u'c')); // shifts all pages
    const QString path = put(QStringLiteral("a.ogg"), file);
    tags.WriteTags(path);
    QProcess decoder;
    decoder.start(QStringLiteral("ffmpeg"),
                  {QStringLiteral("-v"), QStringLiteral("warning"), QStringLiteral("-i"), path,
                   QStringLiteral("-f"), QStringLiteral("null"), QStringLiteral("-")});
    ASSERT_TRUE(decoder.waitForFinished());
    EXPECT_TRUE(decoder.readAllStandardError().contains("CRC"));
}

} // namespace
