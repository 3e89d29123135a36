#pragma once

#include "engines/freedb/FreeDbClient.h"
#include "testkit/Printing.h"
#include "testkit/http/LoopbackServer.h"

#include <QElapsedTimer>
#include <gtest/gtest.h>

/// A client, and services on the loopback for it to ask.
namespace freedbtest {

using engines::FreeDbClient;
using Manner = HttpResponse::Manner;

inline const QString Id = QStringLiteral("1801c203"); // three tracks

inline const QByteArray Entry =
    "# xmcd\n# Track frame offsets:\n#\t150\n#\t15150\n#\t30150\n#\n# Disc length: 452 seconds\n"
    "DTITLE=Artist / Album\nDYEAR=1999\nDGENRE=Rock\nTTITLE0=One\nTTITLE1=Two\nTTITLE2=Three\n"
    "EXTD=Remark\n";

inline QByteArray categoryOf(const HttpRequest &request)
{
    return request.target.mid(request.target.indexOf("cddb+read+") + 10).split('+').constFirst();
}

inline HttpResponse found(const QByteArray &entry)
{
    return {.body =
                "210 misc 1801c203 CD database entry follows (until terminating `.')\r\n" + entry + ".\r\n",
            .headers = {}};
}

inline HttpResponse notFound()
{
    return {.body = "401 misc 1801c203 No such CD entry in database.\r\n", .headers = {}};
}

/// A service that has an entry in one category.
inline LoopbackServer::Handler onlyIn(const QByteArray &category, const HttpResponse &response)
{
    return [category, response](const HttpRequest &request) {
        return categoryOf(request) == category ? response : notFound();
    };
}

inline LoopbackServer::Handler always(const HttpResponse &response)
{
    return [response](const HttpRequest &) { return response; };
}

class FreeDbClientTest : public ::testing::Test
{
protected:
    qint16 query(const QString &host)
    {
        client.setHostName(host);
        client.setTimeOut(QStringLiteral("2"));
        QElapsedTimer clock;
        clock.start();
        const qint16 status = client.QueryDisc(Id, {});
        EXPECT_LT(clock.elapsed(), 6000);
        return status;
    }

    qint16 queryAt(const LoopbackServer::Handler &handler)
    {
        LoopbackServer server(handler);
        return query(server.host());
    }

    /// All that a query gives back, in one text.
    QString properties() const
    {
        return QStringList{client.Album(),    client.Artist(),
                           client.Category(), client.Genre(),
                           client.Year(),     QString::number(client.DiscLength()),
                           client.Comments(), QString::number(client.TrackCount()),
                           client.Titles()}
            .join(u'~');
    }

    FreeDbClient client;
};

} // namespace freedbtest
