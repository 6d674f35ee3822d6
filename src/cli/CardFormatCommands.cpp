#include "cli/CardFormatCommands.h"

#include "cli/CardCliSupport.h"

#include "settings/format/CardFormatter.h"
#include "settings/format/TouchCalibrationReset.h"

#include <QTextStream>

#include <cstdio>

namespace {

struct CardArgs {
    QString dir;
    bool yes = false;
    bool valid = false;
};

CardArgs parseCardArgs(const QStringList& args)
{
    CardArgs parsed;
    for (const QString& arg : args) {
        if (arg == QLatin1String("--yes") || arg == QLatin1String("-y"))
            parsed.yes = true;
        else if (arg.startsWith(u'-') || !parsed.dir.isEmpty())
            return {};
        else
            parsed.dir = arg;
    }
    parsed.valid = !parsed.dir.isEmpty();
    return parsed;
}

// Asks on the terminal; only "y" or "yes" goes on (end of input is a no).
bool confirm(CliIo& io, const QString& question)
{
    io.err << question << " [y/N] ";
    io.err.flush();
    QTextStream in(stdin);
    const QString line = in.readLine();
    if (line.isNull())
        io.err << '\n'; // end of input: the prompt gets its line end
    const QString answer = line.trimmed().toLower();
    return answer == QLatin1String("y") || answer == QLatin1String("yes");
}

QString describeVolume(const FormatPlan& plan)
{
    QString type = plan.fileSystem == QLatin1String("vfat")
        ? QStringLiteral("FAT%1").arg(plan.fatBits)
        : QStringLiteral("exFAT");
    return QStringLiteral("%1, %2, label \"%3\"").arg(plan.devicePath(), type, plan.label);
}

} // namespace

// tavro card format DIR [--yes]: reformats the memory card mounted at DIR,
// keeping its file system type and label.
int runCardFormatCommand(const QStringList& args, CliIo& io)
{
    const CardArgs parsed = parseCardArgs(args);
    if (!parsed.valid)
        return CardCli::usage(io, QStringLiteral("card format DIR [--yes]"));

    CardFormatter formatter;
    const FormatPlan plan = formatter.inspectNow(parsed.dir);
    if (!plan.allowed()) {
        io.err << "tavro: will not format " << parsed.dir << ": " << plan.reason << '\n';
        return CliExit::kFailure;
    }
    if (!parsed.yes
        && !confirm(io,
            QStringLiteral("Formatting erases every file on the memory card mounted at \"%1\" "
                           "(%2). Format it?")
                .arg(plan.mountPoint, describeVolume(plan)))) {
        io.err << "tavro: not formatted; nothing was changed\n";
        return CliExit::kFailure;
    }
    io.err << "formatting " << describeVolume(plan) << " at " << plan.mountPoint << "...\n";
    io.err.flush();
    const FormatResult result = formatter.formatNow(plan);
    if (!result.succeeded()) {
        io.err << "tavro: formatting " << plan.mountPoint << " failed: " << result.detail << '\n';
        return CliExit::kFailure;
    }
    io.out << "formatted " << describeVolume(plan) << "; mounted at " << result.mountPoint << '\n';
    return CliExit::kOk;
}

// tavro card touch-reset DIR [--yes]: leaves the empty Set_touch_cal.txt that
// makes the camera reset its touch calibration at its next start.
int runCardTouchResetCommand(const QStringList& args, CliIo& io)
{
    const CardArgs parsed = parseCardArgs(args);
    if (!parsed.valid)
        return CardCli::usage(io, QStringLiteral("card touch-reset DIR [--yes]"));
    if (!CardCli::checkCardFolder(parsed.dir, io.err))
        return CliExit::kFailure;
    if (!parsed.yes
        && !confirm(io,
            QStringLiteral(
                "Reset the camera's touch-screen calibration at its next start (writes %1)?")
                .arg(TouchCalibration::kMarkerFileName))) {
        io.err << "tavro: nothing was written\n";
        return CliExit::kFailure;
    }
    if (!TouchCalibration::writeMarker(parsed.dir)) {
        io.err << "tavro: could not write " << TouchCalibration::markerPath(parsed.dir) << '\n';
        return CliExit::kFailure;
    }
    io.out << "wrote " << TouchCalibration::markerPath(parsed.dir) << '\n';
    return CliExit::kOk;
}
