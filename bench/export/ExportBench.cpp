// Prints how long `tavro export CARD --format gpx` takes for a card of 500
// clips next to reading the same clips' telemetry once with
// `tavro telemetry --format json FILE...` (one process for all files), and
// the ratio of the two (the export must stay under 1.2x).
//
// The card is made from the demo card's clips that carry telemetry (front
// and rear MP4 pairs, AVI and Kel clips), hard-linked under new names into the
// card folders, and kept in the build folder (bench-export-card) for later
// runs. The demo card is written first when it is missing.
// Usage: bench_export [--clips N] [--runs N] [--demo DIR] [--card DIR]
#include "BenchCard.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>

#include <algorithm>
#include <cstdio>

using namespace BenchCard;

namespace {

struct Options {
    int clips = 500;
    int runs = 3;
    QString demo;
    QString card;
};

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    Options options;
    const QString build = QDir(QCoreApplication::applicationDirPath() + "/..").absolutePath();
    options.demo = build + "/demo-card";
    options.card = build + "/bench-export-card";
    const QStringList args = app.arguments().mid(1);
    for (qsizetype i = 0; i + 1 < args.size(); i += 2) {
        if (args[i] == "--clips")
            options.clips = std::max(1, args[i + 1].toInt());
        else if (args[i] == "--runs")
            options.runs = std::max(1, args[i + 1].toInt());
        else if (args[i] == "--demo")
            options.demo = args[i + 1];
        else if (args[i] == "--card")
            options.card = args[i + 1];
    }
    const QStringList clips = ensureCard(options.demo, options.card, options.clips);
    if (clips.isEmpty()) {
        std::fprintf(stderr, "bench_export: could not make a card of %d clips from %s\n",
            options.clips, qPrintable(options.demo));
        return 1;
    }
    std::printf("card: %s, %lld clips\n", qPrintable(options.card), qlonglong(clips.size()));

    const QString tavro = sibling("tavro");
    const QString out = options.card + "/../bench-export.gpx";
    // Warm the page cache so both sides read from memory.
    runProgram(
        tavro, QStringList { "telemetry", "--loader", "native", "--format", "json" } + clips);

    const Run reference = bestOf(1, tavro, QStringList { "telemetry", "--format", "json" } + clips);
    const Run native = bestOf(options.runs, tavro,
        QStringList { "telemetry", "--loader", "native", "--format", "json" } + clips);
    const Run exported = bestOf(
        options.runs, tavro, { "export", options.card, "--format", "gpx", "--output", out });
    const Run kml = bestOf(options.runs, tavro,
        { "export", options.card, "--format", "kml", "--output",
            options.card + "/../bench-export.kml" });

    std::printf("tavro telemetry --format json (ffmpeg for MP4)   %9.1f ms  exit %d\n",
        reference.ms, reference.exitCode);
    std::printf("tavro telemetry --loader native --format json    %9.1f ms  exit %d\n", native.ms,
        native.exitCode);
    std::printf(
        "tavro export --format gpx                        %9.1f ms  exit %d  (%lld bytes)\n",
        exported.ms, exported.exitCode, qlonglong(QFileInfo(out).size()));
    std::printf("tavro export --format kml                        %9.1f ms  exit %d\n", kml.ms,
        kml.exitCode);
    std::printf(
        "ratio export gpx / telemetry json: %.3f (target < 1.2)\n", exported.ms / reference.ms);
    std::printf("ratio export gpx / telemetry json native: %.3f\n", exported.ms / native.ms);
    return 0;
}
