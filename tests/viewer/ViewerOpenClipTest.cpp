// The viewer's command line; opening a clip the way the desktop does ("Open
// with" runs `tavro-viewer %U`): its folder listed, the clip selected and
// playing; and `tavro-viewer --trip N FOLDER`: a drive of several clips
// played on through their boundaries. With real mpv and ffmpeg.
#include "ViewerFixture.h"

#include "DriveClip.h"
#include "FfmpegClipBuilder.h"
#include "TestFiles.h"
#include "TestTiming.h"
#include "app/session/MainWindowController.h"
#include "app/session/PlaybackSession.h"
#include "app/session/TripLibrary.h"
#include "app/window/AppDelegate.h"
#include "app/window/ClipListPanel.h"
#include "app/window/ImageButton.h"
#include "app/window/MainWindow.h"
#include "app/window/VideoArea.h"
#include "app/window/ViewerCommandLine.h"
#include "library/ClipLibrary.h"
#include "player/TavroAVView.h"

#include <QApplication>
#include <QDir>
#include <QMessageBox>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <QUrl>

#include <gtest/gtest.h>

#include <cmath>
#include <utility>

namespace {

const int kWaitMs = TestTiming::scaled(20000);

ViewerCommandLine::Result parse(const QStringList& arguments)
{
    return ViewerCommandLine::parse(QStringList { QStringLiteral("tavro-viewer") } + arguments);
}

TEST(ViewerCommandLineTest, CardsFoldersClipsAndOptions)
{
    QTemporaryDir dir;
    const QString card = dir.filePath("card");
    const QString folder = dir.filePath("evt rec");
    const QString clip = folder + "/20240315_081502_F.MP4";
    const QString notes = folder + "/notes.txt";
    QDir().mkpath(card);
    TestFiles::write(clip, "clip");
    TestFiles::write(notes, "text");
    const QString clipUrl = QUrl::fromLocalFile(clip).toString(QUrl::FullyEncoded);
    ASSERT_TRUE(clipUrl.contains("evt%20rec"));
    const QString missing = dir.filePath("missing");
    const struct {
        QStringList arguments;
        int exitCode; // -1: the viewer starts
        QStringList cards;
        QString folder;
        QString clip;
        bool splash = true;
        int playRow = -1;
        int trip = -1;
    } cases[] = {
        { {}, -1, {}, {}, {} },
        { { "--no-splash" }, -1, {}, {}, {}, false },
        { { "--card", card, folder }, -1, { card }, folder, {} },
        { { clip }, -1, {}, folder, clip },
        { { clipUrl }, -1, {}, folder, clip },
        // Of several files or folders the first counts ("Open with" on several files).
        { { clipUrl, QUrl::fromLocalFile(notes).toString() }, -1, {}, folder, clip },
        { { "--play", "3", folder }, -1, {}, folder, {}, true, 3 },
        { { "--trip", "2", folder }, -1, {}, folder, {}, true, -1, 2 },
        { { "--help" }, 0, {}, {}, {} },
        { { notes }, 2, {}, {}, {} },
        { { "--card", missing }, 2, {}, {}, {} },
        { { "sftp://camera.local/evt_rec/a_F.mp4" }, 2, {}, {}, {} },
        { { "--play", "0", clip }, 2, {}, {}, {} },
        { { "--bogus" }, 2, {}, {}, {} },
        { { "--trip", "0", clip }, 2, {}, {}, {} },
        { { "--trip", "0", "--play", "0", folder }, 2, {}, {}, {} },
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.arguments.join(u' ').toStdString());
        const ViewerCommandLine::Result result = parse(c.arguments);
        EXPECT_EQ(result.exit, c.exitCode >= 0);
        if (c.exitCode >= 0) {
            EXPECT_EQ(result.exitCode, c.exitCode);
            EXPECT_FALSE(result.message.isEmpty());
            EXPECT_EQ(result.message.startsWith("tavro-viewer: "), c.exitCode == 2);
            continue;
        }
        EXPECT_EQ(result.options.cardFolders, c.cards);
        EXPECT_EQ(result.options.folder, c.folder);
        EXPECT_EQ(result.options.clip, c.clip);
        EXPECT_EQ(result.options.showSplash, c.splash);
        EXPECT_EQ(result.options.playRow, c.playRow);
        EXPECT_EQ(result.options.tripNumber, c.trip);
    }
}

// A drive: a 3 s front/rear pair, a 1 s two-camera AVI with sound but
// without telemetry (timed by its name), another pair, and an event recording
// with a knock 1.5 s in. Alerts are noted and closed.
class ViewerDriveTest : public ViewerFixture {
protected:
    void SetUp() override
    {
        if (!TestFiles::haveTool(QStringLiteral("ffmpeg")))
            GTEST_SKIP() << "ffmpeg is not installed";
        ViewerFixture::SetUp();
        ASSERT_TRUE(m_dir.isValid());
        // A failure alert would wait for a click: note its text and close it.
        m_alertCloser.setInterval(100);
        QObject::connect(&m_alertCloser, &QTimer::timeout, [this] {
            if (auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget())) {
                m_alerts.append(box->text());
                box->reject();
            }
        });
        m_alertCloser.start();
        m_folder = m_dir.filePath(QStringLiteral("card"));
        ASSERT_TRUE(FfmpegClipBuilder::makeDualStreamAvi(
            m_folder + QStringLiteral("/cont_rec/") + name(3) + QStringLiteral("_D.avi"), true));
        for (const int second : { 0, 4, 7 }) {
            const QString base
                = m_folder + (second == 7 ? "/evt_rec/" : "/cont_rec/") + name(second);
            const DriveClip::Drive drive { kStart.addSecs(second), second, second == 7 ? 15 : -1 };
            ASSERT_TRUE(DriveClip::make(
                base + QStringLiteral("_F.mp4"), kTripClipSeconds, 160, 90, 15, 0, drive));
            ASSERT_TRUE(DriveClip::make(
                base + QStringLiteral("_R.mp4"), kTripClipSeconds, 96, 72, 15, 7, drive));
        }
    }
    void TearDown() override
    {
        m_alertCloser.stop();
        ViewerFixture::TearDown();
    }
    static QString name(int second)
    {
        return kStart.addSecs(second).toString(QStringLiteral("yyyyMMdd_HHmmss"));
    }

    static constexpr int kTripClips = 4;
    static constexpr int kTripClipSeconds = 3;
    inline static const QDateTime kStart { QDate(2024, 3, 15), QTime(8, 15, 0), Qt::UTC };
    QTemporaryDir m_dir;
    QString m_folder;
    QTimer m_alertCloser;
    QStringList m_alerts;
};

TEST_F(ViewerDriveTest, ClipFromTheDesktopIsListedSelectedAndPlaying)
{
    // The second pair's front clip, as a file manager passes it.
    const QString folder = m_folder + QStringLiteral("/cont_rec");
    const QString clip = folder + u'/' + name(4) + QStringLiteral("_F.mp4");
    const ViewerCommandLine::Result commandLine = parse(
        { QStringLiteral("--no-splash"), QUrl::fromLocalFile(clip).toString(QUrl::FullyEncoded) });
    ASSERT_FALSE(commandLine.exit) << commandLine.message.toStdString();
    AppDelegate delegate(commandLine.options);
    bool shown = false;
    QObject::connect(&delegate, &AppDelegate::mainWindowShown, [&] { shown = true; });
    delegate.applicationDidFinishLaunching();
    ASSERT_TRUE(QTest::qWaitFor([&] { return shown; }, kWaitMs));
    MainWindow* window = delegate.window();
    ASSERT_TRUE(window && QTest::qWaitForWindowExposed(window));
    // The clip's folder is the list; the clip is the selected row, not the first.
    const ClipLibrary& library = window->controller().library();
    EXPECT_EQ(library.selectedVideoDirectoryUrl().toLocalFile(), folder);
    ASSERT_EQ(library.numberOfRows(), 5);
    ASSERT_GT(library.selectedRow(), 0);
    EXPECT_EQ(library.row(library.selectedRow()).path, clip);
    // It plays, front and rear.
    ASSERT_TRUE(QTest::qWaitFor([&] { return bothPlaying(*window); }, kWaitMs))
        << "alerts " << m_alerts.join(u'|').toStdString();
    EXPECT_EQ(window->session().currentVideoUrl(), QUrl::fromLocalFile(clip));
    EXPECT_TRUE(m_alerts.isEmpty()) << m_alerts.join(u'|').toStdString();
    ViewerTestSupport::saveScreenshot(*window, QStringLiteral("open-clip"));
}

TEST_F(ViewerDriveTest, TripPlaysOnThroughItsClipsAndThePageKeysLandOnItsMarks)
{
    const ViewerCommandLine::Result commandLine = parse(
        { QStringLiteral("--no-splash"), QStringLiteral("--trip"), QStringLiteral("0"), m_folder });
    ASSERT_FALSE(commandLine.exit) << commandLine.message.toStdString();
    EXPECT_EQ(commandLine.options.tripNumber, 0);
    AppDelegate delegate(commandLine.options);
    delegate.applicationDidFinishLaunching();
    ASSERT_TRUE(QTest::qWaitFor([&] { return delegate.window() != nullptr; }, kWaitMs));
    MainWindow& window = *delegate.window();
    PlaybackSession& session = window.session();
    ASSERT_TRUE(
        QTest::qWaitFor([&] { return bothPlaying(window) && session.isPlayingTrip(); }, kWaitMs))
        << "alerts " << m_alerts.join(u'|').toStdString();
    ASSERT_EQ(session.currentTrip()->clips.size(), kTripClips);
    EXPECT_TRUE(window.clipListPanel()->isShowingTrips());
    // Delete acts on the hidden clip list: not while the trips are shown.
    EXPECT_FALSE(window.clipListPanel()->removeFileButton()->isEnabled());
    EXPECT_EQ(window.controller().trips().trips().size(), 1);
    // It starts with the first clip, whatever the streams of the others.
    TavroAVView* big = window.videoArea()->bigMovieView();
    TavroAVView* small = window.videoArea()->smallMovieView();
    EXPECT_LT(big->currentTime(), 2.0);

    // On through two boundaries (into the AVI, whose rear camera comes out of
    // its second stream, and out of it): the time runs on, frames keep
    // coming, and the telemetry shown is the third clip's.
    ASSERT_TRUE(QTest::qWaitFor(
        [&] { return session.currentTripClip() == 2 && big->currentTime() > 4.5; }, kWaitMs))
        << "at " << big->currentTime();
    EXPECT_GT(big->framesPresented(), 15 * 4);
    EXPECT_GT(small->framesPresented(), 15 * 4);
    EXPECT_EQ(big->status(), TavroAVViewStatus::Prepared);

    // Paused in the third clip: Page Down to the event recording's start,
    // again to the knock, Page Up back; both cameras land on each mark.
    QTest::keyClick(&window, Qt::Key_Space);
    ASSERT_TRUE(session.isVideoPaused());
    const TripTimeline& timeline = *session.tripTimeline();
    ASSERT_EQ(timeline.marks().size(), 2);
    ASSERT_LT(big->currentTime(), timeline.marks()[0].position - 0.1);
    for (const auto& [key, mark] : { std::pair { Qt::Key_PageDown, 0 },
             std::pair { Qt::Key_PageDown, 1 }, std::pair { Qt::Key_PageUp, 0 } }) {
        QTest::keyClick(&window, key);
        const double at = timeline.marks()[mark].position;
        EXPECT_TRUE(QTest::qWaitFor(
            [&] {
                return std::abs(big->currentTime() - at) < 0.07
                    && std::abs(small->currentTime() - at) < 0.07 && !session.isPositionPending();
            },
            kWaitMs))
            << "mark at " << at << ", front " << big->currentTime() << ", rear "
            << small->currentTime();
    }
    EXPECT_EQ(session.currentTripClip(), 3);
    // A copy is made of the clip shown.
    EXPECT_EQ(window.controller().saveFileSourceUrl().toLocalFile(),
        session.currentTrip()->clips[3].path);
    EXPECT_NEAR(timeline.marks()[1].position, 7 + 1.5, 0.05);
    EXPECT_TRUE(m_alerts.isEmpty()) << m_alerts.join(u'|').toStdString();
    ViewerTestSupport::saveScreenshot(window, QStringLiteral("trip"));
}

} // namespace
