// Real mounts in a private mount namespace of this test process: the watcher
// sees them come and go once each, and the system volume list shows them as
// local, fixed volumes. Skipped where the process may not mount (not root).
// Which volumes are cards is checked with the card's identification, the
// removable test over sysfs in the format decision's machines.
#include "config/StorageVolumeSource.h"
#include "config/VolumeWatcher.h"

#include <QDir>
#include <QSignalSpy>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <sched.h>
#include <sys/mount.h>

TEST(VolumeMountTest, WatcherAndVolumeListFollowRealMounts)
{
    // The kernel's escapes, and lines too short to name a mount point.
    EXPECT_EQ(VolumeWatcher::parseMountPoints("x\n\n1 2 3 4\n1 2 8:1 / /a\\040b\\134\\0 rw\n"),
        QStringList { "/a b\\\\0" });
    // A namespace of its own: nothing mounted here is seen by the machine.
    if (unshare(CLONE_NEWNS) != 0 || mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) != 0)
        GTEST_SKIP() << "this process may not create a mount namespace";
    QTemporaryDir dir;
    const QString point = dir.path() + QStringLiteral("/CARD VOLUME");
    ASSERT_TRUE(QDir().mkpath(point));
    VolumeWatcher watcher;
    EXPECT_TRUE(watcher.mountPoints().contains(QStringLiteral("/")));
    QSignalSpy mounted(&watcher, &VolumeWatcher::volumeMounted);
    QSignalSpy unmounted(&watcher, &VolumeWatcher::volumeUnmounted);

    ASSERT_EQ(mount("tavro-test", point.toLocal8Bit().constData(), "tmpfs", 0, "size=1m"), 0);
    ASSERT_TRUE(mounted.wait(5000));
    EXPECT_EQ(mounted[0][0].toString(), point);
    int listed = 0;
    for (const VolumeInfo& volume : StorageVolumeSource().volumes()) {
        if (volume.rootPath == point) {
            ++listed;
            EXPECT_TRUE(volume.isLocal);
            EXPECT_FALSE(volume.isRemovable); // memory, not a card
            EXPECT_EQ(volume.fileSystemType, QStringLiteral("tmpfs"));
        }
    }
    EXPECT_EQ(listed, 1);
    ASSERT_EQ(umount(point.toLocal8Bit().constData()), 0);
    ASSERT_TRUE(unmounted.wait(5000));
    EXPECT_EQ(unmounted[0][0].toString(), point);
    EXPECT_EQ(mounted.size(), 1);
}
