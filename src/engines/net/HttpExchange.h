#pragma once

#include <QByteArray>
#include <QByteArrayList>
#include <QDeadlineTimer>
#include <QString>
#include <memory>
#include <optional>
#include <stop_token>

namespace net {

/// The way to a server.
struct Route
{
    struct Proxy
    {
        QString server;
        QString port; ///< decimal; empty for the port of HTTP
        bool needsLogin = false;
        QString user;
        QString password;
    };

    QString host; ///< "name" or "name:port"
    std::optional<Proxy> proxy;
    int seconds = 0; ///< for the whole exchange, whatever it takes
};

struct HttpAnswer
{
    enum class Outcome {
        Received,     ///< status and body are the server's
        NoConnection, ///< refused, broken off, too slow, or stopped on the way
        Unusable,     ///< too long, redirected in circles or to what isn't HTTP, no HTTP at all
    };

    Outcome outcome = Outcome::NoConnection;
    long status = 0;
    QByteArray body;

    bool isSuccess() const { return status >= 200 && status < 300; }
};

/// One exchange with a server: any number of requests one after the other, on a connection that is kept open,
/// within one time-out. Each request blocks the calling thread and fails by its outcome only.
class HttpExchange
{
public:
    static constexpr qsizetype LongestBody = 256 * 1024;

    /// A stop, asked for in any thread, breaks off what is under way and all that follows.
    explicit HttpExchange(const Route &route, std::stop_token stop = {});
    ~HttpExchange();
    HttpExchange(const HttpExchange &) = delete;
    HttpExchange &operator=(const HttpExchange &) = delete;

    /// `target` is path and query. Follows a few redirects.
    HttpAnswer get(const QByteArray &target);
    /// Follows no redirect: what is sent is meant for this server alone. A header is "Name: value".
    HttpAnswer post(const QByteArray &target, const QByteArrayList &headers, const QByteArray &body);

private:
    struct CurlState;

    HttpAnswer perform(const QByteArray &target);

    std::unique_ptr<CurlState> m_curl;
    QByteArray m_base; ///< "http://host:port"; empty where the route leads nowhere
    QDeadlineTimer m_deadline;
    std::stop_token m_stop;
};

} // namespace net
