#include "settings/format/CardFormatBackends.h"

#include "settings/format/CardFormatInspector.h"
#include "settings/format/FormatCommandRunner.h"
#include "settings/format/FormatLog.h"
#include "settings/format/FuseDaemons.h"

#include <QDeadlineTimer>
#include <QThread>

#include <optional>

namespace {

// How long a FUSE program may take to let go of the card after unmounting.
constexpr int kDaemonExitMs = 10000;

QString tail(const QByteArray& output)
{
    const QString text = QString::fromLocal8Bit(output).trimmed();
    return text.size() > 300 ? QStringLiteral("…") + text.right(300) : text;
}

QString stepFailure(const QString& step, const CommandResult& result)
{
    if (!result.started)
        return step + QStringLiteral(" could not be run (is it installed?)");
    QString text = step + QStringLiteral(" failed with status %1").arg(result.exitCode);
    const QString output = tail(result.output);
    if (!output.isEmpty())
        text += QStringLiteral(": ") + output;
    return text;
}

FormatResult notStarted(const FormatPlan& plan, const QString& detail)
{
    FormatResult result;
    result.outcome = FormatResult::Outcome::NotStarted;
    result.detail = detail;
    result.mounted = true;
    result.mountPoint = plan.mountPoint;
    return result;
}

// Puts the outcome of the make-file-system and mount-again steps together;
// `makeProblem` is "" when the file system was made.
FormatResult finish(const FormatPlan& plan, const QString& makeProblem, const CommandResult& mount,
    const QString& mountStep, const QString& mountedAt)
{
    FormatResult result;
    result.mounted = mount.succeeded();
    result.mountPoint = result.mounted ? mountedAt : QString();
    QStringList problems;
    if (!makeProblem.isEmpty())
        problems << makeProblem;
    if (!result.mounted) {
        problems << stepFailure(mountStep, mount)
                 << QStringLiteral("the card is no longer mounted: mount %1 at \"%2\" again, "
                                   "or take the card out and put it back")
                        .arg(plan.devicePath(), plan.mountPoint);
    } else if (!makeProblem.isEmpty()) {
        problems << QStringLiteral("the card is mounted again at \"%1\"").arg(mountedAt);
    }
    result.outcome
        = problems.isEmpty() ? FormatResult::Outcome::Formatted : FormatResult::Outcome::Failed;
    result.detail = problems.join(QStringLiteral("; "));
    return result;
}

QString makeProblem(const QString& step, const CommandResult& made)
{
    return made.succeeded() ? QString() : stepFailure(step, made);
}

// The serial read again once the card is unmounted, just before its file
// system is made: "" when it is still the card that was asked about,
// otherwise why not.
QString serialChange(const FormatPlan& plan, const std::optional<QString>& serialNow)
{
    if (serialNow && *serialNow == plan.serial)
        return {};
    return QStringLiteral("the card changed since it was checked (serial %1, now %2); "
                          "nothing was formatted")
        .arg(plan.serial.isEmpty() ? QStringLiteral("none") : plan.serial,
            serialNow ? (serialNow->isEmpty() ? QStringLiteral("none") : *serialNow)
                      : QStringLiteral("unreadable"));
}

std::optional<QString> blkidSerial(const FormatPlan& plan, FormatCommandRunner& runner)
{
    const CommandResult blkid = runner.run(QStringLiteral("blkid"),
        { QStringLiteral("-p"), QStringLiteral("-o"), QStringLiteral("udev"), plan.devicePath() });
    if (!blkid.succeeded())
        return std::nullopt; // nothing on the device blkid knows, or it can't be read
    return parseBlkidUdev(blkid.output).value("ID_FS_UUID");
}

CommandResult unmount(const FormatPlan& plan, FormatCommandRunner& runner)
{
    if (plan.mountKind == MountKind::Kernel)
        return runner.run(QStringLiteral("umount"), { plan.mountPoint });
    const QStringList args { QStringLiteral("-u"), plan.mountPoint };
    CommandResult result = runner.run(QStringLiteral("fusermount"), args);
    if (!result.started)
        result = runner.run(QStringLiteral("fusermount3"), args);
    return result;
}

void waitForDaemonExit(const FormatPlan& plan, const QString& procRoot)
{
    if (plan.fuseDaemonPid <= 0)
        return;
    QDeadlineTimer deadline(kDaemonExitMs);
    while (processExists(procRoot, plan.fuseDaemonPid) && !deadline.hasExpired())
        QThread::msleep(50);
}

struct Step {
    QString program;
    QStringList arguments;
};

Step makeFileSystem(const FormatPlan& plan)
{
    if (plan.fileSystem == QLatin1String("exfat")) {
        QStringList args;
        if (!plan.label.isEmpty())
            args << QStringLiteral("-L") << plan.label;
        return { QStringLiteral("mkfs.exfat"), args << plan.devicePath() };
    }
    const int bits = plan.fatBits == 12 || plan.fatBits == 16 ? plan.fatBits : 32;
    QStringList args { QStringLiteral("-F"), QString::number(bits) };
    if (!plan.label.isEmpty())
        args << QStringLiteral("-n") << plan.label;
    return { QStringLiteral("mkfs.vfat"), args << plan.devicePath() };
}

Step mountAgain(const FormatPlan& plan)
{
    switch (plan.mountKind) {
    case MountKind::FuseFat:
        return { QStringLiteral("fusefat"),
            { QStringLiteral("-o"), QStringLiteral("rw+"), plan.devicePath(), plan.mountPoint } };
    case MountKind::FuseExfat:
        return { QStringLiteral("mount.exfat-fuse"), { plan.devicePath(), plan.mountPoint } };
    case MountKind::Kernel:
        break;
    }
    QStringList args { QStringLiteral("-t"), plan.fileSystem };
    if (!plan.mountOptions.isEmpty())
        args << QStringLiteral("-o") << plan.mountOptions.join(u',');
    return { QStringLiteral("mount"), args << plan.devicePath() << plan.mountPoint };
}

// GVariant text of a string: single quotes, with quotes and backslashes escaped.
QString gvariantString(const QString& text)
{
    QString escaped = text;
    escaped.replace(u'\\', QStringLiteral("\\\\")).replace(u'\'', QStringLiteral("\\'"));
    return u'\'' + escaped + u'\'';
}

// `method` in full ("org.freedesktop.DBus.Properties.Get"), or under
// UDisks2's own name ("Block.Format").
QStringList udisksCall(const FormatPlan& plan, const QString& method, const QStringList& args)
{
    const QString fullMethod = method.startsWith(QLatin1String("org."))
        ? method
        : QStringLiteral("org.freedesktop.UDisks2.") + method;
    return QStringList { QStringLiteral("call"), QStringLiteral("--system"),
        QStringLiteral("--dest"), QStringLiteral("org.freedesktop.UDisks2"),
        QStringLiteral("--object-path"), udisksBlockObjectPath(plan.deviceName),
        QStringLiteral("--timeout"), QStringLiteral("3600"), QStringLiteral("--method"),
        fullMethod }
    + args;
}

// The quoted text of a gdbus reply: "('/media/user/DASHCAM',)" → /media/user/DASHCAM
QString firstQuoted(const QByteArray& reply)
{
    const QString text = QString::fromUtf8(reply);
    const qsizetype first = text.indexOf(u'\'');
    const qsizetype last = text.lastIndexOf(u'\'');
    return first >= 0 && last > first ? text.mid(first + 1, last - first - 1) : QString();
}

// The serial UDisks2 has for the device now (its Block.IdUUID).
std::optional<QString> udisksSerial(const FormatPlan& plan, FormatCommandRunner& runner)
{
    const CommandResult reply = runner.run(QStringLiteral("gdbus"),
        udisksCall(plan, QStringLiteral("org.freedesktop.DBus.Properties.Get"),
            { QStringLiteral("org.freedesktop.UDisks2.Block"), QStringLiteral("IdUUID") }));
    if (!reply.succeeded())
        return std::nullopt;
    return firstQuoted(reply.output); // "(<'1234-ABCD'>,)"
}

} // namespace

FormatResult runFormat(const FormatPlan& plan, FormatCommandRunner& runner, const QString& procRoot)
{
    switch (plan.backend) {
    case FormatBackend::UDisks:
        return runUDisksFormat(plan, runner);
    case FormatBackend::CommandLine:
        return runCommandLineFormat(plan, runner, procRoot);
    case FormatBackend::None:
        break;
    }
    return notStarted(plan, plan.reason);
}

FormatResult runCommandLineFormat(
    const FormatPlan& plan, FormatCommandRunner& runner, const QString& procRoot)
{
    if (!plan.allowed())
        return notStarted(plan, plan.reason);
    const CommandResult unmounted = unmount(plan, runner);
    if (!unmounted.started)
        return notStarted(plan, stepFailure(QStringLiteral("unmounting"), unmounted));
    if (unmounted.exitCode != 0) {
        FormatResult result = notStarted(plan,
            stepFailure(QStringLiteral("unmounting"), unmounted)
                + QStringLiteral("; nothing was changed"));
        result.outcome = FormatResult::Outcome::Failed;
        return result;
    }
    waitForDaemonExit(plan, procRoot);

    QString problem = serialChange(plan, blkidSerial(plan, runner));
    if (problem.isEmpty()) {
        const Step make = makeFileSystem(plan);
        problem = makeProblem(make.program, runner.run(make.program, make.arguments));
    }
    const Step mount = mountAgain(plan);
    const CommandResult mounted = runner.run(mount.program, mount.arguments);
    return finish(plan, problem, mounted, mount.program, plan.mountPoint);
}

FormatResult runUDisksFormat(const FormatPlan& plan, FormatCommandRunner& runner)
{
    if (!plan.allowed())
        return notStarted(plan, plan.reason);
    const QString gdbus = QStringLiteral("gdbus");
    const CommandResult unmounted = runner.run(
        gdbus, udisksCall(plan, QStringLiteral("Filesystem.Unmount"), { QStringLiteral("{}") }));
    if (!unmounted.started)
        return notStarted(plan, stepFailure(QStringLiteral("gdbus"), unmounted));
    if (unmounted.exitCode != 0) {
        FormatResult result = notStarted(plan,
            stepFailure(QStringLiteral("UDisks2 unmount"), unmounted)
                + QStringLiteral("; nothing was changed"));
        result.outcome = FormatResult::Outcome::Failed;
        return result;
    }
    QString problem = serialChange(plan, udisksSerial(plan, runner));
    if (problem.isEmpty()) {
        const QString options = plan.label.isEmpty()
            ? QStringLiteral("{}")
            : QStringLiteral("{'label': <%1>}").arg(gvariantString(plan.label));
        problem = makeProblem(QStringLiteral("UDisks2 format"),
            runner.run(gdbus,
                udisksCall(plan, QStringLiteral("Block.Format"), { plan.fileSystem, options })));
    }
    const CommandResult mounted = runner.run(
        gdbus, udisksCall(plan, QStringLiteral("Filesystem.Mount"), { QStringLiteral("{}") }));
    QString mountedAt = firstQuoted(mounted.output);
    if (mountedAt.isEmpty())
        mountedAt = plan.mountPoint;
    return finish(plan, problem, mounted, QStringLiteral("UDisks2 mount"), mountedAt);
}
