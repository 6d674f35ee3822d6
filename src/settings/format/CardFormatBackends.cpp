#include "format/CardFormatBackends.h"

#include "format/CardFormatInspector.h"
#include "format/FormatCommandRunner.h"
#include "format/FormatLog.h"
#include "format/FuseDaemons.h"

#include <QDeadlineTimer>
#include <QThread>

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

// Puts the outcome of the make-file-system and mount-again steps together.
FormatResult finish(const FormatPlan& plan, const CommandResult& make, const QString& makeStep,
    const CommandResult& mount, const QString& mountStep, const QString& mountedAt)
{
    FormatResult result;
    result.mounted = mount.succeeded();
    result.mountPoint = result.mounted ? mountedAt : QString();
    QStringList problems;
    if (!make.succeeded())
        problems << stepFailure(makeStep, make);
    if (!result.mounted) {
        problems << stepFailure(mountStep, mount)
                 << QStringLiteral("the card is no longer mounted: mount %1 at \"%2\" again, "
                                   "or take the card out and put it back")
                        .arg(plan.devicePath(), plan.mountPoint);
    } else if (!make.succeeded()) {
        problems << QStringLiteral("the card is mounted again at \"%1\"").arg(mountedAt);
    }
    result.outcome
        = problems.isEmpty() ? FormatResult::Outcome::Formatted : FormatResult::Outcome::Failed;
    result.detail = problems.join(QStringLiteral("; "));
    return result;
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

QStringList udisksCall(const FormatPlan& plan, const QString& method, const QStringList& args)
{
    return QStringList { QStringLiteral("call"), QStringLiteral("--system"),
        QStringLiteral("--dest"), QStringLiteral("org.freedesktop.UDisks2"),
        QStringLiteral("--object-path"), udisksBlockObjectPath(plan.deviceName),
        QStringLiteral("--timeout"), QStringLiteral("3600"), QStringLiteral("--method"),
        QStringLiteral("org.freedesktop.UDisks2.") + method }
    + args;
}

// "('/media/user/DASHCAM',)" → /media/user/DASHCAM
QString mountPathOf(const QByteArray& reply)
{
    const QString text = QString::fromUtf8(reply);
    const qsizetype first = text.indexOf(u'\'');
    const qsizetype last = text.lastIndexOf(u'\'');
    return first >= 0 && last > first ? text.mid(first + 1, last - first - 1) : QString();
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

    const Step make = makeFileSystem(plan);
    const CommandResult made = runner.run(make.program, make.arguments);
    const Step mount = mountAgain(plan);
    const CommandResult mounted = runner.run(mount.program, mount.arguments);
    return finish(plan, made, make.program, mounted, mount.program, plan.mountPoint);
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
    const QString options = plan.label.isEmpty()
        ? QStringLiteral("{}")
        : QStringLiteral("{'label': <%1>}").arg(gvariantString(plan.label));
    const CommandResult made = runner.run(
        gdbus, udisksCall(plan, QStringLiteral("Block.Format"), { plan.fileSystem, options }));
    const CommandResult mounted = runner.run(
        gdbus, udisksCall(plan, QStringLiteral("Filesystem.Mount"), { QStringLiteral("{}") }));
    QString mountedAt = mountPathOf(mounted.output);
    if (mountedAt.isEmpty())
        mountedAt = plan.mountPoint;
    return finish(plan, made, QStringLiteral("UDisks2 format"), mounted,
        QStringLiteral("UDisks2 mount"), mountedAt);
}
