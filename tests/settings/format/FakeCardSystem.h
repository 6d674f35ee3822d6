#pragma once

#include "settings/format/CardFormatInspector.h"
#include "settings/format/FormatCommandRunner.h"

#include <QList>
#include <QMap>
#include <QMutex>
#include <QTemporaryDir>

#include <functional>

class ScriptedRunner;

// A machine on disk for the card-format decision: a sysfs tree with disks,
// partitions, loop and device-mapper devices, a mountinfo file, a /proc with
// FUSE daemons and a /dev with udev's links, all under one temporary folder.
// Mount points without a leading slash are real folders under it.
class FakeCardSystem {
public:
    FakeCardSystem();

    // Builds the machine from statements separated by ';', words by blanks
    // ('~' in a word stands for a blank):
    //   disk NAME MAJ:MIN sata|usb|sd|virtual [removable]
    //   part DISK NAME MAJ:MIN
    //   loop NAME MINOR BACKING        ("image": a new image file of the machine)
    //   mapper NAME MINOR MAPPER SLAVE[,SLAVE]     (dm-N, /dev/mapper/MAPPER)
    //   mount MAJ:MIN POINT TYPE SOURCE [SUPER-OPTIONS [ROOT]]
    //   fuse PID PROGRAM CONNECTION DEVICE POINT [old]  (holds /dev/DEVICE and
    //        /dev/fuse open; "old": a kernel that doesn't report the connection)
    //   label ENCODED-LABEL DEVICE     (/dev/disk/by-label)
    // and, for the runner's answers:
    //   blkid DEVICE TYPE LABEL|- [VERSION [SERIAL]]   (serial 1234-ABCD)
    //   fail PROGRAM EXIT-CODE
    //   udisks DEVICE                  (UDisks2 knows the device and formats it)
    void build(const QString& script, ScriptedRunner& runner);

    // A real folder under the machine (for a point without a leading slash).
    QString folder(const QString& relative);
    CardFormatSystem system(bool isRoot = true, bool systemBus = false) const;
    QString root() const { return m_dir.path(); }

private:
    QString sys() const { return m_dir.path() + QStringLiteral("/sys"); }
    void addDisk(const QStringList& w);
    void linkDevice(const QString& name, const QString& folder, const QString& number);
    void addMount(const QStringList& w);
    void addFuseDaemon(const QStringList& w);

    QTemporaryDir m_dir;
    QMap<QString, QString> m_diskFolders;
    int m_mountId = 20;
};

// A runner that answers from a script and records every command, the way the
// real tools would answer: blkid prints udev lines, gdbus prints GVariants.
// Every program not scripted "is not installed".
class ScriptedRunner final : public FormatCommandRunner {
public:
    struct Call {
        QString program;
        QStringList arguments;
    };
    using Answer = std::function<CommandResult(const QStringList& arguments)>;

    void script(const QString& program, Answer answer);
    void fail(const QString& program, int exitCode, const QByteArray& output = {});
    void succeed(const QString& program) { fail(program, 0); }
    // blkid -p -o udev /dev/<device> prints these lines.
    void blkid(const QString& device, const QString& type, const QString& label,
        const QString& version = {}, const QString& serial = QStringLiteral("1234-ABCD"));

    CommandResult run(const QString& program, const QStringList& arguments) override;
    QList<Call> calls() const;

private:
    mutable QMutex m_mutex;
    QMap<QString, Answer> m_answers;
    QMap<QString, QByteArray> m_blkid;
    QList<Call> m_calls;
};
