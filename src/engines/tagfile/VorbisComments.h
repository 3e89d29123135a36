#pragma once

#include <QByteArray>
#include <QList>
#include <QString>
#include <optional>

namespace engines {

/// The comment packet of an Ogg Vorbis stream. Fields stay in their order and byte by byte, those too that
/// aren't text.
class VorbisComments
{
public:
    /// Nothing for a packet that is none, or that is damaged.
    static std::optional<VorbisComments> parse(const QByteArray &packet);
    QByteArray render() const;

    /// The texts of all fields with the key, in any letter case.
    QStringList values(const QByteArray &key) const;
    /// Puts one field in the place of all that have one of the keys: under the first of the keys, or under
    /// the one that was there; an empty text removes them.
    void replace(const QList<QByteArray> &keys, const QString &text);

private:
    QByteArray m_vendor;
    QList<QByteArray> m_fields; ///< "KEY=text"
    QByteArray m_rest;          ///< the mark at the end, and what stands behind it
};

} // namespace engines
