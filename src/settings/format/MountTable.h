#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

#include <optional>

// One line of /proc/self/mountinfo: which file system is mounted where, from
// which device (major:minor, and the source the mount program gave), with
// which options.
struct MountEntry {
    int mountId = -1;
    int parentId = -1;
    quint32 major = 0;
    quint32 minor = 0;
    QString root; // the folder of the file system that is mounted ("/" unless a bind)
    QString mountPoint; // where it is mounted, escapes undone
    QString mountOptions; // per-mount options ("rw,nosuid,relatime")
    QString fsType; // "vfat", "fuse.fusefat", "fuseblk", ...
    QString source; // "/dev/sdb1", or whatever a FUSE program called itself
    QString superOptions; // file-system options ("rw,uid=1000,fmask=0022")

    // A FUSE mount: the kernel passes the file system to a program. Only
    // "fuseblk" mounts name their block device in major:minor.
    bool isFuse() const;
};

namespace MountTable {

// Every well-formed line of a mountinfo text, in order; malformed lines are
// skipped.
QList<MountEntry> parse(const QByteArray& text);

// Reads and parses a mountinfo file; an empty list when it can't be read.
QList<MountEntry> read(const QString& path);

// The mount that holds the absolute path: the longest mount point containing
// it, and of several mounts at the same point the last (the one on top).
std::optional<MountEntry> mountHolding(const QList<MountEntry>& mounts, const QString& path);

// A mountinfo field with the kernel's octal escapes ("\040" for a blank) undone.
QString unescape(const QByteArray& field);

// True when `path` is `mountPoint` or lies below it.
bool pathIsUnder(const QString& path, const QString& mountPoint);

} // namespace MountTable
