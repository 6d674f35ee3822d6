#pragma once

#include "cli/CliCommands.h"

#include "export/RouteWriters.h"

#include <QString>

// Where `tavro telemetry` and `tavro export` put a route document: standard
// output, or a file replaced atomically (an unwritable path leaves nothing
// behind and exits 1).
namespace RouteOutput {

// Route formats by name; "csv" only where the route table is meant.
std::optional<RouteFormat> routeFormat(const QString& name, bool withCsv);

int write(RouteFormat format, const QVector<RouteTrip>& trips, const QString& outputPath,
    const char* command, CliIo& io);

} // namespace RouteOutput
