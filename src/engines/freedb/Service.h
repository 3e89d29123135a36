#pragma once

#include "engines/freedb/DiscEntry.h"
#include "engines/net/HttpExchange.h"

#include <tuple>

/// The words of the FreeDB service: requests, answers, and what its entries are worth.
namespace engines::freedb {

/// The answer to a command: a code of three digits with a text, then lines up to a lone point.
struct Reply
{
    enum Code {
        Accepted = 200,
        EntryFollows = 210,
        NoSuchEntry = 401,
        NoHandshake = 409,
        Refused = 500,
        RefusedHeader = 501,
    };

    int code = 0;
    QByteArray text; ///< the whole answer, the first line included
    QByteArray data; ///< the lines up to the point; only with `EntryFollows`

    /// Whether the service wants nothing more of this client.
    bool endsExchange() const { return code == NoHandshake || code >= 500; }
};

/// Nothing where this isn't an answer of the service, or only part of one.
std::optional<Reply> parseReply(const QByteArray &body);

/// Path and query of the request for a disc's entry in one category.
QByteArray readTarget(const QString &category, const QString &discId);
QByteArray submitTarget();
/// `email` is the sender's address.
QByteArrayList submitHeaders(const QString &category, const QString &discId, const QString &email);
/// Name and version of this client.
QString clientName();

/// Whether the "entry" is a notice of the service to the user: its titles are all alike, or one of them names
/// the pages of the service, be it those of `host` or of any host known.
bool isNotice(const DiscEntry &entry, const QString &host);

/// How much an entry is worth among several of one disc; the greater, the better. First comes that it has as
/// many tracks as the disc's id says, then the number of titles that say something, then that of the other
/// fields filled in.
using Worth = std::tuple<bool, qsizetype, qsizetype>;
Worth worthOf(const DiscEntry &entry, const QString &discId);

} // namespace engines::freedb
