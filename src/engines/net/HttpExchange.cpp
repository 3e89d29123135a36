#include "engines/net/HttpExchange.h"

#include "base/Deployment.h"
#include "base/Log.h"
#include "base/Text.h"

#include <QRegularExpression>
#include <algorithm>
#include <curl/curl.h>

namespace net {

namespace {

constexpr long MostRedirects = 5;
/// A server that is alive takes a connection in far less; one that is gone is not waited for longer.
constexpr qint64 ConnectMilliseconds = 10'000;
constexpr long HttpPort = 80;

/// libcurl is set up once for the whole program, which needs no tearing down.
bool prepareCurl()
{
    static const bool ready = curl_global_init(CURL_GLOBAL_DEFAULT) == CURLE_OK;
    return ready;
}

struct CurlListDeleter
{
    void operator()(curl_slist *list) const { curl_slist_free_all(list); }
};
using CurlList = std::unique_ptr<curl_slist, CurlListDeleter>;

CurlList headerList(const QByteArrayList &headers)
{
    CurlList list;
    for (const QByteArray &header : headers)
        list.reset(curl_slist_append(list.release(), header.constData()));
    return list;
}

size_t collect(const char *bytes, size_t size, size_t count, void *body)
{
    auto *collected = static_cast<QByteArray *>(body);
    const auto length = static_cast<qsizetype>(size * count);
    if (collected->size() + length > HttpExchange::LongestBody)
        return 0; // breaks the transfer off
    collected->append(bytes, length);
    return size * count;
}

/// The server's address; empty where the host's text can't name one.
QByteArray baseAddress(const QString &host)
{
    static const QRegularExpression form(
        QStringLiteral(R"(\A([A-Za-z0-9._-]+|\[[0-9A-Fa-f:.]+\])(:\d{1,5})?\z)"));
    const QString trimmed = trimBlanks(host);
    return form.match(trimmed).hasMatch() ? "http://" + trimmed.toLatin1() : QByteArray();
}

HttpAnswer::Outcome outcomeOf(CURLcode code, long status)
{
    switch (code) {
    case CURLE_OK:
        // What only a proxy or a gateway on the way says: the service itself was not reached.
        return status == 407 || status == 502 || status == 504 ? HttpAnswer::Outcome::NoConnection
                                                               : HttpAnswer::Outcome::Received;
    case CURLE_WRITE_ERROR:
    case CURLE_TOO_MANY_REDIRECTS:
    case CURLE_UNSUPPORTED_PROTOCOL:
    case CURLE_WEIRD_SERVER_REPLY:
    case CURLE_OUT_OF_MEMORY:
        return HttpAnswer::Outcome::Unusable;
    default:
        return HttpAnswer::Outcome::NoConnection;
    }
}

/// Does a prepared transfer, as one call would that could be stopped.
CURLcode transfer(CURLM *transfers, CURL *curl, const std::stop_token &stop)
{
    constexpr int PollMilliseconds = 1000; ///< at most; whatever happens wakes it up
    if (curl_multi_add_handle(transfers, curl) != CURLM_OK)
        return CURLE_OUT_OF_MEMORY;
    CURLcode code = CURLE_ABORTED_BY_CALLBACK;
    {
        const std::stop_callback wake(stop, [transfers] { curl_multi_wakeup(transfers); });
        int running = 1;
        while (running > 0 && !stop.stop_requested()) {
            if (curl_multi_perform(transfers, &running) != CURLM_OK)
                break;
            if (running > 0)
                curl_multi_poll(transfers, nullptr, 0, PollMilliseconds, nullptr);
        }
    }
    int left = 0;
    if (const CURLMsg *message = curl_multi_info_read(transfers, &left);
        message && message->msg == CURLMSG_DONE)
        code = message->data.result;
    curl_multi_remove_handle(transfers, curl);
    return code;
}

} // namespace

struct HttpExchange::CurlState
{
    struct TransfersDeleter
    {
        void operator()(CURLM *transfers) const { curl_multi_cleanup(transfers); }
    };
    struct HandleDeleter
    {
        void operator()(CURL *handle) const { curl_easy_cleanup(handle); }
    };
    std::unique_ptr<CURLM, TransfersDeleter> transfers; ///< keeps the connection, and can be woken up
    std::unique_ptr<CURL, HandleDeleter> handle;
};

HttpExchange::HttpExchange(const Route &route, std::stop_token stop)
    : m_curl(new CurlState), m_deadline(std::chrono::seconds(route.seconds)), m_stop(std::move(stop))
{
    if (!prepareCurl())
        return;
    m_curl->transfers.reset(curl_multi_init());
    m_curl->handle.reset(curl_easy_init());
    CURL *curl = m_curl->handle.get();
    if (!curl || !m_curl->transfers)
        return;
    curl_easy_setopt(curl, CURLOPT_NOSIGNAL, 1L);
    // A name server that doesn't answer must not hold the end of the time-out up.
    curl_easy_setopt(curl, CURLOPT_QUICK_EXIT, 1L);
    curl_easy_setopt(curl, CURLOPT_PROTOCOLS_STR, "http,https");
    curl_easy_setopt(curl, CURLOPT_REDIR_PROTOCOLS_STR, "http,https");
    curl_easy_setopt(curl, CURLOPT_MAXREDIRS, MostRedirects);
    curl_easy_setopt(curl, CURLOPT_WRITEFUNCTION, collect);
    const QString program = Deployment::FreeDbClient + u'/' + Deployment::FreeDbVersion;
    curl_easy_setopt(curl, CURLOPT_USERAGENT, program.toUtf8().constData());

    // The proxy is the user's choice here alone, whatever the environment says.
    curl_easy_setopt(curl, CURLOPT_NOPROXY, "");
    curl_easy_setopt(curl, CURLOPT_PROXY, "");
    if (route.proxy) {
        const QString server = trimBlanks(route.proxy->server);
        if (server.isEmpty())
            return;
        bool isNumber = false;
        const int port = trimBlanks(route.proxy->port).toInt(&isNumber);
        curl_easy_setopt(curl, CURLOPT_PROXY, server.toUtf8().constData());
        curl_easy_setopt(curl, CURLOPT_PROXYPORT, isNumber && port > 0 && port <= 0xffff ? port : HttpPort);
        if (route.proxy->needsLogin) {
            curl_easy_setopt(curl, CURLOPT_PROXYAUTH, CURLAUTH_ANY);
            curl_easy_setopt(curl, CURLOPT_PROXYUSERNAME, route.proxy->user.toUtf8().constData());
            curl_easy_setopt(curl, CURLOPT_PROXYPASSWORD, route.proxy->password.toUtf8().constData());
        }
    }
    m_base = baseAddress(route.host);
    if (m_base.isEmpty())
        qCWarning(logNet).noquote() << route.host << "is no address of a server";
}

HttpExchange::~HttpExchange() = default;

HttpAnswer HttpExchange::get(const QByteArray &target)
{
    if (m_base.isEmpty())
        return {};
    curl_easy_setopt(m_curl->handle.get(), CURLOPT_HTTPGET, 1L);
    curl_easy_setopt(m_curl->handle.get(), CURLOPT_FOLLOWLOCATION, 1L);
    return perform(target);
}

HttpAnswer HttpExchange::post(const QByteArray &target, const QByteArrayList &headers, const QByteArray &body)
{
    if (m_base.isEmpty())
        return {};
    CURL *curl = m_curl->handle.get();
    // Without "Expect" the body goes out at once instead of after a second's wait for a go-ahead.
    const CurlList list = headerList(QByteArrayList{"Expect:"} + headers);
    curl_easy_setopt(curl, CURLOPT_POST, 1L);
    curl_easy_setopt(curl, CURLOPT_POSTFIELDS, body.constData());
    curl_easy_setopt(curl, CURLOPT_POSTFIELDSIZE_LARGE, static_cast<curl_off_t>(body.size()));
    curl_easy_setopt(curl, CURLOPT_HTTPHEADER, list.get());
    curl_easy_setopt(curl, CURLOPT_FOLLOWLOCATION, 0L);
    const HttpAnswer answer = perform(target);
    curl_easy_setopt(curl, CURLOPT_HTTPHEADER, nullptr);
    return answer;
}

HttpAnswer HttpExchange::perform(const QByteArray &target)
{
    const qint64 left = m_deadline.remainingTime();
    if (left <= 0) // which libcurl would take for no limit
        return {};
    HttpAnswer answer;
    CURL *curl = m_curl->handle.get();
    curl_easy_setopt(curl, CURLOPT_URL, (m_base + target).constData());
    curl_easy_setopt(curl, CURLOPT_TIMEOUT_MS, static_cast<long>(left));
    curl_easy_setopt(curl, CURLOPT_CONNECTTIMEOUT_MS, static_cast<long>(std::min(left, ConnectMilliseconds)));
    curl_easy_setopt(curl, CURLOPT_WRITEDATA, &answer.body);
    const CURLcode code = transfer(m_curl->transfers.get(), curl, m_stop);
    curl_easy_getinfo(curl, CURLINFO_RESPONSE_CODE, &answer.status);
    answer.outcome = outcomeOf(code, answer.status);
    if (answer.outcome == HttpAnswer::Outcome::NoConnection)
        qCWarning(logNet).noquote() << m_base << "isn't reached:" << curl_easy_strerror(code)
                                    << answer.status;
    else if (answer.outcome == HttpAnswer::Outcome::Unusable)
        qCWarning(logNet).noquote() << m_base << "gives no usable answer:" << curl_easy_strerror(code);
    return answer;
}

} // namespace net
