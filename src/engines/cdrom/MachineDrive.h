#pragma once

#include "engines/cdrom/DriveNode.h"

#include <atomic>

namespace cdrom {

/// A drive of the machine.
class MachineDrive : public Drive
{
public:
    explicit MachineDrive(DriveNode node) : m_node(std::move(node)) {}

    DriveTexts texts() const override { return m_node.texts; }
    qint16 maxSpeed() const override { return m_node.speed; }
    void setSpeed(qint16 factor) override { m_speed = factor; }
    /// During a rip the drive isn't asked, and the last answer holds.
    MediumState medium() override;
    DiscToc readToc() override;
    void moveTray(bool open) override;
    std::unique_ptr<AudioReader> openReader(ReadFor purpose, const ReadHooks &hooks) override;

private:
    const DriveNode m_node;
    std::atomic<qint16> m_speed = qint16(0);
    MediumState m_last; ///< the watcher's
    std::shared_ptr<std::atomic<int>> m_rips = std::make_shared<std::atomic<int>>(0);
};

/// The machine's drives.
std::vector<std::shared_ptr<Drive>> machineDrives();

} // namespace cdrom
