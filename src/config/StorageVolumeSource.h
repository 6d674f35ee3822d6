#pragma once

#include "config/VolumeSource.h"

// The system's mounted volumes (QStorageInfo), in mount-table order. A volume
// is local unless its file system is a network one; it is removable when its
// disk says so in sysfs ("removable" is 1) or when the disk sits in a built-in
// SD reader (device/type is "SD"; those readers report removable as 0).
class StorageVolumeSource final : public VolumeSource {
public:
    explicit StorageVolumeSource(QString sysBlockRoot = QStringLiteral("/sys/class/block"));

    QList<VolumeInfo> volumes() const override;

    // The removable test for one block device name ("sdb1", "mmcblk0p1"),
    // looked up under a sysfs block folder laid out like /sys/class/block.
    static bool isRemovableBlockDevice(const QString& deviceName, const QString& sysBlockRoot);

    static bool isNetworkFileSystem(const QString& fileSystemType);

private:
    QString m_sysBlockRoot;
};
