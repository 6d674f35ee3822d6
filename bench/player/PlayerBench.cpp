// Measures the player view on a 60-s 1080p30 H.264 clip made with ffmpeg:
//  1. time from setFileName to Prepared and to the first picture drawn,
//     against `mpv --no-config --vo=null --ao=null --frames=1 FILE` run in
//     the same process (median of several runs each);
//  2. frames dropped while two views play the clip side by side, against two
//     `mpv --vo=gpu` windows of the same sizes playing it at the same time.
// Usage: bench_player [--clip FILE] [--runs N] [--seconds S]
#include "player/TavroAVView.h"
#include "player/TavroAVViewDelegate.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QElapsedTimer>
#include <QHBoxLayout>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>
#include <QThread>

#include <QFile>

#include <algorithm>
#include <clocale>
#include <cstdio>
#include <memory>
#include <vector>

#include <sys/resource.h>

namespace {

struct StatusWatcher : TavroAVViewDelegate {
    TavroAVViewStatus last = TavroAVViewStatus::Init;
    void tavroAVViewDidUpdateStatus(PlayerView*, TavroAVViewStatus status) override
    {
        last = status;
    }
    void tavroAVViewDidUpdateRate(PlayerView*, float) override { }
    void tavroAVViewDidUpdateTime(PlayerView*, double) override { }
    void tavroAVViewDidPlayToEndTime(PlayerView*) override { }
    void tavroAVViewDidRequestFullscreen(PlayerView*) override { }
};

double processCpuSeconds()
{
    rusage usage {};
    getrusage(RUSAGE_SELF, &usage);
    return double(usage.ru_utime.tv_sec + usage.ru_stime.tv_sec)
        + double(usage.ru_utime.tv_usec + usage.ru_stime.tv_usec) / 1e6;
}

QByteArray loadAverage()
{
    QFile file(QStringLiteral("/proc/loadavg"));
    return file.open(QIODevice::ReadOnly) ? file.readLine().trimmed() : QByteArray("?");
}

double median(std::vector<double> values)
{
    if (values.empty())
        return 0.0;
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

bool makeClip(const QString& path)
{
    std::printf("making a 60-s 1920x1080 30 fps H.264 clip with ffmpeg...\n");
    std::fflush(stdout);
    QProcess ffmpeg;
    ffmpeg.start(QStringLiteral("ffmpeg"),
        QString::fromLatin1(
            "-hide_banner -loglevel error -y -f lavfi -i testsrc2=s=1920x1080:r=30:d=60 "
            "-f lavfi -i sine=frequency=440:duration=60 -c:v libx264 -preset ultrafast "
            "-pix_fmt yuv420p -g 30 -c:a aac")
                .split(QLatin1Char(' '))
            + QStringList { path });
    return ffmpeg.waitForFinished(600000) && ffmpeg.exitCode() == 0;
}

double referenceRunMs(const QString& clip)
{
    QElapsedTimer clock;
    clock.start();
    QProcess mpv;
    mpv.start(QStringLiteral("mpv"),
        { QStringLiteral("--no-config"), QStringLiteral("--vo=null"), QStringLiteral("--ao=null"),
            QStringLiteral("--frames=1"), clip });
    if (!mpv.waitForFinished(60000) || mpv.exitCode() != 0)
        return -1.0;
    return double(clock.nsecsElapsed()) / 1e6;
}

struct LoadTimes {
    double preparedMs = -1.0;
    double firstFrameMs = -1.0;
    double closeMs = -1.0;
    double snapshotMs = -1.0;
};

LoadTimes viewRun(const QString& clip)
{
    StatusWatcher watcher;
    TavroAVView view;
    view.setDelegate(&watcher);
    view.resize(960, 540);
    view.show();
    QTest::qWait(50);
    LoadTimes times;
    QElapsedTimer clock;
    QObject::connect(&view, &TavroAVView::framePresented, &view, [&] {
        if (times.firstFrameMs < 0)
            times.firstFrameMs = double(clock.nsecsElapsed()) / 1e6;
    });
    clock.start();
    view.setFileName(clip);
    const bool done = QTest::qWaitFor(
        [&] {
            if (times.preparedMs < 0 && watcher.last == TavroAVViewStatus::Prepared)
                times.preparedMs = double(clock.nsecsElapsed()) / 1e6;
            return times.preparedMs >= 0 && times.firstFrameMs >= 0;
        },
        30000);
    if (!done)
        std::fprintf(stderr, "the view did not show the clip within 30 s\n");
    // The still image is decoded by a private core while the GUI thread waits.
    QElapsedTimer still;
    still.start();
    if (!view.snapshot().isNull())
        times.snapshotMs = double(still.nsecsElapsed()) / 1e6;
    // Closing a playing view must not hold the GUI thread while mpv shuts down.
    view.play();
    QTest::qWait(300);
    QElapsedTimer closing;
    closing.start();
    view.close();
    times.closeMs = double(closing.nsecsElapsed()) / 1e6;
    view.setDelegate(nullptr);
    return times;
}

void benchLoad(const QString& clip, int runs)
{
    std::vector<double> reference, prepared, firstFrame, closing, snapshots;
    for (int i = 0; i < runs; ++i) {
        reference.push_back(referenceRunMs(clip));
        const LoadTimes t = viewRun(clip);
        prepared.push_back(t.preparedMs);
        firstFrame.push_back(t.firstFrameMs);
        closing.push_back(t.closeMs);
        snapshots.push_back(t.snapshotMs);
    }
    const double ref = median(reference);
    std::printf("\nload, median of %d runs\n", runs);
    std::printf("  mpv --vo=null --frames=1 (whole process)   %8.1f ms\n", ref);
    std::printf("  TavroAVView setFileName -> Prepared          %8.1f ms  (%.2fx mpv)\n",
        median(prepared), median(prepared) / ref);
    std::printf("  TavroAVView setFileName -> first picture     %8.1f ms  (%.2fx mpv)\n",
        median(firstFrame), median(firstFrame) / ref);
    std::printf("  TavroAVView close while playing (GUI thread)  %8.1f ms\n", median(closing));
    std::printf("  TavroAVView snapshot (GUI thread waits)       %8.1f ms\n", median(snapshots));
}

// Two mpv windows of the views' sizes; a small script reports mpv's drop
// counters shortly before the end.
void referenceTwoWindows(const QString& clip, int seconds, const QString& dir)
{
    const QString script = dir + QStringLiteral("/drops.lua");
    QFile lua(script);
    if (!lua.open(QIODevice::WriteOnly))
        return;
    lua.write(QStringLiteral("mp.add_timeout(%1, function() mp.msg.warn('DROPS ' .. "
                             "mp.get_property('frame-drop-count', '?') .. ' ' .. "
                             "mp.get_property('vo-drop-frame-count', '?') .. ' ' .. "
                             "mp.get_property('time-pos', '?')) end)\n")
                  .arg(seconds - 0.5)
                  .toUtf8());
    lua.close();
    std::vector<std::unique_ptr<QProcess>> players;
    for (const char* geometry : { "960x540+0+0", "480x540+960+0" }) {
        auto mpv = std::make_unique<QProcess>();
        mpv->setProcessChannelMode(QProcess::MergedChannels);
        mpv->start(QStringLiteral("mpv"),
            { QStringLiteral("--no-config"), QStringLiteral("--vo=gpu"),
                QStringLiteral("--gpu-sw=yes"), QStringLiteral("--hwdec=auto-safe"),
                QStringLiteral("--ao=null"), QStringLiteral("--msg-level=all=no,drops=warn"),
                QStringLiteral("--end=%1").arg(seconds),
                QStringLiteral("--geometry=") + QString::fromLatin1(geometry),
                QStringLiteral("--script=") + script, clip });
        players.push_back(std::move(mpv));
    }
    std::printf("\nreference: two mpv --vo=gpu windows playing the clip for %d s\n", seconds);
    for (auto& mpv : players) {
        mpv->waitForFinished(seconds * 1000 + 60000);
        const QList<QByteArray> words = mpv->readAll().simplified().split(' ');
        const qsizetype at = words.indexOf("DROPS");
        if (at < 0 || at + 3 >= words.size()) {
            std::printf("  mpv did not report its drops\n");
            continue;
        }
        std::printf(
            "  mpv   media advanced %6s s, mpv frame-drop-count %s, vo-drop-frame-count %s\n",
            words[at + 3].constData(), words[at + 1].constData(), words[at + 2].constData());
    }
    std::printf("  load average %s\n", loadAverage().constData());
}

void benchTwoViews(const QString& clip, int seconds)
{
    QWidget window;
    auto* layout = new QHBoxLayout(&window);
    StatusWatcher watchBig, watchSmall;
    auto* big = new TavroAVView;
    auto* small = new TavroAVView;
    big->setMinimumSize(960, 540);
    small->setMinimumSize(480, 270);
    layout->addWidget(big);
    layout->addWidget(small);
    big->setDelegate(&watchBig);
    small->setDelegate(&watchSmall);
    window.show();
    big->setFileName(clip);
    small->setFileName(clip);
    small->setVolume(0.0f);
    const bool ready = QTest::qWaitFor(
        [&] {
            return big->status() == TavroAVViewStatus::Prepared
                && small->status() == TavroAVViewStatus::Prepared;
        },
        30000);
    if (!ready) {
        std::fprintf(stderr, "the two views did not get ready within 30 s\n");
        return;
    }
    big->play();
    small->play();
    QElapsedTimer clock;
    clock.start();
    const double cpuBefore = processCpuSeconds();
    QTest::qWait(seconds * 1000);
    const double wall = double(clock.nsecsElapsed()) / 1e9;
    const double cpu = processCpuSeconds() - cpuBefore;
    std::printf("\ntwo views playing the clip for %.1f s (big %dx%d, small %dx%d)\n", wall,
        big->width(), big->height(), small->width(), small->height());
    for (auto [name, view] : { std::pair { "big", big }, std::pair { "small", small } }) {
        std::printf(
            "  %-5s media advanced %6.2f s, pictures drawn %5lld, mpv frame-drop-count %lld, "
            "vo-drop-frame-count %lld\n",
            name, view->currentTime(), static_cast<long long>(view->framesPresented()),
            static_cast<long long>(view->decoderDroppedFrames()),
            static_cast<long long>(view->outputDroppedFrames()));
    }
    std::printf("  process CPU %.1f s in %.1f s wall (%.0f%% of one core); load average %s\n", cpu,
        wall, 100.0 * cpu / wall, loadAverage().constData());
    big->setDelegate(nullptr);
    small->setDelegate(nullptr);
}

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication::setAttribute(Qt::AA_ShareOpenGLContexts);
    QApplication app(argc, argv);
    std::setlocale(LC_NUMERIC, "C");
    QCommandLineParser parser;
    parser.addHelpOption();
    parser.addOption({ QStringLiteral("clip"),
        QStringLiteral("Use this clip instead of making one."), QStringLiteral("file") });
    parser.addOption({ QStringLiteral("runs"), QStringLiteral("Load runs (default 5)."),
        QStringLiteral("n"), QStringLiteral("5") });
    parser.addOption(
        { QStringLiteral("seconds"), QStringLiteral("Two-view playback time (default 30)."),
            QStringLiteral("s"), QStringLiteral("30") });
    parser.process(app);

    QTemporaryDir dir;
    QString clip = parser.value(QStringLiteral("clip"));
    if (clip.isEmpty()) {
        clip = dir.path() + QStringLiteral("/bench_1080p30.mp4");
        if (!makeClip(clip)) {
            std::fprintf(stderr, "ffmpeg could not make the clip\n");
            return 1;
        }
    }
    std::printf("clip %s, %d CPU threads\n", qPrintable(clip), QThread::idealThreadCount());
    benchLoad(clip, std::max(1, parser.value(QStringLiteral("runs")).toInt()));
    const int seconds = std::max(2, parser.value(QStringLiteral("seconds")).toInt());
    referenceTwoWindows(clip, seconds, dir.path());
    benchTwoViews(clip, seconds);
    return 0;
}
