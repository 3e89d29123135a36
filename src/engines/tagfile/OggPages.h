#pragma once

#include <QByteArray>
#include <QIODevice>
#include <QList>
#include <optional>

namespace engines {

/// A page of an Ogg file.
struct OggPage
{
    quint8 flags = 0;
    quint64 granule = 0;
    quint32 serial = 0; ///< of the stream
    quint32 sequence = 0;
    quint32 checksum = 0; ///< as read
    QByteArray lacing;    ///< sizes of the body's segments
    QByteArray body;

    static constexpr quint8 Continued = 1, Begins = 2;
    static constexpr quint64 NoGranule = ~quint64(0); ///< no packet ends on the page

    bool beginsStream() const { return flags & Begins; }
    qint64 size() const { return 27 + lacing.size() + body.size(); }

    /// The page at the current place; nothing where there is none, or not a whole one.
    static std::optional<OggPage> read(QIODevice &file);
    /// The page with a checksum made anew. A page whose checksum was wrong gets one that is wrong too: damage
    /// isn't hidden.
    QByteArray render() const;

private:
    quint32 m_damage = 0; ///< stored checksum against the true one
};

/// Pages that hold the packets, each beginning where the one before it ends; the last one ends its page.
QList<OggPage> oggPages(const QList<QByteArray> &packets, quint32 serial, quint32 firstSequence);

} // namespace engines
