// The kernel's mount table as the format reads it: escapes, optional fields,
// the mount on top, and lines a hostile or truncated table may hold.
#include "settings/format/MountTable.h"

#include <gtest/gtest.h>

namespace {

const QByteArray kTable
    = "22 1 8:2 / / rw,relatime shared:1 - ext4 /dev/sda2 rw,errors=remount-ro\n"
      "40 22 8:17 / /media/user/DASH\\040CAM rw,nosuid,nodev shared:30 master:1 - vfat /dev/sdb1 "
      "rw,uid=1000,gid=1000,fmask=0022,dmask=0022,codepage=437,iocharset=ascii,shortname=mixed,"
      "utf8\n"
      "41 22 0:45 / /tmp/a\\134b\\011c rw,nosuid,nodev,relatime - fuse.fusefat fusefat "
      "rw,user_id=0\n"
      "42 40 0:46 / /media/user/DASH\\040CAM rw - tmpfs tmpfs rw\n";

} // namespace

TEST(MountTableTest, ReadsEveryFieldAndUndoesTheKernelsEscapes)
{
    const QList<MountEntry> mounts = MountTable::parse(kTable);
    ASSERT_EQ(mounts.size(), 4);
    const MountEntry& card = mounts[1];
    EXPECT_EQ(card.mountId, 40);
    EXPECT_EQ(card.parentId, 22);
    EXPECT_EQ(card.major, 8u);
    EXPECT_EQ(card.minor, 17u);
    EXPECT_EQ(card.root, QStringLiteral("/"));
    EXPECT_EQ(card.mountPoint, QStringLiteral("/media/user/DASH CAM"));
    EXPECT_EQ(card.mountOptions, QStringLiteral("rw,nosuid,nodev"));
    EXPECT_EQ(card.fsType, QStringLiteral("vfat"));
    EXPECT_EQ(card.source, QStringLiteral("/dev/sdb1"));
    EXPECT_TRUE(card.superOptions.contains(QStringLiteral("uid=1000")));
    EXPECT_FALSE(card.isFuse());
    EXPECT_EQ(mounts[2].mountPoint, QStringLiteral("/tmp/a\\b\tc"));
    EXPECT_TRUE(mounts[2].isFuse());
}

TEST(MountTableTest, PathsBelongToTheLongestMountAndTheOneOnTop)
{
    const QList<MountEntry> mounts = MountTable::parse(kTable);
    struct Case {
        const char* path;
        int mountId;
    };
    const Case cases[] = {
        { "/home/user", 22 },
        { "/media/user/DASH CAM", 42 }, // the tmpfs mounted over the card
        { "/media/user/DASH CAM/SETTING", 42 },
        { "/media/user/DASH CAMERA", 22 }, // a longer name is not below the card
        { "/tmp/a\\b\tc/x", 41 },
    };
    for (const Case& c : cases) {
        const auto mount = MountTable::mountHolding(mounts, QString::fromUtf8(c.path));
        ASSERT_TRUE(mount.has_value()) << c.path;
        EXPECT_EQ(mount->mountId, c.mountId) << c.path;
    }
    EXPECT_FALSE(MountTable::mountHolding({}, QStringLiteral("/")).has_value());
}

TEST(MountTableTest, SkipsMalformedLinesAndKeepsTheRest)
{
    const QByteArray hostile = "\n"
                               "garbage\n"
                               "1 2 3 4 5 6 - \n" // no type after the separator
                               "x 1 8:1 / /a rw - ext4 /dev/x rw\n" // id not a number
                               "7 1 8:z / /b rw - ext4 /dev/x rw\n" // minor not a number
                               "8 1 8:1 / relative rw - ext4 /dev/x rw\n"
                               "9 1 8:1 / /ok\\04 rw - vfat\n" // truncated escape, no source
                               "10 1 8:1 / /c rw\n" // no separator
                               "11 1 8:3 / /d rw a b c d - ext4 /dev/y rw\n";
    const QList<MountEntry> mounts = MountTable::parse(hostile);
    ASSERT_EQ(mounts.size(), 2);
    EXPECT_EQ(mounts[0].mountPoint, QStringLiteral("/ok\\04"));
    EXPECT_TRUE(mounts[0].source.isEmpty());
    EXPECT_EQ(mounts[1].mountPoint, QStringLiteral("/d"));
    EXPECT_EQ(mounts[1].source, QStringLiteral("/dev/y"));
    EXPECT_TRUE(MountTable::read(QStringLiteral("/nonexistent/mountinfo")).isEmpty());
}
