#include "settings/format/CardFormatInspector.h"

#include "settings/format/BlockDevices.h"
#include "settings/format/FormatCommandRunner.h"
#include "settings/format/FormatLog.h"
#include "settings/format/FuseDaemons.h"
#include "settings/format/MountTable.h"
#include "settings/format/PhysicalDisks.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>

#include <algorithm>

#include <unistd.h>

namespace {

// udev's encoding of labels in /dev/disk/by-label and ID_FS_LABEL_ENC: unsafe
// bytes as "\xHH".
QString decodeUdevString(const QString& text)
{
    QByteArray bytes = text.toUtf8();
    QByteArray out;
    for (qsizetype i = 0; i < bytes.size(); ++i) {
        if (bytes[i] == '\\' && i + 3 < bytes.size() && bytes[i + 1] == 'x') {
            bool ok = false;
            const int value = bytes.mid(i + 2, 2).toInt(&ok, 16);
            if (ok) {
                out.append(char(value));
                i += 3;
                continue;
            }
        }
        out.append(bytes[i]);
    }
    return QString::fromUtf8(out);
}

QString typeOfMount(const QString& mountType)
{
    if (mountType == QLatin1String("vfat") || mountType == QLatin1String("fuse.fusefat")
        || mountType == QLatin1String("msdos"))
        return QStringLiteral("vfat");
    if (mountType == QLatin1String("exfat") || mountType == QLatin1String("fuse.exfat"))
        return QStringLiteral("exfat");
    return {};
}

// The options a kernel mount is made with again: access flags of the mount and
// the ownership and name options of the FAT/exFAT driver.
QStringList keptMountOptions(const MountEntry& mount)
{
    static const QStringList kFlags { QStringLiteral("ro"), QStringLiteral("nosuid"),
        QStringLiteral("nodev"), QStringLiteral("noexec"), QStringLiteral("sync"),
        QStringLiteral("dirsync"), QStringLiteral("noatime") };
    static const QStringList kValued { QStringLiteral("uid="), QStringLiteral("gid="),
        QStringLiteral("fmask="), QStringLiteral("dmask="), QStringLiteral("umask="),
        QStringLiteral("allow_utime="), QStringLiteral("codepage="), QStringLiteral("iocharset="),
        QStringLiteral("shortname=") };
    QStringList kept;
    for (const QString& option : mount.mountOptions.split(u',', Qt::SkipEmptyParts)) {
        if (kFlags.contains(option))
            kept.append(option);
    }
    for (const QString& option : mount.superOptions.split(u',', Qt::SkipEmptyParts)) {
        const bool valued = std::any_of(kValued.begin(), kValued.end(),
            [&](const QString& prefix) { return option.startsWith(prefix); });
        if (valued || option == QLatin1String("utf8") || option == QLatin1String("flush"))
            kept.append(option);
    }
    return kept;
}

QString cleanProtectedPath(const QString& path)
{
    const QString canonical = QFileInfo(path).canonicalFilePath();
    return canonical.isEmpty() ? QDir::cleanPath(path) : canonical;
}

} // namespace

CardFormatSystem CardFormatSystem::live()
{
    CardFormatSystem system;
    system.protectedPaths = { QStringLiteral("/"), QStringLiteral("/home"), QStringLiteral("/usr"),
        QStringLiteral("/boot"), QStringLiteral("/boot/efi"),
        QStandardPaths::writableLocation(QStandardPaths::GenericCacheLocation),
        QStandardPaths::writableLocation(QStandardPaths::CacheLocation) };
    system.protectedPaths.removeAll(QString());
    system.isRoot = ::geteuid() == 0;
    QString busSocket = QStringLiteral("/run/dbus/system_bus_socket");
    const QByteArray address = qgetenv("DBUS_SYSTEM_BUS_ADDRESS");
    if (address.startsWith("unix:path="))
        busSocket = QFile::decodeName(address.mid(10).split(',').value(0));
    system.systemBus = QFileInfo(busSocket).exists();
    return system;
}

QString udisksBlockObjectPath(const QString& deviceName)
{
    // UDisks2 escapes every byte outside [A-Za-z0-9] as "_xx".
    QString escaped;
    for (const char c : deviceName.toUtf8()) {
        const bool plain
            = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9');
        escaped += plain ? QString(QLatin1Char(c))
                         : QStringLiteral("_%1").arg(uchar(c), 2, 16, QLatin1Char('0'));
    }
    return QStringLiteral("/org/freedesktop/UDisks2/block_devices/") + escaped;
}

CardFormatInspector::CardFormatInspector(CardFormatSystem system, FormatCommandRunner& runner)
    : m_system(std::move(system))
    , m_runner(runner)
{
}

FormatPlan CardFormatInspector::refuse(
    FormatPlan plan, FormatRefusal refusal, const QString& detail) const
{
    plan.refusal = refusal;
    plan.backend = FormatBackend::None;
    plan.reason = describeRefusal(refusal);
    if (!detail.isEmpty())
        plan.reason += QStringLiteral(" (") + detail + u')';
    qCDebug(lcFormat) << "refused" << plan.cardRoot << plan.reason;
    return plan;
}

FormatPlan CardFormatInspector::inspect(const QString& cardRoot) const
{
    FormatPlan plan;
    plan.cardRoot = cardRoot;
    const QString folder = QFileInfo(cardRoot).canonicalFilePath();
    if (folder.isEmpty() || !QFileInfo(folder).isDir())
        return refuse(plan, FormatRefusal::NotAMountPoint, QStringLiteral("no such folder"));

    const QList<MountEntry> mounts = MountTable::read(m_system.mountInfoPath);
    const std::optional<MountEntry> mount = MountTable::mountHolding(mounts, folder);
    if (!mount || mount->mountPoint != folder)
        return refuse(plan, FormatRefusal::NotAMountPoint,
            mount ? QStringLiteral("it lies on the volume mounted at ") + mount->mountPoint
                  : QString());
    if (mount->root != QLatin1String("/"))
        return refuse(
            plan, FormatRefusal::NotAMountPoint, QStringLiteral("a bind mount of a subfolder"));
    plan.mountPoint = folder;
    plan.mountType = mount->fsType;

    locateDevice(*mount, plan);
    if (plan.deviceName.isEmpty())
        return refuse(plan, FormatRefusal::NoBlockDevice, mount->fsType);

    const FormatRefusal deviceRefusal = checkDevice(plan.deviceName, folder, mounts);
    if (deviceRefusal != FormatRefusal::None)
        return refuse(plan, deviceRefusal, plan.devicePath());

    const Identity identity = identify(plan.deviceName, mount->fsType);
    plan.fileSystem = identity.type;
    plan.fatBits = identity.fatBits;
    plan.label = identity.label;
    plan.serial = identity.serial;
    plan.volumeName = identity.label.isEmpty() ? QFileInfo(folder).fileName() : identity.label;
    if (plan.volumeName.startsWith(QLatin1String("Untitled")))
        return refuse(plan, FormatRefusal::UntitledVolume, plan.volumeName);

    const BlockDevices devices(m_system.sysRoot);
    for (const MountEntry& other : mounts) {
        const bool sameEntry = other.mountId == mount->mountId;
        if (!sameEntry && !other.isFuse()
            && devices.nameForNumber(other.major, other.minor) == plan.deviceName)
            return refuse(plan, FormatRefusal::MountedElsewhere, other.mountPoint);
    }
    if (plan.fileSystem != QLatin1String("vfat") && plan.fileSystem != QLatin1String("exfat"))
        return refuse(plan, FormatRefusal::UnsupportedFileSystem, identity.type);

    chooseBackend(*mount, plan);
    if (plan.backend == FormatBackend::None)
        return refuse(plan, FormatRefusal::NoPermission);

    plan.refusal = FormatRefusal::None;
    plan.reason = describeRefusal(FormatRefusal::None);
    return plan;
}

// The block device under the mount: from its number for kernel and "fuseblk"
// mounts, from the FUSE program's open files for other FUSE mounts.
void CardFormatInspector::locateDevice(const MountEntry& mount, FormatPlan& plan) const
{
    const BlockDevices devices(m_system.sysRoot);
    if (mount.isFuse() && mount.fsType != QLatin1String("fuseblk")) {
        if (const auto daemon
            = findFuseDaemon(m_system.procRoot, mount.minor, plan.mountPoint, devices)) {
            plan.deviceName = daemon->deviceName;
            plan.fuseDaemonPid = daemon->pid;
        }
        return;
    }
    plan.deviceName = devices.nameForNumber(mount.major, mount.minor);
    if (mount.isFuse() && !plan.deviceName.isEmpty()) {
        if (const auto daemon = findFuseDaemonOfDevice(m_system.procRoot, plan.deviceName, devices))
            plan.fuseDaemonPid = daemon->pid;
    }
}

void CardFormatInspector::chooseBackend(const MountEntry& mount, FormatPlan& plan) const
{
    if (!mount.isFuse()) {
        plan.mountKind = MountKind::Kernel;
        plan.mountOptions = keptMountOptions(mount);
    } else {
        plan.mountKind
            = plan.fileSystem == QLatin1String("vfat") ? MountKind::FuseFat : MountKind::FuseExfat;
    }
    if (plan.mountKind == MountKind::Kernel) {
        if (m_system.systemBus && udisksKnows(plan.deviceName))
            plan.backend = FormatBackend::UDisks;
        else if (m_system.isRoot)
            plan.backend = FormatBackend::CommandLine;
    } else if (m_system.isRoot
        || ::access(QFile::encodeName(plan.devicePath()).constData(), W_OK) == 0) {
        // A FUSE mount is the user's own: whoever may write the device may
        // unmount it, format it and mount it again.
        plan.backend = FormatBackend::CommandLine;
    }
}

FormatRefusal CardFormatInspector::checkDevice(
    const QString& deviceName, const QString& mountPoint, const QList<MountEntry>& mounts) const
{
    const BlockDevices devices(m_system.sysRoot);
    if (deviceName.startsWith(QLatin1String("loop"))) {
        // A loop device counts as a card only when it is backed by an image
        // file (never by another disk).
        const QString backing = devices.loopBackingFile(deviceName);
        const QFileInfo image(backing);
        if (backing.isEmpty() || !image.isFile() || image.isSymLink())
            return FormatRefusal::NotRemovable;
    } else if (!devices.isRemovableMedia(deviceName)) {
        return FormatRefusal::NotRemovable;
    }

    // The card's disk may carry no system folder, however deep the system
    // sits above its disks (LUKS, LVM, a loop file, an overlay of a live
    // stick). A loop card is its own disk: formatting it writes only into
    // its image file.
    const QString disk = devices.diskOf(deviceName);
    const PhysicalDisks physical(devices, mounts, m_system.devRoot);
    for (const QString& path : m_system.protectedPaths) {
        const std::optional<MountEntry> holder
            = MountTable::mountHolding(mounts, cleanProtectedPath(path));
        if (!holder)
            continue;
        if (holder->mountPoint == mountPoint)
            return FormatRefusal::SystemVolume;
        const QSet<QString> under = physical.ofMount(*holder);
        if (under.contains(deviceName) || under.contains(disk)) {
            qCDebug(lcFormat) << path << "lives on" << under;
            return FormatRefusal::SystemVolume;
        }
    }
    return FormatRefusal::None;
}

QMap<QByteArray, QString> parseBlkidUdev(const QByteArray& output)
{
    QMap<QByteArray, QString> values;
    for (const QByteArray& line : output.split('\n')) {
        const qsizetype eq = line.indexOf('=');
        if (eq > 0)
            values.insert(line.left(eq).trimmed(),
                decodeUdevString(QString::fromUtf8(line.mid(eq + 1).trimmed())));
    }
    return values;
}

CardFormatInspector::Identity CardFormatInspector::identify(
    const QString& deviceName, const QString& mountType) const
{
    const CommandResult blkid = m_runner.run(QStringLiteral("blkid"),
        { QStringLiteral("-p"), QStringLiteral("-o"), QStringLiteral("udev"),
            QStringLiteral("/dev/") + deviceName });
    Identity identity;
    if (blkid.succeeded()) {
        const QMap<QByteArray, QString> values = parseBlkidUdev(blkid.output);
        identity.type = values.value("ID_FS_TYPE");
        identity.label = values.value("ID_FS_LABEL_ENC");
        identity.serial = values.value("ID_FS_UUID");
        const QString version = values.value("ID_FS_VERSION");
        if (version.startsWith(QLatin1String("FAT")))
            identity.fatBits = version.mid(3).toInt();
    }
    if (identity.type.isEmpty()) {
        // Not allowed to read the device: what the mount table and udev's
        // label and serial links tell.
        identity = identifyByLinks(deviceName);
        identity.type = typeOfMount(mountType);
    }
    if (identity.type == QLatin1String("vfat") && identity.fatBits != 12 && identity.fatBits != 16)
        identity.fatBits = 32;
    if (identity.type != QLatin1String("vfat"))
        identity.fatBits = 0;
    return identity;
}

CardFormatInspector::Identity CardFormatInspector::identifyByLinks(const QString& deviceName) const
{
    // The links' names, "/dev/disk/by-label/DASH\x20CAM" → ../../sdb1.
    const auto linkTo = [&](const QString& folder) {
        const QDir links(m_system.devRoot + QStringLiteral("/disk/") + folder);
        for (const QString& name :
            links.entryList(QDir::System | QDir::Files | QDir::NoDotAndDotDot)) {
            const QString target = QFileInfo(links.filePath(name)).symLinkTarget();
            if (QFileInfo(target).fileName() == deviceName)
                return decodeUdevString(name);
        }
        return QString();
    };
    Identity identity;
    identity.label = linkTo(QStringLiteral("by-label"));
    identity.serial = linkTo(QStringLiteral("by-uuid"));
    return identity;
}

bool CardFormatInspector::udisksKnows(const QString& deviceName) const
{
    const CommandResult introspect = m_runner.run(QStringLiteral("gdbus"),
        { QStringLiteral("introspect"), QStringLiteral("--system"), QStringLiteral("--dest"),
            QStringLiteral("org.freedesktop.UDisks2"), QStringLiteral("--object-path"),
            udisksBlockObjectPath(deviceName) });
    return introspect.succeeded()
        && introspect.output.contains("org.freedesktop.UDisks2.Filesystem");
}
