#pragma once

#include "engines/cdrom/Drive.h"
#include "engines/images/SectorSource.h"

#include <QStringList>
#include <atomic>
#include <vector>

namespace cdrom {

/// How images are read where a test wants more than that.
struct ImageOptions
{
    /// Extraction goes the whole way of a machine's drive, with its checks. Only for a sheet with one BINARY
    /// file of its own name.
    bool likeMachine = false;
    /// Displacement of reads, as the flags of libcdio-paranoia number it. Only with `likeMachine`.
    int jitter = 0;
    /// True makes a read of those sectors fail. Called on the reading thread.
    std::function<bool(qint32 first, qint32 count)> fails = {};
};

/// A disc image that stands for a drive with its disc.
class ImageDrive : public Drive
{
public:
    explicit ImageDrive(const QString &path, ImageOptions options = {});

    DriveTexts texts() const override;
    qint16 maxSpeed() const override { return 48; }
    void setSpeed(qint16 factor) override { *m_speed = factor; }
    /// The stamp changes with the image's files.
    MediumState medium() override;
    DiscToc readToc() override;
    void moveTray(bool open) override { m_trayOpen = open; }
    std::unique_ptr<AudioReader> openReader(ReadFor purpose, const ReadHooks &hooks) override;

private:
    std::unique_ptr<SectorSource> openSource() const;

    QString m_path;
    ImageOptions m_options;
    QString m_title;
    std::shared_ptr<std::atomic<qint16>> m_speed = std::make_shared<std::atomic<qint16>>(qint16(0));
    bool m_trayOpen = false;  ///< the watcher's alone, as what follows
    quint64 m_sheetStamp = 0; ///< of the sheet in which `m_parts` are named
    QStringList m_parts;      ///< the files that the image consists of beside its own
};

/// A drive for each disc image in the folder, which may not exist, in the order of their names.
std::vector<std::shared_ptr<Drive>> imageDrives(const QString &folder, const ImageOptions &options = {});

} // namespace cdrom
