#include "cli/CliCommands.h"
#include "cli/RouteOutput.h"
#include "cli/TelemetryOutput.h"
#include "cli/TelemetrySubtitleExtract.h"

#include "export/RouteExport.h"
#include "library/ClipListScan.h"
#include "telemetry/ClipFileBytes.h"
#include "telemetry/Mp4TextTrack.h"
#include "telemetry/TavroClipData.h"
#include "telemetry/TelemetryLoaderChoice.h"

#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <QTemporaryDir>

#include <memory>
#include <optional>

namespace {

using TelemetryLoaderChoice::Loader;

struct TelemetryOptions {
    QString loader = QStringLiteral("auto");
    QString format = QStringLiteral("json");
    QString output;
    bool trip = false;
    QStringList files;
};

constexpr char kUsage[] = "usage: tavro telemetry [--loader auto|general|kel|native] "
                          "[--format json|csv|gpx|kml|geojson] [--trip] [--output FILE] FILE...\n";

std::optional<TelemetryOptions> parseOptions(const QStringList& args, QTextStream& err)
{
    TelemetryOptions options;
    bool optionsEnded = false;
    for (qsizetype i = 0; i < args.size(); ++i) {
        const QString& arg = args[i];
        if (optionsEnded || !arg.startsWith(u'-') || arg == QLatin1String("-")) {
            options.files << arg;
        } else if (arg == QLatin1String("--")) {
            optionsEnded = true;
        } else if ((arg == QLatin1String("--loader") || arg == QLatin1String("--format")
                       || arg == QLatin1String("--output"))
            && i + 1 < args.size()) {
            (arg == QLatin1String("--loader")          ? options.loader
                    : arg == QLatin1String("--format") ? options.format
                                                       : options.output)
                = args[++i];
        } else if (arg == QLatin1String("--trip")) {
            options.trip = true;
        } else {
            err << "tavro telemetry: unknown or incomplete option '" << arg << "'\n" << kUsage;
            return std::nullopt;
        }
    }
    const QStringList loaders { "auto", "general", "kel", "native" };
    const QStringList formats { "json", "csv", "gpx", "kml", "geojson" };
    // Trips belong to the route documents.
    const bool route = RouteOutput::routeFormat(options.format, false).has_value();
    if (!loaders.contains(options.loader) || !formats.contains(options.format)
        || options.files.isEmpty() || (options.trip && !route)) {
        err << kUsage;
        return std::nullopt;
    }
    return options;
}

Loader loaderFor(const QString& option, const QString& file)
{
    if (option == QLatin1String("general"))
        return Loader::General;
    if (option == QLatin1String("kel"))
        return Loader::Kel;
    return TelemetryLoaderChoice::forClip(file);
}

// An MP4 read through its own text track: the way without ffmpeg.
bool loadNative(const QString& file, TavroClipData& data, const QString& why, QTextStream& err)
{
    if (!Mp4TextTrack::isMovie(ClipFileBytes(file, ClipFileBytes::Access::Random).bytes())) {
        err << "tavro telemetry: cannot read " << file << ": not an MP4 movie" << why << '\n';
        return false;
    }
    data.loadMp4TextTrack(file);
    return true;
}

// Loads one file's telemetry into `data`; false (with a message) when the
// file cannot be read at all.
bool loadFile(
    const QString& file, Loader loader, bool native, TavroClipData& data, QTextStream& err)
{
    // Checked before anything opens it: a pipe would wait for a writer.
    const QFileInfo info(file);
    if (info.exists() && !ClipListScan::isRegularFile(info)) {
        err << "tavro telemetry: cannot open " << file << ": "
            << (info.isDir() ? "is a folder" : "not a regular file (a pipe, socket or device)")
            << '\n';
        return false;
    }
    QFile probe(file);
    if (!probe.open(QIODevice::ReadOnly)) {
        err << "tavro telemetry: cannot open " << file << ": " << probe.errorString() << '\n';
        return false;
    }
    probe.close();
    if (loader == Loader::Kel) {
        data.loadVideoFileCilpDataFromFilePath_Kel(file);
        return true;
    }
    if (loader == Loader::General) {
        data.loadVideoFileCilpDataFromFilePath(file);
        return true;
    }
    if (native)
        return loadNative(file, data, QString(), err);
    if (!TelemetrySubtitleExtract::ffmpegAvailable())
        return loadNative(file, data, QStringLiteral(" (and ffmpeg not found)"), err);
    QTemporaryDir scratch;
    const QString srt = scratch.filePath(QFileInfo(file).completeBaseName() + ".srt");
    const TelemetrySubtitleExtract::Result extracted = TelemetrySubtitleExtract::extract(file, srt);
    if (!extracted.ffmpegFound) { // gone since the check above
        err << "tavro telemetry: cannot read " << file << ": " << extracted.message << '\n';
        return false;
    }
    if (!extracted.written && !extracted.message.isEmpty())
        err << "tavro telemetry: no subtitle track in " << file << " (" << extracted.message
            << ")\n";
    // Without a subtitle file the loader finds nothing and the clip has no telemetry.
    data.loadVideoFileCilpDataFromFilePath(srt);
    return true;
}

// gpx, kml, geojson: one document for every file, per clip or as trips.
int writeRoute(const TelemetryOptions& options, RouteFormat format, CliIo& io)
{
    const auto data = std::make_unique<TavroClipData>();
    const bool native = options.loader == QLatin1String("native");
    QVector<ClipTimeline> timelines;
    int exitCode = CliExit::kOk;
    for (const QString& file : options.files) {
        if (!loadFile(file, loaderFor(options.loader, file), native, *data, io.err)) {
            exitCode = CliExit::kFailure;
            continue;
        }
        timelines.append(ClipTimeline::fromRecord(file, *data));
    }
    const QVector<RouteTrip> trips = RouteExport::group(timelines, options.trip);
    const int written = RouteOutput::write(format, trips, options.output, "telemetry", io);
    return written != CliExit::kOk ? written : exitCode;
}

int writeTable(const TelemetryOptions& options, QTextStream& out, QTextStream& err)
{
    const bool csv = options.format == QLatin1String("csv");
    const bool native = options.loader == QLatin1String("native");
    if (csv)
        out << TelemetryOutput::csvHeader() << '\n';
    // The record is large and fixed; one instance serves every file, as in the viewer.
    const auto data = std::make_unique<TavroClipData>();
    int exitCode = CliExit::kOk;
    for (const QString& file : options.files) {
        const Loader loader = loaderFor(options.loader, file);
        if (!loadFile(file, loader, native, *data, err)) {
            exitCode = CliExit::kFailure;
            continue;
        }
        if (csv) {
            TelemetryOutput::writeCsvRows(out, file, *data);
        } else {
            const bool mp4Native = loader == Loader::Mp4Subtitle
                && (native || !TelemetrySubtitleExtract::ffmpegAvailable());
            const QString name = loader == Loader::Kel ? QStringLiteral("kel")
                : mp4Native                            ? QStringLiteral("native")
                                                       : QStringLiteral("general");
            TelemetryOutput::writeJson(out, file, name, *data);
        }
        out.flush();
    }
    return exitCode;
}

// The JSON lines or the table into a file that replaces FILE only when complete.
int writeTableToFile(const TelemetryOptions& options, CliIo& io)
{
    QSaveFile file(options.output);
    if (!file.open(QIODevice::WriteOnly)) {
        io.err << "tavro telemetry: cannot write " << options.output << ": " << file.errorString()
               << '\n';
        return CliExit::kFailure;
    }
    QTextStream stream(&file);
    const int code = writeTable(options, stream, io.err);
    stream.flush();
    if (stream.status() != QTextStream::Ok || !file.commit()) {
        io.err << "tavro telemetry: cannot write " << options.output << ": " << file.errorString()
               << '\n';
        file.cancelWriting();
        return CliExit::kFailure;
    }
    return code;
}

} // namespace

int runTelemetryCommand(const QStringList& args, CliIo& io)
{
    const std::optional<TelemetryOptions> options = parseOptions(args, io.err);
    if (!options)
        return CliExit::kUsage;
    if (const auto route = RouteOutput::routeFormat(options->format, false))
        return writeRoute(*options, *route, io);
    if (!options->output.isEmpty())
        return writeTableToFile(*options, io);
    return writeTable(*options, io.out, io.err);
}
