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
#include "library/ClipFolders.h"

#include <QCoreApplication>
#include <QDir>
#include <QDirIterator>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QProcess>

#include <algorithm>
#include <cstdio>
#include <filesystem>

namespace {

struct Options {
    int clips = 500;
    int runs = 3;
    QString demo;
    QString card;
};

struct Run {
    double ms = 0;
    qint64 bytes = 0;
    int exitCode = -1;
};

QString sibling(const QString& name)
{
    return QCoreApplication::applicationDirPath() + u'/' + name;
}

Run runProgram(const QString& program, const QStringList& arguments)
{
    QProcess process;
    process.setStandardInputFile(QProcess::nullDevice());
    process.setStandardOutputFile(QProcess::nullDevice());
    QElapsedTimer timer;
    timer.start();
    process.start(program, arguments);
    process.waitForFinished(-1);
    Run run;
    run.ms = timer.nsecsElapsed() / 1e6;
    run.exitCode = process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
    return run;
}

Run bestOf(int runs, const QString& program, const QStringList& arguments)
{
    Run best;
    best.ms = 1e300;
    for (int i = 0; i < runs; ++i) {
        const Run run = runProgram(program, arguments);
        if (run.ms < best.ms)
            best = run;
    }
    return best;
}

// The demo clips with telemetry, grouped so a front/rear pair stays together.
QList<QStringList> demoGroups(const QString& demo)
{
    QList<QStringList> groups;
    QDirIterator it(demo, { "*.mp4", "*.avi", "*.mov" }, QDir::Files, QDirIterator::Subdirectories);
    QStringList files;
    while (it.hasNext())
        files << it.next();
    files.sort();
    for (const QString& file : files) {
        if (file.contains(QLatin1String("Saved_Videos")) || file.contains(QLatin1String("R.mp4"))
            || file.contains(QLatin1String("R_BC.mp4")))
            continue;
        QStringList group { file };
        for (const auto& [front, rear] :
            { std::pair { "F_BC.mp4", "R_BC.mp4" }, std::pair { "F.mp4", "R.mp4" } }) {
            if (file.endsWith(QLatin1String(front))) {
                QString partner = file;
                partner.replace(
                    partner.size() - int(strlen(front)), int(strlen(front)), QLatin1String(rear));
                if (QFileInfo::exists(partner))
                    group << partner;
                break;
            }
        }
        groups << group;
    }
    return groups;
}

// Hard links (a copy where linking fails) of the demo clips, N files in all.
QStringList makeCard(const QString& demo, const QString& card, int clips)
{
    const QList<QStringList> groups = demoGroups(demo);
    QStringList made;
    if (groups.isEmpty())
        return made;
    for (int n = 0; made.size() < clips; ++n) {
        const QStringList& group = groups[n % groups.size()];
        const QString folder = card + u'/' + QFileInfo(group.first()).dir().dirName();
        QDir().mkpath(folder);
        for (const QString& source : group) {
            if (made.size() >= clips)
                break;
            const QString target = folder + QStringLiteral("/B%1_").arg(n, 4, 10, QLatin1Char('0'))
                + QFileInfo(source).fileName();
            if (!QFileInfo::exists(target)) {
                std::error_code error;
                std::filesystem::create_hard_link(
                    source.toStdString(), target.toStdString(), error);
                if (error)
                    QFile::copy(source, target);
            }
            made << target;
        }
    }
    return made;
}

QStringList cardClips(const QString& card)
{
    QStringList files;
    QDirIterator it(card, { "*.mp4", "*.avi", "*.mov" }, QDir::Files, QDirIterator::Subdirectories);
    while (it.hasNext())
        files << it.next();
    files.sort();
    return files;
}

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
    if (!QFileInfo(options.demo).isDir()) {
        std::printf("writing the demo card into %s\n", qPrintable(options.demo));
        runProgram(sibling("make-demo-card"), { "--out", options.demo, "--no-extra-cards" });
    }
    QStringList clips = cardClips(options.card);
    if (clips.size() != options.clips) {
        QDir(options.card).removeRecursively();
        clips = makeCard(options.demo, options.card, options.clips);
    }
    if (clips.size() != options.clips) {
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
