#include "engines/freedb/FreeDbClient.h"

#include "base/Log.h"
#include "base/Text.h"
#include "engines/freedb/Service.h"

#include <algorithm>

namespace engines {

using namespace freedb;
using namespace net;

namespace {

constexpr int DefaultSeconds = 30;
constexpr int MostSeconds = 24 * 60 * 60;
constexpr qsizetype LongestComplaint = 2000;

/// Tells what the service says, so that a refused client can be put right.
void complain(const QByteArray &text)
{
    QString printable = QString::fromUtf8(text.left(LongestComplaint)).trimmed();
    printable.removeIf([](QChar c) { return c.category() == QChar::Other_Control && c != u'\n'; });
    qCWarning(logNet).noquote() << "FreeDB:" << printable;
}

/// The service's reply, if that is what came.
std::optional<Reply> replyOf(const HttpAnswer &answer)
{
    return answer.outcome == HttpAnswer::Outcome::Received ? parseReply(answer.body) : std::nullopt;
}

/// What is to be told of an answer that is no reply of the service.
QByteArray complaintOf(const HttpAnswer &answer)
{
    if (answer.outcome != HttpAnswer::Outcome::Received || answer.isSuccess())
        return {};
    return "HTTP status " + QByteArray::number(static_cast<qlonglong>(answer.status)) + '\n' + answer.body;
}

/// What one category's answer means for the search. Of several kinds the last one tells how it went.
struct ReadResult
{
    enum Kind { Found, NotFound, Failed, Ended, NoConnection };

    Kind kind;
    DiscEntry entry = {};
    QByteArray complaint = {};
};

ReadResult readEntry(HttpExchange &exchange, const QString &category, const QString &discId,
                     const QString &host)
{
    const HttpAnswer answer = exchange.get(readTarget(category, discId));
    if (answer.outcome == HttpAnswer::Outcome::NoConnection)
        return {ReadResult::NoConnection};
    const std::optional<Reply> reply = replyOf(answer);
    if (!reply)
        return {ReadResult::Ended, {}, complaintOf(answer)};
    if (reply->code == Reply::NoSuchEntry)
        return {ReadResult::NotFound};
    if (reply->code != Reply::EntryFollows || !answer.isSuccess())
        return {reply->endsExchange() ? ReadResult::Ended : ReadResult::Failed, {}, reply->text};
    const std::optional<DiscEntry> entry = parseEntry(reply->data);
    if (!entry)
        return {ReadResult::Failed};
    if (isNotice(*entry, host))
        return {ReadResult::Failed, {}, reply->data};
    return {ReadResult::Found, *entry};
}

} // namespace

qint16 FreeDbClient::QueryDisc(const QString &discId, const std::stop_token &stop)
{
    HttpExchange exchange(route(), stop);
    std::optional<std::pair<DiscEntry, QString>> best;
    ReadResult::Kind worst = ReadResult::NotFound;
    QByteArray complaint;
    for (const QString &category : Categories) {
        const ReadResult result = readEntry(exchange, category, discId, m_hostName);
        if (result.kind == ReadResult::Found) {
            // Of equals the earlier category stays.
            if (!best || worthOf(result.entry, discId) > worthOf(best->first, discId))
                best = {result.entry, category};
            continue;
        }
        if (!result.complaint.isEmpty() && result.complaint != complaint)
            complain(complaint = result.complaint); // each category may say the same
        worst = std::max(worst, result.kind);
        if (worst >= ReadResult::Ended)
            break;
    }
    if (best) {
        take(best->first, best->second);
        return Found;
    }
    if (worst == ReadResult::NotFound)
        return NotFound;
    return worst == ReadResult::NoConnection ? qint16{NoConnection} : qint16{OtherFailure};
}

qint16 FreeDbClient::SubmitDisc(const QString &discId, const std::stop_token &stop)
{
    Submission submission{.entry = {.artist = m_artist,
                                    .album = m_album,
                                    .year = m_year,
                                    .genre = m_genre,
                                    .comments = m_comments,
                                    .titles = splitText(m_titles, ListSeparator),
                                    .discSeconds = m_discLength},
                          .discId = discId,
                          .trackOffsets = splitText(m_trackOffsets, ListSeparator),
                          .client = clientName()};
    submission.entry.titles.resize(std::clamp<int>(m_trackCount, 0, MostTracks));

    HttpExchange exchange(route(), stop);
    const HttpAnswer answer =
        exchange.post(submitTarget(), submitHeaders(m_category, discId, m_email), entryText(submission));
    if (answer.outcome == HttpAnswer::Outcome::NoConnection)
        return NoConnection;
    const std::optional<Reply> reply = replyOf(answer);
    if (reply && reply->code == Reply::Accepted && answer.isSuccess())
        return Accepted;
    if (const QByteArray complaint = reply ? reply->text : complaintOf(answer); !complaint.isEmpty())
        complain(complaint);
    const bool isRefused = reply && (reply->code == Reply::Refused || reply->code == Reply::RefusedHeader);
    return isRefused ? qint16{Refused} : qint16{OtherFailure};
}

Route FreeDbClient::route() const
{
    const int seconds = trimBlanks(m_timeOut).toInt(); // 0 where it is no number
    return {.host = m_hostName,
            .proxy = m_useProxy ? std::optional(m_proxy) : std::nullopt,
            .seconds = seconds > 0 ? std::min(seconds, MostSeconds) : DefaultSeconds};
}

void FreeDbClient::take(const DiscEntry &entry, const QString &category)
{
    m_artist = entry.artist;
    m_album = entry.album;
    m_category = category;
    m_genre = entry.genre;
    m_year = entry.year;
    m_comments = entry.comments;
    m_discLength = entry.discSeconds;
    m_trackCount = static_cast<qint16>(entry.titles.size());
    // Whoever splits the titles finds each of them before a separator.
    m_titles = entry.titles.isEmpty() ? QString() : entry.titles.join(ListSeparator) + ListSeparator;
}

} // namespace engines
