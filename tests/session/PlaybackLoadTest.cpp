// Loading a clip: conversion, the start once both views are prepared, single
// camera clips, refused clips, stop, the end of a clip and the camera swap.
#include "SessionFixture.h"

#include "FfmpegClipBuilder.h"
#include "TestFiles.h"

#include "i18n/LocalizationKeys.h"
#include "library/QtProcessRunner.h"
#include "library/Utils.h"

#include <QFileInfo>

namespace {

bool isPlaying(const PlaybackSession& session, const ScriptedPlayerView& big)
{
    return !session.isVideoPaused() && session.isVideoPlayTimerActive()
        && session.isPlayAnimationActive() && big.rate() == 1.0f;
}

} // namespace

TEST_F(SessionTest, StartsOnlyOnceBothViewsArePrepared)
{
    addAviClip(QStringLiteral("cont_rec/drive.avi"), 100);
    refresh();
    for (const bool bigFirst : { true, false }) {
        m_big.setAutoPrepareDuration(0.0);
        m_small.setAutoPrepareDuration(0.0);
        playRow(0);
        EXPECT_FALSE(m_session->isVideoPlayTimerActive());
        EXPECT_TRUE(m_session->isVideoPaused());

        ScriptedPlayerView& first = bigFirst ? static_cast<ScriptedPlayerView&>(m_big) : m_small;
        ScriptedPlayerView& second = bigFirst ? static_cast<ScriptedPlayerView&>(m_small) : m_big;
        first.finishLoading(kClipSeconds);
        settle();
        EXPECT_FALSE(m_session->isVideoPlayTimerActive()) << bigFirst;
        EXPECT_FALSE(m_big.calls().contains(QStringLiteral("play"))) << bigFirst;
        second.finishLoading(kClipSeconds);
        settle();
        EXPECT_TRUE(isPlaying(*m_session, m_big)) << bigFirst;
        EXPECT_EQ(m_small.rate(), 1.0f);
        EXPECT_EQ(m_view.playPauseImage, QStringLiteral("pause1"));
        EXPECT_EQ(m_view.seekMaximum, kClipSeconds);
        EXPECT_EQ(m_big.volume(), 1.0f);
        EXPECT_EQ(m_small.volume(), 0.0f); // only the large view is heard
        m_session->stopVideo();
        m_big.clearCalls();
    }
}

TEST_F(SessionTest, LoadingATwoCameraClip)
{
    const QString clip = addAviClip(QStringLiteral("evt_rec/crash.avi"), 200);
    refresh();
    m_session->enableVideoControls(false);
    playRow(0);

    EXPECT_EQ(m_session->currentVideoUrl(), QUrl::fromLocalFile(clip));
    const QString cache = m_converter->cacheFolderPath(clip);
    EXPECT_EQ(m_session->bigVideoFilePath(), cache + QStringLiteral("/crash_f.mov"));
    EXPECT_EQ(m_session->smallVideoFilePath(), cache + QStringLiteral("/crash_r.mov"));
    EXPECT_EQ(m_big.fileName(), m_session->bigVideoFilePath());
    EXPECT_EQ(m_small.fileName(), m_session->smallVideoFilePath());
    EXPECT_EQ(
        m_view.events.mid(0, 2), (QStringList { QStringLiteral("busy"), QStringLiteral("idle") }));
    EXPECT_TRUE(m_view.videoControlsEnabled);
    EXPECT_TRUE(m_view.swapButtonEnabled);
    EXPECT_FALSE(m_view.bigCoverVisible);
    EXPECT_FALSE(m_view.smallCoverVisible);
    EXPECT_EQ(m_view.graphClipDataCount, 200);
    EXPECT_TRUE(isPlaying(*m_session, m_big));

    // Playing it again converts nothing and loads each view once more.
    m_runner.clear();
    playRow(0);
    EXPECT_TRUE(m_runner.conversions().isEmpty());
    EXPECT_EQ(m_big.loadCount(), 2);
    EXPECT_EQ(m_small.loadCount(), 2);
}

TEST_F(SessionTest, SingleCameraClipDisablesSwapAndLeavesTheSmallCover)
{
    addAviClip(QStringLiteral("cont_rec/front_only.avi"), 50, true, 1);
    refresh();
    m_small.setAutoPrepareDuration(0.0);
    playRow(0);
    EXPECT_TRUE(m_session->smallVideoFilePath().isEmpty());
    EXPECT_FALSE(m_view.swapButtonEnabled);
    EXPECT_FALSE(m_view.bigCoverVisible);
    EXPECT_TRUE(m_view.smallCoverVisible);
    EXPECT_FALSE(m_small.hasMovie());
    EXPECT_TRUE(isPlaying(*m_session, m_big)); // started without waiting for the small view

    // The swap button would have nothing to swap with.
    m_session->toggleVideoSwithButtonTouched();
    EXPECT_FALSE(m_session->isVideoSwitched());
}

TEST_F(SessionTest, RefusedClipShowsTheAlertAndClearsTheCurrentClip)
{
    addAviClip(QStringLiteral("cont_rec/a_good.avi"), 10);
    const QString bad = addAviClip(QStringLiteral("cont_rec/b_broken.avi"), 10);
    m_runner.reject(bad);
    refresh();
    playRow(0);
    ASSERT_EQ(m_session->currentVideoUrl(), rowUrl(0));
    EXPECT_TRUE(m_alerts.requests().isEmpty());

    playRow(1);
    EXPECT_TRUE(m_session->currentVideoUrl().isEmpty());
    ASSERT_EQ(m_alerts.requests().size(), 1);
    EXPECT_EQ(
        m_alerts.requests()[0].titleKey, QString::fromUtf8(LocalizationKeys::kMemoryCardError));
    EXPECT_EQ(
        m_alerts.requests()[0].messageKey, QString::fromUtf8(LocalizationKeys::kUnsupportedVideo));
    EXPECT_TRUE(m_view.videoControlsEnabled); // the controls keep their state
    EXPECT_FALSE(m_big.hasMovie());
    EXPECT_FALSE(m_session->isVideoPlayTimerActive());
}

TEST_F(SessionTest, StopReturnsToTheStartWithTheMapCovered)
{
    addAviClip(QStringLiteral("cont_rec/drive.avi"), 650);
    refresh();
    playRow(0);
    m_big.advance(20.0);
    m_small.advance(20.0);
    m_session->playVideoTimerCallback();
    ASSERT_FALSE(m_view.mapCovered);
    ASSERT_GT(m_session->lastUpdatedSensorInfoTime(), 19.0);

    m_session->stopButtonTouched();
    EXPECT_TRUE(m_session->isVideoPaused());
    EXPECT_FALSE(m_session->isVideoPlayTimerActive());
    EXPECT_FALSE(m_session->isPlayAnimationActive());
    settle(); // the views land on the start later
    EXPECT_EQ(m_big.currentTime(), 0.0);
    EXPECT_EQ(m_small.currentTime(), 0.0);
    EXPECT_TRUE(m_view.mapCovered) << "landing at the start keeps the stop's cover";
    EXPECT_EQ(m_big.rate(), 0.0f);
    EXPECT_EQ(m_view.seekValue, 0.0);
    EXPECT_EQ(m_view.playPauseImage, QStringLiteral("play_1"));
    EXPECT_TRUE(m_view.mapCovered);
    EXPECT_EQ(m_session->lastUpdatedSensorInfoTime(), 0.0);
    EXPECT_EQ(m_session->lastUpdatedMapTime(), 0.0);

    m_session->playPauseButtonTouched();
    EXPECT_TRUE(isPlaying(*m_session, m_big));
    m_session->playPauseButtonTouched();
    EXPECT_TRUE(m_session->isVideoPaused());
    EXPECT_EQ(m_big.rate(), 0.0f);
    EXPECT_EQ(m_small.rate(), 0.0f);
}

TEST_F(SessionTest, TheEndOfAClipPlaysTheNextAndWrapsAround)
{
    addAviClip(QStringLiteral("cont_rec/a.avi"), 10);
    addAviClip(QStringLiteral("cont_rec/b.avi"), 10);
    refresh();
    playRow(0);

    m_small.advance(kClipSeconds + 1.0); // the small view's end is ignored
    settle();
    EXPECT_EQ(m_session->currentVideoUrl(), rowUrl(0));

    m_big.advance(kClipSeconds + 1.0);
    settle();
    EXPECT_EQ(m_library.selectedRow(), 1);
    EXPECT_EQ(m_session->currentVideoUrl(), rowUrl(1));
    EXPECT_TRUE(isPlaying(*m_session, m_big));

    m_big.advance(kClipSeconds + 1.0);
    settle();
    EXPECT_EQ(m_library.selectedRow(), 0);
    EXPECT_EQ(m_session->currentVideoUrl(), rowUrl(0));
    EXPECT_TRUE(isPlaying(*m_session, m_big));
}

TEST_F(SessionTest, SwapMovesTheMediaButNotTheVolumes)
{
    addAviClip(QStringLiteral("cont_rec/drive.avi"), 10);
    refresh();
    playRow(0);
    const QString front = m_session->bigVideoFilePath();
    const QString rear = m_session->smallVideoFilePath();

    m_session->toggleVideoSwithButtonTouched();
    EXPECT_TRUE(m_session->isVideoSwitched());
    EXPECT_EQ(m_big.fileName(), rear);
    EXPECT_EQ(m_small.fileName(), front);
    EXPECT_EQ(m_big.loadCount(), 1); // nothing reloads
    EXPECT_EQ(m_small.loadCount(), 1);
    EXPECT_TRUE(isPlaying(*m_session, m_big));
    EXPECT_EQ(m_big.volume(), 0.0f); // the former small view's volume
    EXPECT_EQ(m_small.volume(), 1.0f);

    m_session->toggleVideoSwithButtonTouched();
    EXPECT_FALSE(m_session->isVideoSwitched());
    EXPECT_EQ(m_big.fileName(), front);
}

TEST_F(SessionTest, Mp4PairPlaysWithTheTelemetryOfItsSubtitleTrack)
{
    if (!TestFiles::haveTool(QStringLiteral("ffmpeg")))
        GTEST_SKIP() << "ffmpeg is not installed";
    const QString front = m_card->path(QStringLiteral("cont_rec/trip_F.mp4"));
    const QString rear = m_card->path(QStringLiteral("cont_rec/trip_R.mp4"));
    m_card->add(QStringLiteral("cont_rec/trip_F.mp4")); // creates the folder
    ASSERT_TRUE(FfmpegClipBuilder::makeSubtitledMp4(front, FfmpegClipBuilder::telemetrySrt(3, 4)))
        << qPrintable(FfmpegClipBuilder::lastLog());
    ASSERT_TRUE(
        FfmpegClipBuilder::makeSubtitledMp4(rear, FfmpegClipBuilder::telemetrySrt(3, 9), 32))
        << qPrintable(FfmpegClipBuilder::lastLog());

    QtProcessRunner runner;
    Utils::SetFFMPEGPath(QString());
    ClipConverter converter(runner, m_dir.filePath(QStringLiteral("real-work")));
    m_session
        = std::make_unique<PlaybackSession>(m_big, m_small, m_view, m_library, converter, m_alerts);
    refresh();
    ASSERT_EQ(m_library.numberOfRows(), 2);
    playRow(0);

    EXPECT_TRUE(m_alerts.requests().isEmpty());
    EXPECT_TRUE(m_session->bigVideoFilePath().endsWith(QStringLiteral("/trip_F_f.mov")));
    EXPECT_TRUE(m_session->smallVideoFilePath().endsWith(QStringLiteral("/trip_F_r.mov")));
    EXPECT_TRUE(QFileInfo::exists(m_session->bigVideoFilePath()));
    EXPECT_EQ(m_session->clipData().clipDataCount(), 30);
    EXPECT_GT(m_session->clipData().gpsDataCount(), 0);
    EXPECT_EQ(m_view.routesAdded, 1);
    EXPECT_TRUE(m_view.gpsIndicatorVisible);

    m_big.pinTime(1.5);
    m_session->playVideoTimerCallback();
    ASSERT_EQ(m_view.sensorTexts.size(), 5);
    EXPECT_EQ(m_view.sensorTexts[0], QStringLiteral("0.031")); // the front file's tag, 4/128 g
    EXPECT_EQ(m_view.sensorTexts[3], QStringLiteral("37.3854"));
    EXPECT_EQ(m_view.sensorTexts[4], QStringLiteral("126.9761"));
    EXPECT_EQ(m_view.speed, 19); // 10.5 knots
    EXPECT_FALSE(m_view.mapCovered);
    m_session.reset();
}
