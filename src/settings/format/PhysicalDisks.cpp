#include "settings/format/PhysicalDisks.h"

#include <QFileInfo>

namespace {

// Stacks are a handful of layers deep; anything deeper is a loop of links.
constexpr int kMaxDepth = 16;

// The kernel reports a deleted backing file as "PATH (deleted)".
QString withoutDeletedMark(QString path)
{
    static const QString kDeleted = QStringLiteral(" (deleted)");
    if (path.endsWith(kDeleted))
        path.chop(kDeleted.size());
    return path;
}

// The folders an overlay is made of, from its options
// ("lowerdir=/a:/b,upperdir=/c,workdir=/d"; newer kernels also list layers
// one by one as "lowerdir+=/a").
QStringList overlayLayers(const QString& superOptions)
{
    static const QStringList kKeys { QStringLiteral("lowerdir"), QStringLiteral("lowerdir+"),
        QStringLiteral("datadir+"), QStringLiteral("upperdir"), QStringLiteral("workdir") };
    QStringList layers;
    for (const QString& option : superOptions.split(u',', Qt::SkipEmptyParts)) {
        const qsizetype eq = option.indexOf(u'=');
        if (eq <= 0 || !kKeys.contains(option.left(eq)))
            continue;
        const QString value = MountTable::unescape(option.mid(eq + 1).toUtf8());
        for (const QString& layer : value.split(u':', Qt::SkipEmptyParts))
            layers.append(layer);
    }
    return layers;
}

} // namespace

PhysicalDisks::PhysicalDisks(
    const BlockDevices& devices, const QList<MountEntry>& mounts, QString devRoot)
    : m_devices(devices)
    , m_mounts(mounts)
    , m_devRoot(std::move(devRoot))
{
}

QString PhysicalDisks::deviceOf(const MountEntry& mount) const
{
    if (mount.isFuse() && mount.fsType != QLatin1String("fuseblk"))
        return {};
    const QString byNumber = m_devices.nameForNumber(mount.major, mount.minor);
    if (!byNumber.isEmpty())
        return byNumber;
    return mount.major == 0 ? deviceOfSource(mount.source) : QString();
}

// "/dev/sda2", "/dev/mapper/luks-…" or "/dev/disk/by-uuid/…": the device node's
// kernel name, from the link under /dev or the name itself.
QString PhysicalDisks::deviceOfSource(const QString& source) const
{
    static const QString kDev = QStringLiteral("/dev/");
    if (!source.startsWith(kDev))
        return {};
    const QString relative = source.mid(kDev.size());
    const QFileInfo node(m_devRoot + u'/' + relative);
    if (node.isSymLink()) {
        const QString target = QFileInfo(node.symLinkTarget()).fileName();
        if (m_devices.exists(target))
            return target;
    }
    const QString name = QFileInfo(relative).fileName();
    if (relative.startsWith(QLatin1String("mapper/")))
        return m_devices.mapperDevice(name);
    return m_devices.exists(name) ? name : QString();
}

QSet<QString> PhysicalDisks::ofMount(const MountEntry& mount) const
{
    Walk walk;
    collectMount(mount, walk);
    return walk.found;
}

QSet<QString> PhysicalDisks::ofDevice(const QString& name) const
{
    Walk walk;
    collectDevice(name, walk);
    return walk.found;
}

void PhysicalDisks::collectMount(const MountEntry& mount, Walk& walk) const
{
    if (walk.depth > kMaxDepth || walk.mounts.contains(mount.mountId))
        return;
    walk.mounts.insert(mount.mountId);
    ++walk.depth;
    const QString device = deviceOf(mount);
    if (!device.isEmpty())
        collectDevice(device, walk);
    else if (mount.fsType == QLatin1String("overlay") || mount.fsType == QLatin1String("overlayfs"))
        for (const QString& layer : overlayLayers(mount.superOptions))
            collectPath(layer, walk);
    --walk.depth;
}

void PhysicalDisks::collectDevice(const QString& name, Walk& walk) const
{
    if (walk.depth > kMaxDepth || name.isEmpty() || walk.found.contains(name))
        return;
    walk.found.insert(name);
    ++walk.depth;
    const QString disk = m_devices.diskOf(name);
    if (!disk.isEmpty() && disk != name)
        collectDevice(disk, walk);
    for (const QString& slave : m_devices.slaves(name))
        collectDevice(slave, walk);
    const QString backing = m_devices.loopBackingFile(name);
    if (!backing.isEmpty())
        collectPath(withoutDeletedMark(backing), walk);
    --walk.depth;
}

// A file or folder the kernel named (a loop's backing file, an overlay's
// layer): the disks of the mount that holds it.
void PhysicalDisks::collectPath(const QString& path, Walk& walk) const
{
    if (!path.startsWith(u'/'))
        return;
    if (const std::optional<MountEntry> holder = MountTable::mountHolding(m_mounts, path))
        collectMount(*holder, walk);
}
