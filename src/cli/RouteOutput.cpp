#include "cli/RouteOutput.h"

#include "export/RouteExport.h"

#include <QFile>

namespace RouteOutput {

std::optional<RouteFormat> routeFormat(const QString& name, bool withCsv)
{
    const std::optional<RouteFormat> format = RouteWriters::formatFromName(name);
    if (!format || (*format == RouteFormat::Csv && !withCsv) || name != name.toLower())
        return std::nullopt;
    return format;
}

int write(RouteFormat format, const QVector<RouteTrip>& trips, const QString& outputPath,
    const char* command, CliIo& io)
{
    if (!RouteWriters::hasContent(format, trips))
        io.err << "tavro " << command << ": the clips hold no "
               << (format == RouteFormat::Csv ? "telemetry" : "positions") << '\n';
    if (!outputPath.isEmpty()) {
        const RouteExport::Result result = RouteExport::writeFile(format, trips, outputPath);
        if (result.status == RouteExport::Status::WriteFailed) {
            io.err << "tavro " << command << ": cannot write " << outputPath << ": " << result.error
                   << '\n';
            return CliExit::kFailure;
        }
        return CliExit::kOk;
    }
    io.out.flush();
    QFile out;
    if (!out.open(stdout, QIODevice::WriteOnly) || !RouteWriters::write(format, trips, out)) {
        io.err << "tavro " << command << ": cannot write to standard output\n";
        return CliExit::kFailure;
    }
    out.flush();
    return CliExit::kOk;
}

} // namespace RouteOutput
