#include "engines/cdrom/MachineDrive.h"

#include "engines/cdrom/DirectReader.h"
#include "engines/cdrom/ParanoiaReader.h"

#include <QFile>

namespace cdrom {

MediumState MachineDrive::medium()
{
    if (*m_rips == 0)
        m_last.medium = mediumAt(m_node.path);
    return m_last;
}

DiscToc MachineDrive::readToc()
{
    // A handle keeps the first contents it read, so each disc gets its own.
    return tocOf(openCdio(m_node.path, DRIVER_DEVICE).get());
}

void MachineDrive::moveTray(bool open)
{
    if (open) {
        CdIo_t *disc = openCdio(m_node.path, DRIVER_DEVICE).release();
        if (cdio_eject_media(&disc) != DRIVER_OP_SUCCESS)
            cdio_destroy(disc);
    } else {
        driver_id_t driver = DRIVER_DEVICE;
        cdio_close_tray(QFile::encodeName(m_node.path).constData(), &driver);
    }
}

std::unique_ptr<AudioReader> MachineDrive::openReader(ReadFor purpose, const ReadHooks &hooks)
{
    if (purpose == ReadFor::Playing)
        return std::make_unique<DirectReader>(std::make_unique<CdioSource>(m_node.path, DRIVER_DEVICE), hooks,
                                              nullptr);
    // The count goes down with the reader, which keeps its hooks.
    ++*m_rips;
    const std::shared_ptr<void> counted(nullptr, [rips = m_rips](void *) { --*rips; });
    const ReadHooks held{hooks.report, [counted, stopped = hooks.stopped] { return stopped(); }};
    CdioHandle disc = openCdio(m_node.path, DRIVER_DEVICE);
    DiscToc toc = tocOf(disc.get());
    const auto gone = [path = m_node.path] { return mediumAt(path) == Medium::None; };
    return std::make_unique<ParanoiaReader>(std::move(disc), std::move(toc), held,
                                            ParanoiaOptions{.speed = m_speed, .discIsGone = gone});
}

std::vector<std::shared_ptr<Drive>> machineDrives()
{
    std::vector<std::shared_ptr<Drive>> drives;
    for (DriveNode &node : driveNodes())
        drives.push_back(std::make_shared<MachineDrive>(std::move(node)));
    return drives;
}

} // namespace cdrom
