// The kernel's mount table as the format reads it: escapes, the mount on top,
// and lines a hostile or truncated table may hold.
#include "settings/format/MountTable.h"
#include "TestFiles.h"
#include "settings/format/FuseDaemons.h"

#include <QTemporaryDir>

#include <gtest/gtest.h>

TEST(MountTableTest, ReadsWhatItCanAndFindsTheMountOnTop)
{
    const QList<MountEntry> mounts = MountTable::parse(
        "22 1 8:2 / / rw shared:1 - ext4 /dev/sda2 rw,errors=remount-ro\n"
        "40 22 8:17 /x /media/D\\040C rw,nosuid shared:30 master:1 - vfat /dev/sdb1 rw,uid=1000\n"
        "42 40 0:46 / /media/D\\040C rw - tmpfs tmpfs rw\n"
        "\ngarbage\n"
        "1 2 3 4 5 6 - \n" // no type after the separator
        "x 1 8:1 / /a rw - ext4 /dev/x rw\n" // id not a number
        "7 1 8:z / /b rw - ext4 /dev/x rw\n" // minor not a number
        "8 1 8:1 / relative rw - ext4 /dev/x rw\n"
        "9 1 8:1 / /t\\134b\\011c\\04 rw - fuse.fusefat\n" // truncated escape, no source
        "10 1 8:1 / /c rw\n"); // no separator
    ASSERT_EQ(mounts.size(), 4);
    const MountEntry& card = mounts[1];
    EXPECT_EQ(
        QList<quint32>({ quint32(card.mountId), quint32(card.parentId), card.major, card.minor }),
        QList<quint32>({ 40, 22, 8, 17 }));
    EXPECT_EQ(QStringList({ card.root, card.mountPoint, card.mountOptions, card.fsType, card.source,
                  card.superOptions }),
        QStringList({ "/x", "/media/D C", "rw,nosuid", "vfat", "/dev/sdb1", "rw,uid=1000" }));
    EXPECT_FALSE(card.isFuse());
    EXPECT_EQ(mounts[3].mountPoint, QStringLiteral("/t\\b\tc\\04"));
    EXPECT_TRUE(mounts[3].source.isEmpty() && mounts[3].isFuse());
    // A path belongs to the longest mount holding it, and to the one on top.
    const std::pair<const char*, int> paths[] = { { "/home", 22 }, { "/media/D C", 42 },
        { "/media/D C/SETTING", 42 }, { "/media/D CAM", 22 }, { "/t\\b\tc\\04/x", 9 } };
    for (const auto& [path, mountId] : paths)
        EXPECT_EQ(MountTable::mountHolding(mounts, QString::fromUtf8(path))
                      .value_or(MountEntry {})
                      .mountId,
            mountId)
            << path;
    EXPECT_FALSE(MountTable::mountHolding({}, QStringLiteral("/")).has_value());
    EXPECT_TRUE(MountTable::read(QStringLiteral("/nonexistent/mountinfo")).isEmpty());
}

// A FUSE daemon that has ended but not been reaped (a zombie) is gone: the
// format does not wait for it.
TEST(FuseDaemonsTest, OnlyALivingProcessExists)
{
    QTemporaryDir proc;
    const std::pair<const char*, bool> states[]
        = { { "S", true }, { "R", true }, { "Z", false }, { "X", false } };
    for (qint64 pid = 1; const auto& [state, alive] : states) {
        TestFiles::write(proc.filePath(QStringLiteral("%1/stat").arg(pid)),
            QStringLiteral("%1 (mount.fuse) %2) %3 1 1").arg(pid).arg(state, state).toUtf8());
        EXPECT_EQ(processExists(proc.path(), pid++), alive) << state;
    }
    EXPECT_FALSE(processExists(proc.path(), 99));
}
