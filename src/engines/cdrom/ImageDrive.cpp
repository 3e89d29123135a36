#include "engines/cdrom/ImageDrive.h"

#include "base/RunTimeFailure.h"
#include "engines/cdrom/CdioAccess.h"
#include "engines/cdrom/DirectReader.h"
#include "engines/cdrom/ParanoiaReader.h"
#include "engines/images/CueImage.h"
#include "engines/images/TocFile.h"

#include <QDateTime>
#include <QDir>
#include <QFileInfo>
#include <QTemporaryFile>

namespace cdrom {

namespace {

bool isSheet(const QString &path)
{
    return path.endsWith(QStringLiteral(".cue"), Qt::CaseInsensitive);
}

bool isToc(const QString &path)
{
    return path.endsWith(QStringLiteral(".toc"), Qt::CaseInsensitive);
}

/// The files that an image names.
QStringList partsOf(const QString &path)
{
    if (isSheet(path))
        return CueImage::filesOf(CueImage::sheetIn(path), path);
    return isToc(path) ? TocFile::read(path).files : QStringList();
}

std::unique_ptr<SectorSource> openToc(const QString &path)
{
    QTemporaryFile copy(QDir::temp().filePath(QStringLiteral("tonelift-XXXXXX.toc")));
    const QByteArray text = TocFile::read(path).text;
    if (!copy.open() || copy.write(text) != text.size() || !copy.flush())
        throw RunTimeFailure(RunTimeFailure::DeviceIoError, copy.errorString());
    // Sound in such an image has its higher byte first. The copy isn't needed once it is read.
    return std::make_unique<CdioSource>(copy.fileName(), DRIVER_CDRDAO, SampleOrder::BigEndian);
}

/// A number for the file as it is now; 0 where there is none.
quint64 stampOf(const QString &path)
{
    const QFileInfo info(path);
    if (!info.isFile())
        return 0;
    return qHashMulti(1, info.size(), info.lastModified().toMSecsSinceEpoch(),
                      info.metadataChangeTime().toMSecsSinceEpoch()) |
           1;
}

/// Makes a source's reads fail where the options ask for it.
class FailingSource : public SectorSource
{
public:
    FailingSource(std::unique_ptr<SectorSource> source, std::function<bool(qint32, qint32)> fails)
        : m_source(std::move(source)), m_fails(std::move(fails))
    {}

    const DiscToc &toc() const override { return m_source->toc(); }
    bool read(qint32 first, qint32 count, qint16 *samples) override
    {
        return !m_fails(first, count) && m_source->read(first, count, samples);
    }

private:
    std::unique_ptr<SectorSource> m_source;
    std::function<bool(qint32, qint32)> m_fails;
};

} // namespace

ImageDrive::ImageDrive(const QString &path, ImageOptions options)
    : m_path(path), m_options(std::move(options)), m_title(QFileInfo(path).completeBaseName())
{
    if (!isSheet(path))
        return;
    try {
        const CueSheet sheet = CueImage::sheetIn(path);
        if (!sheet.title.isEmpty())
            m_title = sheet.title;
    } catch (const RunTimeFailure &) {
        // Such a drive has no readable disc, and its file's name for a title.
    }
}

DriveTexts ImageDrive::texts() const
{
    return {QFileInfo(m_path).fileName(), QStringLiteral("Disc image"), m_title};
}

MediumState ImageDrive::medium()
{
    const quint64 sheet = m_trayOpen ? 0 : stampOf(m_path);
    if (sheet == 0)
        return {};
    if (sheet != m_sheetStamp) {
        m_sheetStamp = sheet;
        m_parts.clear();
        try {
            m_parts = partsOf(m_path);
        } catch (const RunTimeFailure &) {
            // Unreadable until the sheet changes.
        }
    }
    quint64 stamp = sheet;
    for (const QString &part : std::as_const(m_parts))
        stamp = qHashMulti(stamp, stampOf(part));
    return {Medium::Present, stamp};
}

DiscToc ImageDrive::readToc()
{
    return openSource()->toc();
}

std::unique_ptr<SectorSource> ImageDrive::openSource() const
{
    if (isSheet(m_path))
        return std::make_unique<CueImage>(m_path);
    if (isToc(m_path))
        return openToc(m_path);
    return std::make_unique<CdioSource>(m_path, DRIVER_NRG);
}

std::unique_ptr<AudioReader> ImageDrive::openReader(ReadFor purpose, const ReadHooks &hooks)
{
    std::unique_ptr<SectorSource> source = openSource();
    if (m_options.likeMachine && purpose == ReadFor::Extraction)
        return std::make_unique<ParanoiaReader>(
            openCdio(m_path, DRIVER_BINCUE), source->toc(), hooks,
            ParanoiaOptions{.jitter = m_options.jitter, .fails = m_options.fails});
    if (m_options.fails)
        source = std::make_unique<FailingSource>(std::move(source), m_options.fails);
    return std::make_unique<DirectReader>(std::move(source), hooks,
                                          purpose == ReadFor::Extraction ? m_speed : nullptr);
}

std::vector<std::shared_ptr<Drive>> imageDrives(const QString &folder, const ImageOptions &options)
{
    const QStringList patterns = {QStringLiteral("*.cue"), QStringLiteral("*.toc"), QStringLiteral("*.nrg")};
    const QStringList names =
        QDir(folder).entryList(patterns, QDir::Files, QDir::Name | QDir::IgnoreCase | QDir::LocaleAware);
    std::vector<std::shared_ptr<Drive>> drives;
    for (const QString &name : names)
        drives.push_back(std::make_shared<ImageDrive>(QDir(folder).filePath(name), options));
    return drives;
}

} // namespace cdrom
