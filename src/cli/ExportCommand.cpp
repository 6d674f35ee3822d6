#include "cli/CliCommands.h"
#include "cli/RouteOutput.h"

#include "trips/CardTrips.h"

#include <QFileInfo>

namespace {

constexpr char kUsage[]
    = "usage: tavro export DIR [--format gpx|kml|geojson|csv] [--output FILE]\n";

int usage(CliIo& io)
{
    io.err << kUsage;
    return CliExit::kUsage;
}

} // namespace

// tavro export DIR: the drives of a card (the trips `tavro trips` lists),
// read on all cores.
int runExportCommand(const QStringList& args, CliIo& io)
{
    QString folder;
    QString output;
    RouteFormat format = RouteFormat::Gpx;
    for (qsizetype i = 0; i < args.size(); ++i) {
        const QString& arg = args[i];
        if ((arg == QLatin1String("--format") || arg == QLatin1String("--output"))
            && i + 1 < args.size()) {
            const QString value = args[++i];
            if (arg == QLatin1String("--output")) {
                output = value;
            } else if (const auto chosen = RouteOutput::routeFormat(value, true)) {
                format = *chosen;
            } else {
                return usage(io);
            }
        } else if (arg.startsWith(u'-') || !folder.isEmpty()) {
            return usage(io);
        } else {
            folder = arg;
        }
    }
    if (folder.isEmpty())
        return usage(io);
    if (!QFileInfo(folder).isDir()) {
        io.err << "tavro export: cannot open folder " << folder << '\n';
        return CliExit::kFailure;
    }
    CardTrips::Loaded loaded = CardTrips::load(QFileInfo(folder).absoluteFilePath());
    const QVector<RouteTrip> trips = CardTrips::routeTrips(loaded);
    return RouteOutput::write(format, trips, output, "export", io);
}
