// The speed of `tavro cut` on a drive of 1080p30 clips (front 1920x1080,
// rear 1280x720, both with the camera's telemetry, made by the test builders
// and kept in the build folder), as multiples of real time, each measured in
// this run:
//  1. a stream copy of one camera across the clips (target: at least 50x);
//  2. picture in picture with the telemetry drawn on it (target: at least 1x);
//  3. side by side with the telemetry (target: at least 1x).
//   build/bin/bench_cut [--clips N] [--seconds S] [--runs N] [--skip copy,pip,side]
#include "BenchCard.h"
#include "DriveClip.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <cstdio>
#include <tuple>

using namespace BenchCard;

namespace {

QByteArray loadAverage()
{
    QFile file(QStringLiteral("/proc/loadavg"));
    return file.open(QIODevice::ReadOnly) ? file.readLine().trimmed() : QByteArray("?");
}

bool makeDrive(const QString& folder, int count, int seconds)
{
    const QDateTime start(QDate(2026, 5, 14), QTime(7, 0, 0), Qt::UTC);
    for (int i = 0; i < count; ++i) {
        const QDateTime at = start.addSecs(qint64(i) * seconds);
        const QString base = folder + QStringLiteral("/cont_rec/")
            + at.toString(QStringLiteral("yyyyMMdd_HHmmss"));
        for (const auto& [suffix, width, height, tag, sound] :
            { std::tuple { "_F.mp4", 1920, 1080, 0, true },
                std::tuple { "_R.mp4", 1280, 720, 7, false } }) {
            const QString path = base + QLatin1String(suffix);
            const DriveClip::Drive drive { at, i * seconds, -1 };
            if (!QFileInfo::exists(path)
                && !DriveClip::make(path, seconds, width, height, 30, tag, drive, { {}, sound }))
                return false;
        }
        std::printf("  clip %d of %d ready\n", i + 1, count);
        std::fflush(stdout);
    }
    return true;
}

void measure(const char* what, const QString& tavro, const QStringList& arguments, double seconds,
    int runs, double target)
{
    const Run run = bestOf(runs, tavro, arguments);
    const double speed = run.ms > 0 ? seconds / (run.ms / 1000.0) : 0;
    std::printf("  %-28s %8.0f ms for %.0f s  = %6.1fx real time (target >= %gx)  exit %d\n", what,
        run.ms, seconds, speed, target, run.exitCode);
    std::fflush(stdout);
}

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    QCommandLineParser parser;
    parser.addHelpOption();
    const QCommandLineOption clipsOption("clips", "clips in the drive", "N", "3");
    const QCommandLineOption secondsOption("seconds", "seconds a clip", "S", "20");
    const QCommandLineOption runsOption("runs", "runs of each cut (best counts)", "N", "2");
    const QCommandLineOption skipOption("skip", "copy,pip,side", "LIST");
    parser.addOptions({ clipsOption, secondsOption, runsOption, skipOption });
    parser.process(app);
    const int clips = std::max(1, parser.value(clipsOption).toInt());
    const int seconds = std::max(2, parser.value(secondsOption).toInt());
    const int runs = std::max(1, parser.value(runsOption).toInt());
    const QStringList skip = parser.value(skipOption).split(u',');

    const QString card
        = QDir(QCoreApplication::applicationDirPath() + QStringLiteral("/.."))
              .absoluteFilePath(QStringLiteral("bench-cut-%1x%2").arg(clips).arg(seconds));
    std::printf("a drive of %d clips of %d s, 1920x1080 / 1280x720 30 fps, in %s\n", clips, seconds,
        qPrintable(card));
    if (!makeDrive(card, clips, seconds)) {
        std::fprintf(stderr, "bench_cut: ffmpeg could not make the clips\n");
        return 1;
    }
    // From half a clip in to half a clip before the end: both ends inside a
    // clip, every boundary between crossed.
    const double from = seconds / 2.0;
    const double to = clips * seconds - seconds / 2.0;
    const double length = to - from;
    QTemporaryDir out;
    const QString tavro = sibling(QStringLiteral("tavro"));
    const QStringList base { "cut", card, "--trip", "0", "--from", QString::number(from), "--to",
        QString::number(to), "--output", out.filePath("cut.mp4") };
    runProgram(tavro, base); // the clips in the page cache
    std::printf("\n`tavro cut` of %.0f s across %d clips (best of %d; load average %s)\n", length,
        clips, runs, loadAverage().constData());
    if (!skip.contains("copy"))
        measure("copy, front", tavro, base, length, runs, 50);
    if (!skip.contains("pip"))
        measure("--compose pip --overlay", tavro,
            base + QStringList { "--compose", "pip", "--overlay" }, length, runs, 1);
    if (!skip.contains("side"))
        measure("--compose side --overlay", tavro,
            base + QStringList { "--compose", "side", "--overlay" }, length, runs, 1);
    std::printf("load average after: %s\n", loadAverage().constData());
    return 0;
}
