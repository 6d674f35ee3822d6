// Previous/next over the clip list, volume and mute, zoom, full screen, the
// keyboard, flip, frame steps and the blinking indicators.
#include "SessionFixture.h"

#include "app/session/ClipNavigation.h"

namespace {

QList<QUrl> urls(const QStringList& names)
{
    QList<QUrl> result;
    for (const QString& name : names)
        result << QUrl::fromLocalFile(QStringLiteral("/card/cont_rec/") + name);
    return result;
}

} // namespace

TEST(ClipNavigationTest, PreviousAndNextRows)
{
    const QStringList pairs { "1_F.mp4", "1_R.mp4", "2_F.mp4", "2_R.mp4" };
    const QStringList odd { "1_F.mp4", "1_R.mp4", "2_F.mp4", "2_R.mp4", "3_F.mp4" };
    const QStringList avi { "1_F.avi", "1_R.avi", "2_F.avi" };
    const QStringList plain { "a.mp4", "b.mp4", "c.mp4" };
    const struct {
        const char* what;
        QStringList rows;
        int selected;
        int previous;
        int next;
    } cases[] = {
        { "front of the first pair", pairs, 0, -1, 2 },
        { "rear of the first pair", pairs, 1, 0, 2 },
        { "front of the last pair", pairs, 2, 0, 0 },
        { "rear of the last pair", pairs, 3, 2, 0 },
        { "pair followed by a lone front", odd, 2, 0, 4 },
        { "lone front at the end", odd, 4, 2, 0 },
        { "avi clips never pair going forward", avi, 0, -1, 1 },
        { "avi rear before a front goes to its front", avi, 2, 0, 0 },
        { "unpaired clips step by one", plain, 1, 0, 2 },
        { "unpaired last row wraps", plain, 2, 1, 0 },
        { "no selection", plain, -1, -1, -1 },
        { "single row", { "a.mp4" }, 0, -1, 0 },
    };
    for (const auto& c : cases) {
        EXPECT_EQ(ClipNavigation::previousRow(urls(c.rows), c.selected), c.previous) << c.what;
        EXPECT_EQ(ClipNavigation::nextRow(urls(c.rows), c.selected), c.next) << c.what;
    }
    EXPECT_EQ(ClipNavigation::nextRow({}, 0), -1);
}

TEST_F(SessionTest, PreviousAndNextButtonsPlayTheFrontClipOfEachPair)
{
    for (const char* name :
        { "cont_rec/1_F.mp4", "cont_rec/1_R.mp4", "cont_rec/2_F.mp4", "cont_rec/2_R.mp4" })
        addMp4Clip(QString::fromLatin1(name));
    refresh();
    ASSERT_EQ(m_library.numberOfRows(), 4);
    playRow(0);
    EXPECT_EQ(
        m_session->smallVideoFilePath().section(QLatin1Char('/'), -1), QStringLiteral("1_F_r.mov"));

    const struct {
        bool next;
        int row; // selected and playing afterwards
        bool loads;
    } presses[] = {
        { true, 2, true },
        { true, 0, true },
        { false, 0, false }, // previous on row 0 does nothing
        { true, 2, true },
        { false, 0, true },
    };
    for (const auto& press : presses) {
        const int loads = m_big.loadCount();
        press.next ? m_session->playNextFileButtonTouched()
                   : m_session->playPrevFileButtonTouched();
        settle();
        EXPECT_EQ(m_library.selectedRow(), press.row);
        EXPECT_EQ(m_session->currentVideoUrl(), rowUrl(press.row));
        EXPECT_EQ(m_big.loadCount(), press.loads ? loads + 1 : loads);
    }
    playRow(3);
    m_session->playPrevFileButtonTouched();
    EXPECT_EQ(m_library.selectedRow(), 2);
    EXPECT_EQ(m_session->currentVideoUrl(), rowUrl(2));
}

TEST_F(SessionTest, NextOnTheLastRowPlaysRowZero)
{
    addAviClip(QStringLiteral("cont_rec/a.avi"), 1);
    addAviClip(QStringLiteral("cont_rec/b.avi"), 1);
    addAviClip(QStringLiteral("cont_rec/c.avi"), 1);
    refresh();
    playRow(2);
    m_session->playNextFileButtonTouched();
    settle();
    EXPECT_EQ(m_library.selectedRow(), 0);
    EXPECT_EQ(m_session->currentVideoUrl(), rowUrl(0));
}

TEST_F(SessionTest, MuteAndVolume)
{
    addAviClip(QStringLiteral("cont_rec/a.avi"), 1);
    refresh();
    playRow(0);
    m_session->volumeSliderMoved(0.6f);
    EXPECT_EQ(m_big.volume(), 0.6f);
    EXPECT_EQ(m_small.volume(), 0.0f);

    m_session->toggleMuteButtonTouched();
    EXPECT_EQ(m_big.volume(), 0.0f);
    EXPECT_FALSE(m_view.volumeSliderEnabled);
    EXPECT_EQ(m_view.muteImage, QStringLiteral("volume2"));
    EXPECT_EQ(m_view.volumeSliderValue, 0.0f);

    // A clip loaded while muted stays silent.
    playRow(0);
    EXPECT_EQ(m_big.volume(), 0.0f);
    EXPECT_FALSE(m_view.volumeSliderEnabled);

    m_session->toggleMuteButtonTouched();
    EXPECT_EQ(m_big.volume(), 0.6f);
    EXPECT_TRUE(m_view.volumeSliderEnabled);
    EXPECT_EQ(m_view.muteImage, QStringLiteral("volume1"));
    EXPECT_EQ(m_view.volumeSliderValue, 0.6f);

    for (int i = 0; i < 6; ++i)
        m_session->volumeUp();
    EXPECT_EQ(m_session->volumeSlider().volume(), 1.0f);
    EXPECT_EQ(m_big.volume(), 1.0f);
    for (int i = 0; i < 12; ++i)
        m_session->volumeDown();
    EXPECT_EQ(m_session->volumeSlider().volume(), 0.0f);
    EXPECT_EQ(m_view.volumeSliderValue, 0.0f);
    m_session->volumeSliderMoved(1.7f);
    EXPECT_EQ(m_big.volume(), 1.0f);
    m_session->volumeSliderMoved(-0.2f);
    EXPECT_EQ(m_big.volume(), 0.0f);
}

TEST_F(SessionTest, ZoomStaysBetweenOneAndFive)
{
    for (int i = 0; i < 25; ++i)
        m_session->videoScaleUpButtonTouched();
    EXPECT_EQ(m_session->videoScale(), 5.0);
    EXPECT_EQ(m_view.videoScale, 5.0);

    m_session->bigMovieViewDragged();
    EXPECT_TRUE(m_session->touchedBigMovieScroll());
    m_session->changeVideoScale(1.1);
    m_session->videoScaleDownButtonTouched();
    EXPECT_EQ(m_session->videoScale(), 1.0);
    EXPECT_FALSE(m_session->touchedBigMovieScroll());

    m_session->videoScaleUpButtonTouched();
    m_session->videoScaleUpButtonTouched();
    EXPECT_DOUBLE_EQ(m_session->videoScale(), 1.0 + 2 * double(0.2f));
    m_session->videoScaleDownButtonTouched();
    EXPECT_DOUBLE_EQ(m_session->videoScale(), 1.0 + double(0.2f));
    m_session->bigMovieViewDragged();
    EXPECT_TRUE(m_session->touchedBigMovieScroll());
    m_session->resetVideoScaleButtonTouched();
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
    EXPECT_FALSE(m_view.scrollMode);
    m_session->changeVideoScale(3.0);
    m_session->fullscreenButtonTouched();
    playRow(0);
    EXPECT_EQ(m_session->videoScale(), 3.0);
}

TEST_F(SessionTest, FullScreenFromButtonsAndTheRightMouseButton)
{
    m_session->fullscreenButtonTouched();
    EXPECT_TRUE(m_session->isFullScreenMode());
    m_session->fullscreenButtonTouched();
    EXPECT_FALSE(m_session->isFullScreenMode());
    m_small.releaseRightButton();
    m_small.releaseRightButton();
    m_big.releaseRightButton();
    m_session->hideFullScreenMovie();
    m_session->hideFullScreenMovie(); // already left: nothing more
    EXPECT_EQ(m_view.events,
        (QStringList { "fullScreen big", "hideFullScreen", "fullScreen small", "hideFullScreen",
            "fullScreen big", "hideFullScreen" }));
}

TEST_F(SessionTest, KeyboardMap)
{
    addAviClip(QStringLiteral("cont_rec/a.avi"), 1);
    refresh();
    playRow(0);
    m_big.advance(3.0);
    m_small.advance(3.0);

    const auto key = [this](int k, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        m_big.clearCalls();
        m_view.events.clear();
        return m_session->keyDown(k, modifiers);
    };
    EXPECT_TRUE(key(Qt::Key_Space));
    EXPECT_TRUE(m_session->isVideoPaused());
    EXPECT_TRUE(key(Qt::Key_Space));
    EXPECT_FALSE(m_session->isVideoPaused());
    EXPECT_TRUE(key(Qt::Key_Left));
    EXPECT_TRUE(m_session->isVideoPaused());
    EXPECT_TRUE(m_big.calls().contains(QStringLiteral("stepBackward")));
    settle(); // the time follows once the player has the new position
    EXPECT_EQ(m_view.playTimeText, QStringLiteral("00:02/03:00"));
    EXPECT_TRUE(key(Qt::Key_Right));
    EXPECT_TRUE(m_big.calls().contains(QStringLiteral("stepForward")));
    EXPECT_TRUE(m_small.calls().contains(QStringLiteral("stepForward")));
    settle();
    EXPECT_NEAR(m_big.currentTime(), 3.0, 1e-9);

    m_session->volumeSliderMoved(0.5f);
    EXPECT_TRUE(key(Qt::Key_Up));
    EXPECT_FLOAT_EQ(m_big.volume(), 0.6f);
    EXPECT_TRUE(key(Qt::Key_Down));
    EXPECT_TRUE(key(Qt::Key_Down));
    EXPECT_FLOAT_EQ(m_big.volume(), 0.4f);

    EXPECT_TRUE(key(Qt::Key_Return));
    EXPECT_EQ(m_view.events, QStringList { "fullScreen big" });
    EXPECT_TRUE(key(Qt::Key_Escape));
    EXPECT_EQ(m_view.events, QStringList { "hideFullScreen" });
    EXPECT_TRUE(key(Qt::Key_Enter));
    EXPECT_TRUE(key(Qt::Key_Enter));
    EXPECT_FALSE(m_session->isFullScreenMode());

    const struct {
        int key;
        Qt::KeyboardModifiers modifiers;
        bool handled;
        const char* event;
    } commands[] = {
        { Qt::Key_Q, Qt::ControlModifier, true, "quit" },
        { Qt::Key_W, Qt::ControlModifier, true, "quit" },
        { Qt::Key_M, Qt::ControlModifier, true, "minimize" },
        { Qt::Key_Q, Qt::NoModifier, false, nullptr },
        { Qt::Key_M, Qt::ShiftModifier, false, nullptr },
        { Qt::Key_A, Qt::ControlModifier, false, nullptr },
        { Qt::Key_F11, Qt::NoModifier, false, nullptr },
    };
    for (const auto& c : commands) {
        EXPECT_EQ(key(c.key, c.modifiers), c.handled) << c.key;
        EXPECT_EQ(
            m_view.events, c.event ? QStringList { QString::fromLatin1(c.event) } : QStringList {})
            << c.key;
    }
}

TEST_F(SessionTest, FlipMirrorsBothViews)
{
    m_session->videoRotateButtonTouched();
    EXPECT_TRUE(m_session->doVideoFlip());
    EXPECT_TRUE(m_big.upsideDown());
    EXPECT_TRUE(m_small.upsideDown());
    m_session->videoRotateButtonTouched();
    EXPECT_FALSE(m_big.upsideDown());
    EXPECT_FALSE(m_small.upsideDown());
}

TEST_F(SessionTest, IndicatorsBlinkWhilePlaying)
{
    addAviClip(QStringLiteral("cont_rec/a.avi"), 1);
    refresh();
    playRow(0);
    EXPECT_TRUE(m_session->isPlayAnimationActive());
    QStringList shown;
    for (int i = 0; i < 3; ++i) {
        m_session->playAnimationTimerCallback();
        shown << m_view.shockImage + QLatin1Char('+') + m_view.earthImage;
    }
    EXPECT_EQ(
        shown, (QStringList { "shock_gage1+earth1", "shock_gage2+earth2", "shock_gage1+earth1" }));
    m_session->pauseVideo();
    EXPECT_FALSE(m_session->isPlayAnimationActive());
    EXPECT_EQ(m_view.shockImage, QStringLiteral("shock_gage1")); // the images stay
    EXPECT_EQ(m_session->playAnimationIdx(), 3u);
}
