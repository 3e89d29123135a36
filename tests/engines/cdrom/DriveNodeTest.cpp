#include "engines/cdrom/DriveNode.h"

#include "engines/cdrom/MachineDrive.h"
#include "testkit/DiscFolder.h"
#include "testkit/Printing.h"

namespace {

using namespace cdrom;

TEST(DriveNodeTest, theKernelsTablesGiveDrivesTheirTextsAndSpeeds)
{
    DiscFolder system;
    EXPECT_TRUE(driveNodes(system.path()).empty());
    for (const char *folder : {"sys/block/sr0/device", "sys/block/sr10/device", "sys/block/sr2/device",
                               "sys/block/sda", "proc/sys/dev/cdrom", "dev"})
        QDir(system.path()).mkpath(QLatin1String(folder));
    for (const char *node : {"dev/sr0", "dev/sr2", "dev/sr10", "dev/sda"})
        system.write(QLatin1String(node), "");
    system.write(QStringLiteral("sys/block/sr2/device/vendor"), "ACME    \n");
    system.write(QStringLiteral("sys/block/sr2/device/model"), "DVD-RAM 1 \n");
    system.write(QStringLiteral("proc/sys/dev/cdrom/info"),
                 "CD-ROM information, Id: cdrom.c 3.20 2003/12/17\n\ndrive name:\t\tsr2\tsr0\n"
                 "drive speed:\t\t48\t24\ndrive # of slots:\t1\t1\n");
    const std::vector<DriveNode> nodes = driveNodes(system.path());
    ASSERT_EQ(nodes.size(), 3U);
    EXPECT_EQ(nodes[0].path, system.path(QStringLiteral("dev/sr0")));
    EXPECT_EQ(nodes[0].speed, 24);
    EXPECT_EQ(nodes[1].texts.maker, QStringLiteral("ACME"));
    EXPECT_EQ(nodes[1].texts.model, QStringLiteral("DVD-RAM 1"));
    EXPECT_EQ(nodes[1].speed, 48);
    EXPECT_EQ(nodes[2].path, system.path(QStringLiteral("dev/sr10")));
    EXPECT_EQ(nodes[2].speed, 0);
}

TEST(DriveNodeTest, aNodeThatIsNoDriveHasNoDisc)
{
    EXPECT_EQ(mediumAt(QStringLiteral("/dev/null")), Medium::None);
    EXPECT_EQ(mediumAt(QStringLiteral("/dev/there-is-no-such-drive")), Medium::None);
}

} // namespace
