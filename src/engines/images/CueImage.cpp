#include "engines/images/CueImage.h"

#include "base/RunTimeFailure.h"
#include "engines/images/WaveHeader.h"

#include <QDir>
#include <QFileInfo>
#include <QtEndian>
#include <algorithm>
#include <cstring>

namespace images {

namespace {

constexpr qint64 LargestSheet = 1 << 20;

[[noreturn]] void fail(const QString &what)
{
    throw RunTimeFailure(RunTimeFailure::DeviceIoError, what);
}

/// Sheets made elsewhere may hold a whole path, or the name in other letter cases.
QString fileBeside(const QString &cue, const QString &name)
{
    const QDir folder = QFileInfo(cue).dir();
    const QString plain = folder.filePath(name);
    if (QFileInfo::exists(plain))
        return plain;
    const QString last = name.mid(std::max(name.lastIndexOf(u'/'), name.lastIndexOf(u'\\')) + 1);
    const QStringList entries = folder.entryList(QDir::Files);
    for (const QString &entry : entries)
        if (entry.compare(last, Qt::CaseInsensitive) == 0)
            return folder.filePath(entry);
    return plain;
}

CueImageFile openFile(const QString &path, CueFile::Kind kind)
{
    CueImageFile opened{std::make_unique<QFile>(path), kind, 0, 0};
    if (!opened.file->open(QIODevice::ReadOnly))
        fail(QStringLiteral("%1: %2").arg(path, opened.file->errorString()));
    opened.size = opened.file->size();
    if (kind == CueFile::Kind::Wave) {
        const WaveData data = discAudioOf(*opened.file);
        opened.start = data.start;
        opened.size = data.size;
    }
    return opened;
}

/// One index of the sheet with its track.
struct Point
{
    std::size_t track = 0;
    CueIndex index;
};

std::vector<Point> pointsOf(const CueSheet &sheet)
{
    std::vector<Point> points;
    for (std::size_t i = 0; i < sheet.tracks.size(); ++i)
        for (const CueIndex &index : sheet.tracks[i].indices)
            points.push_back({i, index});
    return points;
}

/// Lays the files' sectors along the disc, index by index.
class Layout
{
public:
    Layout(const CueSheet &sheet, const std::vector<CueImageFile> &files)
        : m_sheet(sheet), m_files(files), m_points(pointsOf(sheet))
    {
        for (std::size_t i = 0; i < m_points.size(); ++i)
            place(i);
        toc.leadOut = m_sector + sheet.tracks.back().postgap;
        setLengths(toc);
        for (const DiscTrack &track : toc.tracks)
            if (track.length <= 0)
                fail(QStringLiteral("A track of the disc image has no sectors."));
    }

    DiscToc toc;
    std::vector<CueExtent> extents;

private:
    void place(std::size_t i)
    {
        const Point &point = m_points[i];
        const CueTrack &track = m_sheet.tracks[point.track];
        const bool newFile = i == 0 || m_points[i - 1].index.file != point.index.file;
        const bool newTrack = i == 0 || m_points[i - 1].track != point.track;
        if (newFile) {
            m_offset = 0;
            m_fileSector = 0;
        }
        if (newTrack && i > 0)
            leave(m_sheet.tracks[point.track - 1], track, i);
        // What a file holds before its first index is a gap before that index.
        if (newFile)
            extend(point, point.index.sector - m_fileSector, track.sectorSize);
        if (point.index.number == 1) {
            if (newTrack || m_points[i - 1].index.number == 0)
                m_sector += m_enteredSession ? 0 : track.pregap;
            m_enteredSession = false;
            toc.tracks.push_back({m_sector, 0, track.session, track.audio, track.mayBeCopied});
        }
        const bool lastOfFile = i + 1 == m_points.size() || m_points[i + 1].index.file != point.index.file;
        extend(point,
               lastOfFile ? sectorsLeft(point.index.file, track)
                          : m_points[i + 1].index.sector - m_fileSector,
               track.sectorSize);
    }

    /// Between two tracks: silence, or lead-out and lead-in of a session. The gap before the first INDEX 01
    /// of a session is a part of its lead-in.
    void leave(const CueTrack &left, const CueTrack &entered, std::size_t point)
    {
        m_sector += left.postgap;
        if (entered.session == left.session)
            return;
        if (entered.session < left.session)
            fail(QStringLiteral("The sessions of the disc image are out of order."));
        const Point &first = m_points[point];
        const auto &indices = entered.indices;
        const auto start = std::find_if(indices.begin(), indices.end(),
                                        [](const CueIndex &index) { return index.number == 1; });
        const qint32 inFile = start->file == first.index.file ? start->sector - m_fileSector : 0;
        m_sector += sectorsBehindSession(left.session) - std::clamp(inFile, 0, LeadInSectors);
        m_enteredSession = true;
    }

    void extend(const Point &point, qint32 count, int sectorSize)
    {
        const qint64 bytes = qint64(count) * sectorSize;
        const CueImageFile &file = m_files[point.index.file];
        if (count < 0 || m_offset + bytes > file.size + sectorSize - 1)
            fail(QStringLiteral("%1 ends before its tracks do.").arg(file.file->fileName()));
        if (count > 0)
            extents.push_back({m_sector, count, point.index.file, file.start + m_offset, sectorSize});
        m_offset += bytes;
        m_sector += count;
        m_fileSector += count;
    }

    /// To the end of the file; its last sector of sound may be short.
    qint32 sectorsLeft(std::size_t file, const CueTrack &track) const
    {
        constexpr qint64 Longest = 100 * 60 * SectorsPerSecond;
        const qint64 odd = track.audio ? track.sectorSize - 1 : 0;
        const qint64 left = (m_files[file].size - m_offset + odd) / track.sectorSize;
        if (left > Longest)
            fail(QStringLiteral("%1 is longer than any disc.").arg(m_files[file].file->fileName()));
        return static_cast<qint32>(left);
    }

    const CueSheet &m_sheet;
    const std::vector<CueImageFile> &m_files;
    const std::vector<Point> m_points;
    qint32 m_sector = 0;     ///< of the disc
    qint32 m_fileSector = 0; ///< of the present file
    qint64 m_offset = 0;     ///< of the present file
    bool m_enteredSession = false;
};

} // namespace

CueImage::CueImage(const QString &cue)
{
    const CueSheet sheet = sheetIn(cue);
    const QStringList paths = filesOf(sheet, cue);
    for (std::size_t i = 0; i < sheet.files.size(); ++i)
        m_files.push_back(openFile(paths[static_cast<qsizetype>(i)], sheet.files[i].kind));
    Layout layout(sheet, m_files);
    m_extents = std::move(layout.extents);
    m_toc = std::move(layout.toc);
}

CueSheet CueImage::sheetIn(const QString &cue)
{
    QFile file(cue);
    if (!file.open(QIODevice::ReadOnly))
        fail(QStringLiteral("%1: %2").arg(cue, file.errorString()));
    if (file.size() > LargestSheet)
        fail(QStringLiteral("%1 is too long for a CUE sheet.").arg(cue));
    return CueSheet::parse(file.read(LargestSheet));
}

QStringList CueImage::filesOf(const CueSheet &sheet, const QString &cue)
{
    QStringList paths;
    for (const CueFile &file : sheet.files)
        paths.append(fileBeside(cue, file.name));
    return paths;
}

bool CueImage::read(qint32 first, qint32 count, qint16 *samples)
{
    std::fill_n(samples, qsizetype(count) * SamplesPerSector, qint16(0));
    const auto behind = [](qint32 sector, const CueExtent &extent) {
        return sector < extent.first + extent.count;
    };
    for (auto extent = std::upper_bound(m_extents.begin(), m_extents.end(), first, behind);
         extent != m_extents.end() && extent->first < first + count; ++extent) {
        const qint32 from = std::max(first, extent->first);
        const qint32 to = std::min(first + count, extent->first + extent->count);
        if (!readExtent(*extent, from, to - from, samples + qsizetype(from - first) * SamplesPerSector))
            return false;
    }
    return true;
}

bool CueImage::readExtent(const CueExtent &extent, qint32 first, qint32 count, qint16 *samples)
{
    const CueImageFile &image = m_files[extent.file];
    const qint64 offset = extent.offset + qint64(first - extent.first) * extent.sectorSize;
    if (extent.sectorSize < BytesPerSector || !image.file->seek(offset))
        return false;
    const qint64 wanted = qint64(count) * extent.sectorSize;
    const qint64 present = std::min(wanted, image.start + image.size - offset);
    QByteArray bytes = image.file->read(present);
    if (bytes.size() != present)
        return false;
    bytes.append(wanted - present, '\0');
    for (qint32 i = 0; i < count; ++i) {
        const char *from = bytes.constData() + qint64(i) * extent.sectorSize;
        qint16 *to = samples + qsizetype(i) * SamplesPerSector;
        if (image.kind == CueFile::Kind::BigEndian)
            qFromBigEndian<qint16>(from, SamplesPerSector, to);
        else
            qFromLittleEndian<qint16>(from, SamplesPerSector, to);
    }
    return true;
}

} // namespace images
