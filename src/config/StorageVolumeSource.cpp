#include "config/StorageVolumeSource.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStorageInfo>

namespace {

QByteArray readSysAttribute(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    return file.read(64).trimmed();
}

// The folder of the whole disk for a block device: a partition's sysfs folder
// lives inside its disk's folder.
QString diskFolder(const QString& deviceFolder)
{
    const QString canonical = QFileInfo(deviceFolder).canonicalFilePath();
    if (canonical.isEmpty())
        return {};
    if (QFileInfo::exists(canonical + QStringLiteral("/partition")))
        return QFileInfo(canonical).absolutePath();
    return canonical;
}

QString deviceName(const QByteArray& device)
{
    const QString path = QString::fromLocal8Bit(device);
    if (!path.startsWith(QLatin1String("/dev/")))
        return {};
    const QString canonical = QFileInfo(path).canonicalFilePath();
    return QFileInfo(canonical.isEmpty() ? path : canonical).fileName();
}

} // namespace

StorageVolumeSource::StorageVolumeSource(QString sysBlockRoot)
    : m_sysBlockRoot(std::move(sysBlockRoot))
{
}

bool StorageVolumeSource::isRemovableBlockDevice(const QString& name, const QString& sysBlockRoot)
{
    if (name.isEmpty() || name.contains(u'/'))
        return false;
    const QString disk = diskFolder(sysBlockRoot + u'/' + name);
    if (disk.isEmpty())
        return false;
    if (readSysAttribute(disk + QStringLiteral("/removable")) == "1")
        return true;
    return readSysAttribute(disk + QStringLiteral("/device/type")) == "SD";
}

bool StorageVolumeSource::isNetworkFileSystem(const QString& type)
{
    static const QStringList kNetwork {
        QStringLiteral("nfs"),
        QStringLiteral("nfs4"),
        QStringLiteral("cifs"),
        QStringLiteral("smb3"),
        QStringLiteral("smbfs"),
        QStringLiteral("ncpfs"),
        QStringLiteral("afs"),
        QStringLiteral("9p"),
        QStringLiteral("ceph"),
        QStringLiteral("glusterfs"),
        QStringLiteral("fuse.sshfs"),
        QStringLiteral("sshfs"),
        QStringLiteral("fuse.rclone"),
        QStringLiteral("davfs"),
        QStringLiteral("fuse.davfs"),
    };
    return kNetwork.contains(type);
}

QList<VolumeInfo> StorageVolumeSource::volumes() const
{
    QList<VolumeInfo> list;
    const QList<QStorageInfo> mounted = QStorageInfo::mountedVolumes();
    for (const QStorageInfo& storage : mounted) {
        if (!storage.isValid() || !storage.isReady())
            continue;
        VolumeInfo volume;
        volume.rootPath = storage.rootPath();
        volume.device = QString::fromLocal8Bit(storage.device());
        volume.fileSystemType = QString::fromLatin1(storage.fileSystemType());
        volume.name
            = storage.name().isEmpty() ? QFileInfo(volume.rootPath).fileName() : storage.name();
        volume.isLocal = !isNetworkFileSystem(volume.fileSystemType);
        volume.isRemovable = isRemovableBlockDevice(deviceName(storage.device()), m_sysBlockRoot);
        list.append(volume);
    }
    return list;
}
