#include "engines/freedb/Service.h"

#include "base/Deployment.h"
#include "base/Text.h"

#include <QRegularExpression>
#include <QSet>
#include <QUrl>
#include <algorithm>

namespace engines::freedb {

namespace {

/// A text as part of a query: blanks are "+", all else but letters and digits is percent-encoded.
QByteArray encoded(const QString &text)
{
    return QUrl::toPercentEncoding(text).replace("%20", "+");
}

/// A text as a header's value: nothing of it can begin another header.
QByteArray headerValue(const QString &text)
{
    QString line = text;
    line.removeIf([](QChar c) { return c.category() == QChar::Other_Control; });
    return trimBlanks(line).toUtf8();
}

/// The domain of a host: without its port and, where there are several, without the first of its names. An
/// address in numbers stays whole.
QString domainOf(const QString &host)
{
    QStringList names = host.section(u':', 0, 0).toLower().split(u'.');
    if (names.size() > 2 && names.constLast().toInt() == 0)
        names.removeFirst();
    return names.join(u'.');
}

bool saysSomething(const QString &title)
{
    // No two parts of the pattern can share a text, so that it costs no more than the text's length.
    static const QRegularExpression emptyTitle(QStringLiteral(R"(\A((audio )?track[\s_-]*+\d*+)?\z)"),
                                               QRegularExpression::CaseInsensitiveOption);
    return !emptyTitle.match(title.trimmed()).hasMatch();
}

} // namespace

std::optional<Reply> parseReply(const QByteArray &body)
{
    static const QRegularExpression form(QStringLiteral(R"(\A\s*(\d{3})(\s|\z))"));
    const QRegularExpressionMatch match = form.match(QString::fromLatin1(body.left(100)));
    if (!match.hasMatch())
        return {};
    Reply reply{.code = match.captured(1).toInt(), .text = body, .data = {}};
    if (reply.code != Reply::EntryFollows)
        return reply;
    for (qsizetype start = body.indexOf('\n') + 1; start > 0;) {
        const qsizetype end = body.indexOf('\n', start);
        const QByteArray line = body.mid(start, end < 0 ? -1 : end - start);
        if (line == "." || line == ".\r")
            return reply;
        reply.data += line + '\n';
        start = end + 1;
    }
    return {}; // it ends before its end
}

QByteArray readTarget(const QString &category, const QString &discId)
{
    const QStringList hello{Deployment::FreeDbHelloUser, Deployment::FreeDbHelloHost,
                            Deployment::FreeDbClient, Deployment::FreeDbVersion};
    return "/~cddb/cddb.cgi?cmd=cddb+read+" + encoded(category) + '+' + encoded(discId) +
           "&hello=" + encoded(hello.join(u' ')) + "&proto=6";
}

QByteArray submitTarget()
{
    return "/~cddb/submit.cgi";
}

QByteArrayList submitHeaders(const QString &category, const QString &discId, const QString &email)
{
    return {"Category: " + headerValue(category),
            "Discid: " + headerValue(discId),
            "User-Email: " + headerValue(email),
            "Submit-Mode: " + headerValue(Deployment::FreeDbSubmitMode),
            "Charset: UTF-8",
            "Content-Type: text/plain; charset=UTF-8",
            "X-Cddbd-Note: Sent by " + headerValue(clientName())};
}

QString clientName()
{
    return Deployment::FreeDbClient + u' ' + Deployment::FreeDbVersion;
}

bool isNotice(const DiscEntry &entry, const QString &host)
{
    QSet<QString> different;
    for (const QString &title : entry.titles)
        different.insert(title.simplified().toCaseFolded());
    if (entry.titles.size() > 1 && different.size() == 1 && !different.contains(QString()))
        return true;

    const QStringList titles = entry.titles + QStringList{entry.artist, entry.album};
    const QStringList hosts = Deployment::FreeDbHosts + QStringList{host};
    return std::any_of(hosts.begin(), hosts.end(), [&titles](const QString &known) {
        const QString domain = domainOf(known);
        return domain.contains(u'.') && !titles.filter(domain, Qt::CaseInsensitive).isEmpty();
    });
}

Worth worthOf(const DiscEntry &entry, const QString &discId)
{
    bool isNumber = false;
    const auto tracks = static_cast<qsizetype>(discId.toUInt(&isNumber, 16) & 0xff);
    const qsizetype titles = std::count_if(entry.titles.begin(), entry.titles.end(), saysSomething);
    const QStringList others{entry.artist, entry.album, entry.year, entry.genre, entry.comments};
    const qsizetype filled = others.size() - others.count(QString());
    return {isNumber && entry.titles.size() == tracks, titles, filled};
}

} // namespace engines::freedb
