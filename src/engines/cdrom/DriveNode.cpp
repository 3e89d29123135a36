#include "engines/cdrom/DriveNode.h"

#include "engines/cdrom/CdioAccess.h"

#include <QDir>
#include <QFile>
#include <QMap>
#include <algorithm>

#ifdef Q_OS_LINUX
#include <fcntl.h>
#include <linux/cdrom.h>
#include <sys/ioctl.h>
#include <unistd.h>
#endif

namespace cdrom {

#ifdef Q_OS_LINUX

namespace {

QString firstLine(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? QString::fromLatin1(file.readLine(256)).trimmed() : QString();
}

/// Speeds by the kernel's names, out of its table with a column for each drive.
QMap<QString, qint16> speedsIn(const QString &path)
{
    QMap<QString, qint16> speeds;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return speeds;
    QStringList names;
    const QStringList lines = QString::fromLatin1(file.readAll()).split(u'\n');
    for (const QString &line : lines) {
        const QStringList cells = line.section(u':', 1).simplified().split(u' ', Qt::SkipEmptyParts);
        if (line.startsWith(QStringLiteral("drive name:")))
            names = cells;
        if (line.startsWith(QStringLiteral("drive speed:")))
            for (qsizetype i = 0; i < std::min(names.size(), cells.size()); ++i)
                speeds[names[i]] = static_cast<qint16>(std::clamp(cells[i].toInt(), 0, 100));
    }
    return speeds;
}

} // namespace

std::vector<DriveNode> driveNodes(const QString &root)
{
    const QDir blocks(QDir(root).filePath(QStringLiteral("sys/block")));
    const QMap<QString, qint16> speeds =
        speedsIn(QDir(root).filePath(QStringLiteral("proc/sys/dev/cdrom/info")));
    QStringList names = blocks.entryList({QStringLiteral("sr*")}, QDir::Dirs);
    std::sort(names.begin(), names.end(), [](const QString &a, const QString &b) {
        return std::pair(a.size(), a) < std::pair(b.size(), b);
    });
    std::vector<DriveNode> nodes;
    for (const QString &name : std::as_const(names)) {
        const QString path = QDir(root).filePath(QStringLiteral("dev/") + name);
        if (!QFile::exists(path))
            continue;
        const auto text = [&](const char *what) {
            return firstLine(blocks.filePath(name + QStringLiteral("/device/") + QLatin1String(what)));
        };
        nodes.push_back({path, {path, text("vendor"), text("model")}, speeds.value(name)});
    }
    return nodes;
}

Medium mediumAt(const QString &path)
{
    // Opening without waiting doesn't close the tray and needs no disc.
    const int node = ::open(QFile::encodeName(path).constData(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    if (node < 0)
        return Medium::None;
    const int status = ::ioctl(node, CDROM_DRIVE_STATUS, CDSL_CURRENT);
    ::close(node);
    switch (status) {
    case CDS_DISC_OK:
    case CDS_NO_INFO: // a drive that can't tell; its contents will
        return Medium::Present;
    case CDS_DRIVE_NOT_READY:
        return Medium::Busy;
    default:
        return Medium::None;
    }
}

#else

std::vector<DriveNode> driveNodes(const QString &)
{
    std::vector<DriveNode> nodes;
    char **devices = cdio_get_devices(DRIVER_DEVICE);
    for (char **device = devices; device && *device; ++device) {
        const QString path = QFile::decodeName(*device);
        DriveNode node{path, {path, {}, {}}, 0};
        cdio_hwinfo_t info{};
        const CdioHandle disc(cdio_open(*device, DRIVER_DEVICE));
        if (disc && cdio_get_hwinfo(disc.get(), &info)) {
            node.texts.maker = QString::fromLatin1(info.psz_vendor).trimmed();
            node.texts.model = QString::fromLatin1(info.psz_model).trimmed();
        }
        nodes.push_back(node);
    }
    cdio_free_device_list(devices);
    return nodes;
}

Medium mediumAt(const QString &path)
{
    const CdioHandle disc(cdio_open(QFile::encodeName(path).constData(), DRIVER_DEVICE));
    return disc && cdio_get_discmode(disc.get()) != CDIO_DISC_MODE_ERROR ? Medium::Present : Medium::None;
}

#endif

} // namespace cdrom
