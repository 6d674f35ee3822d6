#pragma once

#include <QString>

#include <optional>

class BlockDevices;

// The program that serves a FUSE mount, found among the processes: the one
// holding /dev/fuse open for that mount's connection.
struct FuseDaemon {
    qint64 pid = 0;
    QString program; // file name of the program ("fusefat", "mount.exfat-fuse")
    QString deviceName; // the one block device it holds open ("loop0", "sdb1"), or ""
};

// Looks through the processes under `procRoot` ("/proc" on the system) for
// the daemon of the FUSE connection `connection` (the minor number of the
// mount's anonymous device). Kernels that don't report the connection of an
// open /dev/fuse are matched by the mount point on the daemon's command line.
std::optional<FuseDaemon> findFuseDaemon(const QString& procRoot, quint32 connection,
    const QString& mountPoint, const BlockDevices& devices);

// The FUSE daemon that holds the block device `deviceName` open (a "fuseblk"
// mount, whose mount table entry names the device itself).
std::optional<FuseDaemon> findFuseDaemonOfDevice(
    const QString& procRoot, const QString& deviceName, const BlockDevices& devices);

// True while a process with that id exists under `procRoot`.
bool processExists(const QString& procRoot, qint64 pid);
