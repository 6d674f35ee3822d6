// Measures the general telemetry loader against reading the same file with
// `cat FILE > /dev/null` (both from a warm page cache), its memory, and the
// parse time of a 65-s subtitle file. Prints figures and ratios.
//   bench_telemetry [--size-mib N]      (N: the big file's size, default 1024)
// Scratch files go to $TMPDIR (default /tmp) and are removed at the end.

#include "BenchFiles.h"

#include "telemetry/TavroClipData.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QProcess>
#include <QTemporaryDir>

#include <algorithm>
#include <cstdio>
#include <functional>
#include <memory>
#include <vector>

namespace {

constexpr int kRuns = 3;

// Best of kRuns, in seconds.
double bestSeconds(const std::function<void()>& work)
{
    double best = 1e300;
    for (int i = 0; i < kRuns; ++i) {
        QElapsedTimer timer;
        timer.start();
        work();
        best = std::min(best, static_cast<double>(timer.nsecsElapsed()) / 1e9);
    }
    return best;
}

double catSeconds(const QString& path)
{
    return bestSeconds([&] {
        QProcess cat;
        cat.setStandardOutputFile(QProcess::nullDevice());
        cat.start(QStringLiteral("cat"), { path });
        cat.waitForFinished(-1);
    });
}

double loaderSeconds(const QString& path, int* count)
{
    auto data = std::make_unique<TavroClipData>();
    const double seconds = bestSeconds([&] { data->loadVideoFileCilpDataFromFilePath(path); });
    *count = data->clipDataCount();
    return seconds;
}

void compareWithCat(const char* what, const QString& path)
{
    const double mib = static_cast<double>(QFileInfo(path).size()) / (1024.0 * 1024.0);
    catSeconds(path); // warm the page cache
    const double cat = catSeconds(path);
    int count = 0;
    const double loader = loaderSeconds(path, &count);
    std::printf("%-28s %9.1f MiB  cat %8.3f s (%6.2f GiB/s)  loader %8.3f s (%6.2f GiB/s)  "
                "ratio %5.2fx  samples %d\n",
        what, mib, cat, mib / 1024.0 / cat, loader, mib / 1024.0 / loader, loader / cat, count);
}

void measureSubtitle(const QTemporaryDir& scratch)
{
    const QString path = scratch.filePath(QStringLiteral("clip_65s.srt"));
    if (!BenchFiles::writeSubtitle(path, 65)) {
        std::printf("subtitle: cannot write %s\n", qPrintable(path));
        return;
    }
    auto data = std::make_unique<TavroClipData>();
    constexpr int kParses = 201;
    std::vector<double> times;
    for (int i = 0; i < kParses; ++i) {
        QElapsedTimer timer;
        timer.start();
        data->loadVideoFileCilpDataFromFilePath(path);
        times.push_back(static_cast<double>(timer.nsecsElapsed()) / 1e6);
    }
    std::sort(times.begin(), times.end());
    std::printf("%-28s %9.1f KiB  best %.3f ms  median %.3f ms  worst %.3f ms over %d loads "
                "(target < 2 ms)  samples %d gps %d\n",
        "subtitle file, 65 s", static_cast<double>(QFileInfo(path).size()) / 1024.0, times.front(),
        times[kParses / 2], times.back(), kParses, data->clipDataCount(), data->gpsDataCount());
}

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    const QStringList args = app.arguments();
    const qsizetype sizeArg = args.indexOf(QStringLiteral("--size-mib"));
    const int64_t bigMiB
        = sizeArg > 0 && sizeArg + 1 < args.size() ? args[sizeArg + 1].toLongLong() : 1024;

    QTemporaryDir scratch;
    if (!scratch.isValid()) {
        std::fprintf(stderr, "bench_telemetry: no scratch folder\n");
        return 1;
    }
    std::printf("bench_telemetry: best of %d runs, page cache warm; scratch %s\n", kRuns,
        qPrintable(scratch.path()));

    measureSubtitle(scratch);

    const QString clip = scratch.filePath(QStringLiteral("clip_60s_1080p.avi"));
    if (BenchFiles::writeClip(clip, 60))
        compareWithCat("60-s 1080p AVI clip", clip);
    else
        std::printf("60-s 1080p AVI clip: skipped (ffmpeg missing or failed)\n");
    QFile::remove(clip);

    const double anonBefore = BenchFiles::anonRssMiB();
    for (const int64_t mib : { bigMiB / 8, bigMiB }) {
        const QString noise = scratch.filePath(QStringLiteral("noise.bin"));
        if (!BenchFiles::writeNoise(noise, mib * 1024 * 1024)) {
            std::printf("noise file of %lld MiB: cannot write\n", static_cast<long long>(mib));
            continue;
        }
        compareWithCat(qPrintable(QStringLiteral("%1 MiB without telemetry").arg(mib)), noise);
        std::printf("%-28s peak RSS %.1f MiB (mapped file pages included)  anonymous RSS %.1f MiB "
                    "(%.1f MiB at start)\n",
            "  memory", BenchFiles::peakRssMiB(), BenchFiles::anonRssMiB(), anonBefore);
        QFile::remove(noise);
    }
    return 0;
}
