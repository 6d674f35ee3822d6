// Which volumes count as memory cards, the removable test over sysfs, and
// mount notifications from the mount table.
#include "FakeVolumeSource.h"
#include "TestFiles.h"

#include "config/FolderVolumeSource.h"
#include "config/StorageVolumeSource.h"
#include "config/VolumeUtils.h"
#include "config/VolumeWatcher.h"

#include <QDir>
#include <QFile>
#include <QSignalSpy>
#include <QTemporaryDir>

#include <gtest/gtest.h>

TEST(VolumeTest, OnlyLocalRemovableVolumesAreExternalMemory)
{
    QTemporaryDir card, share, disk, nested;
    auto volumes = std::make_shared<FakeVolumeSource>();
    volumes->add(card.path(), true, true)
        .add(share.path(), false, true)
        .add(disk.path(), true, false);
    ScopedVolumeSource scope(volumes);
    const std::pair<QUrl, bool> cases[] = {
        { QUrl::fromLocalFile(card.path()), true },
        { QUrl::fromLocalFile(card.path() + QStringLiteral("/SETTING/setup.cfg")), true },
        { QUrl::fromLocalFile(card.path() + QStringLiteral("-sibling")), false },
        { QUrl::fromLocalFile(share.path()), false },
        { QUrl::fromLocalFile(disk.path()), false },
        { QUrl::fromLocalFile(nested.path()), false },
        { QUrl(), false },
        { QUrl(QStringLiteral("https://example.invalid/card")), false },
    };
    for (const auto& [url, external] : cases)
        EXPECT_EQ(Utils::isEXteranlMemoryWithURL(url), external) << qPrintable(url.toString());
}

TEST(VolumeTest, TheInnermostVolumeHoldsAPath)
{
    QTemporaryDir outer;
    const QString inner = outer.path() + QStringLiteral("/media/CARD");
    QDir().mkpath(inner);
    auto volumes = std::make_shared<FakeVolumeSource>();
    volumes->add(outer.path(), true, false).add(inner, true, true, QStringLiteral("CARD"));
    ScopedVolumeSource scope(volumes);
    EXPECT_TRUE(
        Utils::isEXteranlMemoryWithURL(QUrl::fromLocalFile(inner + QStringLiteral("/DCIM"))));
    EXPECT_FALSE(Utils::isEXteranlMemoryWithURL(
        QUrl::fromLocalFile(outer.path() + QStringLiteral("/media"))));
    EXPECT_EQ(Utils::volumeNameWithURL(QUrl::fromLocalFile(inner)), QStringLiteral("CARD"));
}

TEST(VolumeTest, FolderSourceListsItsFoldersInOrder)
{
    QTemporaryDir a, b;
    FolderVolumeSource source(
        { { b.path(), QStringLiteral("Untitled 2") }, { a.path(), QString() } });
    const QList<VolumeInfo> volumes = source.volumes();
    ASSERT_EQ(volumes.size(), 2);
    EXPECT_EQ(volumes[0].rootPath, b.path());
    EXPECT_EQ(volumes[0].name, QStringLiteral("Untitled 2"));
    EXPECT_EQ(volumes[1].name, QDir(a.path()).dirName());
    EXPECT_TRUE(volumes[1].isLocal && volumes[1].isRemovable);
}

TEST(VolumeTest, RemovableDisksFromSysfs)
{
    // A sysfs-like tree: class/block/<name> links to the device folder, and a
    // partition's folder lives inside its disk's folder.
    QTemporaryDir sys;
    const QString devices = sys.path() + QStringLiteral("/devices");
    const QString block = sys.path() + QStringLiteral("/class/block");
    QDir().mkpath(block);
    const auto disk
        = [&](const QString& name, const QByteArray& removable, const QByteArray& type) {
              TestFiles::write(devices + u'/' + name + QStringLiteral("/removable"), removable);
              if (!type.isEmpty())
                  TestFiles::write(devices + u'/' + name + QStringLiteral("/device/type"), type);
              QFile::link(devices + u'/' + name, block + u'/' + name);
          };
    const auto partition = [&](const QString& diskName, const QString& name) {
        TestFiles::write(
            devices + u'/' + diskName + u'/' + name + QStringLiteral("/partition"), "1\n");
        QFile::link(devices + u'/' + diskName + u'/' + name, block + u'/' + name);
    };
    disk(QStringLiteral("sda"), "0\n", {});
    partition(QStringLiteral("sda"), QStringLiteral("sda1"));
    disk(QStringLiteral("sdb"), "1\n", {});
    partition(QStringLiteral("sdb"), QStringLiteral("sdb1"));
    disk(QStringLiteral("mmcblk0"), "0\n", "SD\n");
    partition(QStringLiteral("mmcblk0"), QStringLiteral("mmcblk0p1"));
    disk(QStringLiteral("mmcblk1"), "0\n", "MMC\n");

    const std::pair<const char*, bool> cases[] = {
        { "sda", false },
        { "sda1", false },
        { "sdb", true },
        { "sdb1", true },
        { "mmcblk0p1", true },
        { "mmcblk0", true },
        { "mmcblk1", false },
        { "sdz", false },
        { "", false },
        { "../sdb", false },
    };
    for (const auto& [name, removable] : cases)
        EXPECT_EQ(StorageVolumeSource::isRemovableBlockDevice(QString::fromLatin1(name), block),
            removable)
            << name;
    EXPECT_TRUE(StorageVolumeSource::isNetworkFileSystem(QStringLiteral("cifs")));
    EXPECT_FALSE(StorageVolumeSource::isNetworkFileSystem(QStringLiteral("vfat")));
}

TEST(VolumeTest, SystemVolumesAreListedWithoutFailing)
{
    // The machine's own mounts: the root is there and is not a memory card.
    const QList<VolumeInfo> volumes = StorageVolumeSource().volumes();
    bool sawRoot = false;
    for (const VolumeInfo& volume : volumes) {
        if (volume.rootPath == QLatin1String("/")) {
            sawRoot = true;
            EXPECT_FALSE(volume.isLocal && volume.isRemovable
                && volume.fileSystemType == QLatin1String("overlay"));
        }
    }
    EXPECT_TRUE(sawRoot);
}

TEST(VolumeTest, WatcherReportsMountsAndUnmountsOnce)
{
    QTemporaryDir dir;
    const QString table = dir.path() + QStringLiteral("/mountinfo");
    const QByteArray root = "22 1 8:1 / / rw,relatime - ext4 /dev/sda1 rw\n";
    const QByteArray card = "40 22 8:17 / /media/user/MY\\040CARD rw - vfat /dev/sdb1 rw\n";
    const QByteArray stick = "41 22 8:33 / /media/user/STICK rw - exfat /dev/sdc1 rw\n";
    TestFiles::write(table, root + card);
    VolumeWatcher watcher(table);
    EXPECT_EQ(watcher.mountPoints(),
        (QStringList { QStringLiteral("/"), QStringLiteral("/media/user/MY CARD") }));
    QSignalSpy mounted(&watcher, &VolumeWatcher::volumeMounted);
    QSignalSpy unmounted(&watcher, &VolumeWatcher::volumeUnmounted);

    TestFiles::write(table, root + stick);
    watcher.rescan();
    watcher.rescan(); // the kernel may report one change twice
    ASSERT_EQ(mounted.size(), 1);
    EXPECT_EQ(mounted[0][0].toString(), QStringLiteral("/media/user/STICK"));
    ASSERT_EQ(unmounted.size(), 1);
    EXPECT_EQ(unmounted[0][0].toString(), QStringLiteral("/media/user/MY CARD"));

    EXPECT_TRUE(VolumeWatcher::parseMountPoints("garbage\n\n1 2 3\n").isEmpty());
    VolumeWatcher system; // the process's own table opens and lists the root
    EXPECT_TRUE(system.mountPoints().contains(QStringLiteral("/")));
}
