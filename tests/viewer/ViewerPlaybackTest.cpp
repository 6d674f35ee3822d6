// The viewer's main path end to end, with real mpv, ffmpeg and QtWebEngine
// (the map page's own test looks at the route it draws):
// a card with one front/rear MP4 pair, the window started on it, the pair
// played by a double-click, the telemetry following, then swap, frame steps,
// a still, the keys and a right click on the small view. Quitting by a signal
// while a clip is converted: ffmpeg ends within a second, nothing of its output
// stays in the cache; while a card is formatted, the quit waits, the sheet up.
#include "ViewerFixture.h"

#include "DriveClip.h"
#include "RecordingAlertSink.h"
#include "SetupCfgBuilder.h"
#include "TestFiles.h"
#include "TestTiming.h"
#include "app/session/MainWindowController.h"
#include "app/session/PlaybackSession.h"
#include "app/window/FullScreenControlWindow.h"
#include "app/window/HeaderBar.h"
#include "app/window/ImageButton.h"
#include "app/window/MainWindow.h"
#include "app/window/QuitSignalHandler.h"
#include "app/window/SeekSlider.h"
#include "app/window/TelemetryPanel.h"
#include "app/window/TransportBar.h"
#include "app/window/VideoArea.h"
#include "display/MapWindow.h"
#include "display/SpeedMeterView.h"
#include "editors/format/CardOperationDialog.h"
#include "editors/format/CardSheetDialog.h"
#include "player/TavroAVView.h"
#include "settings/format/CardFormatActivity.h"
#include "settings/format/CardFormatter.h"
#include "settings/format/FormatQuitGuard.h"

#include <QApplication>
#include <QDir>
#include <QDirIterator>
#include <QElapsedTimer>
#include <QFile>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPointer>
#include <QProcess>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include <gtest/gtest.h>

#include <csignal>
#include <memory>

namespace {

constexpr int kClipSeconds = 12;
const int kWaitMs = TestTiming::scaled(20000);

// A card with one front/rear pair of 12 s.
class ViewerPlaybackTest : public ViewerFixture {
protected:
    void SetUp() override
    {
        if (!TestFiles::haveTool(QStringLiteral("ffmpeg")))
            GTEST_SKIP() << "ffmpeg is not installed";
        ViewerFixture::SetUp();
        ASSERT_TRUE(m_card.isValid());
        const QString root = m_card.path();
        ASSERT_TRUE(DriveClip::make(root + QStringLiteral("/cont_rec/20240315_081502_F.mp4"),
            kClipSeconds, 320, 180, 15, 0));
        ASSERT_TRUE(DriveClip::make(root + QStringLiteral("/cont_rec/20240315_081502_R.mp4"),
            kClipSeconds, 240, 136, 15, 7));
        mountCard(root);
    }

    QTemporaryDir m_card;
    ScopedAlertRecorder m_alerts;
};

TEST_F(ViewerPlaybackTest, PairPlaysWithTelemetryThenSwapsStepsAndGoesFullScreen)
{
    MainWindow window;
    window.showMainWindow();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
    TransportBar* transport = window.transportBar();
    QListWidget* list = window.findChild<QListWidget*>(QStringLiteral("fileListTableView"));
    ASSERT_NE(list, nullptr);

    // The card is identified and its two clips listed, front first.
    EXPECT_EQ(window.headerBar()->modelTextField()->text(), QStringLiteral("Tolm"));
    EXPECT_TRUE(window.headerBar()->settingsButton()->isEnabled());
    ASSERT_EQ(list->count(), 2);
    EXPECT_EQ(list->item(0)->text(), QStringLiteral("20240315_081502_F.mp4"));

    // Double-click the front clip: both cameras play.
    const QRect rowRect = list->visualItemRect(list->item(0));
    int doubleClicks = 0;
    QObject::connect(list, &QListWidget::itemDoubleClicked, [&] { ++doubleClicks; });
    // A double-click as the window system delivers it: press, release, then
    // the second press as a double-click.
    QTest::mousePress(list->viewport(), Qt::LeftButton, {}, rowRect.center());
    QTest::mouseRelease(list->viewport(), Qt::LeftButton, {}, rowRect.center());
    QTest::mouseDClick(list->viewport(), Qt::LeftButton, {}, rowRect.center());
    ASSERT_EQ(doubleClicks, 1);
    ASSERT_TRUE(QTest::qWaitFor([&] { return bothPlaying(window); }, kWaitMs))
        << "alerts " << m_alerts.sink().requests().size();
    EXPECT_TRUE(m_alerts.sink().requests().isEmpty());
    EXPECT_EQ(transport->playPauseButton->imageName(), QStringLiteral("pause1"));
    EXPECT_TRUE(transport->videoSwitchButton->isEnabled());
    EXPECT_FALSE(
        window.videoArea()->isBigCoverVisible() || window.videoArea()->isSmallCoverVisible());

    // The time advances; read-outs, speedometer and map follow.
    QLabel* gy = window.findChild<QLabel*>(QStringLiteral("gyTextField"));
    QLabel* lat = window.findChild<QLabel*>(QStringLiteral("latTextField"));
    ASSERT_TRUE(gy && lat);
    const QString firstTime = transport->playTimeTextField->text();
    QStringList gyTexts;
    ASSERT_TRUE(QTest::qWaitFor(
        [&] {
            if (!gyTexts.contains(gy->text()))
                gyTexts.append(gy->text());
            return gyTexts.size() >= 3 && transport->playTimeTextField->text() != firstTime;
        },
        kWaitMs));
    EXPECT_TRUE(transport->playTimeTextField->text().endsWith(QStringLiteral("/00:12")))
        << transport->playTimeTextField->text().toStdString();
    EXPECT_TRUE(lat->text().startsWith(QStringLiteral("37.3"))) << lat->text().toStdString();
    SpeedMeterView* meter = window.findChild<SpeedMeterView*>(QStringLiteral("speedMeterView"));
    ASSERT_TRUE(QTest::qWaitFor([&] { return meter->speed() > 40; }, kWaitMs));
    EXPECT_FALSE(meter->number10().isEmpty());

    // While this clip plays with a position fix, the map is shown.
    EXPECT_TRUE(QTest::qWaitFor([&] { return !window.telemetryPanel()->isMapCovered(); }, kWaitMs));
    ViewerTestSupport::saveScreenshot(window, QStringLiteral("window-playing"));

    // Swap: the rear camera moves into the large view and both keep playing.
    QTest::mouseClick(transport->videoSwitchButton, Qt::LeftButton);
    EXPECT_TRUE(window.session().isVideoSwitched());
    EXPECT_TRUE(window.videoArea()->bigMovieView()->fileName().endsWith(QStringLiteral("_r.mov")));
    ASSERT_TRUE(QTest::qWaitFor([&] { return bothPlaying(window); }, kWaitMs));

    // Frame steps pause and move by one frame.
    QTest::mouseClick(transport->rewindButton, Qt::LeftButton);
    EXPECT_TRUE(window.session().isVideoPaused());
    EXPECT_EQ(transport->playPauseButton->imageName(), QStringLiteral("play_1"));
    QTest::qWait(300);
    const double before = window.videoArea()->bigMovieView()->currentTime();
    QTest::mouseClick(transport->fastForwardButton, Qt::LeftButton);
    ASSERT_TRUE(QTest::qWaitFor(
        [&] { return window.videoArea()->bigMovieView()->currentTime() > before + 0.01; },
        kWaitMs));
    EXPECT_LT(window.videoArea()->bigMovieView()->currentTime(), before + 0.2);

    // A still of the large view, through the save panel.
    QTemporaryDir out;
    QString panelTitle;
    const QString stillPath = out.filePath(QStringLiteral("still.png"));
    ViewerTestSupport::answerSavePanel(stillPath, &panelTitle);
    QTest::mouseClick(transport->snapshotButton, Qt::LeftButton);
    EXPECT_EQ(panelTitle, QStringLiteral("Save"));
    // The frame is decoded and written off the GUI thread.
    EXPECT_TRUE(QTest::qWaitFor([&] { return !QImage(stillPath).isNull(); }, kWaitMs));
    const QImage still(stillPath);
    EXPECT_EQ(still.size(), QSize(240, 136)) << "the rear camera is in the large view";

    // Space plays again, also while the map (a window of its own) has the focus.
    QTest::keyClick(&window, Qt::Key_Space);
    EXPECT_FALSE(window.session().isVideoPaused());
    QTest::keyClick(window.telemetryPanel()->mapWindow(), Qt::Key_Space);
    EXPECT_TRUE(window.session().isVideoPaused());
    QTest::keyClick(window.telemetryPanel()->mapWindow(), Qt::Key_Space);
    EXPECT_FALSE(window.session().isVideoPaused());
    QTest::mouseClick(transport->muteButton, Qt::LeftButton);
    EXPECT_FALSE(transport->volumeSliderView->isEnabled());
    EXPECT_EQ(window.videoArea()->bigMovieView()->volume(), 0.0f);

    // A right click on the small view shows that camera full screen; Escape leaves.
    TavroAVView* small = window.videoArea()->smallMovieView();
    QTest::mouseClick(small, Qt::RightButton, {}, small->rect().center());
    EXPECT_TRUE(window.session().isFullScreenMode());
    EXPECT_EQ(window.videoArea()->shown(), VideoArea::Shown::SmallOnly);
    QTest::qWait(300);
    EXPECT_TRUE(window.fullScreenControlWindow()->isVisible());
    EXPECT_FALSE(transport->isVisible());
    QTest::keyClick(window.fullScreenControlWindow(), Qt::Key_Escape);
    EXPECT_FALSE(window.session().isFullScreenMode());
    EXPECT_EQ(window.videoArea()->shown(), VideoArea::Shown::Both);
    EXPECT_TRUE(transport->isVisible());

    // Keys reach the session wherever the focus is in the window: the left
    // arrow in the clip list steps a frame back (and pauses).
    if (window.session().isVideoPaused())
        QTest::keyClick(&window, Qt::Key_Space);
    ASSERT_FALSE(window.session().isVideoPaused());
    list->setFocus();
    QTest::keyClick(list, Qt::Key_Left);
    EXPECT_TRUE(window.session().isVideoPaused());
    EXPECT_EQ(list->currentRow(), 0);
}

// The read-outs follow a seek back at once: the speedometer shows the speed
// of the moment the player landed on, not the one it left.
TEST_F(ViewerPlaybackTest, SpeedFollowsASeekBackAsSoonAsThePlayerIsThere)
{
    MainWindow window;
    window.showMainWindow();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
    window.controller().videoFileListDoubleClicked(0);
    ASSERT_TRUE(QTest::qWaitFor([&] { return bothPlaying(window); }, kWaitMs));
    TavroAVView* big = window.videoArea()->bigMovieView();
    ASSERT_TRUE(QTest::qWaitFor([&] { return big->currentTime() >= 1.5; }, kWaitMs));
    // From the 9th second back to the 4th (the speeds of the two differ).
    big->setCurrentTime(9.0);
    ASSERT_TRUE(QTest::qWaitFor([&] { return big->currentTime() >= 9.0; }, kWaitMs));
    QTest::qWait(400);
    const TavroClipData& data = window.session().clipData();
    SpeedMeterView* meter = window.findChild<SpeedMeterView*>(QStringLiteral("speedMeterView"));
    ASSERT_NE(data.getGpsSpeed(40), meter->speed());

    SeekSlider* seek = window.transportBar()->seekTimeSldierView;
    seek->setSliderDown(true);
    seek->setValue(4000);
    seek->setSliderDown(false);
    ASSERT_TRUE(QTest::qWaitFor([&] { return big->currentTime() < 5.0; }, kWaitMs));
    // Within 0.2 s of the player being there, the speed read-out is the one
    // of a sample within 0.2 s of the player's time.
    QElapsedTimer landed;
    landed.start();
    const auto matches = [&] {
        const double t = big->currentTime();
        for (int i = int((t - 0.2) * 10); i <= int((t + 0.2) * 10); ++i) {
            if (data.getGpsSpeed(i) == meter->speed())
                return true;
        }
        return false;
    };
    while (!matches() && landed.elapsed() < 200)
        QTest::qWait(5);
    EXPECT_TRUE(matches()) << "speed " << meter->speed() << " at " << big->currentTime() << " s";
    EXPECT_TRUE(
        window.transportBar()->playTimeTextField->text().startsWith(QStringLiteral("00:04")))
        << window.transportBar()->playTimeTextField->text().toStdString();
}

// ffmpeg's files in the conversion cache under `cacheHome`.
QStringList conversionFiles(const QString& cacheHome)
{
    QStringList files;
    QDirIterator it(cacheHome, QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
    while (it.hasNext()) {
        const QString path = it.next();
        if (path.contains(QStringLiteral("/temp_video/")))
            files << path;
    }
    return files;
}

bool processAlive(qint64 pid)
{
    QFile status(QStringLiteral("/proc/%1/stat").arg(pid));
    if (!status.open(QIODevice::ReadOnly))
        return false;
    // A zombie is an ended process its parent has not reaped yet.
    const QList<QByteArray> fields = status.readAll().split(' ');
    return fields.size() > 2 && fields[2] != "Z";
}

TEST(ViewerQuitTest, ASignalDuringAConversionEndsFfmpegAndLeavesNoPartialFile)
{
    if (!TestFiles::haveTool(QStringLiteral("ffmpeg")))
        GTEST_SKIP() << "ffmpeg is not installed";
    QTemporaryDir dir;
    const QString card = dir.filePath(QStringLiteral("card"));
    QDir().mkpath(card + QStringLiteral("/SETTING"));
    TestFiles::write(card + QStringLiteral("/SETTING/setup.cfg"),
        SetupCfgBuilder(432).sizeWord(432).productName("Tolm").version("1.02.17").bytes());
    ASSERT_TRUE(DriveClip::make(
        card + QStringLiteral("/cont_rec/20240315_081502_F.mp4"), 30, 160, 90, 15, 0));
    // ffmpeg reading at the clip's own pace, noting its process id.
    const QString pids = dir.filePath(QStringLiteral("ffmpeg.pids"));
    const QString slow = dir.filePath(QStringLiteral("slow-ffmpeg"));
    TestFiles::write(
        slow, "#!/bin/sh\necho $$ >> '" + pids.toUtf8() + "'\nexec ffmpeg -re \"$@\"\n");
    QFile::setPermissions(slow, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);

    for (const int signal : { SIGTERM, SIGINT, SIGHUP }) {
        SCOPED_TRACE(signal);
        QFile::remove(pids);
        const QString cacheHome = dir.filePath(QStringLiteral("cache-%1").arg(signal));
        QProcess viewer;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("TAVRO_FFMPEG"), slow);
        environment.insert(QStringLiteral("XDG_CACHE_HOME"), cacheHome);
        environment.insert(
            QStringLiteral("XDG_CONFIG_HOME"), dir.filePath(QStringLiteral("config")));
        viewer.setProcessEnvironment(environment);
        viewer.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        viewer.start(QStringLiteral(TAVRO_VIEWER_PATH),
            { QStringLiteral("--no-splash"), QStringLiteral("--card"), card,
                QStringLiteral("--play"), QStringLiteral("0") });
        ASSERT_TRUE(viewer.waitForStarted(10000));
        // Converting: ffmpeg runs and writes into the cache.
        ASSERT_TRUE(QTest::qWaitFor(
            [&] { return QFile::exists(pids) && !conversionFiles(cacheHome).isEmpty(); }, 60000));
        const qint64 ffmpeg = TestFiles::read(pids).trimmed().split('\n').last().toLongLong();
        ASSERT_GT(ffmpeg, 0);
        ASSERT_TRUE(processAlive(ffmpeg));

        QElapsedTimer stopping;
        stopping.start();
        ::kill(pid_t(viewer.processId()), signal);
        EXPECT_TRUE(
            QTest::qWaitFor([&] { return !processAlive(ffmpeg); }, TestTiming::scaled(1000)))
            << "ffmpeg still runs " << stopping.elapsed() << " ms after the signal";
        ASSERT_TRUE(viewer.waitForFinished(20000));
        EXPECT_EQ(viewer.exitStatus(), QProcess::NormalExit);
        EXPECT_TRUE(conversionFiles(cacheHome).isEmpty())
            << qPrintable(conversionFiles(cacheHome).join(u' '));
    }
}

// A format engine whose format runs `formatMs`, counted in `activity` as the
// real one is.
class SlowFormatEngine final : public CardFormatEngine {
public:
    SlowFormatEngine(CardFormatActivity& activity, int formatMs)
        : m_activity(activity)
        , m_formatMs(formatMs)
    {
    }
    void inspect(
        const QString&, QObject* context, std::function<void(const FormatPlan&)> done) override
    {
        FormatPlan plan;
        plan.refusal = FormatRefusal::None;
        QTimer::singleShot(0, context, [plan, done] { done(plan); });
    }
    void format(
        const FormatPlan&, QObject* context, std::function<void(const FormatResult&)> done) override
    {
        started = m_activity.begin();
        QTimer::singleShot(m_formatMs, context, [this, done] {
            m_activity.end(false);
            done(FormatResult { FormatResult::Outcome::Formatted, {}, true, {} });
        });
    }
    bool started = false;

private:
    CardFormatActivity& m_activity;
    int m_formatMs;
};

TEST(ViewerQuitTest, ASignalDuringACardFormatWaitsWithTheSheetUpUntilTheCardIsBack)
{
    QuitSignalHandler quitOnSignal;
    CardFormatActivity activity;
    FormatQuitGuard guard(activity, nullptr);
    QWidget editor;
    editor.resize(600, 400);
    editor.show();
    const int formatMs = TestTiming::scaled(1500);
    auto engine = std::make_unique<SlowFormatEngine>(activity, formatMs);
    SlowFormatEngine* formatting = engine.get();
    QPointer<CardOperationDialog> operation
        = askFormat(&editor, QStringLiteral("/media/user/CARD"), std::move(engine));
    QPointer<CardSheetDialog> sheet = operation->sheetDialog();
    ASSERT_TRUE(QTest::qWaitFor([&] { return bool(sheet && sheet->isVisible()); }, 5000));
    QTest::mouseClick(sheet->buttons()[1], Qt::LeftButton); // "예"
    ASSERT_TRUE(formatting->started);

    QElapsedTimer quitting;
    bool sheetUpWhileHeld = false;
    QObject::connect(&guard, &FormatQuitGuard::quitHeld, [&] {
        quitting.start();
        QTimer::singleShot(formatMs / 3,
            [&] { sheetUpWhileHeld = sheet && sheet->isVisible() && editor.isVisible(); });
    });
    QTimer::singleShot(0, [] { ::raise(SIGTERM); });
    QApplication::exec();
    EXPECT_TRUE(sheetUpWhileHeld);
    ASSERT_TRUE(quitting.isValid()) << "the signal's quit was not held";
    EXPECT_GE(quitting.elapsed(), formatMs * 2 / 3) << "quit before the format had ended";
    EXPECT_FALSE(activity.isRunning());
}

} // namespace
