#pragma once

#include "settings/format/CardFormatInspector.h"
#include "settings/format/FormatCommandRunner.h"

#include <QList>
#include <QMap>
#include <QMutex>
#include <QTemporaryDir>

#include <functional>

// A machine on disk for the card-format decision: a sysfs tree with disks,
// partitions and loop devices, a mountinfo file, a /proc with FUSE daemons and
// a /dev/disk/by-label folder, all under one temporary folder. Mount points
// are real folders under it.
class FakeCardSystem {
public:
    enum class Bus { Sata, Usb, SdReader, Virtual };
    struct Disk {
        QString name;
        quint32 major = 8;
        quint32 minor = 0;
        Bus bus = Bus::Sata;
        bool removable = false;
    };

    FakeCardSystem();

    void addDisk(const Disk& disk);
    void addPartition(const QString& disk, const QString& name, quint32 major, quint32 minor);
    // A loop device backed by `backingFile` (as the kernel would report it).
    void addLoop(const QString& name, quint32 minor, const QString& backingFile);
    // A device-mapper device ("dm-0", /dev/mapper/<mapperName>) built on
    // `slaves` (LUKS over one partition, an LVM volume over several).
    void addMapper(
        const QString& name, quint32 minor, const QString& mapperName, const QStringList& slaves);

    // A real folder under the fake machine, for mount points and images.
    QString folder(const QString& relative);

    // One mountinfo line; `root` is the mounted folder of the file system.
    void addMount(quint32 major, quint32 minor, const QString& mountPoint, const QString& fsType,
        const QString& source, const QString& superOptions = QStringLiteral("rw"),
        const QString& root = QStringLiteral("/"));

    // A FUSE program serving connection `connection` and holding /dev/<device>
    // open. With `reportsConnection` false its fdinfo is that of an older
    // kernel and only its command line names the mount point.
    void addFuseDaemon(qint64 pid, const QString& program, quint32 connection,
        const QString& device, const QString& mountPoint, bool reportsConnection = true);

    void addLabelLink(const QString& encodedLabel, const QString& device);

    CardFormatSystem system(bool isRoot = true, bool systemBus = false) const;
    QString root() const { return m_dir.path(); }

private:
    QString sys() const { return m_dir.path() + QStringLiteral("/sys"); }
    void linkDevice(const QString& name, const QString& folder, quint32 major, quint32 minor);

    QTemporaryDir m_dir;
    QMap<QString, QString> m_diskFolders;
    int m_mountId = 20;
};

// A runner that answers from a script and records every command, the way the
// real tools would answer: blkid prints udev lines, gdbus prints GVariants.
class ScriptedRunner final : public FormatCommandRunner {
public:
    struct Call {
        QString program;
        QStringList arguments;
    };
    using Answer = std::function<CommandResult(const QStringList& arguments)>;

    // Every program not scripted "is not installed".
    void script(const QString& program, Answer answer);
    void succeed(const QString& program, const QByteArray& output = {});
    void fail(const QString& program, int exitCode, const QByteArray& output = {});
    // blkid -p -o udev /dev/<device> prints these lines.
    void blkid(const QString& device, const QString& type, const QString& label,
        const QString& version = {}, const QString& serial = QStringLiteral("1234-ABCD"));

    CommandResult run(const QString& program, const QStringList& arguments) override;

    QList<Call> calls() const;
    QStringList programs() const;

private:
    mutable QMutex m_mutex;
    QMap<QString, Answer> m_answers;
    QMap<QString, QByteArray> m_blkid;
    QList<Call> m_calls;
};
