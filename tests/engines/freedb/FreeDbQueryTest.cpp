#include "base/Deployment.h"
#include "engines/freedb/FreeDbFixture.h"
#include "testkit/Logged.h"

namespace {

using namespace freedbtest;

TEST_F(FreeDbClientTest, asksEachCategoryOnOneConnectionAndFillsTheProperties)
{
    LoopbackServer server(onlyIn("rock", found(Entry)));
    EXPECT_EQ(query(server.host()), CDDB::Found);
    EXPECT_EQ(properties(), QStringLiteral("Album~Artist~rock~Rock~1999~452~Remark~3~One|Two|Three|"));

    EXPECT_EQ(server.connections(), 1);
    QStringList categories;
    for (const HttpRequest &request : server.requests())
        categories += QString::fromLatin1(categoryOf(request));
    EXPECT_EQ(categories, CDDB::Categories);
    const QString first = QString::fromLatin1(server.requests().constFirst().target);
    EXPECT_EQ(first, QStringLiteral("/~cddb/cddb.cgi?cmd=cddb+read+blues+1801c203&hello=%1+%2+%3+%4&proto=6")
                         .arg(Deployment::FreeDbHelloUser, Deployment::FreeDbHelloHost,
                              Deployment::FreeDbClient, Deployment::FreeDbVersion));
}

TEST_F(FreeDbClientTest, anyTextOfAnIdIsSentEncoded)
{
    LoopbackServer server(always(notFound()));
    client.setHostName(server.host());
    EXPECT_EQ(client.QueryDisc(QStringLiteral("a b&proto=1\r\nX: ä"), {}), CDDB::NotFound);
    EXPECT_TRUE(
        server.requests().constFirst().target.contains("blues+a+b%26proto%3D1%0D%0AX%3A+%C3%A4&hello="));
    EXPECT_EQ(client.QueryDisc(QString(), {}), CDDB::NotFound);
}

TEST_F(FreeDbClientTest, takesTheMostCompleteOfSeveralMatches)
{
    struct Row
    {
        QByteArray blues, jazz, rock;
        QString winner;
    };
    const QByteArray bare = "DTITLE=A / B\nTTITLE0=\nTTITLE1=\nTTITLE2=\n";
    const QByteArray generic =
        "DTITLE=A / B\nDYEAR=1999\nTTITLE0=Track 1\nTTITLE1=Track 2\nTTITLE2=track-3\n";
    const QByteArray named = "DTITLE=A / B\nTTITLE0=x\nTTITLE1=y\nTTITLE2=z\n";
    const QByteArray longer = Entry + "TTITLE3=Four\n";
    const Row rows[] = {
        {bare, generic, named, QStringLiteral("rock")},
        {named, Entry, named, QStringLiteral("jazz")},  // as many titles, more of the rest
        {named, named, named, QStringLiteral("blues")}, // of equals the first
        {longer, named, bare, QStringLiteral("jazz")},  // the id tells of three tracks
        {"garbage\n", "DTITLE=\n", bare, QStringLiteral("rock")},
    };
    for (const Row &row : rows) {
        const QMap<QByteArray, QByteArray> entries{
            {"blues", row.blues}, {"jazz", row.jazz}, {"rock", row.rock}};
        EXPECT_EQ(queryAt([&](const HttpRequest &request) {
                      const QByteArray category = categoryOf(request);
                      return entries.contains(category) ? found(entries[category]) : notFound();
                  }),
                  CDDB::Found);
        EXPECT_EQ(client.Category(), row.winner);
    }
}

TEST_F(FreeDbClientTest, everyFailureIsAStatusCodeWithinTheTimeOutAndChangesNothing)
{
    ASSERT_EQ(queryAt(onlyIn("jazz", found(Entry))), CDDB::Found);
    const QString before = properties();

    struct Row
    {
        const char *what;
        HttpResponse response;
        int status;
    };
    const QByteArray head = "210 rock 1801c203 follows\r\n";
    const Row rows[] = {
        {"no entry", notFound(), CDDB::NotFound},
        {"server error", {.body = "402 Server error\r\n", .headers = {}}, CDDB::OtherFailure},
        {"corrupt entry", {.body = "403 Database entry is corrupt\r\n", .headers = {}}, CDDB::OtherFailure},
        {"no handshake", {.body = "409 No handshake\r\n", .headers = {}}, CDDB::OtherFailure},
        {"refused", {.body = "500 Unknown client\r\n", .headers = {}}, CDDB::OtherFailure},
        {"unknown code", {.body = "299 Hm\r\n", .headers = {}}, CDDB::OtherFailure},
        {"no code", {.body = "<html>Log in first</html>", .headers = {}}, CDDB::OtherFailure},
        {"nothing", {.body = "", .headers = {}}, CDDB::OtherFailure},
        {"no end", {.body = head + Entry, .headers = {}}, CDDB::OtherFailure},
        {"no titles", {.body = head + "DYEAR=1999\n.\n", .headers = {}}, CDDB::OtherFailure},
        {"HTTP error", {.status = 404, .body = "no such page", .headers = {}}, CDDB::OtherFailure},
        {"entry with an HTTP error",
         {.status = 500, .body = head + Entry + ".\n", .headers = {}},
         CDDB::OtherFailure},
        {"gateway", {.status = 502, .body = "bad gateway", .headers = {}}, CDDB::NoConnection},
        {"circle",
         {.status = 302, .body = "", .headers = {{"Location", "/~cddb/cddb.cgi"}}},
         CDDB::OtherFailure},
        {"to a file",
         {.status = 302, .body = "", .headers = {{"Location", "file:///etc/passwd"}}},
         CDDB::OtherFailure},
        {"endless", {.body = head + Entry, .headers = {}, .manner = Manner::Endless}, CDDB::OtherFailure},
        {"endless line", {.body = "210 ", .headers = {}, .manner = Manner::Endless}, CDDB::OtherFailure},
        {"drip", {.body = head + Entry, .headers = {}, .manner = Manner::Drip}, CDDB::NoConnection},
        {"silence", {.body = "", .headers = {}, .manner = Manner::Silent}, CDDB::NoConnection},
        {"half", {.body = head + Entry, .headers = {}, .manner = Manner::Half}, CDDB::NoConnection},
        {"closed", {.body = "", .headers = {}, .manner = Manner::Closed}, CDDB::NoConnection},
    };
    for (const Row &row : rows) {
        SCOPED_TRACE(row.what);
        EXPECT_EQ(queryAt(always(row.response)), row.status);
        EXPECT_EQ(properties(), before);
    }
}

TEST_F(FreeDbClientTest, aHostThatIsNoneOrGoneIsNoConnection)
{
    QString gone;
    {
        const LoopbackServer server(always(notFound()));
        gone = server.host();
    }
    for (const QString &host : {gone, QString(), QStringLiteral("127.0.0.1:99999"), QStringLiteral("a/b"),
                                QStringLiteral("user@127.0.0.1"), QStringLiteral("127.0.0.1\r\nX: y")}) {
        EXPECT_EQ(query(host), CDDB::NoConnection) << host.toStdString();
        EXPECT_TRUE(takeLogged("tonelift.net").value(0).contains(host)) << host.toStdString();
    }
}

TEST_F(FreeDbClientTest, aFindCountsThoughALaterCategoryFails)
{
    for (const HttpResponse &later : {HttpResponse{.body = "", .headers = {}, .manner = Manner::Closed},
                                      HttpResponse{.body = "530 Too many users\r\n", .headers = {}},
                                      HttpResponse{.body = "403 corrupt\r\n", .headers = {}}}) {
        EXPECT_EQ(queryAt([&](const HttpRequest &request) {
                      return categoryOf(request) == "blues" ? found(Entry) : later;
                  }),
                  CDDB::Found);
    }
    // The other way round, a find makes up for a broken entry in an earlier category.
    EXPECT_EQ(queryAt([](const HttpRequest &request) {
                  return categoryOf(request) == "rock"
                             ? found(Entry)
                             : HttpResponse{.body = "403 Database entry is corrupt\r\n", .headers = {}};
              }),
              CDDB::Found);
}

TEST_F(FreeDbClientTest, theTimeOutHoldsForTheWholeExchange)
{
    LoopbackServer silent(always({.body = "", .headers = {}, .manner = Manner::Silent}));
    int answered = 0;
    LoopbackServer slow([&](const HttpRequest &) {
        ++answered;
        HttpResponse response = notFound();
        if (answered > 3)
            response.manner = Manner::Drip;
        return response;
    });
    for (const LoopbackServer *server : {&silent, &slow})
        EXPECT_EQ(query(server->host()), CDDB::NoConnection);

    // Nothing and 0 stand for a time-out of the client's own, not for none and not for the past.
    LoopbackServer server(onlyIn("misc", found(Entry)));
    for (const char *text : {"", "0", "abc", "-5", " 7 "}) {
        client.setHostName(server.host());
        client.setTimeOut(QString::fromLatin1(text));
        EXPECT_EQ(client.QueryDisc(Id, {}), CDDB::Found) << text;
    }
}

TEST_F(FreeDbClientTest, followsARedirect)
{
    LoopbackServer service(onlyIn("soundtrack", found(Entry)));
    EXPECT_EQ(queryAt([&](const HttpRequest &request) {
                  const QByteArray moved = "http://" + service.host().toLatin1() + request.target;
                  return HttpResponse{.status = 301, .body = "", .headers = {{"Location", moved}}};
              }),
              CDDB::Found);
}

TEST_F(FreeDbClientTest, aRefusalsTextIsLoggedOnce)
{
    queryAt(
        always({.body = "403 Client\x1b[1m Tonelift isn't registered.\r\nWrite to us.\r\n", .headers = {}}));
    EXPECT_EQ(takeLogged("tonelift.net"),
              QStringList("FreeDB: 403 Client[1m Tonelift isn't registered.\nWrite to us."));
}

TEST_F(FreeDbClientTest, aNoticeDressedAsAnEntryIsAFailure)
{
    const QByteArray rows[] = {
        "DTITLE=Various / Hits\nTTITLE0=Please update\nTTITLE1=please  update\nTTITLE2=Please Update\n",
        "DTITLE=Notice / See WWW.GNUDB.ORG\nTTITLE0=a\nTTITLE1=b\n",
        "DTITLE=A / B\nTTITLE0=Your program is unknown\nTTITLE1=http://127.0.0.1/help\n",
        "DTITLE=A / B\nTTITLE0=see freedb.org\n",
    };
    for (const QByteArray &entry : rows) {
        EXPECT_EQ(queryAt(always(found(entry))), CDDB::OtherFailure) << entry.constData();
        EXPECT_EQ(client.Titles(), QString());
        EXPECT_TRUE(takeLogged("tonelift.net").join(u' ').contains(QStringLiteral("TTITLE0")));
    }
    // One track is like itself, and titles that aren't there are no notice.
    EXPECT_EQ(queryAt(always(found("DTITLE=A / B\nTTITLE0=Song\n"))), CDDB::Found);
    EXPECT_EQ(queryAt(always(found("DTITLE=A / B\nTTITLE0=\nTTITLE1=\n"))), CDDB::Found);
}

TEST_F(FreeDbClientTest, ninetyNineTracks)
{
    QByteArray entry = "DTITLE=A / B\n";
    QStringList titles;
    for (int track = 0; track < 99; ++track) {
        titles += QStringLiteral("Song ") + QString::number(track);
        entry += "TTITLE" + QByteArray::number(track) + '=' + titles.constLast().toUtf8() + '\n';
    }
    EXPECT_EQ(queryAt(onlyIn("data", found(entry))), CDDB::Found);
    EXPECT_EQ(client.TrackCount(), 99);
    EXPECT_EQ(client.Titles(), titles.join(u'|') + u'|');
}

TEST_F(FreeDbClientTest, aStopEndsAnExchangeAtOnce)
{
    std::stop_source stop;
    LoopbackServer server([&](const HttpRequest &) {
        stop.request_stop();
        return HttpResponse{.body = "", .headers = {}, .manner = Manner::Silent};
    });
    client.setHostName(server.host());
    client.setTimeOut(QStringLiteral("60"));
    QElapsedTimer clock;
    clock.start();
    EXPECT_EQ(client.QueryDisc(Id, stop.get_token()), CDDB::NoConnection);
    EXPECT_EQ(client.SubmitDisc(Id, stop.get_token()), CDDB::NoConnection);
    EXPECT_LT(clock.elapsed(), 500);
}

} // namespace
