// Real mounts in a private mount namespace of this test process: the watcher
// sees them come and go, and the system volume list shows them as local,
// fixed volumes. Skipped where the process may not mount (not root).
#include "config/StorageVolumeSource.h"
#include "config/VolumeWatcher.h"

#include <QDir>
#include <QSignalSpy>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <sched.h>
#include <sys/mount.h>

namespace {

// Moves this process into its own mount namespace, so nothing it mounts is
// seen by (or left behind for) the rest of the machine.
bool enterPrivateMountNamespace()
{
    return unshare(CLONE_NEWNS) == 0
        && mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0;
}

} // namespace

TEST(VolumeMountTest, WatcherAndVolumeListFollowRealMounts)
{
    if (!enterPrivateMountNamespace())
        GTEST_SKIP() << "this process may not create a mount namespace";
    QTemporaryDir dir;
    const QString point = dir.path() + QStringLiteral("/CARD VOLUME");
    ASSERT_TRUE(QDir().mkpath(point));
    VolumeWatcher watcher;
    QSignalSpy mounted(&watcher, &VolumeWatcher::volumeMounted);
    QSignalSpy unmounted(&watcher, &VolumeWatcher::volumeUnmounted);

    ASSERT_EQ(mount("tavro-test", point.toLocal8Bit().constData(), "tmpfs", 0, "size=1m"), 0);
    ASSERT_TRUE(mounted.wait(5000));
    EXPECT_EQ(mounted[0][0].toString(), point);

    bool listed = false;
    for (const VolumeInfo& volume : StorageVolumeSource().volumes()) {
        if (volume.rootPath == point) {
            listed = true;
            EXPECT_TRUE(volume.isLocal);
            EXPECT_FALSE(volume.isRemovable); // memory, not a card
            EXPECT_EQ(volume.fileSystemType, QStringLiteral("tmpfs"));
        }
    }
    EXPECT_TRUE(listed);

    ASSERT_EQ(umount(point.toLocal8Bit().constData()), 0);
    ASSERT_TRUE(unmounted.wait(5000));
    EXPECT_EQ(unmounted[0][0].toString(), point);
    EXPECT_EQ(mounted.size(), 1);
}
