// The commands a format runs, in order, with their arguments, and what the
// result says when one of them fails.
#include "FakeCardSystem.h"

#include "settings/format/CardFormatBackends.h"

#include <gtest/gtest.h>

namespace {

using Calls = QList<ScriptedRunner::Call>;

FormatPlan allowedPlan(MountKind kind, const QString& fileSystem, int fatBits, const QString& label)
{
    FormatPlan plan;
    plan.refusal = FormatRefusal::None;
    plan.cardRoot = QStringLiteral("/media/user/DASH CAM");
    plan.mountPoint = plan.cardRoot;
    plan.deviceName = QStringLiteral("sdb1");
    plan.fileSystem = fileSystem;
    plan.fatBits = fatBits;
    plan.label = label;
    plan.serial = QStringLiteral("1234-ABCD");
    plan.mountKind = kind;
    plan.backend = FormatBackend::CommandLine;
    return plan;
}

QStringList commandLines(const Calls& calls)
{
    QStringList lines;
    for (const auto& call : calls)
        lines << (QStringList { call.program } + call.arguments).join(QStringLiteral(" | "));
    return lines;
}

void scriptAllTools(ScriptedRunner& runner)
{
    for (const char* tool : { "umount", "fusermount", "mkfs.vfat", "mkfs.exfat", "mount", "fusefat",
             "mount.exfat-fuse" })
        runner.succeed(QString::fromLatin1(tool));
    runner.blkid(QStringLiteral("sdb1"), QStringLiteral("vfat"), QStringLiteral("DASHCAM"));
}

const char* const kSerialProbe = "blkid | -p | -o | udev | /dev/sdb1";

// gdbus answering as UDisks2 does; the device's serial is `serial`, and the
// Mount call fails when `mountFails`.
void scriptUDisks(ScriptedRunner& runner, const QString& serial, bool mountFails = false)
{
    runner.script(QStringLiteral("gdbus"), [serial, mountFails](const QStringList& args) {
        if (args.contains(QStringLiteral("org.freedesktop.UDisks2.Filesystem.Mount")))
            return mountFails ? CommandResult { true, 1, "Not authorized" }
                              : CommandResult { true, 0, "('/media/user/DASHCAM1',)\n" };
        if (args.contains(QStringLiteral("org.freedesktop.DBus.Properties.Get")))
            return CommandResult { true, 0, "(<'" + serial.toUtf8() + "'>,)\n" };
        return CommandResult { true, 0, "()\n" };
    });
}

} // namespace

TEST(CardFormatBackendTest, CommandLinesKeepTypeLabelAndFolderAsOneArgument)
{
    struct Case {
        const char* name;
        FormatPlan plan;
        QStringList expected; // program | arg | arg ...
    };
    FormatPlan kernel
        = allowedPlan(MountKind::Kernel, QStringLiteral("vfat"), 16, QStringLiteral("DASHCAM"));
    kernel.mountOptions
        = { QStringLiteral("nosuid"), QStringLiteral("uid=1000"), QStringLiteral("utf8") };
    const Case cases[] = {
        { "fusefat, FAT32",
            allowedPlan(MountKind::FuseFat, QStringLiteral("vfat"), 32, QStringLiteral("DASHCAM")),
            { "fusermount | -u | /media/user/DASH CAM", kSerialProbe,
                "mkfs.vfat | -F | 32 | -n | DASHCAM | /dev/sdb1",
                "fusefat | -o | rw+ | /dev/sdb1 | /media/user/DASH CAM" } },
        { "exfat-fuse",
            allowedPlan(
                MountKind::FuseExfat, QStringLiteral("exfat"), 0, QStringLiteral("EX CARD")),
            { "fusermount | -u | /media/user/DASH CAM", kSerialProbe,
                "mkfs.exfat | -L | EX CARD | /dev/sdb1",
                "mount.exfat-fuse | /dev/sdb1 | /media/user/DASH CAM" } },
        { "kernel vfat, FAT16 kept with the mount's options", kernel,
            { "umount | /media/user/DASH CAM", kSerialProbe,
                "mkfs.vfat | -F | 16 | -n | DASHCAM | /dev/sdb1",
                "mount | -t | vfat | -o | nosuid,uid=1000,utf8 | /dev/sdb1 | /media/user/DASH "
                "CAM" } },
        { "no label", allowedPlan(MountKind::Kernel, QStringLiteral("exfat"), 0, QString()),
            { "umount | /media/user/DASH CAM", kSerialProbe, "mkfs.exfat | /dev/sdb1",
                "mount | -t | exfat | /dev/sdb1 | /media/user/DASH CAM" } },
    };
    for (const Case& c : cases) {
        ScriptedRunner runner;
        scriptAllTools(runner);
        const FormatResult result = runFormat(c.plan, runner);
        EXPECT_TRUE(result.succeeded()) << c.name << ": " << result.detail.toStdString();
        EXPECT_TRUE(result.mounted) << c.name;
        EXPECT_EQ(result.mountPoint, c.plan.mountPoint) << c.name;
        EXPECT_EQ(commandLines(runner.calls()), c.expected) << c.name;
    }
}

TEST(CardFormatBackendTest, FailuresSayWhatHappenedAndWhetherTheCardIsMounted)
{
    struct Case {
        const char* name;
        const char* failing; // this program exits with 1 (or is missing when exit is -2)
        int exit;
        FormatResult::Outcome outcome;
        bool mounted;
        QStringList programs;
        const char* detailMentions;
    };
    const Case cases[] = {
        { "unmount refused (card busy)", "fusermount", 1, FormatResult::Outcome::Failed, true,
            { "fusermount" }, "nothing was changed" },
        { "no fusermount at all", "fusermount", -2, FormatResult::Outcome::NotStarted, true,
            { "fusermount", "fusermount3" }, "could not be run" },
        { "mkfs fails: the old card is mounted again", "mkfs.vfat", 1,
            FormatResult::Outcome::Failed, true, { "fusermount", "blkid", "mkfs.vfat", "fusefat" },
            "mounted again" },
        { "mkfs missing: mounted again", "mkfs.vfat", -2, FormatResult::Outcome::Failed, true,
            { "fusermount", "blkid", "mkfs.vfat", "fusefat" }, "could not be run" },
        { "mounting again fails", "fusefat", 1, FormatResult::Outcome::Failed, false,
            { "fusermount", "blkid", "mkfs.vfat", "fusefat" }, "no longer mounted" },
        { "the serial can't be read once unmounted: nothing made, mounted again", "blkid", 2,
            FormatResult::Outcome::Failed, true, { "fusermount", "blkid", "fusefat" },
            "serial 1234-ABCD, now unreadable" },
    };
    for (const Case& c : cases) {
        ScriptedRunner runner;
        scriptAllTools(runner);
        if (c.exit == -2)
            runner.script(QString::fromLatin1(c.failing),
                [](const QStringList&) { return CommandResult {}; });
        else
            runner.fail(QString::fromLatin1(c.failing), c.exit, "device is busy\n");
        const FormatPlan plan = allowedPlan(
            MountKind::FuseFat, QStringLiteral("vfat"), 32, QStringLiteral("DASHCAM"));
        const FormatResult result = runFormat(plan, runner);
        EXPECT_EQ(result.outcome, c.outcome) << c.name;
        EXPECT_EQ(result.mounted, c.mounted) << c.name;
        EXPECT_EQ(runner.programs(), QStringList(c.programs)) << c.name;
        EXPECT_TRUE(result.detail.contains(QLatin1String(c.detailMentions)))
            << c.name << ": " << result.detail.toStdString();
    }
}

TEST(CardFormatBackendTest, ARefusedPlanRunsNothing)
{
    ScriptedRunner runner;
    scriptAllTools(runner);
    FormatPlan plan
        = allowedPlan(MountKind::Kernel, QStringLiteral("vfat"), 32, QStringLiteral("X"));
    plan.refusal = FormatRefusal::NotRemovable;
    plan.reason = describeRefusal(plan.refusal);
    EXPECT_EQ(runFormat(plan, runner).outcome, FormatResult::Outcome::NotStarted);
    EXPECT_EQ(runCommandLineFormat(plan, runner).outcome, FormatResult::Outcome::NotStarted);
    EXPECT_EQ(runUDisksFormat(plan, runner).outcome, FormatResult::Outcome::NotStarted);
    EXPECT_TRUE(runner.calls().isEmpty());
}

TEST(CardFormatBackendTest, AnotherCardUnderTheSameNameIsNotFormatted)
{
    // Between the last look and mkfs another card (same device name, same
    // label) went in: its serial gives it away once the card is unmounted.
    ScriptedRunner runner;
    scriptAllTools(runner);
    runner.blkid(QStringLiteral("sdb1"), QStringLiteral("vfat"), QStringLiteral("DASHCAM"),
        QStringLiteral("FAT32"), QStringLiteral("9999-0000"));
    FormatPlan plan
        = allowedPlan(MountKind::Kernel, QStringLiteral("vfat"), 32, QStringLiteral("DASHCAM"));
    const FormatResult result = runFormat(plan, runner);
    EXPECT_EQ(result.outcome, FormatResult::Outcome::Failed);
    EXPECT_TRUE(result.mounted);
    EXPECT_EQ(runner.programs(), QStringList({ "umount", "blkid", "mount" }));
    EXPECT_TRUE(result.detail.contains(QLatin1String("now 9999-0000")))
        << result.detail.toStdString();

    ScriptedRunner udisks;
    scriptUDisks(udisks, QStringLiteral("9999-0000"));
    plan.backend = FormatBackend::UDisks;
    const FormatResult viaUDisks = runFormat(plan, udisks);
    EXPECT_EQ(viaUDisks.outcome, FormatResult::Outcome::Failed);
    EXPECT_TRUE(viaUDisks.mounted);
    for (const ScriptedRunner::Call& call : udisks.calls())
        EXPECT_FALSE(
            call.arguments.contains(QStringLiteral("org.freedesktop.UDisks2.Block.Format")));
}

TEST(CardFormatBackendTest, UDisksUnmountsFormatsWithTheLabelAndReportsTheNewMountPoint)
{
    ScriptedRunner runner;
    scriptUDisks(runner, QStringLiteral("1234-ABCD"));
    FormatPlan plan
        = allowedPlan(MountKind::Kernel, QStringLiteral("vfat"), 32, QStringLiteral("DASH'CAM"));
    plan.backend = FormatBackend::UDisks;
    const FormatResult result = runFormat(plan, runner);
    ASSERT_TRUE(result.succeeded()) << result.detail.toStdString();
    EXPECT_EQ(result.mountPoint, QStringLiteral("/media/user/DASHCAM1"));

    const Calls calls = runner.calls();
    ASSERT_EQ(calls.size(), 4);
    const QStringList methods { QStringLiteral("org.freedesktop.UDisks2.Filesystem.Unmount"),
        QStringLiteral("org.freedesktop.DBus.Properties.Get"),
        QStringLiteral("org.freedesktop.UDisks2.Block.Format"),
        QStringLiteral("org.freedesktop.UDisks2.Filesystem.Mount") };
    for (int i = 0; i < 4; ++i) {
        EXPECT_EQ(calls[i].arguments.value(0), QStringLiteral("call"));
        EXPECT_TRUE(calls[i].arguments.contains(QStringLiteral("--system")));
        EXPECT_TRUE(calls[i].arguments.contains(
            QStringLiteral("/org/freedesktop/UDisks2/block_devices/sdb1")));
        EXPECT_TRUE(calls[i].arguments.contains(methods[i])) << i;
    }
    EXPECT_EQ(calls[1].arguments.mid(calls[1].arguments.size() - 2),
        QStringList({ QStringLiteral("org.freedesktop.UDisks2.Block"), QStringLiteral("IdUUID") }));
    // Type and label travel as two separate arguments; the quote is escaped for GVariant.
    EXPECT_EQ(calls[2].arguments.mid(calls[2].arguments.size() - 2),
        QStringList({ QStringLiteral("vfat"), QStringLiteral("{'label': <'DASH\\'CAM'>}") }));
}

TEST(CardFormatBackendTest, UDisksMountFailureSaysTheCardIsUnmounted)
{
    ScriptedRunner runner;
    scriptUDisks(runner, QStringLiteral("1234-ABCD"), true);
    FormatPlan plan = allowedPlan(MountKind::Kernel, QStringLiteral("exfat"), 0, QString());
    plan.backend = FormatBackend::UDisks;
    const FormatResult result = runFormat(plan, runner);
    EXPECT_EQ(result.outcome, FormatResult::Outcome::Failed);
    EXPECT_FALSE(result.mounted);
    EXPECT_TRUE(result.detail.contains(QLatin1String("Not authorized")));
    EXPECT_TRUE(runner.calls()[2].arguments.contains(QStringLiteral("{}")));
}
