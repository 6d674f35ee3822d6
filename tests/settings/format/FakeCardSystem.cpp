#include "FakeCardSystem.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QMutexLocker>

#include <gtest/gtest.h>

namespace {

void writeFile(const QString& path, const QByteArray& bytes)
{
    ASSERT_TRUE(QDir().mkpath(QFileInfo(path).absolutePath())) << qPrintable(path);
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly)) << qPrintable(path);
    file.write(bytes);
}

void symlink(const QString& target, const QString& link)
{
    ASSERT_TRUE(QDir().mkpath(QFileInfo(link).absolutePath()));
    ASSERT_TRUE(QFile::link(target, link)) << qPrintable(link);
}

QString busPath(FakeCardSystem::Bus bus)
{
    switch (bus) {
    case FakeCardSystem::Bus::Sata:
        return QStringLiteral("pci0000:00/0000:00:1f.2/ata1/host0/target0:0:0/0:0:0:0");
    case FakeCardSystem::Bus::Usb:
        return QStringLiteral("pci0000:00/0000:00:14.0/usb2/2-1/2-1:1.0/host6/target6:0:0/6:0:0:0");
    case FakeCardSystem::Bus::SdReader:
        return QStringLiteral("pci0000:00/0000:00:1c.0/mmc_host/mmc0/mmc0:aaaa");
    case FakeCardSystem::Bus::Virtual:
        return QStringLiteral("virtual");
    }
    return {};
}

// The kernel writes blanks in mountinfo paths as "\040".
QString escapeMountPath(QString path)
{
    return path.replace(u'\\', QStringLiteral("\\134")).replace(u' ', QStringLiteral("\\040"));
}

} // namespace

FakeCardSystem::FakeCardSystem()
{
    writeFile(m_dir.path() + QStringLiteral("/mountinfo"), {});
    QDir().mkpath(m_dir.path() + QStringLiteral("/proc"));
}

void FakeCardSystem::linkDevice(
    const QString& name, const QString& folder, quint32 major, quint32 minor)
{
    writeFile(
        folder + QStringLiteral("/dev"), QStringLiteral("%1:%2\n").arg(major).arg(minor).toUtf8());
    symlink(folder, sys() + QStringLiteral("/class/block/") + name);
    symlink(folder, sys() + QStringLiteral("/dev/block/%1:%2").arg(major).arg(minor));
}

void FakeCardSystem::addDisk(const Disk& disk)
{
    const QString folder = sys() + QStringLiteral("/devices/") + busPath(disk.bus)
        + QStringLiteral("/block/") + disk.name;
    writeFile(folder + QStringLiteral("/removable"), disk.removable ? "1\n" : "0\n");
    if (disk.bus == Bus::SdReader)
        writeFile(folder + QStringLiteral("/device/type"), "SD\n");
    linkDevice(disk.name, folder, disk.major, disk.minor);
    m_diskFolders.insert(disk.name, folder);
}

void FakeCardSystem::addPartition(
    const QString& disk, const QString& name, quint32 major, quint32 minor)
{
    const QString folder = m_diskFolders.value(disk) + u'/' + name;
    writeFile(folder + QStringLiteral("/partition"), "1\n");
    linkDevice(name, folder, major, minor);
}

void FakeCardSystem::addLoop(const QString& name, quint32 minor, const QString& backingFile)
{
    addDisk({ name, 7, minor, Bus::Virtual, false });
    writeFile(m_diskFolders.value(name) + QStringLiteral("/loop/backing_file"),
        backingFile.toUtf8() + '\n');
}

void FakeCardSystem::addMapper(
    const QString& name, quint32 minor, const QString& mapperName, const QStringList& slaves)
{
    addDisk({ name, 254, minor, Bus::Virtual, false });
    const QString folder = m_diskFolders.value(name);
    writeFile(folder + QStringLiteral("/dm/name"), mapperName.toUtf8() + '\n');
    for (const QString& slave : slaves)
        symlink(sys() + QStringLiteral("/class/block/") + slave,
            folder + QStringLiteral("/slaves/") + slave);
    symlink(
        QStringLiteral("../") + name, m_dir.path() + QStringLiteral("/dev/mapper/") + mapperName);
}

QString FakeCardSystem::folder(const QString& relative)
{
    const QString path = m_dir.path() + QStringLiteral("/fs/") + relative;
    QDir().mkpath(path);
    return QFileInfo(path).canonicalFilePath();
}

void FakeCardSystem::addMount(quint32 major, quint32 minor, const QString& mountPoint,
    const QString& fsType, const QString& source, const QString& superOptions, const QString& root)
{
    QFile file(m_dir.path() + QStringLiteral("/mountinfo"));
    ASSERT_TRUE(file.open(QIODevice::Append));
    const int id = ++m_mountId;
    file.write(
        QStringLiteral("%1 1 %2:%3 %4 %5 rw,nosuid,nodev,relatime shared:%1 - %6 %7 %8\n")
            .arg(id)
            .arg(major)
            .arg(minor)
            .arg(escapeMountPath(root), escapeMountPath(mountPoint), fsType, source, superOptions)
            .toUtf8());
}

void FakeCardSystem::addFuseDaemon(qint64 pid, const QString& program, quint32 connection,
    const QString& device, const QString& mountPoint, bool reportsConnection)
{
    const QString process = m_dir.path() + QStringLiteral("/proc/") + QString::number(pid);
    symlink(QStringLiteral("/dev/null"), process + QStringLiteral("/fd/0"));
    symlink(QStringLiteral("/dev/") + device, process + QStringLiteral("/fd/3"));
    symlink(QStringLiteral("/dev/fuse"), process + QStringLiteral("/fd/4"));
    QByteArray fdinfo = "pos:\t0\nflags:\t0100002\nmnt_id:\t24\nino:\t90\n";
    if (reportsConnection)
        fdinfo += "fuse_connection:\t" + QByteArray::number(connection) + '\n';
    writeFile(process + QStringLiteral("/fdinfo/4"), fdinfo);
    writeFile(process + QStringLiteral("/fdinfo/3"), "pos:\t0\nflags:\t0100002\n");
    QByteArray cmdline = "/usr/bin/" + program.toUtf8() + '\0' + "-o" + '\0' + "rw+" + '\0'
        + "/dev/" + device.toUtf8() + '\0' + mountPoint.toUtf8() + '\0';
    writeFile(process + QStringLiteral("/cmdline"), cmdline);
    writeFile(process + QStringLiteral("/environ"), "PWD=/\0");
    writeFile(process + QStringLiteral("/stat"),
        QByteArray::number(pid) + " (" + program.toUtf8() + ") S 1 1 1 0 -1\n");
}

void FakeCardSystem::addLabelLink(const QString& encodedLabel, const QString& device)
{
    symlink(QStringLiteral("../../") + device,
        m_dir.path() + QStringLiteral("/dev/disk/by-label/") + encodedLabel);
}

CardFormatSystem FakeCardSystem::system(bool isRoot, bool systemBus) const
{
    CardFormatSystem system;
    system.mountInfoPath = m_dir.path() + QStringLiteral("/mountinfo");
    system.sysRoot = sys();
    system.procRoot = m_dir.path() + QStringLiteral("/proc");
    system.devRoot = m_dir.path() + QStringLiteral("/dev");
    system.protectedPaths = { QStringLiteral("/"), QStringLiteral("/home"), QStringLiteral("/usr"),
        QStringLiteral("/boot") };
    system.isRoot = isRoot;
    system.systemBus = systemBus;
    return system;
}

void ScriptedRunner::script(const QString& program, Answer answer)
{
    QMutexLocker lock(&m_mutex);
    m_answers.insert(program, std::move(answer));
}

void ScriptedRunner::succeed(const QString& program, const QByteArray& output)
{
    fail(program, 0, output);
}

void ScriptedRunner::fail(const QString& program, int exitCode, const QByteArray& output)
{
    script(program, [exitCode, output](const QStringList&) {
        return CommandResult { true, exitCode, output };
    });
}

void ScriptedRunner::blkid(const QString& device, const QString& type, const QString& label,
    const QString& version, const QString& serial)
{
    QByteArray lines;
    if (!label.isEmpty()) {
        QString safe = label;
        QString encoded = label;
        lines += "ID_FS_LABEL=" + safe.replace(u' ', u'_').toUtf8() + '\n';
        lines
            += "ID_FS_LABEL_ENC=" + encoded.replace(u' ', QStringLiteral("\\x20")).toUtf8() + '\n';
    }
    lines += "ID_FS_UUID=" + serial.toUtf8() + '\n';
    if (!version.isEmpty())
        lines += "ID_FS_VERSION=" + version.toUtf8() + '\n';
    lines += "ID_FS_TYPE=" + type.toUtf8() + "\nID_FS_USAGE=filesystem\n";
    {
        QMutexLocker lock(&m_mutex);
        m_blkid.insert(QStringLiteral("/dev/") + device, lines);
    }
    script(QStringLiteral("blkid"), [this](const QStringList& arguments) {
        QMutexLocker lock(&m_mutex);
        const auto found = m_blkid.constFind(arguments.value(arguments.size() - 1));
        // blkid exits with 2 when it finds nothing on the device.
        return found == m_blkid.cend() ? CommandResult { true, 2, {} }
                                       : CommandResult { true, 0, *found };
    });
}

CommandResult ScriptedRunner::run(const QString& program, const QStringList& arguments)
{
    Answer answer;
    {
        QMutexLocker lock(&m_mutex);
        m_calls.append({ program, arguments });
        answer = m_answers.value(program);
    }
    return answer ? answer(arguments) : CommandResult {};
}

QList<ScriptedRunner::Call> ScriptedRunner::calls() const
{
    QMutexLocker lock(&m_mutex);
    return m_calls;
}

QStringList ScriptedRunner::programs() const
{
    QStringList names;
    for (const Call& call : calls())
        names << call.program;
    return names;
}
