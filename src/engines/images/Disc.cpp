#include "engines/images/Disc.h"

#include <cstdlib>

namespace images {

namespace {

/// Whole seconds from the start of the disc, its lead-in included, as the id counts them.
qint32 secondsAt(qint32 sector)
{
    return (sector + LeadInSectors) / SectorsPerSecond;
}

quint32 digitSum(qint32 number)
{
    quint32 sum = 0;
    for (; number > 0; number /= 10)
        sum += static_cast<quint32>(number % 10);
    return sum;
}

} // namespace

const DiscTrack *DiscToc::track(int number) const
{
    const auto index = static_cast<std::size_t>(number - 1);
    return number >= 1 && index < tracks.size() ? &tracks[index] : nullptr;
}

qint32 sectorsBehindSession(int session)
{
    constexpr qint32 FirstLeadOut = 6750;
    constexpr qint32 LaterLeadOut = 2250;
    constexpr qint32 NextLeadIn = 4500;
    return (session == 1 ? FirstLeadOut : LaterLeadOut) + NextLeadIn + LeadInSectors;
}

void setLengths(DiscToc &toc)
{
    for (std::size_t i = 0; i < toc.tracks.size(); ++i) {
        DiscTrack &track = toc.tracks[i];
        const bool last = i + 1 == toc.tracks.size();
        track.length = (last ? toc.leadOut : toc.tracks[i + 1].start) - track.start;
        if (last || toc.tracks[i + 1].session == track.session)
            continue;
        const qint32 gap = sectorsBehindSession(track.session);
        if (track.length > gap)
            track.length -= gap;
    }
}

QString freeDbId(const DiscToc &toc)
{
    if (toc.tracks.empty())
        return QStringLiteral("00000000");
    quint32 sum = 0;
    for (const DiscTrack &track : toc.tracks)
        sum += digitSum(secondsAt(track.start));
    const auto seconds = static_cast<quint32>(secondsAt(toc.leadOut) - secondsAt(toc.tracks.front().start));
    const quint32 id = sum % 255 << 24 | (seconds & 0xffff) << 8 | static_cast<quint32>(toc.tracks.size());
    return QStringLiteral("%1").arg(id, 8, 16, QChar(u'0'));
}

QString timeOf(qint32 sectors)
{
    const qint64 seconds = std::abs(qint64(sectors)) / SectorsPerSecond;
    const QString time = QStringLiteral("%1:%2:%3")
                             .arg(seconds / 3600, 2, 10, QChar(u'0'))
                             .arg(seconds / 60 % 60, 2, 10, QChar(u'0'))
                             .arg(seconds % 60, 2, 10, QChar(u'0'));
    return sectors < 0 && seconds > 0 ? u'-' + time : time;
}

} // namespace images
