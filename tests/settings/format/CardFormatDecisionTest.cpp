// Which folders may be formatted: the decision over a fake machine (mount
// table, sysfs, FUSE daemons, blkid), never over folders merely declared as
// cards.
#include "FakeCardSystem.h"

#include "config/FolderVolumeSource.h"
#include "config/VolumeUtils.h"
#include "settings/format/CardFormatInspector.h"
#include "settings/format/CardFormatter.h"

#include <QDir>
#include <QUrl>

#include <gtest/gtest.h>

#include <functional>

namespace {

// The system disk: /boot, / and /home on three partitions of a SATA disk.
void addSystemDisk(FakeCardSystem& machine)
{
    machine.addDisk({ QStringLiteral("sda"), 8, 0, FakeCardSystem::Bus::Sata, false });
    machine.addPartition(QStringLiteral("sda"), QStringLiteral("sda1"), 8, 1);
    machine.addPartition(QStringLiteral("sda"), QStringLiteral("sda2"), 8, 2);
    machine.addPartition(QStringLiteral("sda"), QStringLiteral("sda3"), 8, 3);
    machine.addMount(
        8, 2, QStringLiteral("/"), QStringLiteral("ext4"), QStringLiteral("/dev/sda2"));
    machine.addMount(
        8, 1, QStringLiteral("/boot"), QStringLiteral("vfat"), QStringLiteral("/dev/sda1"));
    machine.addMount(
        8, 3, QStringLiteral("/home"), QStringLiteral("ext4"), QStringLiteral("/dev/sda3"));
}

// A card reader on USB with the card's partition sdb1, mounted by the kernel.
QString addUsbCard(FakeCardSystem& machine, ScriptedRunner& runner, const QString& folderName,
    const QString& label, const QString& type = QStringLiteral("vfat"))
{
    machine.addDisk({ QStringLiteral("sdb"), 8, 16, FakeCardSystem::Bus::Usb, true });
    machine.addPartition(QStringLiteral("sdb"), QStringLiteral("sdb1"), 8, 17);
    const QString point = machine.folder(QStringLiteral("media/user/") + folderName);
    machine.addMount(8, 17, point, type, QStringLiteral("/dev/sdb1"),
        QStringLiteral("rw,uid=1000,gid=1000,fmask=0022,dmask=0022,codepage=437,utf8"));
    runner.blkid(QStringLiteral("sdb1"), type, label,
        type == QLatin1String("vfat") ? QStringLiteral("FAT32") : QString());
    return point;
}

struct Expect {
    FormatRefusal refusal = FormatRefusal::None;
    QString device;
    QString fileSystem;
    int fatBits = 0;
    QString label;
    FormatBackend backend = FormatBackend::None;
    MountKind kind = MountKind::Kernel;
};

Expect refused(FormatRefusal refusal)
{
    Expect expect;
    expect.refusal = refusal;
    return expect;
}

struct Case {
    const char* name;
    // Builds the machine and returns the folder the user asks to format.
    std::function<QString(FakeCardSystem&, ScriptedRunner&)> setup;
    Expect expect;
    bool isRoot = true;
    bool systemBus = false;
};

const FormatBackend kCli = FormatBackend::CommandLine;

const Case kCases[] = {
    { "sd card in a usb reader",
        [](FakeCardSystem& m, ScriptedRunner& r) {
            return addUsbCard(m, r, QStringLiteral("DASHCAM"), QStringLiteral("DASHCAM"));
        },
        { FormatRefusal::None, QStringLiteral("sdb1"), QStringLiteral("vfat"), 32,
            QStringLiteral("DASHCAM"), kCli } },
    { "built-in sd reader reports removable 0",
        [](FakeCardSystem& m, ScriptedRunner& r) {
            m.addDisk({ QStringLiteral("mmcblk0"), 179, 0, FakeCardSystem::Bus::SdReader, false });
            m.addPartition(QStringLiteral("mmcblk0"), QStringLiteral("mmcblk0p1"), 179, 1);
            const QString point = m.folder(QStringLiteral("media/user/CAM 2"));
            m.addMount(179, 1, point, QStringLiteral("exfat"), QStringLiteral("/dev/mmcblk0p1"));
            r.blkid(QStringLiteral("mmcblk0p1"), QStringLiteral("exfat"), QStringLiteral("CAM 2"));
            return point;
        },
        { FormatRefusal::None, QStringLiteral("mmcblk0p1"), QStringLiteral("exfat"), 0,
            QStringLiteral("CAM 2"), kCli } },
    { "usb stick that calls itself fixed",
        [](FakeCardSystem& m, ScriptedRunner& r) {
            m.addDisk({ QStringLiteral("sdc"), 8, 32, FakeCardSystem::Bus::Usb, false });
            const QString point = m.folder(QStringLiteral("media/user/STICK"));
            m.addMount(8, 32, point, QStringLiteral("vfat"), QStringLiteral("/dev/sdc"));
            r.blkid(QStringLiteral("sdc"), QStringLiteral("vfat"), QStringLiteral("STICK"),
                QStringLiteral("FAT16"));
            return point;
        },
        { FormatRefusal::None, QStringLiteral("sdc"), QStringLiteral("vfat"), 16,
            QStringLiteral("STICK"), kCli } },
    { "fixed sata disk",
        [](FakeCardSystem& m, ScriptedRunner& r) {
            m.addDisk({ QStringLiteral("sdd"), 8, 48, FakeCardSystem::Bus::Sata, false });
            const QString point = m.folder(QStringLiteral("data"));
            m.addMount(8, 48, point, QStringLiteral("vfat"), QStringLiteral("/dev/sdd"));
            r.blkid(QStringLiteral("sdd"), QStringLiteral("vfat"), QStringLiteral("DATA"));
            return point;
        },
        refused(FormatRefusal::NotRemovable) },
    { "loop device backed by an image file",
        [](FakeCardSystem& m, ScriptedRunner& r) {
            const QString image = m.folder(QStringLiteral("images")) + QStringLiteral("/card.img");
            QFile file(image);
            EXPECT_TRUE(file.open(QIODevice::WriteOnly));
            m.addLoop(QStringLiteral("loop3"), 3, image);
            const QString point = m.folder(QStringLiteral("mnt/DASH CAM"));
            m.addMount(0, 51, point, QStringLiteral("fuse.fusefat"), QStringLiteral("fusefat"),
                QStringLiteral("rw,user_id=0"));
            m.addFuseDaemon(4242, QStringLiteral("fusefat"), 51, QStringLiteral("loop3"), point);
            r.blkid(QStringLiteral("loop3"), QStringLiteral("vfat"), QStringLiteral("DASHCAM"),
                QStringLiteral("FAT16"));
            return point;
        },
        { FormatRefusal::None, QStringLiteral("loop3"), QStringLiteral("vfat"), 16,
            QStringLiteral("DASHCAM"), kCli, MountKind::FuseFat } },
    { "loop device whose image was deleted",
        [](FakeCardSystem& m, ScriptedRunner& r) {
            m.addLoop(QStringLiteral("loop4"), 4, QStringLiteral("/tmp/gone.img (deleted)"));
            const QString point = m.folder(QStringLiteral("mnt/gone"));
            m.addMount(7, 4, point, QStringLiteral("vfat"), QStringLiteral("/dev/loop4"));
            r.blkid(QStringLiteral("loop4"), QStringLiteral("vfat"), QStringLiteral("GONE"));
            return point;
        },
        refused(FormatRefusal::NotRemovable) },
    { "loop device over another disk",
        [](FakeCardSystem& m, ScriptedRunner& r) {
            m.addLoop(QStringLiteral("loop5"), 5, QStringLiteral("/dev/sda"));
            const QString point = m.folder(QStringLiteral("mnt/disk"));
            m.addMount(7, 5, point, QStringLiteral("vfat"), QStringLiteral("/dev/loop5"));
            r.blkid(QStringLiteral("loop5"), QStringLiteral("vfat"), QStringLiteral("X"));
            return point;
        },
        refused(FormatRefusal::NotRemovable) },
    { "exfat-fuse names its device in the mount table",
        [](FakeCardSystem& m, ScriptedRunner& r) {
            const QString image = m.folder(QStringLiteral("images")) + QStringLiteral("/x.img");
            QFile file(image);
            EXPECT_TRUE(file.open(QIODevice::WriteOnly));
            m.addLoop(QStringLiteral("loop6"), 6, image);
            const QString point = m.folder(QStringLiteral("mnt/EX CARD"));
            m.addMount(7, 6, point, QStringLiteral("fuseblk"), QStringLiteral("/dev/loop6"),
                QStringLiteral("rw,user_id=0,allow_other"));
            m.addFuseDaemon(
                4343, QStringLiteral("mount.exfat-fuse"), 77, QStringLiteral("loop6"), point);
            r.blkid(QStringLiteral("loop6"), QStringLiteral("exfat"), QStringLiteral("EX CARD"));
            return point;
        },
        { FormatRefusal::None, QStringLiteral("loop6"), QStringLiteral("exfat"), 0,
            QStringLiteral("EX CARD"), kCli, MountKind::FuseExfat } },
    { "fuse daemon of an older kernel found by its command line",
        [](FakeCardSystem& m, ScriptedRunner& r) {
            m.addDisk({ QStringLiteral("sde"), 8, 64, FakeCardSystem::Bus::Usb, true });
            const QString point = m.folder(QStringLiteral("mnt/old"));
            m.addMount(0, 60, point, QStringLiteral("fuse.fusefat"), QStringLiteral("fusefat"));
            m.addFuseDaemon(
                4444, QStringLiteral("fusefat"), 0, QStringLiteral("sde"), point, false);
            r.blkid(QStringLiteral("sde"), QStringLiteral("vfat"), QStringLiteral("OLD"));
            return point;
        },
        { FormatRefusal::None, QStringLiteral("sde"), QStringLiteral("vfat"), 32,
            QStringLiteral("OLD"), kCli, MountKind::FuseFat } },
    { "fuse mount whose program can't be found",
        [](FakeCardSystem& m, ScriptedRunner&) {
            const QString point = m.folder(QStringLiteral("mnt/orphan"));
            m.addMount(0, 61, point, QStringLiteral("fuse.fusefat"), QStringLiteral("fusefat"));
            return point;
        },
        refused(FormatRefusal::NoBlockDevice) },
    { "removable disk that holds the system (a live stick)",
        [](FakeCardSystem& m, ScriptedRunner& r) {
            m.addDisk({ QStringLiteral("sdf"), 8, 80, FakeCardSystem::Bus::Usb, true });
            m.addPartition(QStringLiteral("sdf"), QStringLiteral("sdf1"), 8, 81);
            m.addPartition(QStringLiteral("sdf"), QStringLiteral("sdf2"), 8, 82);
            m.addMount(
                8, 81, QStringLiteral("/usr"), QStringLiteral("ext4"), QStringLiteral("/dev/sdf1"));
            const QString point = m.folder(QStringLiteral("media/user/LIVE"));
            m.addMount(8, 82, point, QStringLiteral("vfat"), QStringLiteral("/dev/sdf2"));
            r.blkid(QStringLiteral("sdf2"), QStringLiteral("vfat"), QStringLiteral("LIVE"));
            return point;
        },
        refused(FormatRefusal::SystemVolume) },
    { "label Untitled",
        [](FakeCardSystem& m, ScriptedRunner& r) {
            return addUsbCard(m, r, QStringLiteral("Untitled"), QStringLiteral("Untitled"));
        },
        refused(FormatRefusal::UntitledVolume) },
    { "label Untitled 2",
        [](FakeCardSystem& m, ScriptedRunner& r) {
            return addUsbCard(m, r, QStringLiteral("CARD"), QStringLiteral("Untitled 2"));
        },
        refused(FormatRefusal::UntitledVolume) },
    { "no label, folder Untitled 3",
        [](FakeCardSystem& m, ScriptedRunner& r) {
            return addUsbCard(m, r, QStringLiteral("Untitled 3"), QString());
        },
        refused(FormatRefusal::UntitledVolume) },
    { "a label that merely contains Untitled",
        [](FakeCardSystem& m, ScriptedRunner& r) {
            return addUsbCard(m, r, QStringLiteral("MyUntitled"), QStringLiteral("MyUntitled"));
        },
        { FormatRefusal::None, QStringLiteral("sdb1"), QStringLiteral("vfat"), 32,
            QStringLiteral("MyUntitled"), kCli } },
    { "a subfolder of the card",
        [](FakeCardSystem& m, ScriptedRunner& r) {
            return addUsbCard(m, r, QStringLiteral("DASHCAM"), QStringLiteral("DASHCAM"))
                + QStringLiteral("/SETTING");
        },
        refused(FormatRefusal::NotAMountPoint) },
    { "a bind mount of a card's subfolder",
        [](FakeCardSystem& m, ScriptedRunner& r) {
            addUsbCard(m, r, QStringLiteral("DASHCAM"), QStringLiteral("DASHCAM"));
            const QString bind = m.folder(QStringLiteral("bound"));
            m.addMount(8, 17, bind, QStringLiteral("vfat"), QStringLiteral("/dev/sdb1"),
                QStringLiteral("rw"), QStringLiteral("/DCIM"));
            return bind;
        },
        refused(FormatRefusal::NotAMountPoint) },
    { "card mounted at two places",
        [](FakeCardSystem& m, ScriptedRunner& r) {
            const QString point
                = addUsbCard(m, r, QStringLiteral("DASHCAM"), QStringLiteral("DASHCAM"));
            m.addMount(8, 17, m.folder(QStringLiteral("again")), QStringLiteral("vfat"),
                QStringLiteral("/dev/sdb1"));
            return point;
        },
        refused(FormatRefusal::MountedElsewhere) },
    { "memory file system",
        [](FakeCardSystem& m, ScriptedRunner&) {
            const QString point = m.folder(QStringLiteral("ram"));
            m.addMount(0, 30, point, QStringLiteral("tmpfs"), QStringLiteral("tmpfs"));
            return point;
        },
        refused(FormatRefusal::NoBlockDevice) },
    { "ntfs on a card",
        [](FakeCardSystem& m, ScriptedRunner& r) {
            return addUsbCard(
                m, r, QStringLiteral("WIN"), QStringLiteral("WIN"), QStringLiteral("ntfs"));
        },
        refused(FormatRefusal::UnsupportedFileSystem) },
    { "desktop user without the system bus",
        [](FakeCardSystem& m, ScriptedRunner& r) {
            return addUsbCard(m, r, QStringLiteral("DASHCAM"), QStringLiteral("DASHCAM"));
        },
        refused(FormatRefusal::NoPermission), false, false },
    { "desktop user with UDisks2",
        [](FakeCardSystem& m, ScriptedRunner& r) {
            r.script(QStringLiteral("gdbus"), [](const QStringList& args) {
                const bool known
                    = args.contains(QStringLiteral("/org/freedesktop/UDisks2/block_devices/sdb1"));
                return CommandResult { true, known ? 0 : 1,
                    known ? QByteArray("interface org.freedesktop.UDisks2.Filesystem {\n}")
                          : QByteArray() };
            });
            return addUsbCard(m, r, QStringLiteral("DASHCAM"), QStringLiteral("DASHCAM"));
        },
        { FormatRefusal::None, QStringLiteral("sdb1"), QStringLiteral("vfat"), 32,
            QStringLiteral("DASHCAM"), FormatBackend::UDisks },
        false, true },
    { "blkid not allowed: label from udev's links, type from the mount",
        [](FakeCardSystem& m, ScriptedRunner& r) {
            const QString point
                = addUsbCard(m, r, QStringLiteral("MY CARD"), QStringLiteral("MY CARD"));
            r.fail(QStringLiteral("blkid"), 2);
            m.addLabelLink(QStringLiteral("MY\\x20CARD"), QStringLiteral("sdb1"));
            return point;
        },
        { FormatRefusal::None, QStringLiteral("sdb1"), QStringLiteral("vfat"), 32,
            QStringLiteral("MY CARD"), kCli } },
};

class CardFormatDecisionTest : public ::testing::TestWithParam<Case> { };

} // namespace

TEST_P(CardFormatDecisionTest, DecidesFromMountTableAndSysfs)
{
    const Case& c = GetParam();
    FakeCardSystem machine;
    ScriptedRunner runner;
    addSystemDisk(machine);
    const QString folder = c.setup(machine, runner);
    const FormatPlan plan
        = CardFormatInspector(machine.system(c.isRoot, c.systemBus), runner).inspect(folder);

    EXPECT_EQ(plan.refusal, c.expect.refusal) << plan.reason.toStdString();
    EXPECT_FALSE(plan.reason.isEmpty());
    // Deciding never changes anything: only blkid and gdbus introspect are run.
    for (const ScriptedRunner::Call& call : runner.calls()) {
        EXPECT_TRUE(call.program == QLatin1String("blkid")
            || (call.program == QLatin1String("gdbus")
                && call.arguments.value(0) == QLatin1String("introspect")))
            << call.program.toStdString();
    }
    if (c.expect.refusal != FormatRefusal::None) {
        EXPECT_EQ(plan.backend, FormatBackend::None);
        return;
    }
    EXPECT_TRUE(plan.allowed());
    EXPECT_EQ(plan.mountPoint, folder);
    EXPECT_EQ(plan.deviceName, c.expect.device);
    EXPECT_EQ(plan.fileSystem, c.expect.fileSystem);
    EXPECT_EQ(plan.fatBits, c.expect.fatBits);
    EXPECT_EQ(plan.label, c.expect.label);
    EXPECT_EQ(plan.backend, c.expect.backend);
    EXPECT_EQ(plan.mountKind, c.expect.kind);
}

INSTANTIATE_TEST_SUITE_P(Machines, CardFormatDecisionTest, ::testing::ValuesIn(kCases),
    [](const ::testing::TestParamInfo<Case>& info) {
        std::string name;
        for (const char* p = info.param.name; *p; ++p)
            name += std::isalnum(static_cast<unsigned char>(*p)) ? *p : '_';
        return name;
    });

// The system stacked on a disk as installers and live sticks do. Each stack is
// built on partition 2 of `disk` ("sdc", the stick that also holds the card,
// or "sda", a fixed disk beside it) and mounts the system's root.
struct SystemStack {
    const char* name;
    std::function<void(FakeCardSystem&, const QString& disk, quint32 minor)> build;
};

const SystemStack kSystemStacks[] = {
    { "LUKS root",
        [](FakeCardSystem& m, const QString& disk, quint32) {
            m.addMapper(QStringLiteral("dm-0"), 0, QStringLiteral("luks-1f2e"), { disk + u'2' });
            m.addMount(254, 0, QStringLiteral("/"), QStringLiteral("ext4"),
                QStringLiteral("/dev/mapper/luks-1f2e"));
        } },
    { "LVM root on LUKS",
        [](FakeCardSystem& m, const QString& disk, quint32) {
            m.addMapper(QStringLiteral("dm-0"), 0, QStringLiteral("luks-1f2e"), { disk + u'2' });
            m.addMapper(
                QStringLiteral("dm-1"), 1, QStringLiteral("vg-root"), { QStringLiteral("dm-0") });
            m.addMount(254, 1, QStringLiteral("/"), QStringLiteral("ext4"),
                QStringLiteral("/dev/mapper/vg-root"));
        } },
    { "LVM root over two disks",
        [](FakeCardSystem& m, const QString& disk, quint32) {
            m.addDisk({ QStringLiteral("sde"), 8, 64, FakeCardSystem::Bus::Sata, false });
            m.addPartition(QStringLiteral("sde"), QStringLiteral("sde1"), 8, 65);
            m.addMapper(QStringLiteral("dm-0"), 0, QStringLiteral("vg-root"),
                { QStringLiteral("sde1"), disk + u'2' });
            m.addMount(254, 0, QStringLiteral("/"), QStringLiteral("xfs"),
                QStringLiteral("/dev/mapper/vg-root"));
        } },
    { "overlay root of a live stick",
        [](FakeCardSystem& m, const QString& disk, quint32 minor) {
            m.addMount(8, minor, QStringLiteral("/run/live/medium"), QStringLiteral("iso9660"),
                QStringLiteral("/dev/") + disk + u'2');
            m.addLoop(QStringLiteral("loop0"), 0,
                QStringLiteral("/run/live/medium/live/filesystem.squashfs"));
            m.addMount(7, 0, QStringLiteral("/run/live/rootfs/filesystem.squashfs"),
                QStringLiteral("squashfs"), QStringLiteral("/dev/loop0"));
            m.addMount(0, 40, QStringLiteral("/run/live/overlay"), QStringLiteral("tmpfs"),
                QStringLiteral("tmpfs"));
            m.addMount(0, 41, QStringLiteral("/"), QStringLiteral("overlay"),
                QStringLiteral("overlay"),
                QStringLiteral("rw,lowerdir=/run/live/rootfs/filesystem.squashfs/,"
                               "upperdir=/run/live/overlay/rw,workdir=/run/live/overlay/work"));
        } },
    { "loop root in an image file",
        [](FakeCardSystem& m, const QString& disk, quint32 minor) {
            m.addMount(8, minor, QStringLiteral("/isodevice"), QStringLiteral("ext4"),
                QStringLiteral("/dev/") + disk + u'2');
            m.addLoop(QStringLiteral("loop1"), 1, QStringLiteral("/isodevice/boot/root.img"));
            m.addMount(
                7, 1, QStringLiteral("/"), QStringLiteral("ext4"), QStringLiteral("/dev/loop1"));
        } },
    { "btrfs root with an anonymous device number",
        [](FakeCardSystem& m, const QString& disk, quint32) {
            m.addMount(0, 31, QStringLiteral("/"), QStringLiteral("btrfs"),
                QStringLiteral("/dev/") + disk + u'2', QStringLiteral("rw,subvol=/@"),
                QStringLiteral("/@"));
        } },
};

TEST(CardFormatDecisionTest, NoVolumeOnADiskUnderTheSystemHoweverDeepItIsStacked)
{
    for (const SystemStack& stack : kSystemStacks) {
        for (const bool sameStick : { true, false }) {
            SCOPED_TRACE(std::string(stack.name) + (sameStick ? ", on the card's stick" : ""));
            FakeCardSystem machine;
            ScriptedRunner runner;
            machine.addDisk({ QStringLiteral("sda"), 8, 0, FakeCardSystem::Bus::Sata, false });
            machine.addPartition(QStringLiteral("sda"), QStringLiteral("sda2"), 8, 2);
            machine.addDisk({ QStringLiteral("sdc"), 8, 32, FakeCardSystem::Bus::Usb, true });
            machine.addPartition(QStringLiteral("sdc"), QStringLiteral("sdc1"), 8, 33);
            machine.addPartition(QStringLiteral("sdc"), QStringLiteral("sdc2"), 8, 34);
            const QString disk = sameStick ? QStringLiteral("sdc") : QStringLiteral("sda");
            stack.build(machine, disk, sameStick ? 34 : 2);
            const QString card = machine.folder(QStringLiteral("media/user/DASHCAM"));
            machine.addMount(8, 33, card, QStringLiteral("vfat"), QStringLiteral("/dev/sdc1"));
            runner.blkid(QStringLiteral("sdc1"), QStringLiteral("vfat"), QStringLiteral("DASHCAM"));

            const FormatPlan plan = CardFormatInspector(machine.system(), runner).inspect(card);
            EXPECT_EQ(plan.refusal, sameStick ? FormatRefusal::SystemVolume : FormatRefusal::None)
                << plan.reason.toStdString();
        }
    }
}

TEST(CardFormatDecisionTest, FixedDisksAreNeverAskedAboutTheirLabel)
{
    FakeCardSystem machine;
    ScriptedRunner runner;
    addSystemDisk(machine);
    runner.blkid(QStringLiteral("sda2"), QStringLiteral("ext4"), QStringLiteral("root"));
    const FormatPlan plan
        = CardFormatInspector(machine.system(), runner).inspect(QStringLiteral("/"));
    EXPECT_EQ(plan.refusal, FormatRefusal::NotRemovable);
    EXPECT_TRUE(runner.calls().isEmpty());
}

TEST(CardFormatDecisionTest, TheMountPointOfAProtectedFolderIsRefusedEvenOnACard)
{
    FakeCardSystem machine;
    ScriptedRunner runner;
    addSystemDisk(machine);
    const QString point
        = addUsbCard(machine, runner, QStringLiteral("CACHE"), QStringLiteral("CACHE"));
    CardFormatSystem system = machine.system();
    system.protectedPaths << point + QStringLiteral("/tavro-cache");
    EXPECT_EQ(
        CardFormatInspector(system, runner).inspect(point).refusal, FormatRefusal::SystemVolume);
}

TEST(CardFormatDecisionTest, AFolderDeclaredAsACardOnAFixedDiskIsStillRefused)
{
    // The viewer's --card option makes any folder look like a card to the
    // clip list; the format looks at the real disk underneath.
    FakeCardSystem machine;
    ScriptedRunner runner;
    addSystemDisk(machine);
    const QString declared = machine.folder(QStringLiteral("demo-card"));
    const QString mounted = machine.folder(QStringLiteral("fixed-volume"));
    machine.addDisk({ QStringLiteral("sdd"), 8, 48, FakeCardSystem::Bus::Sata, false });
    machine.addMount(8, 48, mounted, QStringLiteral("vfat"), QStringLiteral("/dev/sdd"));
    auto cards = std::make_shared<FolderVolumeSource>();
    cards->addFolder(declared, QStringLiteral("DASHCAM"));
    cards->addFolder(mounted, QStringLiteral("DASHCAM"));
    Utils::setVolumeSource(cards);
    ASSERT_TRUE(Utils::isEXteranlMemoryWithURL(QUrl::fromLocalFile(declared)));

    const CardFormatInspector inspector(machine.system(), runner);
    EXPECT_EQ(inspector.inspect(declared).refusal, FormatRefusal::NotAMountPoint);
    EXPECT_EQ(inspector.inspect(mounted).refusal, FormatRefusal::NotRemovable);
    EXPECT_EQ(inspector.inspect(machine.root() + QStringLiteral("/missing")).refusal,
        FormatRefusal::NotAMountPoint);
    Utils::setVolumeSource(nullptr);
}

TEST(CardFormatDecisionTest, UDisksObjectPathsEscapeWhatDBusPathsCannotHold)
{
    EXPECT_EQ(udisksBlockObjectPath(QStringLiteral("mmcblk0p1")),
        QStringLiteral("/org/freedesktop/UDisks2/block_devices/mmcblk0p1"));
    EXPECT_EQ(udisksBlockObjectPath(QStringLiteral("dm-0")),
        QStringLiteral("/org/freedesktop/UDisks2/block_devices/dm_2d0"));
}

TEST(CardFormatDecisionTest, TheFormatterLooksAgainAndLeavesAnotherCardAlone)
{
    FakeCardSystem machine;
    auto runner = std::make_shared<ScriptedRunner>();
    addSystemDisk(machine);
    const QString point
        = addUsbCard(machine, *runner, QStringLiteral("DASHCAM"), QStringLiteral("DASHCAM"));
    for (const char* tool : { "umount", "mkfs.vfat", "mount" })
        runner->succeed(QString::fromLatin1(tool));
    const CardFormatter formatter(machine.system(), runner);
    const FormatPlan plan = formatter.inspectNow(point);
    ASSERT_TRUE(plan.allowed()) << plan.reason.toStdString();

    // Another card went in at the same folder while the question was up: one
    // with another label, then one with the same label but another serial.
    EXPECT_EQ(plan.serial, QStringLiteral("1234-ABCD"));
    for (const auto& [label, serial] :
        { std::pair { "OTHER", "1234-ABCD" }, std::pair { "DASHCAM", "5678-0000" } }) {
        runner->blkid(QStringLiteral("sdb1"), QStringLiteral("vfat"), QLatin1String(label),
            QStringLiteral("FAT32"), QLatin1String(serial));
        const FormatResult changed = formatter.formatNow(plan);
        EXPECT_EQ(changed.outcome, FormatResult::Outcome::Failed) << serial;
        EXPECT_TRUE(changed.mounted);
        EXPECT_FALSE(runner->programs().contains(QStringLiteral("umount"))) << serial;
    }

    // The same card is formatted.
    runner->blkid(QStringLiteral("sdb1"), QStringLiteral("vfat"), QStringLiteral("DASHCAM"),
        QStringLiteral("FAT32"));
    EXPECT_TRUE(formatter.formatNow(plan).succeeded());
    EXPECT_TRUE(runner->programs().contains(QStringLiteral("mkfs.vfat")));
}

TEST(CardFormatDecisionTest, AFormatAskedForOnceTheViewerQuitsNeverStarts)
{
    FakeCardSystem machine;
    auto runner = std::make_shared<ScriptedRunner>();
    addSystemDisk(machine);
    const QString point
        = addUsbCard(machine, *runner, QStringLiteral("DASHCAM"), QStringLiteral("DASHCAM"));
    CardFormatActivity activity;
    const CardFormatter formatter(machine.system(), runner, activity);
    const FormatPlan plan = formatter.inspectNow(point);
    ASSERT_TRUE(plan.allowed()) << plan.reason.toStdString();
    const qsizetype inspected = runner->calls().size();

    EXPECT_FALSE(activity.closeStarts()); // nothing running yet
    const FormatResult result = formatter.formatNow(plan);
    EXPECT_EQ(result.outcome, FormatResult::Outcome::NotStarted);
    EXPECT_TRUE(result.mounted);
    EXPECT_EQ(runner->calls().size(), inspected) << "not even looked at again";
    EXPECT_FALSE(activity.isRunning());
}
