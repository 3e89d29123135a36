#pragma once

#include <QByteArray>
#include <QList>
#include <QMap>
#include <QString>
#include <condition_variable>
#include <functional>
#include <mutex>

struct MHD_Connection;
struct MHD_Daemon;

struct HttpRequest
{
    QByteArray method;
    QByteArray target;                    ///< as it came: path and query, or a whole address at a proxy
    QMap<QByteArray, QByteArray> headers; ///< names in small letters
    QByteArray body;
};

struct HttpResponse
{
    enum class Manner {
        Whole,
        Half,    ///< the connection breaks off behind the body, though more was announced
        Closed,  ///< it breaks off before any answer
        Silent,  ///< nothing comes until the server goes
        Drip,    ///< the body, again and again, a byte at a time
        Endless, ///< the body, again and again, as fast as it is taken
    };

    int status = 200;
    QByteArray body;
    QList<std::pair<QByteArray, QByteArray>> headers;
    Manner manner = Manner::Whole;
};

/// An HTTP server on this machine's loopback, for as long as it lives. The handler runs on a thread of the
/// server, one request at a time.
class LoopbackServer
{
public:
    using Handler = std::function<HttpResponse(const HttpRequest &)>;

    explicit LoopbackServer(Handler handler);
    ~LoopbackServer();

    /// "127.0.0.1:port"
    QString host() const { return QStringLiteral("127.0.0.1:%1").arg(m_port); }
    int port() const { return m_port; }
    QList<HttpRequest> requests() const;
    int connections() const;

private:
    friend struct LoopbackCalls;

    mutable std::mutex m_mutex;
    std::condition_variable m_stopped;
    bool m_stopping = false;
    Handler m_handler;
    QList<HttpRequest> m_requests;
    int m_connections = 0;
    int m_port = 0;
    MHD_Daemon *m_daemon = nullptr;
};
