#include "engines/tagfile/VorbisComments.h"

#include <QStringList>
#include <QtEndian>
#include <algorithm>

namespace engines {

namespace {

const QByteArray PacketStart("\x03vorbis");
constexpr quint32 MostFields = 10000; ///< an honest file has some tens

/// Takes lengths and bytes from a packet, bounded by what it has.
class Cursor
{
public:
    Cursor(const QByteArray &bytes, qsizetype place) : m_bytes(bytes), m_place(place) {}

    std::optional<quint32> number()
    {
        if (m_bytes.size() - m_place < 4)
            return {};
        m_place += 4;
        return qFromLittleEndian<quint32>(m_bytes.constData() + m_place - 4);
    }

    std::optional<QByteArray> lengthAndBytes()
    {
        const std::optional<quint32> length = number();
        if (!length || *length > m_bytes.size() - m_place)
            return {};
        m_place += *length;
        return m_bytes.mid(m_place - *length, *length);
    }

    QByteArray rest() const { return m_bytes.mid(m_place); }

private:
    const QByteArray &m_bytes;
    qsizetype m_place;
};

void appendNumber(QByteArray &bytes, qsizetype number)
{
    char buffer[4];
    qToLittleEndian(static_cast<quint32>(number), buffer);
    bytes.append(buffer, sizeof buffer);
}

bool hasKey(const QByteArray &field, const QByteArray &key)
{
    return field.size() > key.size() && field[key.size()] == '=' &&
           field.left(key.size()).compare(key, Qt::CaseInsensitive) == 0;
}

} // namespace

std::optional<VorbisComments> VorbisComments::parse(const QByteArray &packet)
{
    if (!packet.startsWith(PacketStart))
        return {};
    Cursor cursor(packet, PacketStart.size());
    const std::optional<QByteArray> vendor = cursor.lengthAndBytes();
    const std::optional<quint32> count = vendor ? cursor.number() : std::nullopt;
    if (!count || *count > MostFields)
        return {};
    VorbisComments comments;
    comments.m_vendor = *vendor;
    for (quint32 i = 0; i < *count; ++i) {
        const std::optional<QByteArray> field = cursor.lengthAndBytes();
        if (!field)
            return {};
        comments.m_fields.append(*field);
    }
    comments.m_rest = cursor.rest();
    if (comments.m_rest.isEmpty() || !(comments.m_rest[0] & 1))
        return {};
    return comments;
}

QByteArray VorbisComments::render() const
{
    QByteArray packet = PacketStart;
    appendNumber(packet, m_vendor.size());
    packet.append(m_vendor);
    appendNumber(packet, m_fields.size());
    for (const QByteArray &field : m_fields) {
        appendNumber(packet, field.size());
        packet.append(field);
    }
    return packet + m_rest;
}

QStringList VorbisComments::values(const QByteArray &key) const
{
    QStringList values;
    for (const QByteArray &field : m_fields) {
        if (hasKey(field, key))
            values.append(QString::fromUtf8(field.mid(key.size() + 1)));
    }
    return values;
}

void VorbisComments::replace(const QList<QByteArray> &keys, const QString &text)
{
    QByteArray key = keys.first();
    qsizetype place = -1;
    for (qsizetype i = 0; i < m_fields.size();) {
        const auto found = std::find_if(keys.begin(), keys.end(),
                                        [&](const QByteArray &k) { return hasKey(m_fields[i], k); });
        if (found == keys.end()) {
            ++i;
            continue;
        }
        if (place < 0) {
            place = i;
            key = m_fields[i].left(found->size());
        }
        m_fields.removeAt(i);
    }
    if (!text.isEmpty())
        m_fields.insert(place < 0 ? m_fields.size() : place, key + '=' + text.toUtf8());
}

} // namespace engines
