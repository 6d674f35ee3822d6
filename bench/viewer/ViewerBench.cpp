// Measures the viewer's main window on a front/rear pair of 1080p30 MP4
// clips (with the camera's telemetry subtitle track) made with ffmpeg:
//  1. time from a double-click on the front clip's row to both views playing
//     (prepared, running, time advancing): the first time, with the clip
//     converted by ffmpeg and its telemetry extracted, and the second time,
//     from the conversion cache (median of several runs each);
//  2. CPU used by the viewer process while the two views play (only once the
//     screen shows both pictures, before and after the span), against two
//     mpv processes playing the same two files in windows of the views'
//     sizes under the same display (`--vo=gpu`, or `--vo=null` when gpu
//     cannot start);
//  3. seek latency (seek slider released -> the new picture drawn and the
//     read-outs showing its time) and frame-step latency (right arrow -> the
//     next picture drawn), medians, with the clip paused.
// Usage: bench_viewer [--runs N] [--seconds S]
#include "DriveClip.h"
#include "app/session/MainWindowController.h"
#include "app/session/PlaybackSession.h"
#include "app/window/MainWindow.h"
#include "app/window/TransportBar.h"
#include "app/window/VideoArea.h"
#include "config/FolderVolumeSource.h"
#include "config/VolumeUtils.h"
#include "editors/web/WebEngineProcess.h"
#include "library/ClipConverter.h"
#include "player/TavroAVView.h"
#include "style/TavroStyle.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QLabel>
#include <QMap>
#include <QProcess>
#include <QScreen>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>
#include <QThread>
#include <QUrl>
#include <QtWebEngineQuick>

#include <algorithm>
#include <clocale>
#include <cmath>
#include <cstdio>
#include <functional>
#include <memory>
#include <vector>

#include <unistd.h>

namespace {

constexpr int kWaitMs = 60000;

// User plus system CPU seconds from a stat file of /proc (fields 14 and 15,
// counted after the command name in parentheses); -1 when it is gone.
double cpuSecondsIn(const QString& statPath)
{
    QFile file(statPath);
    if (!file.open(QIODevice::ReadOnly))
        return -1.0;
    const QByteArray line = file.readAll();
    const qsizetype close = line.lastIndexOf(')');
    if (close < 0)
        return -1.0;
    const QList<QByteArray> fields = line.mid(close + 2).split(' ');
    if (fields.size() < 13)
        return -1.0;
    return double(fields[11].toLongLong() + fields[12].toLongLong()) / double(sysconf(_SC_CLK_TCK));
}

double cpuSecondsOf(qint64 pid)
{
    return cpuSecondsIn(QStringLiteral("/proc/%1/stat").arg(pid));
}

// CPU seconds of each thread of this process by name (threads of one name
// summed: mpv and Qt name their workers by role).
QMap<QString, double> threadCpuSeconds()
{
    QMap<QString, double> byName;
    const QString tasks = QStringLiteral("/proc/self/task");
    for (const QString& tid : QDir(tasks).entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
        QFile comm(tasks + u'/' + tid + QStringLiteral("/comm"));
        if (!comm.open(QIODevice::ReadOnly))
            continue;
        const double cpu = cpuSecondsIn(tasks + u'/' + tid + QStringLiteral("/stat"));
        if (cpu >= 0.0)
            byName[QString::fromUtf8(comm.readAll().trimmed())] += cpu;
    }
    return byName;
}

void printBusiestThreads(const QMap<QString, double>& before, double wall)
{
    std::vector<std::pair<double, QString>> deltas;
    const QMap<QString, double> after = threadCpuSeconds();
    for (auto it = after.begin(); it != after.end(); ++it)
        deltas.emplace_back(it.value() - before.value(it.key()), it.key());
    std::sort(deltas.rbegin(), deltas.rend());
    std::printf("  busiest threads:");
    for (size_t i = 0; i < std::min<size_t>(6, deltas.size()); ++i)
        std::printf(" %s %.0f%%", qPrintable(deltas[i].second), 100.0 * deltas[i].first / wall);
    std::printf("\n");
}

qint64 parentOf(qint64 pid)
{
    QFile file(QStringLiteral("/proc/%1/stat").arg(pid));
    if (!file.open(QIODevice::ReadOnly))
        return -1;
    const QByteArray line = file.readAll();
    const QList<QByteArray> fields = line.mid(line.lastIndexOf(')') + 2).split(' ');
    return fields.size() > 1 ? fields[1].toLongLong() : -1;
}

// The helper processes the viewer started (the map's web engine), at any depth.
std::vector<qint64> descendantsOfSelf()
{
    std::vector<qint64> family { qint64(::getpid()) };
    std::vector<std::pair<qint64, qint64>> all;
    for (const QString& name : QDir(QStringLiteral("/proc")).entryList(QDir::Dirs)) {
        bool ok = false;
        const qint64 pid = name.toLongLong(&ok);
        if (ok)
            all.emplace_back(pid, parentOf(pid));
    }
    for (size_t i = 0; i < family.size(); ++i) {
        for (const auto& [pid, parent] : all) {
            if (parent == family[i])
                family.push_back(pid);
        }
    }
    family.erase(family.begin());
    return family;
}

double median(std::vector<double> values)
{
    if (values.empty())
        return -1.0;
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

bool makeClip(const QString& path, int seconds, int tag)
{
    return DriveClip::make(path, seconds, 1920, 1080, 30, tag);
}

// How far the screen's pixels where the view lies are from the view's own
// picture: the mean difference per channel (0..255) of both, shrunk to a
// thumbnail so that a frame's worth of motion does not count.
double differenceOnScreen(const QImage& screen, TavroAVView& view)
{
    const QSize thumb(48, 27);
    const qreal ratio = view.devicePixelRatioF();
    const QRect place((QPointF(view.mapToGlobal(QPoint(0, 0))) * ratio).toPoint(),
        (QSizeF(view.size()) * ratio).toSize());
    const QImage shown = screen.copy(place)
                             .scaled(thumb, Qt::IgnoreAspectRatio, Qt::SmoothTransformation)
                             .convertToFormat(QImage::Format_RGB32);
    const QImage own = view.grabFramebuffer()
                           .scaled(thumb, Qt::IgnoreAspectRatio, Qt::SmoothTransformation)
                           .convertToFormat(QImage::Format_RGB32);
    double sum = 0.0;
    for (int y = 0; y < thumb.height(); ++y) {
        for (int x = 0; x < thumb.width(); ++x) {
            const QRgb a = shown.pixel(x, y), b = own.pixel(x, y);
            sum += std::abs(qRed(a) - qRed(b)) + std::abs(qGreen(a) - qGreen(b))
                + std::abs(qBlue(a) - qBlue(b));
        }
    }
    return sum / (3.0 * thumb.width() * thumb.height());
}

// Both pictures on the screen the X server shows (its root window read
// back), not merely in their textures: CPU figures of a run where a picture
// is missing would measure nothing worth knowing.
bool bothPicturesOnScreen(MainWindow& window)
{
    constexpr double kMostDifference = 30.0;
    const QImage screen = QGuiApplication::primaryScreen()->grabWindow(0).toImage();
    bool shown = true;
    for (TavroAVView* view :
        { window.videoArea()->bigMovieView(), window.videoArea()->smallMovieView() }) {
        const double difference = differenceOnScreen(screen, *view);
        std::printf("  on screen: %s differs from its picture by %.1f (of 255)\n",
            qPrintable(view->objectName()), difference);
        shown = shown && difference <= kMostDifference;
    }
    return shown;
}

// Prepared, running and past the first picture in both views.
bool bothPlaying(MainWindow& window)
{
    for (const TavroAVView* view :
        { window.videoArea()->bigMovieView(), window.videoArea()->smallMovieView() }) {
        if (view->status() != TavroAVViewStatus::Prepared || view->rate() <= 0.0f
            || view->currentTime() <= 0.0)
            return false;
    }
    return !window.session().isVideoPaused();
}

struct Activation {
    double callMs = -1.0; // the double-click handler (conversion runs inside it)
    double playingMs = -1.0;
};

Activation activateRow(MainWindow& window, int row)
{
    window.session().stopButtonTouched();
    QTest::qWait(500);
    Activation result;
    QElapsedTimer clock;
    clock.start();
    window.controller().videoFileListDoubleClicked(row);
    result.callMs = double(clock.nsecsElapsed()) / 1e6;
    if (QTest::qWaitFor([&] { return bothPlaying(window); }, kWaitMs))
        result.playingMs = double(clock.nsecsElapsed()) / 1e6;
    else
        std::fprintf(stderr, "the two views did not play within %d s\n", kWaitMs / 1000);
    return result;
}

void benchActivation(MainWindow& window, const QString& frontClip, int runs)
{
    std::vector<double> firstCall, firstPlaying, cachedCall, cachedPlaying;
    const QString cache = window.controller().converter().cacheFolderPath(frontClip);
    for (int i = 0; i < runs; ++i) {
        window.session().stopButtonTouched();
        QTest::qWait(300);
        QDir(cache).removeRecursively();
        const Activation first = activateRow(window, 0);
        firstCall.push_back(first.callMs);
        firstPlaying.push_back(first.playingMs);
        QTest::qWait(1000);
        const Activation cached = activateRow(window, 0);
        cachedCall.push_back(cached.callMs);
        cachedPlaying.push_back(cached.playingMs);
        QTest::qWait(1000);
    }
    std::printf(
        "\ndouble-click on the front clip -> both views playing, median of %d runs\n", runs);
    std::printf("  first time (ffmpeg conversion + telemetry)  %8.1f ms  (handler %.1f ms)\n",
        median(firstPlaying), median(firstCall));
    std::printf("  second time (conversion cache)              %8.1f ms  (handler %.1f ms)\n",
        median(cachedPlaying), median(cachedCall));
}

struct CpuUse {
    double wall = 0.0;
    double cpu = 0.0;
};

CpuUse viewerCpu(MainWindow& window, int seconds, double* helpersCpu)
{
    window.controller().videoFileListDoubleClicked(0);
    if (!QTest::qWaitFor([&] { return bothPlaying(window); }, kWaitMs))
        return {};
    QTest::qWait(1000);
    if (!bothPicturesOnScreen(window)) {
        std::fprintf(stderr, "a picture is missing from the screen: no figures\n");
        return {};
    }
    TavroAVView* big = window.videoArea()->bigMovieView();
    TavroAVView* small = window.videoArea()->smallMovieView();
    const qint64 bigFrames = big->framesPresented();
    const qint64 smallFrames = small->framesPresented();
    const double mediaStart = big->currentTime();
    const std::vector<qint64> helpers = descendantsOfSelf();
    auto helperSum = [&] {
        double sum = 0.0;
        for (qint64 pid : helpers)
            sum += std::max(0.0, cpuSecondsOf(pid));
        return sum;
    };
    const double helpersBefore = helperSum();
    const double before = cpuSecondsOf(::getpid());
    const QMap<QString, double> threadsBefore = threadCpuSeconds();
    QElapsedTimer clock;
    clock.start();
    QTest::qWait(seconds * 1000);
    CpuUse use { double(clock.nsecsElapsed()) / 1e9, cpuSecondsOf(::getpid()) - before };
    *helpersCpu = helperSum() - helpersBefore;
    std::printf("\nviewer: two views playing for %.1f s (big %dx%d, small %dx%d)\n", use.wall,
        big->width(), big->height(), small->width(), small->height());
    std::printf(
        "  media advanced %.2f s; pictures drawn big %lld, small %lld; dropped big %lld/%lld,"
        " small %lld/%lld (decoder/output)\n",
        big->currentTime() - mediaStart, static_cast<long long>(big->framesPresented() - bigFrames),
        static_cast<long long>(small->framesPresented() - smallFrames),
        static_cast<long long>(big->decoderDroppedFrames()),
        static_cast<long long>(big->outputDroppedFrames()),
        static_cast<long long>(small->decoderDroppedFrames()),
        static_cast<long long>(small->outputDroppedFrames()));
    printBusiestThreads(threadsBefore, use.wall);
    if (!bothPicturesOnScreen(window)) {
        std::fprintf(stderr, "a picture left the screen while measuring: no figures\n");
        return {};
    }
    return use;
}

// Runs the event loop until done() holds; the milliseconds it took, or -1.
double millisecondsUntil(const std::function<bool()>& done)
{
    QElapsedTimer clock;
    clock.start();
    while (!done()) {
        if (clock.elapsed() > kWaitMs)
            return -1.0;
        QCoreApplication::processEvents(QEventLoop::AllEvents, 2);
    }
    return double(clock.nsecsElapsed()) / 1e6;
}

// Seeks with the slider and steps with the right arrow, paused, as a user does.
void benchLatencies(MainWindow& window, int clipSeconds, int runs)
{
    PlaybackSession& session = window.session();
    TavroAVView* big = window.videoArea()->bigMovieView();
    QLabel* playTime = window.transportBar()->playTimeTextField;
    session.pauseVideo();
    QTest::qWait(500);
    std::vector<double> seeks, steps;
    for (int i = 0; i < runs * 2; ++i) {
        // Whole seconds spread over the clip, never the one it is at.
        const int target = 1 + (i * 7 + 3) % std::max(2, clipSeconds - 2);
        const QString shown = QStringLiteral("00:%1").arg(target, 2, 10, QLatin1Char('0'));
        const qint64 framesBefore = big->framesPresented();
        session.seekTimeSliderTouchedDown();
        session.seekTimeSliderTouchedUp(target);
        seeks.push_back(millisecondsUntil([&] {
            return big->framesPresented() > framesBefore
                && std::abs(big->currentTime() - target) < 0.02
                && playTime->text().startsWith(shown);
        }));
        QTest::qWait(200);
        const double before = big->currentTime();
        const qint64 framesAtStep = big->framesPresented();
        session.keyDown(Qt::Key_Right, Qt::NoModifier);
        steps.push_back(millisecondsUntil([&] {
            return big->currentTime() > before + 0.01 && big->framesPresented() > framesAtStep;
        }));
        QTest::qWait(200);
    }
    std::printf("\nlatency with the clip paused, median of %d\n", runs * 2);
    std::printf("  seek (slider released -> new picture and read-outs)  %6.1f ms\n", median(seeks));
    std::printf("  frame step (right arrow -> next picture)             %6.1f ms\n", median(steps));
}

// A small script has mpv report its position and drop counters every
// second; the last report shows whether it kept up.
QString writeReportScript(const QString& dir)
{
    const QString path = dir + QStringLiteral("/report.lua");
    QFile lua(path);
    if (!lua.open(QIODevice::WriteOnly))
        return {};
    lua.write("mp.add_periodic_timer(1, function() mp.msg.warn('REPORT ' .. "
              "mp.get_property('time-pos', '?') .. ' ' .. mp.get_property('frame-drop-count', "
              "'?') .. ' ' .. mp.get_property('vo-drop-frame-count', '?')) end)\n");
    return path;
}

void printLastReport(QProcess& mpv, int index)
{
    const QList<QByteArray> words = mpv.readAll().simplified().split(' ');
    const qsizetype at = words.lastIndexOf("REPORT");
    if (at < 0 || at + 3 >= words.size()) {
        std::printf("  mpv %d did not report its position\n", index);
        return;
    }
    std::printf("  mpv %d at %.2f s of the clip; dropped %s/%s (decoder/output)\n", index,
        words[at + 1].toDouble(), words[at + 2].constData(), words[at + 3].constData());
}

std::vector<std::unique_ptr<QProcess>> startMpv(const QStringList& clips,
    const QList<QRect>& geometries, const QString& vo, const QString& script)
{
    std::vector<std::unique_ptr<QProcess>> players;
    for (int i = 0; i < clips.size(); ++i) {
        const QRect g = geometries.at(i);
        auto mpv = std::make_unique<QProcess>();
        mpv->setProcessChannelMode(QProcess::MergedChannels);
        mpv->start(QStringLiteral("mpv"),
            { QStringLiteral("--no-config"), QStringLiteral("--vo=") + vo,
                QStringLiteral("--gpu-sw=yes"), QStringLiteral("--ao=null"),
                QStringLiteral("--msg-level=all=no,report=warn"),
                QStringLiteral("--script=") + script,
                QStringLiteral("--geometry=%1x%2+%3+%4")
                    .arg(g.width())
                    .arg(g.height())
                    .arg(g.x())
                    .arg(g.y()),
                clips.at(i) });
        players.push_back(std::move(mpv));
    }
    return players;
}

// Two mpv processes in windows of the views' sizes; their CPU over the same
// span, after the same one-second settling time as the viewer.
CpuUse mpvCpu(const QStringList& clips, const QList<QRect>& geometries, int seconds, QString* vo)
{
    const QString script = writeReportScript(QFileInfo(clips.at(0)).absolutePath());
    for (const QString& output : { QStringLiteral("gpu"), QStringLiteral("null") }) {
        auto players = startMpv(clips, geometries, output, script);
        QTest::qWait(2500);
        const bool running = std::all_of(players.begin(), players.end(),
            [](const auto& mpv) { return mpv->state() == QProcess::Running; });
        if (!running) {
            for (auto& mpv : players) {
                mpv->kill();
                mpv->waitForFinished(5000);
            }
            continue;
        }
        *vo = output;
        auto sum = [&] {
            double total = 0.0;
            for (auto& mpv : players)
                total += std::max(0.0, cpuSecondsOf(mpv->processId()));
            return total;
        };
        const double before = sum();
        QElapsedTimer clock;
        clock.start();
        QTest::qWait(seconds * 1000);
        const CpuUse use { double(clock.nsecsElapsed()) / 1e9, sum() - before };
        std::printf("\nmpv: two --vo=%s processes playing for %.1f s (2.5 s after their start)\n",
            qPrintable(output), use.wall);
        for (size_t i = 0; i < players.size(); ++i)
            printLastReport(*players[i], int(i + 1));
        for (auto& mpv : players) {
            mpv->terminate();
            if (!mpv->waitForFinished(5000))
                mpv->kill();
        }
        return use;
    }
    return {};
}

QByteArray loadAverage()
{
    QFile file(QStringLiteral("/proc/loadavg"));
    return file.open(QIODevice::ReadOnly) ? file.readLine().trimmed() : QByteArray("?");
}

} // namespace

int main(int argc, char** argv)
{
    WebEngineProcess::prepare(); // as the viewer starts it
    QCoreApplication::setAttribute(Qt::AA_ShareOpenGLContexts);
    QtWebEngineQuick::initialize();
    QApplication app(argc, argv);
    std::setlocale(LC_NUMERIC, "C");
    // Settings and conversion cache of its own, apart from the viewer's.
    QCoreApplication::setOrganizationName(QStringLiteral("tavro"));
    QCoreApplication::setApplicationName(QStringLiteral("tavro-bench-viewer"));
    QCommandLineParser parser;
    parser.addHelpOption();
    parser.addOption({ QStringLiteral("runs"), QStringLiteral("Double-click runs (default 3)."),
        QStringLiteral("n"), QStringLiteral("3") });
    parser.addOption({ QStringLiteral("seconds"),
        QStringLiteral("Two-view playback time for the CPU figures (default 25)."),
        QStringLiteral("s"), QStringLiteral("25") });
    parser.process(app);
    const int runs = std::max(1, parser.value(QStringLiteral("runs")).toInt());
    const int seconds = std::max(2, parser.value(QStringLiteral("seconds")).toInt());

    QTemporaryDir card;
    const QString folder = card.path() + QStringLiteral("/cont_rec");
    QDir().mkpath(folder);
    const QStringList clips { folder + QStringLiteral("/20240315_081502_F.mp4"),
        folder + QStringLiteral("/20240315_081502_R.mp4") };
    const int clipSeconds = seconds + 10;
    std::printf(
        "making a %d-s 1920x1080 30 fps H.264 front/rear pair with telemetry...\n", clipSeconds);
    std::fflush(stdout);
    if (!makeClip(clips[0], clipSeconds, 0) || !makeClip(clips[1], clipSeconds, 7)) {
        std::fprintf(stderr, "ffmpeg could not make the clips\n");
        return 1;
    }
    std::printf("%d CPU threads, load average %s\n", QThread::idealThreadCount(),
        loadAverage().constData());

    // No card: the folder is chosen as with the folder button.
    Utils::setVolumeSource(std::make_shared<FolderVolumeSource>());
    TavroStyle::apply(app);
    auto window = std::make_unique<MainWindow>();
    window->showMainWindow();
    if (!QTest::qWaitForWindowExposed(window.get()))
        return 1;
    window->controller().selectFolderButtonTouched(QUrl::fromLocalFile(card.path()));
    benchActivation(*window, clips[0], runs);

    double helpersCpu = 0.0;
    const CpuUse viewer = viewerCpu(*window, seconds, &helpersCpu);
    benchLatencies(*window, clipSeconds, runs * 2);
    QList<QRect> geometries;
    for (const TavroAVView* view :
        { window->videoArea()->bigMovieView(), window->videoArea()->smallMovieView() })
        geometries.append(QRect(view->mapToGlobal(QPoint(0, 0)), view->size()));
    window.reset();
    // The bench's own cache (conversions, map tiles) goes with it.
    const QString ownCache = QStandardPaths::writableLocation(QStandardPaths::CacheLocation);
    if (ownCache.endsWith(QStringLiteral("/tavro-bench-viewer")))
        QDir(ownCache).removeRecursively();
    QTest::qWait(1000);

    QString vo;
    const CpuUse mpv = mpvCpu(clips, geometries, seconds, &vo);
    std::printf("\nCPU while two 1080p30 clips play (%% of one core)\n");
    if (viewer.wall <= 0.0 || mpv.wall <= 0.0) {
        std::fprintf(stderr, "  the viewer or mpv did not play\n");
        return 1;
    }
    const double viewerPercent = 100.0 * viewer.cpu / viewer.wall;
    const double mpvPercent = 100.0 * mpv.cpu / mpv.wall;
    std::printf(
        "  two mpv --vo=%s processes                  %6.0f%%\n", qPrintable(vo), mpvPercent);
    std::printf("  viewer process                              %6.0f%%  (%.2fx mpv)\n",
        viewerPercent, viewerPercent / mpvPercent);
    std::printf("  viewer + its web engine helpers             %6.0f%%  (%.2fx mpv)\n",
        100.0 * (viewer.cpu + helpersCpu) / viewer.wall,
        100.0 * (viewer.cpu + helpersCpu) / viewer.wall / mpvPercent);
    std::printf("  load average %s\n", loadAverage().constData());
    return 0;
}
