#include "base/Deployment.h"
#include "engines/freedb/DiscEntry.h"
#include "engines/freedb/FreeDbFixture.h"

namespace {

using namespace freedbtest;

class SubmitTest : public FreeDbClientTest
{
protected:
    SubmitTest()
    {
        client.setAlbum(QStringLiteral("Grüße"));
        client.setCategory(QStringLiteral("jazz"));
        client.setDiscLength(452);
        client.setTrackOffsets(QStringLiteral("150|15150|30150"));
        client.setYear(QStringLiteral("2001"));
        client.setTitles(QStringLiteral("Eins|Zwei|Drei"));
        client.setArtist(QStringLiteral("Jane \\ Doe"));
        client.setTrackCount(3);
        client.setGenre(QStringLiteral("Swing"));
        client.setComments(QStringLiteral("none"));
        client.setEmail(QStringLiteral("jane@example.org"));
    }

    qint16 submit(const LoopbackServer::Handler &handler)
    {
        LoopbackServer server(handler);
        client.setHostName(server.host());
        client.setTimeOut(QStringLiteral("2"));
        const qint16 status = client.SubmitDisc(Id, {});
        requests = server.requests();
        return status;
    }

    QList<HttpRequest> requests;
};

TEST_F(SubmitTest, theEntryArrivesWholeAndReadsBackEqual)
{
    const QString before = properties();
    EXPECT_EQ(submit(always({.body = "200 OK, submission has been sent.\r\n", .headers = {}})),
              CDDB::Accepted);
    EXPECT_EQ(properties(), before);

    const HttpRequest request = requests.constFirst();
    EXPECT_EQ(request.method, "POST");
    EXPECT_EQ(request.target, "/~cddb/submit.cgi");
    const QMap<QByteArray, QByteArray> headers{{"category", "jazz"},
                                               {"discid", "1801c203"},
                                               {"user-email", "jane@example.org"},
                                               {"submit-mode", Deployment::FreeDbSubmitMode.toUtf8()},
                                               {"charset", "UTF-8"},
                                               {"content-length", QByteArray::number(request.body.size())}};
    for (auto header = headers.begin(); header != headers.end(); ++header)
        EXPECT_EQ(request.headers.value(header.key()), header.value()) << header.key().constData();
    EXPECT_TRUE(request.headers.contains("x-cddbd-note"));

    // The service gives it out again.
    FreeDbClient reader;
    LoopbackServer service(onlyIn("jazz", found(request.body)));
    reader.setHostName(service.host());
    EXPECT_EQ(reader.QueryDisc(Id, {}), CDDB::Found);
    EXPECT_EQ(reader.Titles(), QStringLiteral("Eins|Zwei|Drei|"));
    EXPECT_EQ(reader.Artist(), client.Artist());
    EXPECT_EQ(reader.Album(), client.Album());
    EXPECT_EQ(reader.Comments(), client.Comments());
    EXPECT_EQ(reader.DiscLength(), 452);
}

TEST_F(SubmitTest, aLongEntryArrivesWhole)
{
    client.setTitles(QStringLiteral("Ein langer Titel mit Ümläuten ").repeated(400) +
                     QStringLiteral("|b|c|d"));
    EXPECT_EQ(submit(always({.body = "200 OK\r\n", .headers = {}})), CDDB::Accepted);
    const auto entry = engines::freedb::parseEntry(requests.constFirst().body);
    ASSERT_TRUE(entry);
    EXPECT_EQ(entry->titles.size(), 3); // of a disc of three tracks
    EXPECT_EQ(entry->titles.constFirst().size(), 400 * 30 - 1);
}

TEST_F(SubmitTest, nothingOfAPropertyBecomesAHeaderOfItsOwn)
{
    client.setEmail(QStringLiteral("a@b.com\r\nX-Other: 1"));
    EXPECT_EQ(submit(always({.body = "200 OK\r\n", .headers = {}})), CDDB::Accepted);
    EXPECT_EQ(requests.constFirst().headers.value("user-email"), "a@b.comX-Other: 1");
    EXPECT_FALSE(requests.constFirst().headers.contains("x-other"));
}

TEST_F(SubmitTest, theAnswerIsAStatusCode)
{
    struct Row
    {
        HttpResponse response;
        int status;
    };
    const Row rows[] = {
        {{.body = "500 Missing required header information.\r\n", .headers = {}}, CDDB::Refused},
        {{.status = 500, .body = "501 Invalid header information [Email]\r\n", .headers = {}}, CDDB::Refused},
        {{.body = "402 Server error\r\n", .headers = {}}, CDDB::OtherFailure},
        {{.status = 403, .body = "200 OK\r\n", .headers = {}}, CDDB::OtherFailure},
        {{.status = 500, .body = "Internal error", .headers = {}}, CDDB::OtherFailure},
        {{.body = "<html>thanks</html>", .headers = {}}, CDDB::OtherFailure},
        {{.status = 307, .body = "", .headers = {{"Location", "/elsewhere"}}}, CDDB::OtherFailure},
        {{.body = "", .headers = {}, .manner = Manner::Closed}, CDDB::NoConnection},
        {{.body = "", .headers = {}, .manner = Manner::Silent}, CDDB::NoConnection},
        {{.body = "200 ", .headers = {}, .manner = Manner::Endless}, CDDB::OtherFailure},
    };
    for (const Row &row : rows) {
        EXPECT_EQ(submit(always(row.response)), row.status) << row.response.body.constData();
        EXPECT_EQ(requests.size(), 1); // never sent twice, nor to anybody else
    }
}

} // namespace
