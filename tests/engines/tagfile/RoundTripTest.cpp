#include "SampleFiles.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace {

using engines::TagFields;

const QString Japanese = QStringLiteral("日本語の題名");
const QString RightToLeft = QStringLiteral("שלום \u202bعالم\u202c");
const QString Emoji = QStringLiteral("🎧 e\u0301 👩‍🚀");

class RoundTripTest : public TagFileTest
{
protected:
    QList<QString> sounds() const
    {
        return {put(QStringLiteral("a.mp3"), samples::made(QStringLiteral("mp3"))),
                put(QStringLiteral("a.ogg"), samples::made(QStringLiteral("ogg")))};
    }

    /// A tag as ffprobe reads it, of the file or its stream.
    static QString probed(const QString &path, const QString &key)
    {
        const QByteArray json = samples::output(
            QStringLiteral("ffprobe"),
            {QStringLiteral("-v"), QStringLiteral("error"), QStringLiteral("-of"), QStringLiteral("json"),
             QStringLiteral("-show_format"), QStringLiteral("-show_streams"), path});
        const QJsonObject found = QJsonDocument::fromJson(json).object();
        QJsonObject all = found[u"format"][u"tags"].toObject();
        const QJsonObject ofStream = found[u"streams"][0][u"tags"].toObject();
        for (auto tag = ofStream.begin(); tag != ofStream.end(); ++tag)
            all.insert(tag.key(), tag.value());
        for (auto tag = all.begin(); tag != all.end(); ++tag) {
            if (tag.key().compare(key, Qt::CaseInsensitive) == 0)
                return tag.value().toString();
        }
        return {};
    }

    /// A tag as mediainfo reads it.
    static QString mediaInfo(const QString &path, const QString &key)
    {
        const QByteArray json =
            samples::output(QStringLiteral("mediainfo"), {QStringLiteral("--Output=JSON"), path});
        return QJsonDocument::fromJson(json)[u"media"][u"track"][0][key].toString();
    }

    /// A hash of the encoded sound without the headers around it.
    static QByteArray audioOf(const QString &path)
    {
        return samples::output(QStringLiteral("ffmpeg"),
                               {QStringLiteral("-v"), QStringLiteral("error"), QStringLiteral("-i"), path,
                                QStringLiteral("-map"), QStringLiteral("0:a"), QStringLiteral("-c"),
                                QStringLiteral("copy"), QStringLiteral("-f"), QStringLiteral("streamhash"),
                                QStringLiteral("-")});
    }
};

TEST_F(RoundTripTest, everyFieldAtItsLimitsReadsBackEqual)
{
    const QString umlauts = QStringLiteral("ÄÖÜ ß ñ ÿ €");
    const TagFields rows[] = {
        {.title = QString(100, u'ü'),
         .artist = QString(50, u'a'),
         .album = QString(100, u'日'),
         .comment = QString(255, u'c'),
         .year = 9999,
         .genre = 147,
         .track = 32767},
        {.title = umlauts,
         .artist = Japanese,
         .album = Emoji,
         .comment = RightToLeft,
         .year = 1,
         .genre = 0,
         .track = 1},
        {.title = Emoji.repeated(12),
         .artist = RightToLeft,
         .album = umlauts,
         .comment = Japanese.repeated(15'000), // as the service may send it
         .year = 1999,
         .genre = 133,
         .track = 256},
        {.title = QStringLiteral("a\nb\tc/d\\e;f=g\u0085"),
         .artist = QStringLiteral("AC/DC"),
         .album = QStringLiteral(" blanks "),
         .comment = QStringLiteral("(17)"),
         .year = 2024,
         .genre = 17,
         .track = 99},
        {.title = QStringLiteral("0"),
         .artist = QStringLiteral("mark"),
         .album = QStringLiteral("日本"),
         .comment = {},
         .year = 0,
         .genre = 12,
         .track = 0},
        {}, // nothing at all: the fields go
    };
    for (const QString &path : sounds()) {
        for (TagFields row : rows) {
            set(row);
            EXPECT_EQ(failureOfWriting(path), 0) << row.title.toStdString();
            row.track = 0;
            EXPECT_EQ(read(path), row) << path.toStdString() << ": " << row.title.toStdString();
        }
    }
}

TEST_F(RoundTripTest, whatATagCanNotHoldIsWrittenAsNearAsItGoes)
{
    const QChar half(0xd83c); // the first half of a character, as cutting a text leaves it
    for (const QString &path : sounds()) {
        tags.setTagTitle(QStringLiteral("x") + half);
        tags.setTagArtist(QString::fromLatin1("a\0b", 3));
        tags.setTagYear(12345);
        tags.setTagGenre(-1);
        tags.WriteTags(path);
        TagFields expected;
        expected.title = QStringLiteral("x?");
        expected.artist = QStringLiteral("ab");
        EXPECT_EQ(read(path), expected);
    }
}

TEST_F(RoundTripTest, programsOfOthersReadWhatIsWrittenAndTheSoundIsTheSame)
{
    for (const QString &path : sounds()) {
        const QByteArray audio = audioOf(path);
        set({.title = Japanese,
             .artist = Emoji,
             .album = QStringLiteral("Grüße"),
             .comment = RightToLeft,
             .year = 1987,
             .genre = 147,
             .track = 7});
        tags.WriteTags(path);
        EXPECT_EQ(probed(path, QStringLiteral("title")), Japanese);
        EXPECT_EQ(probed(path, QStringLiteral("artist")), Emoji);
        EXPECT_EQ(probed(path, QStringLiteral("album")), QStringLiteral("Grüße"));
        EXPECT_EQ(probed(path, QStringLiteral("comment")), RightToLeft);
        EXPECT_EQ(probed(path, QStringLiteral("date")), QStringLiteral("1987"));
        EXPECT_EQ(probed(path, QStringLiteral("genre")).toLower(), QStringLiteral("synthpop"));
        EXPECT_EQ(probed(path, QStringLiteral("track")), QStringLiteral("7"));
        EXPECT_EQ(mediaInfo(path, QStringLiteral("Title")), Japanese);
        EXPECT_EQ(mediaInfo(path, QStringLiteral("Album")), QStringLiteral("Grüße"));
        EXPECT_EQ(mediaInfo(path, QStringLiteral("Comment")), RightToLeft);
        EXPECT_EQ(mediaInfo(path, QStringLiteral("Recorded_Date")), QStringLiteral("1987"));
        EXPECT_EQ(mediaInfo(path, QStringLiteral("Genre")).toLower(), QStringLiteral("synthpop"));
        EXPECT_EQ(mediaInfo(path, QStringLiteral("Track_Position")), QStringLiteral("7"));
        EXPECT_EQ(audioOf(path), audio);
        EXPECT_TRUE(audio.contains("SHA256="));
    }
}

TEST_F(RoundTripTest, theOldTagAtTheEndSaysTheSameAsTheNewOne)
{
    const QString path = put(QStringLiteral("a.mp3"), samples::mp3Frames(5));
    set({.title = QStringLiteral("Title of more than thirty characters"),
         .artist = QStringLiteral("Artist"),
         .album = QStringLiteral("Album"),
         .comment = QStringLiteral("Comment"),
         .year = 2001,
         .genre = 99,
         .track = 12});
    tags.WriteTags(path);
    EXPECT_EQ(samples::content(path).right(128),
              "TAG"
              "Title of more than thirty char" +
                  QByteArray("Artist").leftJustified(30, '\0') + QByteArray("Album").leftJustified(30, '\0') +
                  "2001" + QByteArray("Comment").leftJustified(29, '\0') + "\x0c\x63");
}

TEST_F(RoundTripTest, valuesStayUntilAFileIsReadOrTheyAreSet)
{
    const QString mp3 = put(QStringLiteral("a.mp3"), samples::mp3Frames(5));
    set({.title = QStringLiteral("T"),
         .artist = QStringLiteral("A"),
         .album = QStringLiteral("B"),
         .comment = QStringLiteral("C"),
         .year = 1970,
         .genre = 3});
    tags.WriteTags(mp3);
    tags.setTagTitle(QStringLiteral("next"));
    EXPECT_THROW(tags.ReadTags(folder.filePath(QStringLiteral("missing.mp3"))), RunTimeFailure);
    EXPECT_THROW(tags.ReadTags(put(QStringLiteral("text.mp3"), "no sound")), RunTimeFailure);
    EXPECT_EQ(tags.TagTitle(), QStringLiteral("next"));
    EXPECT_EQ(tags.TagYear(), 1970);
    const QString second = put(QStringLiteral("b.mp3"), samples::mp3Frames(5));
    tags.WriteTags(second);
    EXPECT_EQ(read(second).artist, QStringLiteral("A"));
    EXPECT_EQ(read(second).title, QStringLiteral("next"));
    tags.ReadTags(put(QStringLiteral("bare.mp3"), samples::mp3Frames(5)));
    EXPECT_EQ(tags.TagTitle(), QString());
    EXPECT_EQ(tags.TagYear(), 0);
    EXPECT_EQ(tags.GenreName(0), QStringLiteral("Blues"));
    EXPECT_THROW(tags.GenreName(148), RunTimeFailure);
    EXPECT_THROW(tags.GenreName(-1), RunTimeFailure);
}

} // namespace
