#pragma once

#include "settings/format/BlockDevices.h"
#include "settings/format/MountTable.h"

#include <QList>
#include <QSet>
#include <QString>

// The disks a mounted file system really lives on. The kernel stacks devices
// on disks, and a system's root is often several layers up: a partition sits
// on its disk, a device-mapper or md device (LUKS, LVM, RAID) on the devices
// in its `slaves/`, a loop device on the disk holding its backing file, an
// overlay (live systems, boot sticks) on the mounts of its layers. Every
// device met on the way down is part of the answer, down to the disks.
class PhysicalDisks {
public:
    PhysicalDisks(const BlockDevices& devices, const QList<MountEntry>& mounts, QString devRoot);

    // The block device of a mount: by its number, or by the device named as
    // its source for file systems that report an anonymous number (btrfs).
    // "" for mounts without one (network, memory, overlay, most FUSE).
    QString deviceOf(const MountEntry& mount) const;

    // The devices and disks under a mount; empty when it lives on none.
    QSet<QString> ofMount(const MountEntry& mount) const;
    // The same under a block device ("dm-0", "sda2" and "sda" for a LUKS root).
    QSet<QString> ofDevice(const QString& name) const;

private:
    // Each walk keeps the mounts it has been through: an overlay whose layer
    // lies inside itself must not send it round in circles.
    struct Walk {
        QSet<QString> found;
        QSet<int> mounts;
        int depth = 0;
    };

    void collectMount(const MountEntry& mount, Walk& walk) const;
    void collectDevice(const QString& name, Walk& walk) const;
    void collectPath(const QString& path, Walk& walk) const;
    QString deviceOfSource(const QString& source) const;

    const BlockDevices& m_devices;
    const QList<MountEntry>& m_mounts;
    QString m_devRoot;
};
