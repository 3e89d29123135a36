#include "engines/freedb/FreeDbFixture.h"

namespace {

using namespace freedbtest;

class ProxyTest : public FreeDbClientTest
{
protected:
    void useProxy(const LoopbackServer &server)
    {
        client.setUseProxy(true);
        client.setProxyServer(QStringLiteral("127.0.0.1"));
        client.setProxyPort(QString::number(server.port()));
        client.setProxyUser(QStringLiteral("jane"));
        client.setProxyPassword(QStringLiteral("s:cret ü"));
    }

    const QString host = QStringLiteral("freedb.example");
};

TEST_F(ProxyTest, requestsGoThroughTheProxyAndNowhereElse)
{
    LoopbackServer proxy(onlyIn("folk", found(Entry)));
    useProxy(proxy);
    EXPECT_EQ(query(host), CDDB::Found);
    EXPECT_TRUE(proxy.requests().constFirst().target.startsWith("http://freedb.example/~cddb/cddb.cgi?"));
    EXPECT_FALSE(proxy.requests().constFirst().headers.contains("proxy-authorization"));

    // No proxy named, though one is wanted, must not lead past it.
    LoopbackServer direct(onlyIn("folk", found(Entry)));
    client.setProxyServer(QStringLiteral(" "));
    EXPECT_EQ(query(direct.host()), CDDB::NoConnection);
    EXPECT_EQ(direct.connections(), 0);
}

TEST_F(ProxyTest, theEnvironmentHasNoSay)
{
    LoopbackServer proxy(onlyIn("folk", found(Entry)));
    LoopbackServer service(onlyIn("folk", found(Entry)));
    qputenv("http_proxy", "http://" + proxy.host().toLatin1());
    EXPECT_EQ(query(service.host()), CDDB::Found);
    qunsetenv("http_proxy");
    EXPECT_EQ(proxy.connections(), 0);

    const int direct = service.connections();
    useProxy(proxy);
    qputenv("no_proxy", "*");
    EXPECT_EQ(query(service.host()), CDDB::Found);
    qunsetenv("no_proxy");
    EXPECT_GT(proxy.connections(), 0);
    EXPECT_EQ(service.connections(), direct);
}

TEST_F(ProxyTest, logsInWhereTheProxyAsksForIt)
{
    const QByteArray expected = "Basic " + QStringLiteral("jane:s:cret ü").toUtf8().toBase64();
    LoopbackServer proxy([expected](const HttpRequest &request) {
        if (request.headers.value("proxy-authorization") == expected)
            return found(Entry);
        return HttpResponse{.status = 407,
                            .body = "210 x\nTTITLE0=Log in\n.\n",
                            .headers = {{"Proxy-Authenticate", "Basic realm=\"house\""}}};
    });
    useProxy(proxy);
    EXPECT_EQ(query(host), CDDB::NoConnection);
    client.setNeedLogin(true);
    EXPECT_EQ(query(host), CDDB::Found);
    client.setProxyPassword(QStringLiteral("wrong"));
    EXPECT_EQ(query(host), CDDB::NoConnection);
}

} // namespace
