// Prints how long the clip library and the conversion take next to a
// reference command measured in the same run:
//   1. listing, filtering and sorting a card of 10,000 clips in the seven card
//      folders, against `find DIR -type f -printf '%s %p\n'`;
//   2. the first open of a 60-s 1080p MP4 front/rear pair (re-mux and subtitle
//      extraction of both files), against the same four ffmpeg commands run
//      back to back by hand.
// Usage: bench_library [--clips N] [--seconds S] [--skip-convert]
#include "library/ClipConverter.h"
#include "library/ClipFolders.h"
#include "library/ClipLibrary.h"
#include "library/FfmpegArguments.h"
#include "library/QtProcessRunner.h"
#include "library/Utils.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QTemporaryDir>

#include <algorithm>
#include <cstdio>
#include <functional>
#include <optional>
#include <vector>

namespace {

constexpr int kRepeats = 9;

// Best of several runs, in milliseconds.
double bestOf(int repeats, const std::function<void()>& work)
{
    double best = 1e300;
    for (int i = 0; i < repeats; ++i) {
        QElapsedTimer timer;
        timer.start();
        work();
        best = std::min(best, timer.nsecsElapsed() / 1e6);
    }
    return best;
}

QByteArray runProgram(const QString& program, const QStringList& arguments)
{
    QProcess process;
    process.setStandardInputFile(QProcess::nullDevice());
    process.start(program, arguments);
    process.waitForFinished(-1);
    return process.readAllStandardOutput();
}

void makeCard(const QString& root, int clips)
{
    const auto& folders = ClipFolders::kCardFolders;
    for (int i = 0; i < clips; ++i) {
        const QString folder = root + u'/' + folders[size_t(i) % folders.size()]
            + QStringLiteral("/%1").arg(i % 3 == 0 ? QStringLiteral("sub") : QString());
        QDir().mkpath(folder);
        const char* const side = (i / 7) % 2 ? "R" : "F";
        const char* const extension = i % 5 == 0 ? "AVI" : "mp4";
        QFile file(folder
            + QStringLiteral("/2024%1_%2.%3")
                  .arg(i / 2, 8, 10, QChar(u'0'))
                  .arg(QLatin1String(side), QLatin1String(extension)));
        file.open(QIODevice::WriteOnly);
    }
}

void benchList(int clips)
{
    QTemporaryDir dir;
    const QString root = dir.filePath(QStringLiteral("card"));
    makeCard(root, clips);
    qsizetype lines = 0;
    ClipLibrary library;
    double reference = 1e300;
    double refresh = 1e300;
    // Interleaved, so that load from elsewhere on the machine hits both alike.
    for (int i = 0; i < kRepeats; ++i) {
        reference = std::min(reference, bestOf(1, [&] {
            lines = runProgram(QStringLiteral("find"),
                { root, QStringLiteral("-type"), QStringLiteral("f"), QStringLiteral("-printf"),
                    QStringLiteral("%s %p\\n") })
                        .count('\n');
        }));
        refresh = std::min(refresh,
            bestOf(1, [&] { library.refreshVideoFileListWithURL(QUrl::fromLocalFile(root)); }));
    }
    const double scanOnly = bestOf(kRepeats, [&] {
        for (const QLatin1StringView name : ClipFolders::kCardFolders)
            ClipLibrary::getVideoFilesInDirectoryUrl(QUrl::fromLocalFile(root + u'/' + name), true);
    });
    const double filters = bestOf(kRepeats, [&] {
        for (int filter = 0; filter < ClipFolders::kFilterCount; ++filter)
            library.setVideoFileFilter(filter);
    });
    library.setVideoFileFilter(0);
    std::printf("clip list: %d clips in 7 folders (find saw %lld files, library %d rows)\n", clips,
        static_cast<long long>(lines), library.numberOfRows());
    std::printf("  find -printf            %8.1f ms\n", reference);
    std::printf("  list + filter + sort    %8.1f ms   ratio %.2f (target <= 2)\n", refresh,
        refresh / reference);
    std::printf("  of which listing        %8.1f ms\n", scanOnly);
    std::printf("  five filter switches    %8.1f ms   (%.1f ms each)\n", filters,
        filters / int(ClipFolders::kFilterCount));
}

QString telemetrySrt(int seconds)
{
    QString text;
    for (int s = 0; s < seconds; ++s) {
        text += QStringLiteral("%1\n00:%2:%3,000 --> 00:%2:%3,999\ngsensor,1,2,130\n\n")
                    .arg(2 * s + 1)
                    .arg(s / 60, 2, 10, QChar(u'0'))
                    .arg(s % 60, 2, 10, QChar(u'0'));
        text += QStringLiteral(
            "%1\n00:%2:%3,500 --> 00:%2:%3,999\nGPRMC,1200%4,A,3723.1234,N,12658.5678,E,40.0\n\n")
                    .arg(2 * s + 2)
                    .arg(s / 60, 2, 10, QChar(u'0'))
                    .arg(s % 60, 2, 10, QChar(u'0'))
                    .arg(s % 60, 2, 10, QChar(u'0'));
    }
    return text;
}

// A 1080p clip of `seconds`: two seconds are encoded, then looped by stream copy.
bool makeClip(const QString& scratch, const QString& path, int seconds, int pattern)
{
    const QString piece = scratch + QStringLiteral("/piece%1.mp4").arg(pattern);
    const QString srt = scratch + QStringLiteral("/records.srt");
    QFile file(srt);
    if (!file.open(QIODevice::WriteOnly))
        return false;
    file.write(telemetrySrt(seconds).toUtf8());
    file.close();
    runProgram(QStringLiteral("ffmpeg"),
        { QStringLiteral("-v"), QStringLiteral("error"), QStringLiteral("-f"),
            QStringLiteral("lavfi"), QStringLiteral("-i"),
            QStringLiteral("testsrc2=size=1920x1080:rate=30:duration=2"), QStringLiteral("-vf"),
            QStringLiteral("hue=h=%1").arg(pattern * 90), QStringLiteral("-b:v"),
            QStringLiteral("12M"), QStringLiteral("-maxrate"), QStringLiteral("12M"),
            QStringLiteral("-bufsize"), QStringLiteral("6M"), QStringLiteral("-c:v"),
            QStringLiteral("libx264"), QStringLiteral("-preset"), QStringLiteral("ultrafast"),
            QStringLiteral("-g"), QStringLiteral("30"), QStringLiteral("-y"), piece });
    runProgram(QStringLiteral("ffmpeg"),
        { QStringLiteral("-v"), QStringLiteral("error"), QStringLiteral("-stream_loop"),
            QString::number(seconds / 2 - 1), QStringLiteral("-i"), piece, QStringLiteral("-i"),
            srt, QStringLiteral("-map"), QStringLiteral("0:v"), QStringLiteral("-map"),
            QStringLiteral("1"), QStringLiteral("-c:v"), QStringLiteral("copy"),
            QStringLiteral("-c:s"), QStringLiteral("mov_text"), QStringLiteral("-y"), path });
    return QFileInfo(path).size() > 0;
}

void benchConvert(int seconds)
{
    if (Utils::GetFFMPEGPath().isEmpty()) {
        std::printf("conversion: skipped, ffmpeg not found\n");
        return;
    }
    QTemporaryDir dir;
    const QString front = dir.filePath(QStringLiteral("card/cont_rec/20240101_120000_F.mp4"));
    const QString rear = dir.filePath(QStringLiteral("card/cont_rec/20240101_120000_R.mp4"));
    QDir().mkpath(QFileInfo(front).path());
    if (!makeClip(dir.path(), front, seconds, 0) || !makeClip(dir.path(), rear, seconds, 1)) {
        std::printf("conversion: could not generate the clips\n");
        return;
    }
    const int type = Utils::GetAviType(front);
    // Warm the page cache for both sides alike.
    runProgram(
        QStringLiteral("cat"), { front, rear, QStringLiteral("-o"), QStringLiteral("/dev/null") });
    const QString ffmpeg = Utils::GetFFMPEGPath();
    QtProcessRunner runner;
    double reference = 1e300;
    double first = 1e300;
    double second = 1e300;
    std::optional<QList<QUrl>> files;
    // Three rounds, each side writing into a fresh folder, best of each.
    for (int round = 0; round < 3; ++round) {
        const QString bare = dir.filePath(QStringLiteral("bare%1").arg(round));
        QDir().mkpath(bare);
        reference = std::min(reference, bestOf(1, [&] {
            runProgram(ffmpeg,
                FfmpegArguments::singleStreamArguments(
                    front, type, bare + QStringLiteral("/f.mov")));
            runProgram(
                ffmpeg, FfmpegArguments::subtitleArguments(front, bare + QStringLiteral("/f.srt")));
            runProgram(ffmpeg,
                FfmpegArguments::singleStreamArguments(
                    rear, type, bare + QStringLiteral("/r.mov")));
            runProgram(
                ffmpeg, FfmpegArguments::subtitleArguments(rear, bare + QStringLiteral("/r.srt")));
        }));
        const ClipConverter converter(runner, dir.filePath(QStringLiteral("work%1").arg(round)));
        first = std::min(first,
            bestOf(1, [&] { files = converter.checkAndConvertVideo(QUrl::fromLocalFile(front)); }));
        second = std::min(
            second, bestOf(1, [&] { converter.checkAndConvertVideo(QUrl::fromLocalFile(front)); }));
        Utils::RemoveDirectory(bare);
        Utils::RemoveDirectory(dir.filePath(QStringLiteral("work%1").arg(round)));
    }

    std::printf("conversion: %d-s 1080p MP4 pair (%.1f + %.1f MB), %lld files out\n", seconds,
        QFileInfo(front).size() / 1e6, QFileInfo(rear).size() / 1e6,
        static_cast<long long>(files ? files->size() : 0));
    std::printf("  bare ffmpeg, 4 commands %8.1f ms\n", reference);
    std::printf("  first open              %8.1f ms   ratio %.2f\n", first, first / reference);
    std::printf("  second open (cached)    %8.3f ms\n", second);
}

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    int clips = 10000;
    int seconds = 60;
    bool convert = true;
    const QStringList args = app.arguments();
    for (qsizetype i = 1; i < args.size(); ++i) {
        bool ok = true;
        if (args[i] == QLatin1String("--clips") && i + 1 < args.size())
            clips = args[++i].toInt(&ok);
        else if (args[i] == QLatin1String("--seconds") && i + 1 < args.size())
            seconds = args[++i].toInt(&ok);
        else if (args[i] == QLatin1String("--skip-convert"))
            convert = false;
        else
            ok = false;
        if (!ok || clips < 1 || seconds < 2) {
            std::fprintf(
                stderr, "usage: bench_library [--clips N] [--seconds S] [--skip-convert]\n");
            return 2;
        }
    }
    benchList(clips);
    if (convert)
        benchConvert(seconds);
    return 0;
}
