// Loading a clip, stop, the end of a clip, previous/next, the swap, volume,
// zoom, full screen, flip and the quit keys.
#include "SessionFixture.h"

#include "app/session/ClipNavigation.h"
#include "i18n/LocalizationKeys.h"

namespace {

bool isPlaying(const PlaybackSession& session, const ScriptedPlayerView& big)
{
    return !session.isVideoPaused() && session.isVideoPlayTimerActive()
        && session.isPlayAnimationActive() && big.rate() == 1.0f;
}

} // namespace

TEST_F(SessionTest, TwoCameraClipStartsOnceBothViewsArePrepared)
{
    const QString clip = addAviClip(QStringLiteral("evt_rec/crash.avi"), 200);
    refresh();
    m_big.setAutoPrepareDuration(0.0);
    m_small.setAutoPrepareDuration(0.0);
    for (const bool bigFirst : { true, false }) {
        m_view.events.clear();
        playRow(0);
        EXPECT_EQ(m_view.events, (QStringList { "busy", "idle" }));
        (bigFirst ? m_big : m_small).finishLoading(kClipSeconds);
        settle();
        EXPECT_FALSE(m_session->isVideoPlayTimerActive()) << bigFirst;
        (bigFirst ? m_small : m_big).finishLoading(kClipSeconds);
        settle();
        EXPECT_TRUE(isPlaying(*m_session, m_big)) << bigFirst;
        EXPECT_EQ(m_small.rate(), 1.0f);
        EXPECT_EQ(m_view.seekMaximum, kClipSeconds);
        EXPECT_EQ(m_big.volume(), 1.0f);
        EXPECT_EQ(m_small.volume(), 0.0f); // only the large view is heard
    }
    const QString cache = m_converter->cacheFolderPath(clip);
    EXPECT_EQ(m_big.fileName(), cache + QStringLiteral("/crash_f.mov"));
    EXPECT_EQ(m_small.fileName(), cache + QStringLiteral("/crash_r.mov"));
    EXPECT_TRUE(m_view.videoControlsEnabled && m_view.swapButtonEnabled);
    EXPECT_EQ(m_view.covers, qMakePair(false, false));
    EXPECT_EQ(m_view.graphCount, 200);
    EXPECT_EQ(m_runner.conversions().size(), 2) << "converted once";
}

TEST_F(SessionTest, SingleCameraAndRefusedClips)
{
    addAviClip(QStringLiteral("cont_rec/a_front_only.avi"), 50, true, 1);
    m_runner.reject(addAviClip(QStringLiteral("cont_rec/b_broken.avi"), 10));
    refresh();
    m_small.setAutoPrepareDuration(0.0);
    playRow(0);
    EXPECT_FALSE(m_view.swapButtonEnabled);
    EXPECT_EQ(m_view.covers, qMakePair(false, true));
    EXPECT_TRUE(isPlaying(*m_session, m_big)); // without waiting for the small view
    m_session->toggleVideoSwithButtonTouched(); // nothing to swap with
    EXPECT_FALSE(m_session->isVideoSwitched());

    playRow(1);
    EXPECT_TRUE(m_session->currentVideoUrl().isEmpty());
    ASSERT_EQ(m_alerts.requests().size(), 1);
    EXPECT_EQ(
        m_alerts.requests()[0].titleKey, QString::fromUtf8(LocalizationKeys::kMemoryCardError));
    EXPECT_EQ(
        m_alerts.requests()[0].messageKey, QString::fromUtf8(LocalizationKeys::kUnsupportedVideo));
    EXPECT_FALSE(m_big.hasMovie() || m_session->isVideoPlayTimerActive());
}

TEST_F(SessionTest, StopPlayPauseAndTheEndOfAClip)
{
    addAviClip(QStringLiteral("cont_rec/a.avi"), 650);
    addAviClip(QStringLiteral("cont_rec/b.avi"), 10);
    refresh();
    playRow(0);
    m_big.advance(20.0);
    m_session->playVideoTimerCallback();
    ASSERT_FALSE(m_view.mapCovered);
    m_session->stopButtonTouched();
    EXPECT_FALSE(m_session->isVideoPlayTimerActive() || m_session->isPlayAnimationActive());
    settle(); // the views land on the start later
    EXPECT_EQ(m_big.currentTime() + m_small.currentTime(), 0.0);
    EXPECT_TRUE(m_view.mapCovered) << "landing at the start keeps the stop's cover";
    EXPECT_EQ(m_big.rate(), 0.0f);
    EXPECT_EQ(m_view.playTimeText, QStringLiteral("00:00/03:00"));
    EXPECT_EQ(m_view.playPauseImage, QStringLiteral("play_1"));
    m_session->playPauseButtonTouched();
    EXPECT_TRUE(isPlaying(*m_session, m_big));
    m_session->playPauseButtonTouched();
    EXPECT_EQ(m_small.rate(), 0.0f);

    // The small view's end is ignored; the large one's plays the next clip,
    // and after the last row the first.
    m_session->playPauseButtonTouched();
    m_small.advance(kClipSeconds + 1.0);
    settle();
    EXPECT_EQ(m_session->currentVideoUrl(), rowUrl(0));
    for (const int next : { 1, 0 }) {
        m_big.advance(kClipSeconds + 1.0);
        settle();
        EXPECT_EQ(m_session->currentVideoUrl(), rowUrl(next));
        EXPECT_TRUE(isPlaying(*m_session, m_big));
        EXPECT_TRUE(m_view.mapCovered);
    }
}

TEST(ClipNavigationTest, PreviousAndNextRows)
{
    const QStringList pairs { "1_F.mp4", "1_R.mp4", "2_F.mp4", "2_R.mp4", "3_F.mp4" };
    const QStringList avi { "1_F.avi", "1_R.avi", "2_F.avi" };
    const struct {
        QStringList rows;
        int selected;
        int previous;
        int next;
    } cases[] = {
        { pairs, 2, 0, 4 }, // a pair followed by a lone front
        { pairs, 4, 2, 0 },
        { avi, 0, -1, 1 }, // AVI clips never pair going forward
        { avi, 2, 0, 0 }, // an AVI rear before a front goes to its front
        { avi, -1, -1, -1 },
        { { "a.mp4" }, 0, -1, 0 },
    };
    for (const auto& c : cases) {
        QList<QUrl> urls;
        for (const QString& name : c.rows)
            urls << QUrl::fromLocalFile(QStringLiteral("/card/cont_rec/") + name);
        EXPECT_EQ(ClipNavigation::previousRow(urls, c.selected), c.previous) << c.selected;
        EXPECT_EQ(ClipNavigation::nextRow(urls, c.selected), c.next) << c.selected;
    }
    EXPECT_EQ(ClipNavigation::nextRow({}, 0), -1);
}

TEST_F(SessionTest, PreviousAndNextPlayTheFrontClipOfEachPairAndSwapMovesTheMedia)
{
    for (const char* name : { "1_F.mp4", "1_R.mp4", "2_F.mp4", "2_R.mp4" })
        addMp4Clip(QStringLiteral("cont_rec/") + QLatin1String(name));
    refresh();
    playRow(0);
    EXPECT_TRUE(m_session->smallVideoFilePath().endsWith(QStringLiteral("/1_F_r.mov")));
    // next, next (wraps), previous on row 0 (nothing), next, previous
    const std::pair<bool, int> presses[]
        = { { true, 2 }, { true, 0 }, { false, 0 }, { true, 2 }, { false, 0 } };
    for (const auto& [next, row] : presses) {
        next ? m_session->playNextFileButtonTouched() : m_session->playPrevFileButtonTouched();
        settle();
        EXPECT_EQ(m_library.selectedRow(), row);
        EXPECT_EQ(m_session->currentVideoUrl(), rowUrl(row));
    }
    EXPECT_EQ(m_big.loadCount(), 5) << "previous on row 0 loads nothing";
    playRow(3);
    m_session->playPrevFileButtonTouched();
    EXPECT_EQ(m_session->currentVideoUrl(), rowUrl(2));

    const QString front = m_big.fileName();
    const QString rear = m_small.fileName();
    m_session->toggleVideoSwithButtonTouched();
    EXPECT_TRUE(m_session->isVideoSwitched());
    EXPECT_EQ(m_big.fileName() + m_small.fileName(), rear + front);
    EXPECT_EQ(m_big.loadCount() + m_small.loadCount(), 14); // nothing reloads
    EXPECT_TRUE(isPlaying(*m_session, m_big));
    EXPECT_EQ(m_big.volume(), 0.0f); // the volumes stay with the media
    // An MP4 loaded afterwards starts unswapped.
    playRow(0);
    EXPECT_FALSE(m_session->isVideoSwitched());
}

TEST_F(SessionTest, MuteVolumeZoomFullScreenFlipAndQuit)
{
    for (int i = 0; i < 25; ++i)
        m_session->videoScaleUpButtonTouched();
    EXPECT_EQ(m_view.videoScale, 5.0);
    m_session->bigMovieViewDragged();
    m_session->changeVideoScale(1.1);
    m_session->videoScaleDownButtonTouched(); // below 1: back to 1, the drag forgotten
    EXPECT_EQ(m_view.videoScale, 1.0);
    EXPECT_FALSE(m_session->touchedBigMovieScroll());
    m_session->bigMovieViewDragged(); // nothing to drag at 1.0
    EXPECT_FALSE(m_session->touchedBigMovieScroll());
    // Loading a clip resets the zoom, except in full screen.
    addAviClip(QStringLiteral("cont_rec/a.avi"), 1);
    refresh();
    m_session->changeVideoScale(3.0);
    playRow(0);
    EXPECT_EQ(m_session->videoScale(), 1.0);
    m_session->volumeSliderMoved(0.6f);
    m_session->toggleMuteButtonTouched();
    EXPECT_EQ(m_big.volume(), 0.0f);
    EXPECT_FALSE(m_view.volumeSliderEnabled);
    EXPECT_EQ(m_view.muteImage, QStringLiteral("volume2"));
    EXPECT_EQ(m_view.volumeSliderValue, 0.0f);
    m_session->changeVideoScale(3.0);
    m_session->fullscreenButtonTouched();
    playRow(0); // loaded while muted: stays silent
    EXPECT_EQ(m_session->videoScale(), 3.0);
    EXPECT_EQ(m_big.volume(), 0.0f);
    m_session->toggleMuteButtonTouched();
    EXPECT_EQ(m_big.volume(), 0.6f);
    EXPECT_TRUE(m_view.volumeSliderEnabled);
    EXPECT_EQ(m_view.muteImage, QStringLiteral("volume1"));
    // Up and down in tenths, within 0 and 1.
    const std::pair<int, float> steps[] = { { 1, 0.7f }, { 5, 1.0f }, { -2, 0.8f }, { -12, 0.0f } };
    for (const auto& [count, volume] : steps) {
        for (int i = 0; i < std::abs(count); ++i)
            count > 0 ? m_session->volumeUp() : m_session->volumeDown();
        EXPECT_FLOAT_EQ(m_big.volume(), volume) << count;
        EXPECT_FLOAT_EQ(m_view.volumeSliderValue, volume) << count;
    }
    m_session->volumeSliderMoved(1.7f);
    EXPECT_EQ(m_big.volume(), 1.0f);

    m_view.events.clear();
    m_session->fullscreenButtonTouched();
    m_small.releaseRightButton();
    m_small.releaseRightButton();
    m_big.releaseRightButton();
    m_session->hideFullScreenMovie();
    m_session->hideFullScreenMovie(); // already left: nothing more
    EXPECT_EQ(m_view.events.join(u','),
        "hideFullScreen,full small,hideFullScreen,full big,hideFullScreen");
    for (const bool flipped : { true, false }) {
        m_session->videoRotateButtonTouched();
        EXPECT_EQ(m_big.upsideDown() + m_small.upsideDown(), 2 * flipped);
    }
    // Q and W quit only with Ctrl (the viewer's tests press the other keys).
    EXPECT_FALSE(m_session->keyDown(Qt::Key_Q, {}));
    EXPECT_TRUE(m_session->keyDown(Qt::Key_W, Qt::ControlModifier));
    EXPECT_EQ(m_view.events.last(), QStringLiteral("quit"));
}
