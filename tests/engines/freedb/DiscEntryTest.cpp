#include "engines/freedb/Service.h"
#include "testkit/Printing.h"

#include <QElapsedTimer>
#include <gtest/gtest.h>

namespace {

using namespace engines::freedb;

DiscEntry parsed(const QByteArray &text)
{
    const std::optional<DiscEntry> entry = parseEntry(text);
    EXPECT_TRUE(entry);
    return entry.value_or(DiscEntry());
}

TEST(DiscEntryTest, readsAWholeEntry)
{
    const DiscEntry entry = parsed("# xmcd\r\n#\r\n# Track frame offsets:\r\n#\t150\r\n#\t20000\r\n#\r\n"
                                   "# Disc length: 2603 seconds\r\n#\r\n# Revision: 2\r\nDISCID=940a2b02\r\n"
                                   "DTITLE=The Band / The / Title\r\nDYEAR=1998\r\nDGENRE=Folk Rock\r\n"
                                   "TTITLE0=One\r\nTTITLE1=Two = 2\r\nEXTD=First\\nSecond\\tline\r\n"
                                   "EXTT0=\r\nEXTT1=\r\nPLAYORDER=\r\n");
    EXPECT_EQ(entry.artist, QStringLiteral("The Band"));
    EXPECT_EQ(entry.album, QStringLiteral("The / Title"));
    EXPECT_EQ(entry.year, QStringLiteral("1998"));
    EXPECT_EQ(entry.genre, QStringLiteral("Folk Rock"));
    EXPECT_EQ(entry.comments, QStringLiteral("First\nSecond\tline"));
    EXPECT_EQ(entry.titles, (QStringList{QStringLiteral("One"), QStringLiteral("Two = 2")}));
    EXPECT_EQ(entry.discSeconds, 2603);
}

TEST(DiscEntryTest, valuesAreJoinedDecodedAndUnescaped)
{
    struct Row
    {
        const char *lines;
        QString title;
    };
    const Row rows[] = {
        {"TTITLE0=A long ti\nTTITLE0=tle of\nTTITLE0= two lines\n",
         QStringLiteral("A long title of two lines")},
        {"TTITLE0=Gr\xc3\xbc\xc3\x9f"
         "e\n",
         QStringLiteral("Grüße")},
        {"TTITLE0=Gr\xfc\xdf"
         "e\n",
         QStringLiteral("Grüße")},
        {"TTITLE0=Gr\xc3\nTTITLE0=\xbcn\n", QStringLiteral("Grün")}, // a character over two lines
        {R"(TTITLE0=C:\\new\\table)", QStringLiteral(R"(C:\new\table)")},
        {"TTITLE0=back\\\nTTITLE0=\\n slash\n",
         QStringLiteral(R"(back\n slash)")}, // an escape over two lines
        {R"(TTITLE0=odd \x and \)", QStringLiteral(R"(odd \x and \)")},
        {R"(TTITLE0= two\nlines\tand tabs )", QStringLiteral("two lines and tabs")},
        {"TTITLE0=Left|Right\n", QStringLiteral("Left/Right")},
        {"TTITLE0=bell\x07 \x1b[31mred\n", QStringLiteral("bell [31mred")},
        {"TTITLE0=\xe5\xa4\xa9\xe3\x80\x80\xe5\x9c\xb0  x\n", QStringLiteral("天　地  x")},
    };
    for (const Row &row : rows)
        EXPECT_EQ(parsed(QByteArray("DTITLE=A / B\n") + row.lines).titles, QStringList{row.title})
            << row.lines;
}

TEST(DiscEntryTest, whatIsMissingIsEmpty)
{
    const DiscEntry noSlash = parsed("DTITLE=AC/DC\n");
    EXPECT_EQ(noSlash.artist, QStringLiteral("AC/DC"));
    EXPECT_EQ(noSlash.album, QStringLiteral("AC/DC"));
    EXPECT_EQ(noSlash.titles, QStringList());
    EXPECT_EQ(noSlash.discSeconds, 0);

    EXPECT_EQ(parsed("DTITLE=A / \n").album, QString());
    EXPECT_EQ(parsed("TTITLE2=Third\n").titles, (QStringList{QString(), QString(), QStringLiteral("Third")}));
    // The offsets tell of tracks that have no title.
    EXPECT_EQ(parsed("# Track frame offsets:\n#\t150\n#\t200\n#\t300\nTTITLE0=One\n").titles,
              (QStringList{QStringLiteral("One"), QString(), QString()}));
}

TEST(DiscEntryTest, noEntryCanBeMadeOfAnythingElse)
{
    for (const char *text :
         {"", "<html><body class=\"x\">Log in</body></html>", "# xmcd\n# Disc length: 5 seconds\n",
          "DTITLE=\nTTITLE0=\nTTITLE1= \n", "DTITLE= / \nTTITLE0=\n", "DYEAR=1998\nDGENRE=Rock\n",
          "=\n==\nTTITLE=x\n", "TTITLE-1=x\nTTITLE99=x\nTTITLE00=x\nTTITLE99999999999=x\n"})
        EXPECT_FALSE(parseEntry(text)) << text;
}

TEST(DiscEntryTest, theWorthOfALongTitleIsToldAtOnce)
{
    const QString blanks(250'000, u' ');
    const auto titles = [](const QString &title) {
        return std::get<1>(
            worthOf({.artist = {}, .album = {}, .year = {}, .genre = {}, .comments = {}, .titles = {title}},
                    QStringLiteral("1")));
    };
    QElapsedTimer clock;
    clock.start();
    EXPECT_EQ(titles(blanks), 0);
    EXPECT_EQ(titles(QStringLiteral("Track") + blanks), 0);
    EXPECT_EQ(titles(QStringLiteral("Audio Track_ -") + QString(100'000, u'7')), 0);
    EXPECT_EQ(titles(blanks + u'x'), 1);
    EXPECT_EQ(titles(QStringLiteral("Track") + blanks + u'x'), 1);
    EXPECT_EQ(titles(QStringLiteral("Track 7 and more")), 1);
    EXPECT_LT(clock.elapsed(), 2000);
}

TEST(DiscEntryTest, whatIsWrittenReadsBackEqual)
{
    Submission submission;
    submission.discId = QStringLiteral("940a2b02");
    submission.client = QStringLiteral("Client 1.0");
    submission.trackOffsets = QStringList{QStringLiteral("150"), QStringLiteral("20000")};
    DiscEntry &entry = submission.entry;
    entry.artist = QStringLiteral("Zoë & the Ünits");
    entry.album = QStringLiteral("A / B");
    entry.year = QStringLiteral("2001");
    entry.genre = QStringLiteral("Rock");
    entry.discSeconds = 2603;
    entry.comments = QStringLiteral("one\ntwo\t\\three ").repeated(80).trimmed();
    for (int shift = 0; shift < MostTracks; ++shift) // splits fall on every place of a character
        entry.titles +=
            QStringLiteral("x").repeated(shift % 7) + QStringLiteral("日本\\語\U0001F3B5\\").repeated(40);

    const QByteArray text = entryText(submission);
    for (const QByteArray &line : text.split('\n')) {
        EXPECT_LE(line.size() + 1, LongestLine);
        EXPECT_TRUE(QString::fromUtf8(line).toUtf8() == line) << "split inside a character";
        const qsizetype slashes = line.size() - QByteArray(line).replace('\\', "").size();
        if (line.startsWith("TTITLE")) {
            EXPECT_EQ(slashes % 2, 0) << "split inside an escape";
        }
    }
    const DiscEntry back = parsed(text);
    EXPECT_EQ(back.artist, entry.artist);
    EXPECT_EQ(back.album, entry.album);
    EXPECT_EQ(back.year, entry.year);
    EXPECT_EQ(back.genre, entry.genre);
    EXPECT_EQ(back.comments, entry.comments);
    EXPECT_EQ(back.titles, entry.titles);
    EXPECT_EQ(back.discSeconds, entry.discSeconds);
}

TEST(DiscEntryTest, aSubmissionHasTheFormOfTheService)
{
    Submission submission;
    submission.entry = {.artist = QStringLiteral("One / Two"),
                        .album = QStringLiteral("Album"),
                        .year = QStringLiteral("1998"),
                        .genre = QStringLiteral("Jazz"),
                        .comments = QString(),
                        .titles = {QStringLiteral("First"), QStringLiteral("Second")},
                        .discSeconds = 300};
    submission.discId = QStringLiteral("02012a02");
    submission.client = QStringLiteral("Client 1.0");
    submission.trackOffsets = QStringList{QStringLiteral("150"), QStringLiteral("9000")};
    EXPECT_EQ(
        entryText(submission),
        "# xmcd\n#\n# Track frame offsets:\n#\t150\n#\t9000\n#\n# Disc length: 300 seconds\n#\n# Revision: "
        "0\n"
        "# Submitted via: Client 1.0\n#\nDISCID=02012a02\nDTITLE=One/Two / Album\nDYEAR=1998\nDGENRE=Jazz\n"
        "TTITLE0=First\nTTITLE1=Second\nEXTD=\nEXTT0=\nEXTT1=\nPLAYORDER=\n");
}

} // namespace
