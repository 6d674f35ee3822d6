#pragma once

#include <QString>
#include <QStringList>

// Why a folder may not be formatted. Every refusal shows the same text to the
// user ("메모리 카드를 포멧할 수 없습니다."); the command line says which one.
enum class FormatRefusal {
    None,
    NotAMountPoint, // the folder is not where a volume is mounted
    NoBlockDevice, // a network, memory or virtual file system
    NotRemovable, // a fixed disk, or a loop device not backed by an image file
    SystemVolume, // the volume (or its disk) holds /, /home, /usr, /boot or the cache
    UntitledVolume, // the name begins with "Untitled"
    MountedElsewhere, // the device is mounted at more than one place
    UnsupportedFileSystem, // neither FAT nor exFAT
    NoPermission, // neither root nor UDisks2 can do it
};

// How the card is formatted.
enum class FormatBackend {
    None,
    UDisks, // over the system bus, as a desktop user
    CommandLine, // umount / mkfs / mount as root
};

// How the card is mounted, which decides how it is unmounted and mounted again.
enum class MountKind {
    Kernel, // the kernel's vfat/exfat driver: umount, mount -t TYPE
    FuseFat, // fusefat: fusermount -u, fusefat -o rw+
    FuseExfat, // exfat-fuse: fusermount -u, mount.exfat-fuse
};

// What the inspection found out about a card folder and whether (and how) it
// may be formatted.
struct FormatPlan {
    FormatRefusal refusal = FormatRefusal::NotAMountPoint;
    QString reason; // one English line saying why, for the command line

    QString cardRoot; // the folder as given
    QString mountPoint; // the folder where the volume is mounted
    QString deviceName; // "sdb1", "mmcblk0p1", "loop0"
    QString fileSystem; // "vfat" or "exfat"
    int fatBits = 0; // 12, 16 or 32 for vfat
    QString label; // the volume label kept across the format ("" for none)
    QString volumeName; // the label, or the mount folder's name when there is none
    // The volume's serial number as blkid and udev spell its UUID ("1234-ABCD").
    // It is read again right before the file system is made: another card put
    // in under the same device name and label still has another serial.
    QString serial;

    MountKind mountKind = MountKind::Kernel;
    QString mountType; // the type in the mount table ("vfat", "fuse.fusefat", "fuseblk")
    QStringList mountOptions; // options kept when mounting again with the kernel driver
    qint64 fuseDaemonPid = 0; // the FUSE program serving the mount, waited for after unmounting
    FormatBackend backend = FormatBackend::None;

    bool allowed() const { return refusal == FormatRefusal::None; }
    QString devicePath() const { return QStringLiteral("/dev/") + deviceName; }
};

// How a format ended.
struct FormatResult {
    enum class Outcome {
        Formatted, // every step exited with status 0
        Failed, // a step exited with another status
        NotStarted // the first program could not be run; nothing changed
    };
    Outcome outcome = Outcome::NotStarted;
    QString detail; // English, for the command line and the log
    bool mounted = true; // the card is mounted (again, or still)
    QString mountPoint; // where it is mounted now (UDisks may choose another folder)

    bool succeeded() const { return outcome == Outcome::Formatted; }
};

// One English sentence for a refusal ("the folder is not on a removable card").
QString describeRefusal(FormatRefusal refusal);
