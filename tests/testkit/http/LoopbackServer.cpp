#include "testkit/http/LoopbackServer.h"

#include <chrono>
#include <memory>
#include <microhttpd.h>
#include <netinet/in.h>

namespace {

/// A body that never ends, or breaks off.
struct Stream
{
    LoopbackServer *server;
    QByteArray body;
    HttpResponse::Manner manner;
};

} // namespace

/// What libmicrohttpd calls, on a thread for each connection.
struct LoopbackCalls
{
    static void *begin(void *, const char *target, MHD_Connection *)
    {
        return new HttpRequest{.method = {}, .target = target, .headers = {}, .body = {}};
    }

    static void end(void *, MHD_Connection *, void **request, MHD_RequestTerminationCode)
    {
        delete static_cast<HttpRequest *>(*request);
        *request = nullptr;
    }

    static void connected(void *self, MHD_Connection *, void **, MHD_ConnectionNotificationCode code)
    {
        auto *server = static_cast<LoopbackServer *>(self);
        const std::lock_guard lock(server->m_mutex);
        if (code == MHD_CONNECTION_NOTIFY_STARTED)
            ++server->m_connections;
    }

    static MHD_Result addHeader(void *headers, MHD_ValueKind, const char *name, const char *value)
    {
        static_cast<QMap<QByteArray, QByteArray> *>(headers)->insert(QByteArray(name).toLower(), value);
        return MHD_YES;
    }

    static MHD_Result handle(void *self, MHD_Connection *connection, const char *, const char *method,
                             const char *, const char *upload, size_t *uploadSize, void **state)
    {
        auto *server = static_cast<LoopbackServer *>(self);
        auto *request = static_cast<HttpRequest *>(*state);
        if (request->method.isEmpty()) { // the first call of a request comes before its body
            request->method = method;
            MHD_get_connection_values(connection, MHD_HEADER_KIND, addHeader, &request->headers);
            return MHD_YES;
        }
        if (*uploadSize > 0) {
            request->body.append(upload, static_cast<qsizetype>(*uploadSize));
            *uploadSize = 0;
            return MHD_YES;
        }
        std::unique_lock lock(server->m_mutex);
        server->m_requests.append(*request);
        const HttpResponse response = server->m_handler(*request);
        if (response.manner == HttpResponse::Manner::Silent)
            server->m_stopped.wait(lock, [server] { return server->m_stopping; });
        lock.unlock();
        return answer(server, connection, response);
    }

    static MHD_Result answer(LoopbackServer *server, MHD_Connection *connection, const HttpResponse &response)
    {
        if (response.manner == HttpResponse::Manner::Closed ||
            response.manner == HttpResponse::Manner::Silent)
            return MHD_NO;
        const auto size = static_cast<std::uint64_t>(response.body.size());
        MHD_Response *sent = nullptr;
        if (response.manner == HttpResponse::Manner::Whole) {
            sent = MHD_create_response_from_buffer(size, const_cast<char *>(response.body.constData()),
                                                   MHD_RESPMEM_MUST_COPY);
        } else {
            const bool isHalf = response.manner == HttpResponse::Manner::Half;
            sent =
                MHD_create_response_from_callback(isHalf ? 2 * size : MHD_SIZE_UNKNOWN, 4096, streamOn,
                                                  new Stream{server, response.body, response.manner},
                                                  [](void *stream) { delete static_cast<Stream *>(stream); });
        }
        for (const auto &[name, value] : response.headers)
            MHD_add_response_header(sent, name.constData(), value.constData());
        const MHD_Result queued =
            MHD_queue_response(connection, static_cast<unsigned>(response.status), sent);
        MHD_destroy_response(sent);
        return queued;
    }

    static ssize_t streamOn(void *state, std::uint64_t position, char *buffer, size_t most)
    {
        auto *stream = static_cast<Stream *>(state);
        const auto size = static_cast<std::uint64_t>(stream->body.size());
        if (stream->manner == HttpResponse::Manner::Half && position >= size)
            return MHD_CONTENT_READER_END_WITH_ERROR;
        if (stream->manner == HttpResponse::Manner::Drip) {
            std::unique_lock lock(stream->server->m_mutex);
            const bool stopping = stream->server->m_stopped.wait_for(
                lock, std::chrono::milliseconds(20), [stream] { return stream->server->m_stopping; });
            if (stopping)
                return MHD_CONTENT_READER_END_WITH_ERROR;
            most = 1;
        }
        const size_t count =
            stream->manner == HttpResponse::Manner::Half ? std::min<size_t>(most, size - position) : most;
        for (size_t i = 0; i < count; ++i)
            buffer[i] = stream->body[static_cast<qsizetype>((position + i) % size)];
        return static_cast<ssize_t>(count);
    }
};

LoopbackServer::LoopbackServer(Handler handler) : m_handler(std::move(handler))
{
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    m_daemon =
        MHD_start_daemon(MHD_USE_INTERNAL_POLLING_THREAD | MHD_USE_THREAD_PER_CONNECTION, 0, nullptr, nullptr,
                         LoopbackCalls::handle, this, MHD_OPTION_SOCK_ADDR,
                         reinterpret_cast<sockaddr *>(&address), MHD_OPTION_URI_LOG_CALLBACK,
                         LoopbackCalls::begin, this, MHD_OPTION_NOTIFY_COMPLETED, LoopbackCalls::end, this,
                         MHD_OPTION_NOTIFY_CONNECTION, LoopbackCalls::connected, this, MHD_OPTION_END);
    if (!m_daemon)
        qFatal("The loopback server doesn't start");
    m_port = MHD_get_daemon_info(m_daemon, MHD_DAEMON_INFO_BIND_PORT)->port;
}

LoopbackServer::~LoopbackServer()
{
    {
        const std::lock_guard lock(m_mutex);
        m_stopping = true;
    }
    m_stopped.notify_all();
    MHD_stop_daemon(m_daemon);
}

QList<HttpRequest> LoopbackServer::requests() const
{
    const std::lock_guard lock(m_mutex);
    return m_requests;
}

int LoopbackServer::connections() const
{
    const std::lock_guard lock(m_mutex);
    return m_connections;
}
