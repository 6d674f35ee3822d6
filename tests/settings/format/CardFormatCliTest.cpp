// `tavro card format` on real cards: an image on a loop device, made FAT or
// exFAT, mounted through FUSE (the kernel here may have no vfat/exfat driver),
// formatted and checked with blkid; and the viewer's quit during a real format.
// Root only, in the test's own mount namespace; only loop devices over the
// test's own images are touched. The tool's refusals and `tavro card
// touch-reset` need no root.
#include "TestFiles.h"

#include "settings/format/CardFormatActivity.h"
#include "settings/format/CardFormatter.h"
#include "settings/format/FormatCommandRunner.h"
#include "settings/format/FormatQuitGuard.h"
#include "settings/format/MountTable.h"

#include <QDir>
#include <QMutex>
#include <QProcess>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

#include <gtest/gtest.h>

#include <cstdio>

#include <fcntl.h>
#include <linux/loop.h>
#include <sched.h>
#include <sys/ioctl.h>
#include <sys/mount.h>
#include <unistd.h>

namespace {

struct ToolRun {
    int exitCode = -1;
    QByteArray output;
};

ToolRun runTool(const QString& program, const QStringList& args, const QByteArray& input = {})
{
    QProcess process;
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.start(program, args);
    process.write(input);
    process.closeWriteChannel();
    if (!process.waitForFinished(120000) || process.exitStatus() != QProcess::NormalExit)
        return {};
    return { process.exitCode(), process.readAll() };
}

ToolRun cli(const QString& line, const QByteArray& input = {})
{
    return runTool(QStringLiteral(TAVRO_CLI_PATH), line.split(u'|'), input);
}

// "ID_FS_TYPE", "ID_FS_VERSION", "ID_FS_LABEL", "ID_FS_UUID" of a device as blkid probes it.
QMap<QString, QString> probe(const QString& device)
{
    QMap<QString, QString> values;
    const ToolRun blkid = runTool(QStringLiteral("blkid"), { "-p", "-o", "udev", device });
    for (const QString& line : QString::fromUtf8(blkid.output).split(u'\n', Qt::SkipEmptyParts))
        values.insert(line.section(u'=', 0, 0), line.section(u'=', 1));
    return values;
}

bool mountedAt(const QString& folder)
{
    const auto mount = MountTable::mountHolding(
        MountTable::read(QStringLiteral("/proc/self/mountinfo")), folder);
    return mount && mount->mountPoint == folder;
}

// A 64 MiB image on a free loop device, labelled DASHCAM with the serial
// 1234-ABCD, mounted through FUSE at "DASH CAM" and filled; unmounted and
// detached when it goes (and marked to detach itself once nothing holds it
// open, so that even a crashed test leaves no device behind).
class LoopCard {
public:
    LoopCard(const QString& folder, bool exfat)
        : m_mountPoint(folder + QStringLiteral("/DASH CAM"))
    {
        const QString image = folder + QStringLiteral("/card.img");
        QFile file(image);
        if (!file.open(QIODevice::WriteOnly) || !file.resize(64 * 1024 * 1024))
            return;
        file.close();
        QDir().mkpath(m_mountPoint);
        const ToolRun attach = runTool(QStringLiteral("losetup"), { "-f", "--show", image });
        const QString device = QString::fromUtf8(attach.output).trimmed();
        if (attach.exitCode != 0 || !device.startsWith(QLatin1String("/dev/loop")))
            return;
        m_device = device;
        m_fd = ::open(QFile::encodeName(m_device).constData(), O_RDONLY | O_CLOEXEC);
        loop_info64 info {};
        if (m_fd >= 0 && ::ioctl(m_fd, LOOP_GET_STATUS64, &info) == 0) {
            info.lo_flags |= LO_FLAGS_AUTOCLEAR;
            ::ioctl(m_fd, LOOP_SET_STATUS64, &info);
        }
        // Backed by this test's image, never by a disk.
        const QString backing = QStringLiteral("/sys/class/block/%1/loop/backing_file")
                                    .arg(QFileInfo(m_device).fileName());
        QStringList steps = exfat
            ? QStringList { "mkfs.exfat|-L|DASHCAM|DEV", "tune.exfat|-I|0x1234ABCD|DEV",
                  "mount.exfat-fuse|DEV|DIR" }
            : QStringList { "mkfs.vfat|-i|1234ABCD|-n|DASHCAM|DEV", "fusefat|-o|rw+|DEV|DIR" };
        m_ready = QString::fromLocal8Bit(TestFiles::read(backing)).trimmed() == image;
        for (QString& step : steps) {
            const QStringList words
                = step.replace("DEV", m_device).replace("DIR", m_mountPoint).split(u'|');
            m_ready = m_ready && runTool(words[0], words.mid(1)).exitCode == 0;
        }
        fill();
    }

    ~LoopCard()
    {
        if (mountedAt(m_mountPoint))
            runTool(QStringLiteral("fusermount"), { "-u", m_mountPoint });
        if (mountedAt(m_mountPoint))
            runTool(QStringLiteral("umount"), { "-l", m_mountPoint });
        QThread::msleep(200); // the FUSE program lets go of the device
        if (m_fd >= 0)
            ::close(m_fd);
        if (!m_device.isEmpty())
            runTool(QStringLiteral("losetup"), { "-d", m_device });
    }

    bool ready() const { return m_ready && mountedAt(m_mountPoint); }
    QString device() const { return m_device; }
    QString mountPoint() const { return m_mountPoint; }
    void fill() const
    {
        TestFiles::write(
            m_mountPoint + QStringLiteral("/SETTING/setup.cfg"), QByteArray(512, '\x01'));
        TestFiles::write(m_mountPoint + QStringLiteral("/evt_rec/20240315_081502_F.avi"),
            QByteArray(300 * 1024, 'v'));
    }
    // What the card holds, leaving out the entry fusefat shows for the label.
    QStringList entries() const
    {
        QStringList names
            = QDir(m_mountPoint).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
        names.removeAll(QStringLiteral("DASHCAM"));
        return names;
    }

private:
    QString m_mountPoint;
    QString m_device;
    int m_fd = -1;
    bool m_ready = false;
};

// Root only; in a mount namespace of this process where one can be made.
bool mayFormatLoopCards()
{
    if (::geteuid() != 0)
        return false;
    if (unshare(CLONE_NEWNS) != 0 || mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) != 0)
        std::fprintf(stderr, "note: no private mount namespace; mounting in the shared one\n");
    return true;
}

// The real tools, with the application asked to quit the moment the card has
// been unmounted, as a SIGTERM or the end of the session could come then.
class QuitOnceUnmounted final : public FormatCommandRunner {
public:
    CommandResult run(const QString& program, const QStringList& arguments) override
    {
        const CommandResult result = m_tools.run(program, arguments);
        QMutexLocker lock(&m_mutex);
        m_programs << program;
        if (program == QLatin1String("fusermount"))
            QMetaObject::invokeMethod(
                QCoreApplication::instance(), [] { QCoreApplication::quit(); },
                Qt::QueuedConnection);
        return result;
    }
    QStringList programs() const
    {
        QMutexLocker lock(&m_mutex);
        return m_programs;
    }

private:
    ProcessFormatCommandRunner m_tools;
    mutable QMutex m_mutex;
    QStringList m_programs;
};

} // namespace

TEST(CardFormatCliTest, FormatsTheCardAndMountsItAgainWithTypeAndLabelKept)
{
    if (!mayFormatLoopCards())
        GTEST_SKIP() << "formatting a loop-device card needs root";
    for (const bool exfat : { false, true }) {
        SCOPED_TRACE(exfat ? "exfat" : "fat");
        QTemporaryDir folder;
        LoopCard card(folder.path(), exfat);
        if (!card.ready())
            GTEST_SKIP() << "no loop device can be made here";
        const QMap<QString, QString> before = probe(card.device());
        ASSERT_EQ(before.value(QStringLiteral("ID_FS_UUID")), QStringLiteral("1234-ABCD"));
        // Asked on the terminal, "n" changes nothing.
        const ToolRun declined = cli("card|format|" + card.mountPoint(), "n\n");
        EXPECT_EQ(declined.exitCode, 1) << declined.output.constData();
        EXPECT_TRUE(declined.output.contains("Format it? [y/N]")) << declined.output.constData();
        EXPECT_TRUE(QFile::exists(card.mountPoint() + QStringLiteral("/SETTING/setup.cfg")));

        const ToolRun formatted = cli("card|format|" + card.mountPoint() + "|--yes");
        EXPECT_EQ(formatted.exitCode, 0) << formatted.output.constData();
        ASSERT_TRUE(mountedAt(card.mountPoint())) << "the card is mounted again at the same folder";
        EXPECT_EQ(card.entries(), QStringList());
        const QMap<QString, QString> after = probe(card.device());
        for (const char* key : { "ID_FS_TYPE", "ID_FS_VERSION", "ID_FS_LABEL" })
            EXPECT_EQ(after.value(QLatin1String(key)), before.value(QLatin1String(key))) << key;
        EXPECT_NE(after.value(QStringLiteral("ID_FS_UUID")), QStringLiteral("1234-ABCD"))
            << "a new file system";
        // The fresh card takes files again.
        card.fill();
        EXPECT_EQ(card.entries(), QStringList({ "evt_rec", "SETTING" }));
    }
}

TEST(CardFormatCliTest, QuittingDuringAFormatWaitsUntilTheCardIsMountedAgain)
{
    if (!mayFormatLoopCards())
        GTEST_SKIP() << "formatting a loop-device card needs root";
    QTemporaryDir folder;
    LoopCard card(folder.path(), false);
    if (!card.ready())
        GTEST_SKIP() << "no loop device can be made here";
    CardFormatActivity activity;
    FormatQuitGuard guard(activity, nullptr);
    QSignalSpy held(&guard, &FormatQuitGuard::quitHeld);
    auto tools = std::make_shared<QuitOnceUnmounted>();
    CardFormatter formatter(CardFormatSystem::live(), tools, activity);
    const FormatPlan plan = formatter.inspectNow(card.mountPoint());
    ASSERT_TRUE(plan.allowed()) << plan.reason.toStdString();
    QObject context;
    std::optional<FormatResult> result;
    formatter.format(plan, &context, [&](const FormatResult& r) { result = r; });
    QCoreApplication::exec();

    // When the application would have gone, the card was formatted and mounted again.
    EXPECT_EQ(held.size(), 1);
    ASSERT_TRUE(mountedAt(card.mountPoint())) << qPrintable(tools->programs().join(u' '));
    EXPECT_EQ(tools->programs().mid(tools->programs().indexOf(QStringLiteral("fusermount"))),
        QStringList({ "fusermount", "blkid", "mkfs.vfat", "fusefat" }));
    EXPECT_EQ(card.entries(), QStringList());
    ASSERT_TRUE(QTest::qWaitFor([&] { return result.has_value(); }, 10000));
    EXPECT_TRUE(result->succeeded()) << result->detail.toStdString();
}

TEST(CardFormatCliTest, RefusalsAndTheTouchResetNeedNoRoot)
{
    QTemporaryDir dir;
    const QString card = dir.path() + QStringLiteral("/demo card");
    TestFiles::write(card + QStringLiteral("/SETTING/setup.cfg"), "record");
    const ToolRun refused = cli("card|format|" + card + "|--yes");
    EXPECT_EQ(refused.exitCode, 1);
    EXPECT_TRUE(refused.output.contains("not the root of a mounted volume"))
        << refused.output.constData();
    EXPECT_EQ(TestFiles::read(card + QStringLiteral("/SETTING/setup.cfg")), QByteArray("record"));
    // The system's own root is a volume, but not a card.
    EXPECT_TRUE(cli(QStringLiteral("card|format|/|--yes")).output.contains("will not format /:"));
    EXPECT_EQ(cli(QStringLiteral("card|format")).exitCode, 2);

    // The empty marker is written only when confirmed, replacing an old one.
    const QString marker = card + QStringLiteral("/Set_touch_cal.txt");
    EXPECT_EQ(cli("card|touch-reset|" + card, "\n").exitCode, 1);
    EXPECT_FALSE(QFile::exists(marker));
    TestFiles::write(marker, "old");
    EXPECT_EQ(cli("card|touch-reset|" + card, "yes\n").exitCode, 0);
    EXPECT_EQ(QFileInfo(marker).size(), 0);
    EXPECT_EQ(cli("card|touch-reset|" + card + "/nowhere|--yes").exitCode, 1);
}
