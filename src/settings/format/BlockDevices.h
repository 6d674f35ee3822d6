#pragma once

#include <QString>
#include <QStringList>

// Block devices as sysfs describes them, under a sysfs root ("/sys" on the
// system; a folder laid out the same way in tests).
class BlockDevices {
public:
    explicit BlockDevices(QString sysRoot = QStringLiteral("/sys"));

    // The kernel name ("sdb1", "mmcblk0p1", "loop3") of the block device with
    // that number, or "" when there is none.
    QString nameForNumber(quint32 major, quint32 minor) const;

    // True when a block device of that kernel name exists.
    bool exists(const QString& name) const;

    // The whole disk a partition belongs to ("sdb" for "sdb1"); the name
    // itself for a whole disk; "" for an unknown device.
    QString diskOf(const QString& name) const;

    // A card or card-like disk: the disk says its media is removable, it sits
    // in a built-in SD reader (those report removable as 0), or it hangs off
    // a USB bus (a card reader or a USB stick).
    bool isRemovableMedia(const QString& name) const;

    // For a loop device, the file it is backed by as the kernel reports it
    // ("" when the device is no loop or has no backing file).
    QString loopBackingFile(const QString& name) const;

    // The devices a device-mapper or md device is built on ("sda2" under the
    // LUKS volume "dm-0"), as sysfs lists them in `slaves/`; none for a disk
    // or a partition.
    QStringList slaves(const QString& name) const;

    // The device-mapper device of that name ("dm-0" for "luks-1f2e…", the
    // name /dev/mapper shows); "" when there is none.
    QString mapperDevice(const QString& mapperName) const;

private:
    QString classFolder(const QString& name) const;

    QString m_sysRoot;
};
