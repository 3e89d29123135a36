#include "engines/tagfile/Id3v2Tag.h"

#include "base/RunTimeFailure.h"
#include "engines/tagfile/Id3v2Versions.h"

#include <QSet>
#include <QtEndian>
#include <algorithm>

namespace engines {

namespace {

constexpr qsizetype HeaderSize = 10;
constexpr qsizetype PaddingStep = 4096; ///< what follows keeps its place in a block, so that it can be cloned
constexpr qsizetype LeastPadding = 1024;
constexpr qint64 LargestTag = 1 << 28;

/// Of the flags in a tag's header
constexpr int Unsynchronised = 0x80, Extended = 0x40, Footer = 0x10;

/// Bytes of the extended header at the start of a tag's body; none where it can't be one.
std::optional<qsizetype> extendedHeaderSize(const QByteArray &body, int version)
{
    if (body.size() < 6)
        return {};
    const std::optional<quint32> size =
        version == 4 ? synchsafeNumber(body.constData()) : 4 + qFromBigEndian<quint32>(body.constData());
    return size && *size >= 6 && *size <= body.size() ? std::optional<qsizetype>(*size) : std::nullopt;
}

/// What two frames have in common that can't both stand in one tag: a text of a kind that comes once, or all.
QByteArray identity(const Id3v2Frame &frame)
{
    static const QList<QByteArray> others{"MCDI", "ETCO", "MLLT", "SYTC", "RVRB", "PCNT", "RBUF",
                                          "OWNE", "POSS", "SEEK", "ASPI", "RVAD", "EQUA", "IPLS",
                                          "WCOP", "WOAF", "WOAS", "WORS", "WPAY", "WPUB"};
    const bool comesOnce = (frame.id.startsWith('T') && frame.id != "TXXX") || others.contains(frame.id);
    return comesOnce ? frame.id : frame.id + frame.data;
}

} // namespace

qint64 Id3v2Tag::sizeOf(const QByteArray &header)
{
    if (header.size() < HeaderSize || !header.startsWith("ID3") || header[3] == '\xff' || header[4] == '\xff')
        return 0;
    const std::optional<quint32> size = synchsafeNumber(header.constData() + 6);
    if (!size)
        return 0;
    const bool hasFooter = header[3] == 4 && (header[5] & Footer);
    return HeaderSize + *size + (hasFooter ? HeaderSize : 0);
}

Id3v2Tag::Id3v2Tag(const QByteArray &bytes)
{
    QList<Part> parts;
    while (const qint64 size = sizeOf(bytes.mid(m_size, HeaderSize))) {
        m_damaged = size > bytes.size() - m_size || parts.size() >= MostTags;
        if (m_damaged)
            break;
        parts.append(readPart(bytes.mid(m_size, size)));
        m_size += size;
        if (m_damaged)
            break;
    }
    join(parts);
}

Id3v2Tag::Part Id3v2Tag::readPart(const QByteArray &bytes)
{
    const int version = bytes[3];
    const int flags = bytes[5];
    // A version to come, or the compression that version 2.2 never defined
    m_damaged = version < 2 || version > 4 || (version == 2 && (flags & Extended));
    if (m_damaged)
        return {};
    const bool hasFooter = version == 4 && (flags & Footer);
    QByteArray body = bytes.mid(HeaderSize, bytes.size() - HeaderSize - (hasFooter ? HeaderSize : 0));
    if (version < 4 && (flags & Unsynchronised))
        body = withoutUnsynchronisation(body);
    if (version > 2 && (flags & Extended)) {
        const std::optional<qsizetype> extended = extendedHeaderSize(body, version);
        m_damaged = !extended;
        if (m_damaged)
            return {};
        body.remove(0, *extended);
    }
    const Id3v2Frames read = Id3v2Frames::parse(body, version);
    m_damaged = read.damaged;
    return {version == 4 ? 4 : 3, version == 4 && (flags & Unsynchronised), read.frames};
}

void Id3v2Tag::join(QList<Part> &parts)
{
    const auto differ = [&](auto of) {
        return std::any_of(parts.begin(), parts.end(),
                           [&](const Part &part) { return of(part) != of(parts.first()); });
    };
    const bool mixed = differ([](const Part &part) { return part.version; });
    const bool partlyUnsynchronised = differ([](const Part &part) { return part.unsynchronised; });
    QSet<QByteArray> known;
    for (Part &part : parts) {
        if (mixed && part.version == 3)
            part.frames = toVersion24(part.frames);
        for (Id3v2Frame &frame : part.frames) {
            if (partlyUnsynchronised && part.unsynchronised)
                frame.flags |= Id3v2Flags24::Unsynchronised;
            // The first of two tags counts, as for most players; within one tag all stay.
            if (&part == &parts.first() || !known.contains(identity(frame)))
                frames.append(frame);
        }
        if (parts.size() > 1) {
            for (const Id3v2Frame &frame : part.frames)
                known.insert(identity(frame));
        }
    }
    if (!parts.isEmpty()) {
        m_version = mixed ? 4 : parts.first().version;
        m_unsynchronised = !partlyUnsynchronised && parts.first().unsynchronised;
    }
}

std::optional<QByteArray> Id3v2Tag::content(const Id3v2Frame &frame) const
{
    if (m_version == 3) {
        if (frame.flags & (Id3v2Flags23::Compressed | Id3v2Flags23::Encrypted))
            return {};
        return frame.data.mid(frame.flags & Id3v2Flags23::Grouped ? 1 : 0);
    }
    if (frame.flags & (Id3v2Flags24::Compressed | Id3v2Flags24::Encrypted))
        return {};
    const qsizetype head =
        (frame.flags & Id3v2Flags24::Grouped ? 1 : 0) + (frame.flags & Id3v2Flags24::HasLength ? 4 : 0);
    const bool unsynchronised = m_unsynchronised || (frame.flags & Id3v2Flags24::Unsynchronised);
    return (unsynchronised ? withoutUnsynchronisation(frame.data) : frame.data).mid(head);
}

QByteArray Id3v2Tag::render() const
{
    const QByteArray body = bytesOfFrames(frames, m_version);
    if (body.isEmpty())
        return {};
    const qint64 used = HeaderSize + body.size();
    const qint64 lacking = used + LeastPadding - m_size;
    const qint64 size =
        used <= m_size ? m_size : m_size + (lacking + PaddingStep - 1) / PaddingStep * PaddingStep;
    if (size >= LargestTag)
        throw RunTimeFailure(RunTimeFailure::Overflow);
    QByteArray tag("ID3");
    tag.append(static_cast<char>(m_version));
    tag.append('\0');
    tag.append(static_cast<char>(m_unsynchronised ? Unsynchronised : 0));
    appendSynchsafe(tag, static_cast<quint32>(size - HeaderSize));
    tag.append(body);
    tag.append(size - used, '\0');
    return tag;
}

} // namespace engines
