// File ▸ Export video… end to end, with real mpv and ffmpeg, on a drive of
// two 3-second clips (a red front camera with sound, a blue rear camera):
// the clip shown alone, the span between the I and O marks of the trip as
// picture in picture, the whole trip side by side with the telemetry, each
// file checked with ffprobe and with a frame of it; and a Cancel that leaves
// no file. TAVRO_SCREENSHOT_DIR keeps the files and a picture of the dialog.
#include "ViewerFixture.h"

#include "DriveClip.h"
#include "MediaProbe.h"
#include "RecordingAlertSink.h"
#include "TestFiles.h"
#include "TestTiming.h"
#include "app/session/MainWindowController.h"
#include "app/session/PlaybackSession.h"
#include "app/window/MainWindow.h"
#include "app/window/SeekSlider.h"
#include "app/window/TransportBar.h"
#include "app/window/VideoArea.h"
#include "app/window/VideoExportDialog.h"
#include "library/Utils.h"
#include "player/TavroAVView.h"

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QFileDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QRadioButton>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include <gtest/gtest.h>

#include <cmath>

namespace {

const int kWaitMs = TestTiming::scaled(30000);
const QDateTime kStart(QDate(2024, 3, 15), QTime(8, 15, 0), Qt::UTC);

class VideoExportTest : public ViewerFixture {
protected:
    void SetUp() override
    {
        if (!TestFiles::haveTool(QStringLiteral("ffmpeg"))
            || !TestFiles::haveTool(QStringLiteral("ffprobe")))
            GTEST_SKIP() << "ffmpeg is not installed";
        ViewerFixture::SetUp();
        const QString root = m_card.path();
        for (int i = 0; i < 2; ++i) {
            const QDateTime at = kStart.addSecs(i * 3);
            const QString base = root + QStringLiteral("/cont_rec/")
                + at.toString(QStringLiteral("yyyyMMdd_HHmmss"));
            ASSERT_TRUE(DriveClip::make(
                base + "_F.mp4", 3, 160, 120, 10, 0, { at, i * 3, -1 }, { "red", true }));
            ASSERT_TRUE(DriveClip::make(
                base + "_R.mp4", 3, 80, 60, 10, 7, { at, i * 3, -1 }, { "blue", false }));
        }
        mountCard(root);
        const QString kept = qEnvironmentVariable("TAVRO_SCREENSHOT_DIR");
        m_outDir = kept.isEmpty() ? m_out.path() : kept;
    }

    // File ▸ Export video…: picks the range and the picture, answers the
    // save panel with `name` and starts. The dialog.
    VideoExportDialog* startExport(MainWindow& window, VideoExportController::Range range,
        VideoExportController::Picture picture, bool overlay, const QString& name)
    {
        window.findChild<QAction*>(QStringLiteral("exportVideoAction"))->trigger();
        auto* dialog = window.findChild<VideoExportDialog*>();
        EXPECT_TRUE(dialog && dialog->isVisible());
        dialog->findChild<QRadioButton*>(QStringLiteral("videoExportRange%1").arg(int(range)))
            ->click();
        dialog->findChild<QComboBox*>(QStringLiteral("videoExportPicture"))
            ->setCurrentIndex(int(picture));
        dialog->findChild<QCheckBox*>(QStringLiteral("videoExportOverlay"))->setChecked(overlay);
        ViewerTestSupport::answerSavePanel(QDir(m_outDir).filePath(name));
        QTest::mouseClick(
            dialog->findChild<QPushButton*>(QStringLiteral("videoExportStart")), Qt::LeftButton);
        return dialog;
    }

    // Waits for the message at the end; checks it names the file and offers
    // its folder, then closes it. The file's path.
    QString awaitDone(MainWindow& window, const QString& name)
    {
        QMessageBox* box = nullptr;
        EXPECT_TRUE(QTest::qWaitFor(
            [&] {
                box = window.findChild<QMessageBox*>(QStringLiteral("videoExportDone"));
                return box && box->isVisible();
            },
            kWaitMs));
        if (!box)
            return {};
        const QString path = QDir(m_outDir).filePath(name);
        EXPECT_TRUE(box->text().contains(path)) << box->text().toStdString();
        EXPECT_NE(box->findChild<QPushButton*>(QStringLiteral("videoExportOpenFolder")), nullptr);
        box->done(QMessageBox::Accepted);
        QTest::qWait(50);
        return path;
    }

    QTemporaryDir m_card;
    QTemporaryDir m_out;
    QString m_outDir;
    ScopedAlertRecorder m_alerts;
};

TEST_F(VideoExportTest, ClipTripSpanAndWholeTripThenCancelLeavesNoFile)
{
    using Range = VideoExportController::Range;
    using Picture = VideoExportController::Picture;
    MainWindow window;
    window.showMainWindow();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));

    // The front clip alone, the rear camera: a copy of the blue picture.
    window.controller().videoFileListDoubleClicked(0);
    ASSERT_TRUE(QTest::qWaitFor([&] { return bothPlaying(window); }, kWaitMs));
    VideoExportDialog* dialog
        = startExport(window, Range::CurrentClip, Picture::Rear, false, "clip.mp4");
    ASSERT_NE(dialog, nullptr);
    EXPECT_FALSE(dialog->findChild<QRadioButton*>("videoExportRange1")->isEnabled())
        << "no trip plays";
    const QString clip = awaitDone(window, "clip.mp4");
    EXPECT_TRUE(MediaProbe::describe(clip).startsWith("width=80\nheight=60\n"));
    EXPECT_NEAR(MediaProbe::duration(clip), 3.0, 0.1);
    EXPECT_EQ(MediaProbe::colourAt(clip, 1.0, 40, 30, 80), "blue");

    // The trip, marked from 1 s to 4 s with I and O: both cameras, the rear
    // one inset in the lower right.
    window.controller().playTrip(0);
    ASSERT_TRUE(QTest::qWaitFor(
        [&] { return window.session().isPlayingTrip() && bothPlaying(window); }, kWaitMs));
    window.session().pauseVideo();
    window.session().seekTimeSliderTouchedUp(1.0);
    QTest::keyClick(&window, Qt::Key_I);
    window.session().seekTimeSliderTouchedUp(4.0);
    QTest::keyClick(&window, Qt::Key_O);
    int spanMarks = 0;
    for (const SeekMark& mark : window.transportBar()->seekTimeSldierView->marks())
        spanMarks += (mark.kind == SeekMark::Kind::SpanIn && std::abs(mark.seconds - 1.0) < 0.05)
            + (mark.kind == SeekMark::Kind::SpanOut && std::abs(mark.seconds - 4.0) < 0.05);
    EXPECT_EQ(spanMarks, 2);
    ViewerTestSupport::saveScreenshot(window, QStringLiteral("video-export-marks"));
    startExport(window, Range::Marked, Picture::PictureInPicture, false, "span.mp4");
    const QString span = awaitDone(window, "span.mp4");
    EXPECT_TRUE(MediaProbe::describe(span).startsWith("width=160\nheight=120\n"));
    EXPECT_NEAR(MediaProbe::duration(span), 3.0, 0.1);
    EXPECT_EQ(MediaProbe::colourAt(span, 1.5, 130, 100, 160), "blue");
    EXPECT_EQ(MediaProbe::colourAt(span, 1.5, 80, 60, 160), "red");

    // The whole trip side by side with the telemetry drawn in the upper left.
    startExport(window, Range::WholeTrip, Picture::SideBySide, true, "trip.mp4");
    const QString trip = awaitDone(window, "trip.mp4");
    EXPECT_NEAR(MediaProbe::duration(trip), 6.0, 0.1);
    EXPECT_EQ(MediaProbe::colourAt(trip, 4.5, 40, 80, 160), "red");
    EXPECT_EQ(MediaProbe::colourAt(trip, 4.5, 120, 80, 160), "blue");
    int drawn = 0;
    for (int x = 4; x < 76; x += 8)
        drawn += MediaProbe::colourAt(trip, 4.5, x, 8, 160) != QLatin1String("red");
    EXPECT_GT(drawn, 3);

    // Cancel while an ffmpeg that writes and then takes its time runs: the
    // dialog stays, and nothing is left of the file.
    QTemporaryDir tools;
    const QString ffmpeg = TestFiles::writeStalledFfmpeg(tools.path());
    Utils::SetFFMPEGPath(ffmpeg);
    const QStringList before
        = QDir(m_outDir).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
    startExport(window, Range::WholeTrip, Picture::Front, false, "stopped.mp4");
    ASSERT_TRUE(QTest::qWaitFor(
        [&] {
            return !QDir(m_outDir).entryList({ "*.part" }, QDir::Hidden | QDir::Files).isEmpty();
        },
        kWaitMs));
    EXPECT_TRUE(dialog->controller().isRunning());
    QTest::mouseClick(dialog->findChild<QPushButton*>("videoExportCancel"), Qt::LeftButton);
    EXPECT_TRUE(QTest::qWaitFor([&] { return !dialog->controller().isRunning(); }, kWaitMs));
    Utils::SetFFMPEGPath(QString());
    EXPECT_TRUE(dialog->isVisible());
    EXPECT_EQ(
        QDir(m_outDir).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot), before);
    EXPECT_EQ(window.findChild<QMessageBox*>("videoExportDone"), nullptr);
    ViewerTestSupport::saveScreenshot(*dialog, QStringLiteral("video-export-dialog"));
    EXPECT_TRUE(m_alerts.sink().requests().isEmpty());
}

} // namespace
