// The viewer's command line, and opening a clip the way the desktop does
// ("Open with" runs `tavro-viewer %U`): the viewer started through its
// delegate lists the clip's folder, selects the clip and plays it, with real
// mpv and ffmpeg.
#include "ViewerTestSupport.h"

#include "TestFiles.h"
#include "TestTiming.h"
#include "app/session/MainWindowController.h"
#include "app/session/PlaybackSession.h"
#include "app/window/AppDelegate.h"
#include "app/window/MainWindow.h"
#include "app/window/VideoArea.h"
#include "app/window/ViewerCommandLine.h"
#include "config/TolmSettingManager.h"
#include "config/VolumeUtils.h"
#include "library/ClipLibrary.h"
#include "player/TavroAVView.h"
#include "style/TavroStyle.h"

#include <QApplication>
#include <QMessageBox>
#include <QSettings>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include <gtest/gtest.h>

namespace {

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
    } cases[] = {
        { {}, -1, {}, {}, {} },
        { { "--no-splash" }, -1, {}, {}, {}, false },
        { { "--card", card, folder }, -1, { card }, folder, {} },
        { { clip }, -1, {}, folder, clip },
        { { clipUrl }, -1, {}, folder, clip },
        { { QUrl::fromLocalFile(folder).toString() }, -1, {}, folder, {} },
        // Of several files or folders the first counts ("Open with" on several files).
        { { clipUrl, QUrl::fromLocalFile(notes).toString() }, -1, {}, folder, clip },
        { { folder, clip }, -1, {}, folder, {} },
        { { "--play", "3", folder }, -1, {}, folder, {}, true, 3 },
        { { "--help" }, 0, {}, {}, {} },
        { { notes }, 2, {}, {}, {} },
        { { clip + ".missing" }, 2, {}, {}, {} },
        { { "--card", missing }, 2, {}, {}, {} },
        { { missing }, 2, {}, {}, {} },
        { { "sftp://camera.local/evt_rec/a_F.mp4" }, 2, {}, {}, {} },
        { { "--play", "0", clip }, 2, {}, {}, {} },
        { { "--play", "-1" }, 2, {}, {}, {} },
        { { "--play", "x" }, 2, {}, {}, {} },
        { { "--bogus" }, 2, {}, {}, {} },
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
    }
}

TEST(ViewerOpenClipTest, ClipFromTheDesktopIsListedSelectedAndPlaying)
{
    ViewerTestSupport::useOwnSettings("tavro-viewer-open-clip-test");
    if (!TestFiles::haveTool("ffmpeg"))
        GTEST_SKIP() << "ffmpeg is not installed";
    QSettings().clear();
    TavroStyle::apply(*qApp);
    TolmSettingManager::ChagneTolmSettingManager(nullptr);
    // An event folder copied off a card: two front/rear pairs.
    QTemporaryDir dir;
    const QString folder = dir.filePath("evt_rec");
    for (const char* name : { "20240315_081502", "20240315_081602" }) {
        ASSERT_TRUE(
            ViewerTestSupport::makeTelemetryClip(folder + '/' + name + "_F.mp4", 8, 320, 180, 0));
        ASSERT_TRUE(
            ViewerTestSupport::makeTelemetryClip(folder + '/' + name + "_R.mp4", 8, 240, 136, 7));
    }
    // A failure alert would wait for a click: note its text and close it.
    QStringList alerts;
    QTimer alertCloser;
    QObject::connect(&alertCloser, &QTimer::timeout, [&] {
        if (auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget())) {
            alerts.append(box->text());
            box->reject();
        }
    });
    alertCloser.start(100);

    // The second pair's front clip, as a file manager passes it.
    const QString clip = folder + "/20240315_081602_F.mp4";
    const ViewerCommandLine::Result commandLine
        = parse({ "--no-splash", QUrl::fromLocalFile(clip).toString(QUrl::FullyEncoded) });
    ASSERT_FALSE(commandLine.exit) << commandLine.message.toStdString();
    AppDelegate delegate(commandLine.options);
    bool shown = false;
    QObject::connect(&delegate, &AppDelegate::mainWindowShown, [&] { shown = true; });
    delegate.applicationDidFinishLaunching();
    ASSERT_TRUE(QTest::qWaitFor([&] { return shown; }, TestTiming::scaled(20000)));
    MainWindow* window = delegate.window();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(window));
    // The clip's folder is the list; the clip is the selected row, not the first.
    const ClipLibrary& library = window->controller().library();
    EXPECT_EQ(library.selectedVideoDirectoryUrl().toLocalFile(), folder);
    ASSERT_EQ(library.numberOfRows(), 4);
    EXPECT_EQ(library.selectedRow(), 2);
    EXPECT_EQ(library.row(2).path, clip);
    // It plays, front and rear.
    const auto playing = [&] {
        for (const TavroAVView* view :
            { window->videoArea()->bigMovieView(), window->videoArea()->smallMovieView() }) {
            if (view->status() != TavroAVViewStatus::Prepared || view->rate() <= 0.0f)
                return false;
        }
        return !window->session().isVideoPaused();
    };
    ASSERT_TRUE(QTest::qWaitFor(playing, TestTiming::scaled(20000)))
        << "alerts " << alerts.join(u'|').toStdString();
    EXPECT_EQ(window->session().currentVideoUrl(), QUrl::fromLocalFile(clip));
    EXPECT_TRUE(alerts.isEmpty()) << alerts.join(u'|').toStdString();
    ViewerTestSupport::saveScreenshot(*window, "open-clip");
    alertCloser.stop();
    Utils::setVolumeSource(nullptr);
    TolmSettingManager::ChagneTolmSettingManager(nullptr);
    QSettings().clear();
}

} // namespace
