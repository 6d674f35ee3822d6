#pragma once

#include "settings/format/CardFormatPlan.h"
#include "settings/format/MountTable.h"

#include <QMap>
#include <QString>
#include <QStringList>

class FormatCommandRunner;

// Where the inspection looks: the system's own tables, or a fake mount table,
// sysfs and process tree written by a test.
struct CardFormatSystem {
    QString mountInfoPath = QStringLiteral("/proc/self/mountinfo");
    QString sysRoot = QStringLiteral("/sys");
    QString procRoot = QStringLiteral("/proc");
    QString devRoot = QStringLiteral("/dev");
    // Folders whose volume is never formatted, nor any volume on their disk.
    QStringList protectedPaths;
    bool isRoot = false;
    bool systemBus = false; // a system bus socket exists (UDisks2 may answer on it)

    // The running system: /, /home, /usr, /boot, /boot/efi and the cache
    // folders, root or not, and whether the system bus is there.
    static CardFormatSystem live();
};

// Decides whether the volume mounted at a card's folder may be formatted and
// how. Looks at the mount table and sysfs only (never at folders declared as
// cards on the command line), reads the volume's type and label with blkid
// (or /dev/disk/by-label), and asks UDisks2 whether it knows the device. Runs
// child processes: call it off the user-interface thread.
class CardFormatInspector {
public:
    CardFormatInspector(CardFormatSystem system, FormatCommandRunner& runner);

    FormatPlan inspect(const QString& cardRoot) const;

private:
    struct Identity {
        QString type;
        int fatBits = 0;
        QString label;
        QString serial;
    };

    void locateDevice(const MountEntry& mount, FormatPlan& plan) const;
    void chooseBackend(const MountEntry& mount, FormatPlan& plan) const;
    FormatRefusal checkDevice(const QString& deviceName, const QString& mountPoint,
        const QList<MountEntry>& mounts) const;
    Identity identify(const QString& deviceName, const QString& mountType) const;
    Identity identifyByLinks(const QString& deviceName) const;
    bool udisksKnows(const QString& deviceName) const;
    FormatPlan refuse(FormatPlan plan, FormatRefusal refusal, const QString& detail = {}) const;

    CardFormatSystem m_system;
    FormatCommandRunner& m_runner;
};

// What `blkid -p -o udev` printed, as key and value ("ID_FS_UUID" →
// "1234-ABCD"); udev's "\xHH" escapes of labels are undone.
QMap<QByteArray, QString> parseBlkidUdev(const QByteArray& output);

// Object path of a block device under UDisks2
// ("/org/freedesktop/UDisks2/block_devices/sdb1").
QString udisksBlockObjectPath(const QString& deviceName);
