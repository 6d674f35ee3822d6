#include "settings/format/BlockDevices.h"

#include "config/StorageVolumeSource.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace {

QByteArray readAttribute(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    return file.read(4096).trimmed();
}

bool isPlainName(const QString& name)
{
    return !name.isEmpty() && !name.contains(u'/') && name != QLatin1String(".")
        && name != QLatin1String("..");
}

} // namespace

BlockDevices::BlockDevices(QString sysRoot)
    : m_sysRoot(std::move(sysRoot))
{
}

QString BlockDevices::classFolder(const QString& name) const
{
    return m_sysRoot + QStringLiteral("/class/block/") + name;
}

QString BlockDevices::nameForNumber(quint32 major, quint32 minor) const
{
    const QString link = m_sysRoot + QStringLiteral("/dev/block/%1:%2").arg(major).arg(minor);
    const QString target = QFileInfo(link).canonicalFilePath();
    if (target.isEmpty())
        return {};
    const QString name = QFileInfo(target).fileName();
    return exists(name) ? name : QString();
}

bool BlockDevices::exists(const QString& name) const
{
    return isPlainName(name) && QFileInfo(classFolder(name)).isDir();
}

QString BlockDevices::diskOf(const QString& name) const
{
    if (!exists(name))
        return {};
    const QString folder = QFileInfo(classFolder(name)).canonicalFilePath();
    if (QFileInfo::exists(folder + QStringLiteral("/partition")))
        return QFileInfo(QFileInfo(folder).absolutePath()).fileName();
    return name;
}

bool BlockDevices::isRemovableMedia(const QString& name) const
{
    if (!exists(name))
        return false;
    if (StorageVolumeSource::isRemovableBlockDevice(
            name, m_sysRoot + QStringLiteral("/class/block")))
        return true;
    // USB card readers and sticks: the disk's device path runs through a USB
    // bus ("…/usb2/2-1/2-1:1.0/host6/…/block/sdc").
    const QString disk = QFileInfo(classFolder(diskOf(name))).canonicalFilePath();
    return disk.contains(QLatin1String("/usb"));
}

QString BlockDevices::loopBackingFile(const QString& name) const
{
    if (!exists(name) || !name.startsWith(QLatin1String("loop")))
        return {};
    return QString::fromLocal8Bit(
        readAttribute(classFolder(name) + QStringLiteral("/loop/backing_file")));
}

QStringList BlockDevices::slaves(const QString& name) const
{
    if (!exists(name))
        return {};
    QStringList names;
    const QDir folder(classFolder(name) + QStringLiteral("/slaves"));
    for (const QString& entry :
        folder.entryList(QDir::AllEntries | QDir::System | QDir::NoDotAndDotDot)) {
        if (exists(entry))
            names.append(entry);
    }
    return names;
}

QString BlockDevices::mapperDevice(const QString& mapperName) const
{
    if (!isPlainName(mapperName))
        return {};
    const QDir block(m_sysRoot + QStringLiteral("/class/block"));
    for (const QString& name : block.entryList(
             { QStringLiteral("dm-*") }, QDir::AllEntries | QDir::System | QDir::NoDotAndDotDot)) {
        if (readAttribute(classFolder(name) + QStringLiteral("/dm/name")) == mapperName.toUtf8())
            return name;
    }
    return {};
}
