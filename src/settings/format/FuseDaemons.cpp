#include "settings/format/FuseDaemons.h"

#include "settings/format/BlockDevices.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSet>

#include <unistd.h>

namespace {

QString linkTarget(const QString& path)
{
    char buffer[4096];
    const QByteArray local = QFile::encodeName(path);
    const ssize_t size = ::readlink(local.constData(), buffer, sizeof buffer - 1);
    if (size <= 0)
        return {};
    return QFile::decodeName(QByteArray(buffer, size));
}

QByteArray readSmall(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    return file.read(64 * 1024);
}

// "fuse_connection:\t39" in the fdinfo of an open /dev/fuse, or -1.
qint64 fuseConnectionOf(const QByteArray& fdinfo)
{
    for (const QByteArray& line : fdinfo.split('\n')) {
        if (!line.startsWith("fuse_connection:"))
            continue;
        bool ok = false;
        const qint64 value = line.mid(int(qstrlen("fuse_connection:"))).trimmed().toLongLong(&ok);
        return ok ? value : -1;
    }
    return -1;
}

struct ProcessFds {
    bool holdsFuse = false;
    bool connectionKnown = false;
    bool connectionMatches = false;
    QSet<QString> devices;
};

ProcessFds scanFds(const QString& processFolder, quint32 connection, const BlockDevices& devices)
{
    ProcessFds fds;
    const QStringList entries = QDir(processFolder + QStringLiteral("/fd"))
                                    .entryList(QDir::System | QDir::Files | QDir::NoDotAndDotDot);
    for (const QString& fd : entries) {
        const QString target = linkTarget(processFolder + QStringLiteral("/fd/") + fd);
        if (target == QLatin1String("/dev/fuse")) {
            fds.holdsFuse = true;
            const qint64 open
                = fuseConnectionOf(readSmall(processFolder + QStringLiteral("/fdinfo/") + fd));
            if (open >= 0) {
                fds.connectionKnown = true;
                fds.connectionMatches = fds.connectionMatches || open == qint64(connection);
            }
        } else if (target.startsWith(QLatin1String("/dev/"))) {
            const QString name = target.mid(5);
            if (devices.exists(name))
                fds.devices.insert(name);
        }
    }
    return fds;
}

// Older kernels: the daemon whose command line names the mount point, as an
// absolute path or relative to the folder it was started in.
bool commandLineNames(const QString& processFolder, const QString& mountPoint)
{
    const QList<QByteArray> args
        = readSmall(processFolder + QStringLiteral("/cmdline")).split('\0');
    QString startFolder;
    for (const QByteArray& entry :
        readSmall(processFolder + QStringLiteral("/environ")).split('\0')) {
        if (entry.startsWith("PWD="))
            startFolder = QFile::decodeName(entry.mid(4));
    }
    for (qsizetype i = 1; i < args.size(); ++i) {
        const QString arg = QFile::decodeName(args[i]);
        if (arg.isEmpty())
            continue;
        const QString absolute
            = QDir::isAbsolutePath(arg) || startFolder.isEmpty() ? arg : startFolder + u'/' + arg;
        if (QDir::cleanPath(absolute) == mountPoint)
            return true;
    }
    return false;
}

} // namespace

namespace {

template <typename Serves>
std::optional<FuseDaemon> findDaemon(
    const QString& procRoot, quint32 connection, const BlockDevices& devices, Serves serves)
{
    const QStringList processes = QDir(procRoot).entryList(QDir::Dirs | QDir::NoDotAndDotDot);
    for (const QString& entry : processes) {
        bool numeric = false;
        const qint64 pid = entry.toLongLong(&numeric);
        if (!numeric)
            continue;
        const QString folder = procRoot + u'/' + entry;
        const ProcessFds fds = scanFds(folder, connection, devices);
        if (!fds.holdsFuse || !serves(folder, fds))
            continue;
        FuseDaemon daemon;
        daemon.pid = pid;
        const QByteArray program
            = readSmall(folder + QStringLiteral("/cmdline")).split('\0').value(0);
        daemon.program = QFileInfo(QFile::decodeName(program)).fileName();
        // A daemon that holds more than one disk open can't tell us which it serves.
        if (fds.devices.size() == 1)
            daemon.deviceName = *fds.devices.cbegin();
        return daemon;
    }
    return std::nullopt;
}

} // namespace

std::optional<FuseDaemon> findFuseDaemon(const QString& procRoot, quint32 connection,
    const QString& mountPoint, const BlockDevices& devices)
{
    return findDaemon(
        procRoot, connection, devices, [&](const QString& folder, const ProcessFds& fds) {
            return fds.connectionKnown ? fds.connectionMatches
                                       : commandLineNames(folder, mountPoint);
        });
}

std::optional<FuseDaemon> findFuseDaemonOfDevice(
    const QString& procRoot, const QString& deviceName, const BlockDevices& devices)
{
    return findDaemon(procRoot, quint32(-1), devices,
        [&](const QString&, const ProcessFds& fds) { return fds.devices.contains(deviceName); });
}

bool processExists(const QString& procRoot, qint64 pid)
{
    if (pid <= 0)
        return false;
    // "<pid> (<name>) <state> ...": a zombie has ended, only its parent hasn't looked.
    const QByteArray stat
        = readSmall(procRoot + u'/' + QString::number(pid) + QStringLiteral("/stat"));
    if (stat.isEmpty())
        return false;
    const qsizetype close = stat.lastIndexOf(')');
    const char state = close >= 0 && close + 2 < stat.size() ? stat[close + 2] : '?';
    return state != 'Z' && state != 'X';
}
