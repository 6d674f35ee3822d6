// The speed and memory of trips, each against a reference measured in the
// same run:
//  1. listing: `tavro trips CARD` on a card of 500 clips (bench_export's
//     card: the demo card's clips hard-linked) against reading the same
//     clips' telemetry once (`tavro telemetry --loader native --format json
//     FILE...`); target: at most 1.2x;
//  2. stall: the viewer's main window plays a trip of 1280x720 / 640x360 30
//     fps clips; at each clip boundary, the longest wait between two pictures
//     reaching the screen, in frame intervals (target: at most 2), on both
//     cameras, next to the longest wait away from the boundaries;
//  3. memory: a 2-hour trip (120 one-minute clips made by the test builders,
//     kept in the build folder) played at the player's highest speed (100x);
//     the growth of the process's resident memory from the first clip to the
//     last (target: under 50 MB).
// Run under a display:
//   xvfb-run -a -s "-screen 0 1920x1080x24" build/bin/bench_trips [--runs N]
//       [--clips N] [--stall-clips N] [--hours H] [--skip list,stall,memory]
#include "BenchCard.h"
#include "DriveClip.h"
#include "app/session/MainWindowController.h"
#include "app/session/PlaybackSession.h"
#include "app/window/MainWindow.h"
#include "app/window/VideoArea.h"
#include "config/FolderVolumeSource.h"
#include "config/VolumeUtils.h"
#include "editors/web/WebEngineProcess.h"
#include "player/TavroAVView.h"
#include "style/TavroStyle.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QTest>
#include <QUrl>
#include <QtWebEngineQuick>

#include <algorithm>
#include <clocale>
#include <cstdio>
#include <memory>
#include <vector>

#include <unistd.h>

using namespace BenchCard;

namespace {

constexpr int kWaitMs = 120000;
constexpr double kFps = 30.0;

QString buildFolder()
{
    return QDir(QCoreApplication::applicationDirPath() + QStringLiteral("/..")).absolutePath();
}

QByteArray loadAverage()
{
    QFile file(QStringLiteral("/proc/loadavg"));
    return file.open(QIODevice::ReadOnly) ? file.readLine().trimmed() : QByteArray("?");
}

// --- 1. listing

void benchListing(int clips, int runs)
{
    const QString build = buildFolder();
    const QStringList files = ensureCard(
        build + QStringLiteral("/demo-card"), build + QStringLiteral("/bench-export-card"), clips);
    if (files.isEmpty()) {
        std::fprintf(stderr, "bench_trips: could not make a card of %d clips\n", clips);
        return;
    }
    const QString tavro = sibling(QStringLiteral("tavro"));
    const QString card = build + QStringLiteral("/bench-export-card");
    const QStringList reading
        = QStringList { "telemetry", "--loader", "native", "--format", "json" } + files;
    runProgram(tavro, reading); // the page cache warm for both
    const Run reference = bestOf(runs, tavro, reading);
    const Run trips = bestOf(runs, tavro, { "trips", card });
    std::printf(
        "\n1. listing the trips of %lld clips (best of %d)\n", qlonglong(files.size()), runs);
    std::printf("  tavro telemetry --loader native --format json  %9.1f ms  exit %d\n",
        reference.ms, reference.exitCode);
    std::printf("  tavro trips                                     %9.1f ms  exit %d\n", trips.ms,
        trips.exitCode);
    std::printf("  ratio trips / telemetry: %.3f (target <= 1.2); load average %s\n",
        trips.ms / reference.ms, loadAverage().constData());
}

// --- the viewer

// A trip of `count` clips of `seconds`, front and rear, one after the other.
bool makeTrip(const QString& folder, int count, int seconds, QSize front, QSize rear, int fps)
{
    const QDateTime start(QDate(2026, 5, 14), QTime(6, 0, 0), Qt::UTC);
    for (int i = 0; i < count; ++i) {
        const QDateTime at = start.addSecs(qint64(i) * seconds);
        const QString base = folder + QStringLiteral("/cont_rec/")
            + at.toString(QStringLiteral("yyyyMMdd_HHmmss"));
        const DriveClip::Drive drive { at, i * seconds, -1 };
        for (const auto& [suffix, size, tag] :
            { std::tuple { "_F.mp4", front, 0 }, std::tuple { "_R.mp4", rear, 7 } }) {
            const QString path = base + QLatin1String(suffix);
            if (!QFileInfo::exists(path)
                && !DriveClip::make(path, seconds, size.width(), size.height(), fps, tag, drive))
                return false;
        }
        if ((i + 1) % 20 == 0) {
            std::printf("  %d of %d clips\n", i + 1, count);
            std::fflush(stdout);
        }
    }
    return true;
}

// Makes the trip's clips in `folder`, shows the window and plays trip 0;
// false, said on stderr, when the clips cannot be made or the trip does not
// start.
bool playTrip(MainWindow& window, const QString& folder, int clips, int seconds, QSize front,
    QSize rear, int fps)
{
    if (!makeTrip(folder, clips, seconds, front, rear, fps)) {
        std::fprintf(stderr, "bench_trips: ffmpeg could not make the clips\n");
        return false;
    }
    window.showMainWindow();
    if (!QTest::qWaitForWindowExposed(&window)) {
        std::fprintf(stderr, "bench_trips: the window did not show\n");
        return false;
    }
    window.controller().selectFolderButtonTouched(QUrl::fromLocalFile(folder));
    window.controller().playTrip(0);
    TavroAVView* big = window.videoArea()->bigMovieView();
    TavroAVView* small = window.videoArea()->smallMovieView();
    const bool playing = QTest::qWaitFor(
        [&] {
            return window.session().isPlayingTrip() && big->framesPresented() > 0
                && small->framesPresented() > 0 && !window.session().isVideoPaused();
        },
        kWaitMs);
    if (!playing)
        std::fprintf(stderr, "bench_trips: the trip did not play\n");
    return playing;
}

// --- 2. stall at the boundaries

struct Presented {
    double wall; // seconds
    double media; // the view's position when the picture reached the screen
};

double percentile(std::vector<double> values, double share)
{
    if (values.empty())
        return 0;
    std::sort(values.begin(), values.end());
    return values[std::min(values.size() - 1, size_t(share * double(values.size())))];
}

// At each boundary: the wait from the last picture of one clip to the first
// of the next (the first picture whose position has reached the boundary;
// mpv may report a position a frame late, so the wait after that picture
// counts too, whichever is longer). Elsewhere: the median and the 99th
// percentile of the waits, for the jitter of the machine.
void reportStalls(const char* camera, const std::vector<Presented>& pictures,
    const QVector<TripTimeline::Segment>& segments)
{
    std::vector<double> atBoundaries;
    std::vector<bool> boundary(pictures.size(), false);
    for (int s = 1; s < segments.size(); ++s) {
        const double at = segments[s].start - 0.001;
        for (size_t i = 1; i + 1 < pictures.size(); ++i) {
            if (pictures[i - 1].media < at && pictures[i].media >= at) {
                atBoundaries.push_back(std::max(pictures[i].wall - pictures[i - 1].wall,
                    pictures[i + 1].wall - pictures[i].wall));
                boundary[i] = boundary[i + 1] = true;
                break;
            }
        }
    }
    std::vector<double> elsewhere;
    for (size_t i = 1; i < pictures.size(); ++i) {
        if (!boundary[i])
            elsewhere.push_back(pictures[i].wall - pictures[i - 1].wall);
    }
    const double worst
        = atBoundaries.empty() ? 0 : *std::max_element(atBoundaries.begin(), atBoundaries.end());
    std::printf("  %-5s %zu pictures; at the %zu boundaries the longest wait %.1f ms = %.2f frame"
                " intervals (target <= 2); elsewhere median %.1f ms, 99%% %.1f ms = %.2f\n",
        camera, pictures.size(), atBoundaries.size(), worst * 1000, worst * kFps,
        percentile(elsewhere, 0.5) * 1000, percentile(elsewhere, 0.99) * 1000,
        percentile(elsewhere, 0.99) * kFps);
}

void benchStall(int clips, int seconds)
{
    const QString folder = buildFolder() + QStringLiteral("/bench-trip-stall");
    std::printf("\n2. stall at the clip boundaries: %d clips of %d s, 1280x720 / 640x360 %d fps\n",
        clips, seconds, int(kFps));
    std::fflush(stdout);
    MainWindow window;
    if (!playTrip(window, folder, clips, seconds, { 1280, 720 }, { 640, 360 }, int(kFps)))
        return;
    TavroAVView* big = window.videoArea()->bigMovieView();
    TavroAVView* small = window.videoArea()->smallMovieView();
    std::vector<Presented> bigPictures;
    std::vector<Presented> smallPictures;
    QElapsedTimer clock;
    clock.start();
    QObject::connect(big, &TavroAVView::framePresented, [&] {
        bigPictures.push_back({ clock.nsecsElapsed() / 1e9, big->currentTime() });
    });
    QObject::connect(small, &TavroAVView::framePresented, [&] {
        smallPictures.push_back({ clock.nsecsElapsed() / 1e9, small->currentTime() });
    });
    (void)QTest::qWaitFor([&] { return window.session().isVideoPaused(); }, kWaitMs);
    QObject::disconnect(big, &TavroAVView::framePresented, nullptr, nullptr);
    QObject::disconnect(small, &TavroAVView::framePresented, nullptr, nullptr);
    const QVector<TripTimeline::Segment> segments = window.session().tripTimeline()->segments();
    reportStalls("front", bigPictures, segments);
    reportStalls("rear", smallPictures, segments);
    std::printf("  dropped front %lld/%lld, rear %lld/%lld (decoder/output); load average %s\n",
        static_cast<long long>(big->decoderDroppedFrames()),
        static_cast<long long>(big->outputDroppedFrames()),
        static_cast<long long>(small->decoderDroppedFrames()),
        static_cast<long long>(small->outputDroppedFrames()), loadAverage().constData());
}

// --- 3. memory over a long trip

double residentMegabytes()
{
    QFile status(QStringLiteral("/proc/self/status"));
    if (!status.open(QIODevice::ReadOnly))
        return -1;
    for (const QByteArray& line : status.readAll().split('\n')) {
        if (line.startsWith("VmRSS:"))
            return line.mid(6).trimmed().split(' ').value(0).toDouble() / 1024.0;
    }
    return -1;
}

void benchMemory(double hours)
{
    const int clips = std::max(2, int(hours * 60));
    const QString folder = buildFolder() + QStringLiteral("/bench-trip-%1h").arg(hours);
    std::printf("\n3. memory over a %.1f-hour trip: %d clips of 60 s, 320x180 / 160x90 10 fps\n",
        hours, clips);
    std::fflush(stdout);
    MainWindow window;
    if (!playTrip(window, folder, clips, 60, { 320, 180 }, { 160, 90 }, 10))
        return;
    PlaybackSession& session = window.session();
    TavroAVView* big = window.videoArea()->bigMovieView();
    TavroAVView* small = window.videoArea()->smallMovieView();
    // The highest speed the player takes.
    while (big->rate() < 100.0f || small->rate() < 100.0f) {
        big->fastForward();
        small->fastForward();
        QTest::qWait(20);
    }
    QElapsedTimer clock;
    clock.start();
    double atFirst = -1;
    double highest = 0;
    double atLast = -1;
    int clip = -1;
    while (!session.isVideoPaused() && clock.elapsed() < 3600 * 1000) {
        QTest::qWait(100);
        const double rss = residentMegabytes();
        highest = std::max(highest, rss);
        if (session.currentTripClip() != clip) {
            clip = session.currentTripClip();
            if (clip == 0 || atFirst < 0)
                atFirst = rss;
            if (clip == clips - 1)
                atLast = rss;
            if (clip % 20 == 0) {
                std::printf("  clip %d at %.0f s: %.1f MB\n", clip, clock.elapsed() / 1000.0, rss);
                std::fflush(stdout);
            }
        }
    }
    const double media = big->currentTime();
    std::printf("  played %.0f s of video in %.0f s (%.0fx)\n", media, clock.elapsed() / 1000.0,
        media / std::max(1.0, clock.elapsed() / 1000.0));
    std::printf("  resident memory: first clip %.1f MB, last clip %.1f MB, highest %.1f MB;"
                " growth %.1f MB (target < 50)\n",
        atFirst, atLast, highest, atLast - atFirst);
}

} // namespace

int main(int argc, char** argv)
{
    WebEngineProcess::prepare(); // as the viewer starts it
    QCoreApplication::setAttribute(Qt::AA_ShareOpenGLContexts);
    QtWebEngineQuick::initialize();
    QApplication app(argc, argv);
    std::setlocale(LC_NUMERIC, "C");
    QCoreApplication::setOrganizationName(QStringLiteral("tavro"));
    QCoreApplication::setApplicationName(QStringLiteral("tavro-bench-trips"));
    QCommandLineParser parser;
    parser.addHelpOption();
    parser.addOption({ "runs", "Runs of each listing command (default 3).", "n", "3" });
    parser.addOption({ "clips", "Clips of the listing card (default 500).", "n", "500" });
    parser.addOption({ "stall-clips", "Clips of the stall trip (default 6).", "n", "6" });
    parser.addOption({ "hours", "Length of the memory trip (default 2).", "h", "2" });
    parser.addOption({ "skip", "Parts to leave out: list, stall, memory.", "parts" });
    parser.process(app);
    const QStringList skip = parser.value("skip").split(u',');
    Utils::setVolumeSource(std::make_shared<FolderVolumeSource>());
    TavroStyle::apply(app);
    if (!skip.contains("list"))
        benchListing(
            std::max(1, parser.value("clips").toInt()), std::max(1, parser.value("runs").toInt()));
    if (!skip.contains("stall"))
        benchStall(std::max(2, parser.value("stall-clips").toInt()), 5);
    if (!skip.contains("memory"))
        benchMemory(std::max(0.05, parser.value("hours").toDouble()));
    return 0;
}
