#include "CliCommands.h"
#include "TelemetryOutput.h"
#include "TelemetrySubtitleExtract.h"

#include "telemetry/TavroClipData.h"
#include "telemetry/TelemetryLoaderChoice.h"

#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <memory>
#include <optional>

namespace {

using TelemetryLoaderChoice::Loader;

struct TelemetryOptions {
    QString loader = QStringLiteral("auto");
    QString format = QStringLiteral("json");
    QStringList files;
};

constexpr char kUsage[]
    = "usage: tavro telemetry [--loader auto|general|kel] [--format json|csv] FILE...\n";

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
        } else if ((arg == QLatin1String("--loader") || arg == QLatin1String("--format"))
            && i + 1 < args.size()) {
            (arg == QLatin1String("--loader") ? options.loader : options.format) = args[++i];
        } else {
            err << "tavro telemetry: unknown or incomplete option '" << arg << "'\n" << kUsage;
            return std::nullopt;
        }
    }
    const QStringList loaders { "auto", "general", "kel" };
    const QStringList formats { "json", "csv" };
    if (!loaders.contains(options.loader) || !formats.contains(options.format)
        || options.files.isEmpty()) {
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

// Loads one file's telemetry into `data`; false (with a message) when the
// file cannot be read at all.
bool loadFile(const QString& file, Loader loader, TavroClipData& data, QTextStream& err)
{
    QFile probe(file);
    if (QFileInfo(file).isDir() || !probe.open(QIODevice::ReadOnly)) {
        err << "tavro telemetry: cannot open " << file << ": "
            << (QFileInfo(file).isDir() ? QStringLiteral("is a folder") : probe.errorString())
            << '\n';
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
    QTemporaryDir scratch;
    const QString srt = scratch.filePath(QFileInfo(file).completeBaseName() + ".srt");
    const TelemetrySubtitleExtract::Result extracted = TelemetrySubtitleExtract::extract(file, srt);
    if (!extracted.ffmpegFound) {
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

} // namespace

int runTelemetryCommand(const QStringList& args, CliIo& io)
{
    const std::optional<TelemetryOptions> options = parseOptions(args, io.err);
    if (!options)
        return CliExit::kUsage;
    const bool csv = options->format == QLatin1String("csv");
    if (csv)
        io.out << TelemetryOutput::csvHeader() << '\n';
    // The record is large and fixed; one instance serves every file, as in the viewer.
    const auto data = std::make_unique<TavroClipData>();
    int exitCode = CliExit::kOk;
    for (const QString& file : options->files) {
        const Loader loader = loaderFor(options->loader, file);
        if (!loadFile(file, loader, *data, io.err)) {
            exitCode = CliExit::kFailure;
            continue;
        }
        if (csv) {
            TelemetryOutput::writeCsvRows(io.out, file, *data);
        } else {
            const QString name
                = loader == Loader::Kel ? QStringLiteral("kel") : QStringLiteral("general");
            TelemetryOutput::writeJson(io.out, file, name, *data);
        }
        io.out.flush();
    }
    return exitCode;
}
