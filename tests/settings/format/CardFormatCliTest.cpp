// `tavro card format` on real cards: a 64 MiB image on a loop device, made
// FAT or exFAT with the label DASHCAM, mounted through FUSE (the kernel here
// may have no vfat/exfat driver) at a folder with a blank in its name, filled,
// formatted, and checked with blkid. Mounts live in this test's own mount
// namespace and every card is unmounted and detached when its test ends, even
// on failure. Only loop devices over the test's own images are touched.
// Skipped when not root or when no loop device can be made.
//
// Also the viewer's quit during a real format (held until the card is mounted
// again), the tool's refusals and `tavro card touch-reset`, which need no root.
#include "TestFiles.h"

#include "settings/format/CardFormatActivity.h"
#include "settings/format/CardFormatter.h"
#include "settings/format/FormatCommandRunner.h"
#include "settings/format/FormatQuitGuard.h"
#include "settings/format/MountTable.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QMutex>
#include <QProcess>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <QThread>

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
    ToolRun run;
    if (!process.waitForStarted())
        return run;
    process.write(input);
    process.closeWriteChannel();
    if (!process.waitForFinished(120000)) {
        process.kill();
        process.waitForFinished();
        return run;
    }
    run.exitCode = process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
    run.output = process.readAll();
    return run;
}

ToolRun runCliWithInput(const QStringList& args, const QByteArray& input)
{
    return runTool(QStringLiteral(TAVRO_CLI_PATH), args, input);
}

bool enterPrivateMountNamespace()
{
    return unshare(CLONE_NEWNS) == 0
        && mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0;
}

// "ID_FS_TYPE", "ID_FS_VERSION", "ID_FS_LABEL" of a device as blkid probes it.
QMap<QString, QString> probe(const QString& device)
{
    QMap<QString, QString> values;
    const ToolRun blkid = runTool(QStringLiteral("blkid"),
        { QStringLiteral("-p"), QStringLiteral("-o"), QStringLiteral("udev"), device });
    for (const QByteArray& line : blkid.output.split('\n')) {
        const qsizetype eq = line.indexOf('=');
        if (eq > 0)
            values.insert(QString::fromUtf8(line.left(eq)), QString::fromUtf8(line.mid(eq + 1)));
    }
    return values;
}

std::optional<MountEntry> mountAt(const QString& folder)
{
    const auto mount = MountTable::mountHolding(
        MountTable::read(QStringLiteral("/proc/self/mountinfo")), folder);
    if (!mount || mount->mountPoint != folder)
        return std::nullopt;
    return mount;
}

// A 64 MiB image file on a free loop device, detached when it goes. The loop
// device is also marked to detach itself once nothing holds it open, so even
// a crashed test leaves no device behind.
class LoopCard {
public:
    explicit LoopCard(const QString& folder)
        : m_image(folder + QStringLiteral("/card.img"))
        , m_mountPoint(folder + QStringLiteral("/DASH CAM"))
    {
        QFile image(m_image);
        if (!image.open(QIODevice::WriteOnly) || !image.resize(64 * 1024 * 1024))
            return;
        image.close();
        QDir().mkpath(m_mountPoint);
        const ToolRun attach = runTool(
            QStringLiteral("losetup"), { QStringLiteral("-f"), QStringLiteral("--show"), m_image });
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
    }

    ~LoopCard()
    {
        if (mountAt(m_mountPoint))
            runTool(QStringLiteral("fusermount"), { QStringLiteral("-u"), m_mountPoint });
        if (mountAt(m_mountPoint))
            runTool(QStringLiteral("umount"), { QStringLiteral("-l"), m_mountPoint });
        QThread::msleep(200); // the FUSE program lets go of the device
        if (m_fd >= 0)
            ::close(m_fd);
        if (!m_device.isEmpty())
            runTool(QStringLiteral("losetup"), { QStringLiteral("-d"), m_device });
    }

    bool ready() const { return !m_device.isEmpty(); }
    QString device() const { return m_device; }
    QString mountPoint() const { return m_mountPoint; }

    // The loop device really is backed by this test's image (never a disk).
    QString backingFile() const
    {
        QFile file(QStringLiteral("/sys/class/block/%1/loop/backing_file")
                       .arg(QFileInfo(m_device).fileName()));
        return file.open(QIODevice::ReadOnly) ? QString::fromLocal8Bit(file.readAll()).trimmed()
                                              : QString();
    }

private:
    QString m_image;
    QString m_mountPoint;
    QString m_device;
    int m_fd = -1;
};

void fillCard(const QString& root)
{
    TestFiles::write(root + QStringLiteral("/SETTING/setup.cfg"), QByteArray(512, '\x01'));
    TestFiles::write(
        root + QStringLiteral("/evt_rec/20240315_081502_F.avi"), QByteArray(300 * 1024, 'v'));
    TestFiles::write(root + QStringLiteral("/Set_touch_cal.txt"), {});
}

// What the card holds, leaving out the entry fusefat shows for the volume label.
QStringList cardEntries(const QString& root, const QString& label)
{
    QStringList entries
        = QDir(root).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
    entries.removeAll(label);
    return entries;
}

struct FileSystemCase {
    const char* name;
    QStringList mkfs; // program and arguments before the device
    // Gives the card a known volume serial, so that the format has to bring a
    // new one: mkfs.exfat derives its serial from the clock, and two formats in
    // the same second can share it.
    QStringList setSerial;
    QStringList mount; // program and arguments before device and folder
    QString mountType;
};

class CardFormatLoopTest : public ::testing::TestWithParam<FileSystemCase> { };

} // namespace

TEST_P(CardFormatLoopTest, FormatsTheCardAndMountsItAgainWithTypeAndLabelKept)
{
    const FileSystemCase& c = GetParam();
    if (::geteuid() != 0)
        GTEST_SKIP() << "formatting a loop-device card needs root";
    // Where no namespace can be made the mounts are shared with the machine;
    // the card still goes away at the end of the test.
    if (!enterPrivateMountNamespace())
        std::fprintf(stderr, "note: no private mount namespace; mounting in the shared one\n");
    QTemporaryDir folder;
    LoopCard card(folder.path());
    if (!card.ready())
        GTEST_SKIP() << "no loop device can be made here";
    ASSERT_EQ(card.backingFile(), folder.path() + QStringLiteral("/card.img"));

    ASSERT_EQ(runTool(c.mkfs[0], c.mkfs.mid(1) << card.device()).exitCode, 0);
    if (!c.setSerial.isEmpty()) {
        ASSERT_EQ(runTool(c.setSerial[0], c.setSerial.mid(1) << card.device()).exitCode, 0);
    }
    const QMap<QString, QString> before = probe(card.device());
    ASSERT_EQ(before.value(QStringLiteral("ID_FS_LABEL")), QStringLiteral("DASHCAM"));
    ASSERT_EQ(before.value(QStringLiteral("ID_FS_UUID")), QStringLiteral("1234-ABCD"));
    ASSERT_EQ(
        runTool(c.mount[0], c.mount.mid(1) << card.device() << card.mountPoint()).exitCode, 0);
    ASSERT_TRUE(mountAt(card.mountPoint()).has_value());
    fillCard(card.mountPoint());

    // Asked on the terminal, "n" changes nothing.
    const ToolRun declined = runCliWithInput(
        { QStringLiteral("card"), QStringLiteral("format"), card.mountPoint() }, "n\n");
    EXPECT_EQ(declined.exitCode, 1) << declined.output.constData();
    EXPECT_TRUE(declined.output.contains("Format it? [y/N]")) << declined.output.constData();
    EXPECT_TRUE(QFile::exists(card.mountPoint() + QStringLiteral("/SETTING/setup.cfg")));

    const ToolRun formatted = runCliWithInput({ QStringLiteral("card"), QStringLiteral("format"),
                                                  card.mountPoint(), QStringLiteral("--yes") },
        {});
    EXPECT_EQ(formatted.exitCode, 0) << formatted.output.constData();

    const auto mount = mountAt(card.mountPoint());
    ASSERT_TRUE(mount.has_value()) << "the card is mounted again at the same folder";
    EXPECT_EQ(mount->fsType, c.mountType);
    EXPECT_EQ(cardEntries(card.mountPoint(), QStringLiteral("DASHCAM")), QStringList());
    const QMap<QString, QString> after = probe(card.device());
    for (const char* key : { "ID_FS_TYPE", "ID_FS_VERSION", "ID_FS_LABEL" })
        EXPECT_EQ(after.value(QLatin1String(key)), before.value(QLatin1String(key))) << key;
    EXPECT_NE(after.value(QStringLiteral("ID_FS_UUID")), before.value(QStringLiteral("ID_FS_UUID")))
        << "a new file system";

    // The fresh card takes files again.
    TestFiles::write(card.mountPoint() + QStringLiteral("/Set_touch_cal.txt"), {});
    EXPECT_TRUE(QFile::exists(card.mountPoint() + QStringLiteral("/Set_touch_cal.txt")));
}

INSTANTIATE_TEST_SUITE_P(FileSystems, CardFormatLoopTest,
    ::testing::Values(
        FileSystemCase { "fat",
            { QStringLiteral("mkfs.vfat"), QStringLiteral("-i"), QStringLiteral("1234ABCD"),
                QStringLiteral("-n"), QStringLiteral("DASHCAM") },
            {}, { QStringLiteral("fusefat"), QStringLiteral("-o"), QStringLiteral("rw+") },
            QStringLiteral("fuse.fusefat") },
        FileSystemCase { "exfat",
            { QStringLiteral("mkfs.exfat"), QStringLiteral("-L"), QStringLiteral("DASHCAM") },
            { QStringLiteral("tune.exfat"), QStringLiteral("-I"), QStringLiteral("0x1234ABCD") },
            { QStringLiteral("mount.exfat-fuse") }, QStringLiteral("fuseblk") }),
    [](const ::testing::TestParamInfo<FileSystemCase>& info) {
        return std::string(info.param.name);
    });

namespace {

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

TEST(CardFormatQuitTest, QuittingDuringAFormatWaitsUntilTheCardIsMountedAgain)
{
    if (::geteuid() != 0)
        GTEST_SKIP() << "formatting a loop-device card needs root";
    if (!enterPrivateMountNamespace())
        std::fprintf(stderr, "note: no private mount namespace; mounting in the shared one\n");
    QTemporaryDir folder;
    LoopCard card(folder.path());
    if (!card.ready())
        GTEST_SKIP() << "no loop device can be made here";
    ASSERT_EQ(runTool(QStringLiteral("mkfs.vfat"),
                  { QStringLiteral("-i"), QStringLiteral("1234ABCD"), QStringLiteral("-n"),
                      QStringLiteral("DASHCAM"), card.device() })
                  .exitCode,
        0);
    ASSERT_EQ(runTool(QStringLiteral("fusefat"),
                  { QStringLiteral("-o"), QStringLiteral("rw+"), card.device(), card.mountPoint() })
                  .exitCode,
        0);
    fillCard(card.mountPoint());

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
    ASSERT_TRUE(mountAt(card.mountPoint()).has_value()) << qPrintable(tools->programs().join(u' '));
    EXPECT_EQ(tools->programs().mid(tools->programs().indexOf(QStringLiteral("fusermount"))),
        QStringList({ "fusermount", "blkid", "mkfs.vfat", "fusefat" }));
    EXPECT_EQ(cardEntries(card.mountPoint(), QStringLiteral("DASHCAM")), QStringList());
    EXPECT_NE(
        probe(card.device()).value(QStringLiteral("ID_FS_UUID")), QStringLiteral("1234-ABCD"));
    ASSERT_TRUE(QTest::qWaitFor([&] { return result.has_value(); }, 10000));
    EXPECT_TRUE(result->succeeded()) << result->detail.toStdString();

    // Once the application has gone on to quit, a format asked for now never starts.
    fillCard(card.mountPoint());
    const FormatPlan again = formatter.inspectNow(card.mountPoint());
    ASSERT_TRUE(again.allowed()) << again.reason.toStdString();
    const qsizetype ran = tools->programs().size();
    result.reset();
    formatter.format(again, &context, [&](const FormatResult& r) { result = r; });
    ASSERT_TRUE(QTest::qWaitFor([&] { return result.has_value(); }, 10000));
    EXPECT_EQ(result->outcome, FormatResult::Outcome::NotStarted);
    EXPECT_EQ(tools->programs().size(), ran);
    EXPECT_TRUE(QFile::exists(card.mountPoint() + QStringLiteral("/SETTING/setup.cfg")));
}

TEST(CardFormatCliTest, APlainFolderOnTheSystemDiskIsRefusedWithNothingTouched)
{
    QTemporaryDir dir;
    const QString card = dir.path() + QStringLiteral("/demo card");
    TestFiles::write(card + QStringLiteral("/SETTING/setup.cfg"), "record");
    const ToolRun refused = runCliWithInput(
        { QStringLiteral("card"), QStringLiteral("format"), card, QStringLiteral("--yes") }, {});
    EXPECT_EQ(refused.exitCode, 1);
    EXPECT_TRUE(refused.output.contains("will not format")) << refused.output.constData();
    EXPECT_TRUE(refused.output.contains("not the root of a mounted volume"))
        << refused.output.constData();
    EXPECT_EQ(TestFiles::read(card + QStringLiteral("/SETTING/setup.cfg")), QByteArray("record"));

    // The system's own root is a volume, but not a card.
    const ToolRun root = runCliWithInput({ QStringLiteral("card"), QStringLiteral("format"),
                                             QStringLiteral("/"), QStringLiteral("--yes") },
        {});
    EXPECT_EQ(root.exitCode, 1);
    EXPECT_TRUE(root.output.contains("will not format /:")) << root.output.constData();

    const ToolRun usage = runCliWithInput({ QStringLiteral("card"), QStringLiteral("format") }, {});
    EXPECT_EQ(usage.exitCode, 2);
}

TEST(CardFormatCliTest, TouchResetWritesTheEmptyMarkerOnlyWhenConfirmed)
{
    QTemporaryDir card;
    const QString marker = card.filePath(QStringLiteral("Set_touch_cal.txt"));
    const ToolRun declined = runCliWithInput(
        { QStringLiteral("card"), QStringLiteral("touch-reset"), card.path() }, "\n");
    EXPECT_EQ(declined.exitCode, 1);
    EXPECT_FALSE(QFile::exists(marker));

    TestFiles::write(marker, "old");
    const ToolRun asked = runCliWithInput(
        { QStringLiteral("card"), QStringLiteral("touch-reset"), card.path() }, "yes\n");
    EXPECT_EQ(asked.exitCode, 0) << asked.output.constData();
    EXPECT_EQ(QFileInfo(marker).size(), 0);

    QFile::remove(marker);
    const TestFiles::CliResult yes = TestFiles::runCli({ QStringLiteral("card"),
        QStringLiteral("touch-reset"), card.path(), QStringLiteral("--yes") });
    EXPECT_EQ(yes.exitCode, 0);
    EXPECT_TRUE(QFileInfo(marker).exists());
    EXPECT_EQ(QFileInfo(marker).size(), 0);

    const TestFiles::CliResult missing
        = TestFiles::runCli({ QStringLiteral("card"), QStringLiteral("touch-reset"),
            card.filePath(QStringLiteral("nowhere")), QStringLiteral("--yes") });
    EXPECT_EQ(missing.exitCode, 1);
}
