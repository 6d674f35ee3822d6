// Which folders may be formatted: the decision over a fake machine (mount
// table, sysfs, FUSE daemons, blkid), never over folders merely declared as
// cards; and the formatter's last look before it formats.
#include "FakeCardSystem.h"
#include "FakeVolumeSource.h"

#include "config/FolderVolumeSource.h"
#include "config/VolumeUtils.h"
#include "settings/format/CardFormatter.h"

#include <QUrl>

#include <gtest/gtest.h>

namespace {

// The system disk: /boot, / and /home on three partitions of a SATA disk.
const QString kSystemDisk = QStringLiteral(
    "disk sda 8:0 sata; part sda sda1 8:1; part sda sda2 8:2; part sda sda3 8:3; "
    "mount 8:2 / ext4 /dev/sda2; mount 8:1 /boot vfat /dev/sda1; mount 8:3 /home ext4 /dev/sda3;");

// A card reader on USB with the card's partition sdb1 mounted at media/user/FOLDER.
QString usbCard(const char* folder, const char* label, const char* type = "vfat")
{
    return QStringLiteral("disk sdb 8:16 usb removable; part sdb sdb1 8:17; "
                          "mount 8:17 media/user/%1 %3 /dev/sdb1 rw,uid=1000,gid=1000,utf8; "
                          "blkid sdb1 %3 %2 %4;")
        .arg(QLatin1String(folder), QLatin1String(label), QLatin1String(type),
            QLatin1String(qstrcmp(type, "vfat") == 0 ? "FAT32" : ""));
}

// The plan in one line: the refusal, or device, type, FAT bits, label, backend and mount kind.
QString summary(const FormatPlan& plan)
{
    const char* const refusals[]
        = { "allowed", "not a mount point", "no block device", "not removable", "system volume",
              "untitled", "mounted elsewhere", "unsupported", "no permission" };
    if (!plan.allowed())
        return QLatin1String(refusals[int(plan.refusal)]);
    const char* const backends[] = { "none", "udisks", "cli" };
    const char* const kinds[] = { "kernel", "fusefat", "fuseexfat" };
    return QStringLiteral("%1 %2/%3 '%4' %5 %6")
        .arg(plan.deviceName, plan.fileSystem)
        .arg(plan.fatBits)
        .arg(plan.label, QLatin1String(backends[int(plan.backend)]),
            QLatin1String(kinds[int(plan.mountKind)]));
}

struct Case {
    QString machine; // see FakeCardSystem::build
    const char* folder; // under the machine
    const char* expected; // see summary()
    bool isRoot = true;
    bool systemBus = false;
};

QList<Case> cases()
{
    // Cards in USB and built-in readers, a stick that calls itself fixed, loop
    // devices and FUSE mounts (one found by its daemon's command line only),
    // refusals, and a label read from udev's links when blkid may not look.
    return {
        { usbCard("DASHCAM", "DASHCAM"), "media/user/DASHCAM",
            "sdb1 vfat/32 'DASHCAM' cli kernel" },
        { "disk mmcblk0 179:0 sd; part mmcblk0 mmcblk0p1 179:1; "
          "mount 179:1 media/user/CAM~2 exfat /dev/mmcblk0p1; blkid mmcblk0p1 exfat CAM~2",
            "media/user/CAM 2", "mmcblk0p1 exfat/0 'CAM 2' cli kernel" },
        { "disk sdc 8:32 usb; mount 8:32 STICK vfat /dev/sdc; blkid sdc vfat STICK FAT16", "STICK",
            "sdc vfat/16 'STICK' cli kernel" },
        { "disk sdc 8:32 usb; mount 8:32 F12 vfat /dev/sdc; blkid sdc vfat F12 FAT12", "F12",
            "sdc vfat/12 'F12' cli kernel" },
        { "disk sdd 8:48 sata; mount 8:48 data vfat /dev/sdd; blkid sdd vfat DATA", "data",
            "not removable" },
        { "loop loop3 3 image; mount 0:51 mnt/DASH~CAM fuse.fusefat fusefat rw,user_id=0; "
          "fuse 4242 fusefat 51 loop3 mnt/DASH~CAM; blkid loop3 vfat DASHCAM FAT16",
            "mnt/DASH CAM", "loop3 vfat/16 'DASHCAM' cli fusefat" },
        { "loop loop4 4 /tmp/gone.img~(deleted); mount 7:4 gone vfat /dev/loop4; blkid loop4 "
          "vfat GONE",
            "gone", "not removable" },
        { "loop loop5 5 /dev/sda; mount 7:5 disk vfat /dev/loop5; blkid loop5 vfat X", "disk",
            "not removable" },
        { "loop loop6 6 image; mount 7:6 EX~CARD fuseblk /dev/loop6 rw,user_id=0,allow_other; "
          "fuse 4343 mount.exfat-fuse 77 loop6 EX~CARD; blkid loop6 exfat EX~CARD",
            "EX CARD", "loop6 exfat/0 'EX CARD' cli fuseexfat" },
        { "disk sde 8:64 usb removable; mount 0:60 old fuse.fusefat fusefat; "
          "fuse 4444 fusefat 0 sde old old; blkid sde vfat OLD",
            "old", "sde vfat/32 'OLD' cli fusefat" },
        { "mount 0:61 orphan fuse.fusefat fusefat", "orphan", "no block device" },
        { "mount 0:30 ram tmpfs tmpfs", "ram", "no block device" },
        { "disk sdf 8:80 usb removable; part sdf sdf1 8:81; part sdf sdf2 8:82; "
          "mount 8:81 /usr ext4 /dev/sdf1; mount 8:82 LIVE vfat /dev/sdf2; blkid sdf2 vfat LIVE",
            "LIVE", "system volume" },
        { usbCard("CARD", "Untitled~2"), "media/user/CARD", "untitled" },
        { usbCard("Untitled~3", "-"), "media/user/Untitled 3", "untitled" },
        { usbCard("MyUntitled", "MyUntitled"), "media/user/MyUntitled",
            "sdb1 vfat/32 'MyUntitled' cli kernel" },
        { usbCard("DASHCAM", "DASHCAM"), "media/user/DASHCAM/SETTING", "not a mount point" },
        { usbCard("DASHCAM", "DASHCAM") + "mount 8:17 bound vfat /dev/sdb1 rw /DCIM", "bound",
            "not a mount point" },
        { usbCard("DASHCAM", "DASHCAM") + "mount 8:17 again vfat /dev/sdb1", "media/user/DASHCAM",
            "mounted elsewhere" },
        { usbCard("WIN", "WIN", "ntfs"), "media/user/WIN", "unsupported" },
        { usbCard("DASHCAM", "DASHCAM"), "media/user/DASHCAM", "no permission", false },
        { usbCard("DASHCAM", "DASHCAM") + "udisks sdb1", "media/user/DASHCAM",
            "sdb1 vfat/32 'DASHCAM' udisks kernel", false, true },
        { usbCard("DASHCAM", "DASHCAM") + "udisks sdb2", "media/user/DASHCAM", "no permission",
            false, true },
        { usbCard("MY~CARD", "MY~CARD") + "fail blkid 2; label MY\\x20CARD sdb1",
            "media/user/MY CARD", "sdb1 vfat/32 'MY CARD' cli kernel" },
    };
}

// Every command after the first `skip` as one line: "program arg arg".
QStringList commands(const ScriptedRunner& runner, qsizetype skip)
{
    QStringList lines;
    for (const auto& call : runner.calls().mid(skip))
        lines << (QStringList { call.program } + call.arguments).join(u' ');
    return lines;
}

} // namespace

TEST(CardFormatDecisionTest, DecidesFromMountTableAndSysfs)
{
    for (const Case& c : cases()) {
        SCOPED_TRACE(c.machine.toStdString());
        FakeCardSystem machine;
        ScriptedRunner runner;
        machine.build(kSystemDisk + c.machine, runner);
        const QString folder = machine.folder(QString::fromUtf8(c.folder));
        const FormatPlan plan
            = CardFormatInspector(machine.system(c.isRoot, c.systemBus), runner).inspect(folder);
        EXPECT_EQ(summary(plan), QString::fromUtf8(c.expected)) << plan.reason.toStdString();
        EXPECT_FALSE(plan.reason.isEmpty());
        EXPECT_EQ(plan.mountPoint, plan.allowed() ? folder : plan.mountPoint);
        // Deciding never changes anything: only blkid and gdbus introspect run.
        for (const ScriptedRunner::Call& call : runner.calls())
            EXPECT_TRUE(call.program == QLatin1String("blkid")
                || call.arguments.value(0) == QLatin1String("introspect"))
                << call.program.toStdString();
    }
}

TEST(CardFormatDecisionTest, NoVolumeOnADiskUnderTheSystemHoweverDeepItIsStacked)
{
    // The system stacked on partition 2 of DISK (the stick that also holds
    // the card, or a fixed disk beside it), as installers and live sticks do.
    const std::pair<const char*, const char*> stacks[] = {
        { "LUKS root", "mapper dm-0 0 luks-1f2e DISK2; mount 254:0 / ext4 /dev/mapper/luks-1f2e" },
        { "LVM root on LUKS",
            "mapper dm-0 0 luks-1f2e DISK2; mapper dm-1 1 vg-root dm-0; mount 254:1 / ext4 "
            "/dev/mapper/vg-root" },
        { "LVM root over two disks",
            "disk sde 8:64 sata; part sde sde1 8:65; mapper dm-0 0 vg-root sde1,DISK2; "
            "mount 254:0 / xfs /dev/mapper/vg-root" },
        { "overlay root of a live stick",
            "mount 8:MINOR /run/live/medium iso9660 /dev/DISK2; "
            "loop loop0 0 /run/live/medium/live/filesystem.squashfs; "
            "mount 7:0 /run/live/rootfs/filesystem.squashfs squashfs /dev/loop0; "
            "mount 0:40 /run/live/overlay tmpfs tmpfs; mount 0:41 / overlay overlay "
            "rw,lowerdir=/run/live/rootfs/filesystem.squashfs/,upperdir=/run/live/overlay/rw,"
            "workdir=/run/live/overlay/work" },
        { "loop root in an image file",
            "mount 8:MINOR /isodevice ext4 /dev/DISK2; loop loop1 1 /isodevice/boot/root.img; "
            "mount 7:1 / ext4 /dev/loop1" },
        { "btrfs root with an anonymous device number",
            "mount 0:31 / btrfs /dev/DISK2 rw,subvol=/@ /@" },
    };
    for (const auto& [name, stack] : stacks) {
        for (const bool sameStick : { true, false }) {
            SCOPED_TRACE(std::string(name) + (sameStick ? ", on the card's stick" : ""));
            FakeCardSystem machine;
            ScriptedRunner runner;
            machine.build(
                QStringLiteral("disk sda 8:0 sata; part sda sda2 8:2; disk sdc 8:32 usb removable; "
                               "part sdc sdc1 8:33; part sdc sdc2 8:34;")
                    + QString::fromLatin1(stack)
                          .replace(QStringLiteral("DISK"), sameStick ? "sdc" : "sda")
                          .replace(QStringLiteral("MINOR"), sameStick ? "34" : "2")
                    + "; mount 8:33 DASHCAM vfat /dev/sdc1; blkid sdc1 vfat DASHCAM",
                runner);
            const FormatPlan plan
                = CardFormatInspector(machine.system(), runner).inspect(machine.folder("DASHCAM"));
            EXPECT_EQ(
                summary(plan), sameStick ? "system volume" : "sdc1 vfat/32 'DASHCAM' cli kernel");
        }
    }
}

TEST(CardFormatDecisionTest, SystemFoldersAndDeclaredCardsAreRefusedWithoutAsking)
{
    FakeCardSystem machine;
    ScriptedRunner runner;
    machine.build(kSystemDisk + usbCard("CACHE", "CACHE"), runner);
    CardFormatSystem system = machine.system();
    // Fixed disks are never asked about their label.
    EXPECT_EQ(summary(CardFormatInspector(system, runner).inspect("/")), "not removable");
    EXPECT_TRUE(runner.calls().isEmpty());
    // The mount point of a protected folder is refused even on a card.
    const QString card = machine.folder("media/user/CACHE");
    system.protectedPaths << card + QStringLiteral("/tavro-cache");
    EXPECT_EQ(summary(CardFormatInspector(system, runner).inspect(card)), "system volume");
    // The viewer's --card option makes any folder look like a card to the
    // clip list; the format looks at the real disk underneath (a fixed disk
    // declared so is refused as any fixed disk is).
    const QString declared = machine.folder("demo-card");
    ScopedVolumeSource cards(std::make_shared<FolderVolumeSource>(
        QList<FolderVolumeSource::Folder> { { declared, "DASHCAM" } }));
    ASSERT_TRUE(Utils::isEXteranlMemoryWithURL(QUrl::fromLocalFile(declared)));
    const CardFormatInspector inspector(machine.system(), runner);
    EXPECT_EQ(summary(inspector.inspect(declared)), "not a mount point");
    EXPECT_EQ(summary(inspector.inspect(machine.root() + "/missing")), "not a mount point");
    // UDisks2 escapes every byte outside [A-Za-z0-9] in its object paths.
    EXPECT_EQ(udisksBlockObjectPath(QStringLiteral("az09AZ-_.@[`{/:")),
        QStringLiteral("/org/freedesktop/UDisks2/block_devices/az09AZ_2d_5f_2e_40_5b_60_7b_2f_3a"));
}

TEST(CardFormatDecisionTest, TheFormatterLooksAgainRunsItsCommandsAndSaysHowItEnded)
{
    FakeCardSystem machine;
    auto runner = std::make_shared<ScriptedRunner>();
    machine.build(kSystemDisk + usbCard("DASHCAM", "DASHCAM"), *runner);
    for (const char* tool : { "umount", "mkfs.vfat", "mount" })
        runner->succeed(QString::fromLatin1(tool));
    CardFormatActivity activity;
    const CardFormatter formatter(machine.system(), runner, activity);
    const FormatPlan plan = formatter.inspectNow(machine.folder("media/user/DASHCAM"));
    ASSERT_TRUE(plan.allowed()) << plan.reason.toStdString();
    EXPECT_EQ(plan.serial, QStringLiteral("1234-ABCD"));
    // The kernel's driver mounts the card again with its options.
    qsizetype looked = runner->calls().size() + 1;
    EXPECT_TRUE(formatter.formatNow(plan).succeeded());
    EXPECT_EQ(commands(*runner, looked),
        QStringList({ "umount " + plan.mountPoint, "blkid -p -o udev /dev/sdb1",
            "mkfs.vfat -F 32 -n DASHCAM /dev/sdb1",
            "mount -t vfat -o nosuid,nodev,uid=1000,gid=1000,utf8 /dev/sdb1 " + plan.mountPoint }));

    // A failing step: whether the card is mounted, and what the result says.
    using O = FormatResult::Outcome;
    const std::tuple<const char*, int, O, bool, const char*, int> failures[] = {
        { "umount", 1, O::Failed, true, "nothing was changed", 1 },
        { "umount", -1, O::NotStarted, true, "could not be run", 1 }, // not installed
        { "mkfs.vfat", 1, O::Failed, true, "mounted again", 4 },
        { "mkfs.vfat", -1, O::Failed, true, "could not be run", 4 },
        { "mount", 1, O::Failed, false, "no longer mounted", 4 },
    };
    for (const auto& [tool, exit, outcome, mounted, mentions, ran] : failures) {
        SCOPED_TRACE(std::string(tool) + " " + std::to_string(exit));
        if (exit < 0)
            runner->script(
                QString::fromLatin1(tool), [](const QStringList&) { return CommandResult {}; });
        else
            runner->fail(QString::fromLatin1(tool), exit, "device is busy\n");
        looked = runner->calls().size() + 1;
        const FormatResult result = formatter.formatNow(plan);
        EXPECT_EQ(result.outcome, outcome);
        EXPECT_EQ(result.mounted, mounted);
        EXPECT_EQ(result.mountPoint, mounted ? plan.mountPoint : QString());
        EXPECT_EQ(commands(*runner, looked).size(), ran);
        EXPECT_TRUE(result.detail.contains(QLatin1String(mentions))) << result.detail.toStdString();
        runner->succeed(QString::fromLatin1(tool));
    }

    // Another card went in at the same folder while the question was up: one
    // with another label, then one with the same label but another serial;
    // and one whose serial changes only once unmounted.
    for (const auto& [label, serial] :
        { std::pair { "OTHER", "1234-ABCD" }, { "DASHCAM", "5678-0000" } }) {
        runner->blkid(
            QStringLiteral("sdb1"), QStringLiteral("vfat"), label, QStringLiteral("FAT32"), serial);
        looked = runner->calls().size() + 1;
        const FormatResult changed = formatter.formatNow(plan);
        EXPECT_EQ(changed.outcome, O::Failed) << serial;
        EXPECT_TRUE(changed.mounted);
        EXPECT_TRUE(commands(*runner, looked).isEmpty()) << serial; // not even unmounted
    }
    int probes = 0;
    runner->script(QStringLiteral("blkid"), [&probes](const QStringList&) {
        return CommandResult { true, 0,
            ++probes > 1 ? "ID_FS_UUID=9999-0000\n"
                         : "ID_FS_LABEL_ENC=DASHCAM\nID_FS_UUID=1234-ABCD\nID_FS_TYPE=vfat\nID_FS_"
                           "VERSION=FAT32\n" };
    });
    looked = runner->calls().size() + 1;
    const FormatResult swapped = formatter.formatNow(plan);
    EXPECT_EQ(swapped.outcome, O::Failed);
    EXPECT_TRUE(swapped.detail.contains(QLatin1String("serial 1234-ABCD, now 9999-0000")))
        << swapped.detail.toStdString();
    EXPECT_EQ(
        commands(*runner, looked).size(), 3); // unmounted, looked, mounted again: nothing made
    EXPECT_FALSE(activity.isRunning());

    // Once the viewer has begun to quit, a format asked for never starts, nor looks.
    EXPECT_FALSE(activity.closeStarts());
    looked = runner->calls().size();
    const FormatResult late = formatter.formatNow(plan);
    EXPECT_EQ(late.outcome, O::NotStarted);
    EXPECT_TRUE(late.mounted);
    EXPECT_EQ(runner->calls().size(), looked);
}

TEST(CardFormatDecisionTest, ADesktopUserFormatsThroughUDisks)
{
    FakeCardSystem machine;
    auto runner = std::make_shared<ScriptedRunner>();
    machine.build(kSystemDisk + usbCard("DASHCAM", "DASH'CAM") + "udisks sdb1", *runner);
    const CardFormatter formatter(machine.system(false, true), runner);
    const FormatPlan plan = formatter.inspectNow(machine.folder("media/user/DASHCAM"));
    ASSERT_EQ(summary(plan), "sdb1 vfat/32 'DASH'CAM' udisks kernel");
    // The formatter looks again (the same calls) before it formats.
    const qsizetype looked = 2 * runner->calls().size();
    const FormatResult result = formatter.formatNow(plan);
    ASSERT_TRUE(result.succeeded()) << result.detail.toStdString();
    EXPECT_EQ(result.mountPoint, QStringLiteral("/media/user/DASHCAM1"));
    const QString call
        = QStringLiteral("gdbus call --system --dest org.freedesktop.UDisks2 --object-path "
                         "/org/freedesktop/UDisks2/block_devices/sdb1 --timeout 3600 --method ");
    // Type and label travel as two separate arguments; the quote is escaped for GVariant.
    EXPECT_EQ(commands(*runner, looked),
        QStringList({ call + "org.freedesktop.UDisks2.Filesystem.Unmount {}",
            call + "org.freedesktop.DBus.Properties.Get org.freedesktop.UDisks2.Block IdUUID",
            call + "org.freedesktop.UDisks2.Block.Format vfat {'label': <'DASH\\'CAM'>}",
            call + "org.freedesktop.UDisks2.Filesystem.Mount {}" }));
}
