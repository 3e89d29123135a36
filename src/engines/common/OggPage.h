#pragma once

#include <QByteArray>
#include <QIODevice>
#include <QList>
#include <optional>

namespace engines {

/// A page of an Ogg file, byte for byte as it was read. A wrong checksum is no reason to refuse it.
class OggPage
{
public:
    /// The page at the current place; nothing where there is none, or not a whole one.
    static std::optional<OggPage> read(QIODevice &file);

    /// Whether it begins within a packet.
    bool isContinued() const;
    bool beginsStream() const;
    bool endsStream() const;
    /// The place in its stream behind the last packet that ends on the page; -1: none does.
    qint64 granule() const;
    quint32 serial() const; ///< of the stream
    quint32 sequence() const;
    /// Sizes of the body's segments; one of less than 255 bytes ends a packet.
    QByteArray lacing() const;
    const QByteArray &body() const { return m_body; }
    QByteArray bytes() const { return m_head + m_body; }
    qint64 size() const { return m_head.size() + m_body.size(); }

    /// Whether the checksum is right.
    bool isUndamaged() const;

    /// Gives the page another number, and a new checksum. A page whose checksum was wrong gets one that is
    /// wrong too: damage isn't hidden.
    void setSequence(quint32 sequence);

private:
    quint32 storedChecksum() const;
    quint32 checksumOfBytes() const;

    QByteArray m_head; ///< the lacing included
    QByteArray m_body;
};

/// Pages behind a stream's first that hold the packets, each beginning where the one before it ends; the last
/// one ends its page.
QList<QByteArray> oggPages(const QList<QByteArray> &packets, quint32 serial, quint32 firstSequence);

} // namespace engines
