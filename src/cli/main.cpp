#include "TavroVersion.h"
#include "cli/CliCommands.h"

#include <QCoreApplication>

#include <array>
#include <cstdio>

namespace {

struct CommandEntry {
    const char* name;
    int (*run)(const QStringList&, CliIo&);
    const char* synopsis;
};

constexpr std::array kCommands {
    CommandEntry { "telemetry", runTelemetryCommand,
        "telemetry [--loader auto|general|kel|native] [--format json|csv|gpx|kml|geojson] "
        "[--trip] [--output FILE] FILE..." },
    CommandEntry { "card", runCardCommand,
        "card identify DIR | card format DIR [--yes] | card touch-reset DIR [--yes]" },
    CommandEntry { "config", runConfigCommand, "config show|load|set|defaults DIR ..." },
    CommandEntry { "kel", runKelCommand, "kel show|set|clock DIR ..." },
    CommandEntry { "languages", runLanguagesCommand, "languages DIR" },
    CommandEntry {
        "clips", runClipsCommand, "clips DIR [--filter all|continuous|motion|event|manual]" },
    CommandEntry { "convert", runConvertCommand, "convert CLIP" },
    CommandEntry { "settings", runSettingsCommand, "settings show|set DIR ..." },
    CommandEntry {
        "export", runExportCommand, "export DIR [--format gpx|kml|geojson|csv] [--output FILE]" },
    CommandEntry { "trips", runTripsCommand, "trips DIR [--gap SECONDS]" },
    CommandEntry { "cut", runCutCommand,
        "cut DIR --trip N --from SECONDS --to SECONDS --output FILE.mp4 [--camera front|rear] "
        "[--compose pip|side] [--overlay]" },
};

void printUsage(QTextStream& err)
{
    err << "usage: tavro COMMAND ARGS...\n";
    for (const auto& command : kCommands)
        err << "  tavro " << command.synopsis << '\n';
    err.flush();
}

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    QCoreApplication::setOrganizationName(QStringLiteral("tavro"));
    QCoreApplication::setApplicationName(QStringLiteral("tavro"));

    QTextStream out(stdout);
    QTextStream err(stderr);
    CliIo io { out, err };

    QStringList args = QCoreApplication::arguments().mid(1);
    if (args.isEmpty() || args.first() == QLatin1String("--help")) {
        printUsage(err);
        return args.isEmpty() ? CliExit::kUsage : CliExit::kOk;
    }
    if (args.first() == QLatin1String("--version")) {
        out << "tavro " << Tavro::versionString() << '\n';
        return CliExit::kOk;
    }
    const QString name = args.takeFirst();
    for (const auto& command : kCommands) {
        if (name == QLatin1String(command.name)) {
            const int code = command.run(args, io);
            out.flush();
            err.flush();
            return code;
        }
    }
    err << "tavro: unknown command '" << name << "'\n";
    printUsage(err);
    return CliExit::kUsage;
}
