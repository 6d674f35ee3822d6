// The real player view on libmpv, with clips ffmpeg makes for the run. Runs
// under a display with OpenGL (xvfb-run with Mesa in CI).
#include "player/TavroAVView.h"
#include "PlayerClips.h"
#include "RecordingPlayerDelegate.h"
#include "TestTiming.h"

#include <QPalette>
#include <QScreen>
#include <QSignalSpy>
#include <QTest>

#include <gtest/gtest.h>

#include <cmath>
#include <memory>

using S = TavroAVViewStatus;

namespace {

const int kWaitMs = TestTiming::scaled(15000);

class PlayerViewTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        if (!clips().ok)
            GTEST_SKIP() << clips().error.toStdString();
    }

    static const PlayerClips& clips() { return PlayerClips::shared(); }

    TavroAVView* makeView(QSize size = QSize(320, 240))
    {
        auto view = std::make_unique<TavroAVView>();
        view->setDelegate(&delegate);
        view->resize(size);
        view->show();
        views.push_back(std::move(view));
        return views.back().get();
    }

    // Loads path and waits until the view reports Prepared.
    TavroAVView* loadedView(const QString& path, int videoTrack = 1)
    {
        TavroAVView* view = makeView();
        view->setVideoTrack(videoTrack);
        view->setFileName(path);
        EXPECT_TRUE(delegate.waitForStatus(view, S::Prepared, kWaitMs)) << path.toStdString();
        return view;
    }

    static bool waitForTime(TavroAVView* view, double seconds, double tolerance = 1e-3)
    {
        return QTest::qWaitFor(
            [&] { return std::abs(view->currentTime() - seconds) <= tolerance; }, kWaitMs);
    }

    // The picture as the window shows it, after at least one frame.
    static QImage picture(TavroAVView* view)
    {
        EXPECT_TRUE(QTest::qWaitFor([&] { return view->framesPresented() > 0; }, kWaitMs));
        return view->grabFramebuffer();
    }

    static QColor colourAt(const QImage& image, double fx, double fy)
    {
        return image.pixelColor(int(fx * (image.width() - 1)), int(fy * (image.height() - 1)));
    }

    RecordingPlayerDelegate delegate;
    std::vector<std::unique_ptr<TavroAVView>> views;
};

// Red, green or blue dominates clearly (video is YUV, so not exactly 255).
char dominant(const QColor& c)
{
    if (c.red() > 150 && c.green() < 100 && c.blue() < 100)
        return 'r';
    if (c.green() > 90 && c.red() < 100 && c.blue() < 100)
        return 'g';
    if (c.blue() > 150 && c.red() < 100 && c.green() < 100)
        return 'b';
    return '?';
}

} // namespace

TEST_F(PlayerViewTest, LoadingEndsInPreparedOrError)
{
    struct Case {
        QString path;
        QVector<S> statuses;
        bool noVideo;
    };
    const Case cases[] = {
        { clips().redOverBlue, { S::Init, S::Loading, S::Prepared }, false },
        { clips().dualStreamAvi, { S::Init, S::Loading, S::Prepared }, false },
        { clips().garbage, { S::Init, S::Loading, S::Error }, false },
        { clips().missing, { S::Init, S::Loading, S::Error }, false },
        { clips().audioOnly, { S::Init, S::Loading, S::Error }, true },
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.path.toStdString());
        TavroAVView* view = makeView();
        view->setFileName(c.path);
        EXPECT_EQ(view->status(), S::Loading);
        EXPECT_TRUE(view->hasMovie());
        EXPECT_DOUBLE_EQ(view->duration(), 0.0);
        EXPECT_TRUE(view->findChild<QWidget*>(QStringLiteral("loadingSpinner"))->isVisible());
        ASSERT_TRUE(delegate.waitForStatus(view, c.statuses.last(), kWaitMs));
        QTest::qWait(300); // nothing may follow the final status
        EXPECT_EQ(delegate.log(view).statuses, c.statuses);
        EXPECT_EQ(view->status(), c.statuses.last());
        EXPECT_EQ(view->hasMovie(), c.statuses.last() == S::Prepared);
        EXPECT_EQ(view->findChild<QWidget*>(QStringLiteral("noVideoView"))->isVisible(), c.noVideo);
        EXPECT_FALSE(view->findChild<QWidget*>(QStringLiteral("loadingSpinner"))->isVisible());
    }
}

TEST_F(PlayerViewTest, SoundOnlyFileKeepsPlayingItsSound)
{
    TavroAVView* view = makeView();
    view->setFileName(clips().audioOnly);
    ASSERT_TRUE(delegate.waitForStatus(view, S::Error, kWaitMs));
    view->play();
    EXPECT_TRUE(QTest::qWaitFor([&] { return view->currentTime() > 0.3; }, kWaitMs));
    EXPECT_EQ(view->fileName(), clips().audioOnly);
    EXPECT_FALSE(view->hasMovie());
}

TEST_F(PlayerViewTest, SeeksLandOnWholeSecondsAndStepsMoveOneFrame)
{
    TavroAVView* view = loadedView(clips().redOverBlue);
    EXPECT_NEAR(view->duration(), 15.0, 0.05);
    const std::pair<double, double> seeks[] = { { 12.7, 13.0 }, { 2.4, 2.0 }, { 5.5, 6.0 } };
    for (const auto& [asked, landed] : seeks) {
        view->setCurrentTime(asked);
        EXPECT_TRUE(waitForTime(view, landed)) << asked << " gave " << view->currentTime();
    }
    view->stepForward();
    EXPECT_TRUE(waitForTime(view, 6.1)) << view->currentTime();
    view->stepForward();
    EXPECT_TRUE(waitForTime(view, 6.2)) << view->currentTime();
    view->stepBackward();
    EXPECT_TRUE(waitForTime(view, 6.1)) << view->currentTime();
    EXPECT_FALSE(delegate.log(view).times.isEmpty());
}

// Keys pressed quickly after a click on the slider: mpv would merge the seeks
// and spend a step asked during a seek on the seek's own frame.
TEST_F(PlayerViewTest, MovesAskedDuringASeekFollowItInOrder)
{
    TavroAVView* view = loadedView(clips().redOverBlue);
    view->setCurrentTime(2.4);
    view->setCurrentTime(5.5);
    view->stepForward();
    view->stepForward();
    EXPECT_TRUE(waitForTime(view, 6.2)) << view->currentTime();
    view->setCurrentTime(9.2);
    view->stepBackward();
    EXPECT_TRUE(waitForTime(view, 8.9)) << view->currentTime();
    // The time shown follows too, and nothing older is reported after it.
    EXPECT_TRUE(QTest::qWaitFor(
        [&] {
            const QVector<double>& times = delegate.log(view).times;
            return !times.isEmpty() && std::abs(times.last() - 8.9) < 1e-3;
        },
        kWaitMs));
    QTest::qWait(300);
    EXPECT_NEAR(delegate.log(view).times.last(), 8.9, 1e-3);
    EXPECT_NEAR(view->currentTime(), 8.9, 1e-3);
    // A step back from the first frame has nowhere to go; what follows still moves.
    view->setCurrentTime(0.0);
    ASSERT_TRUE(QTest::qWaitFor(
        [&] { return std::abs(delegate.log(view).times.last()) < 1e-3; }, kWaitMs));
    view->stepBackward();
    view->setCurrentTime(3.2);
    EXPECT_TRUE(waitForTime(view, 3.0)) << view->currentTime();
}

// A held arrow key: its repeats come faster than mpv steps. While a step is
// under way they fold into one more, so the picture stops right after the key
// is let go instead of working through every repeat.
TEST_F(PlayerViewTest, HeldStepKeysFoldIntoOneMoreStep)
{
    TavroAVView* view = loadedView(clips().redOverBlue);
    view->setCurrentTime(6.0);
    ASSERT_TRUE(waitForTime(view, 6.0)) << view->currentTime();
    const std::pair<void (TavroAVView::*)(), double> keys[]
        = { { &TavroAVView::stepForward, 6.2 }, { &TavroAVView::stepBackward, 6.0 } };
    for (const auto& [step, landing] : keys) {
        for (int repeat = 0; repeat < 10; ++repeat)
            (view->*step)();
        EXPECT_TRUE(waitForTime(view, landing)) << view->currentTime();
        QTest::qWait(TestTiming::scaled(600));
        EXPECT_NEAR(view->currentTime(), landing, 1e-3);
    }
}

TEST_F(PlayerViewTest, RatesFollowTheTransportRules)
{
    TavroAVView* view = loadedView(clips().redOverBlue);
    view->setCurrentTime(8.0);
    ASSERT_TRUE(waitForTime(view, 8.0));
    view->play();
    view->fastForward();
    view->fastForward();
    view->fastForward();
    EXPECT_FLOAT_EQ(view->rate(), 6.0f);
    view->rewind();
    EXPECT_FLOAT_EQ(view->rate(), -2.0f);
    const double before = view->currentTime();
    EXPECT_TRUE(QTest::qWaitFor([&] { return view->currentTime() < before - 0.3; }, kWaitMs))
        << "rewinding moves backwards";
    view->rewind();
    EXPECT_FLOAT_EQ(view->rate(), -4.0f);
    view->fastForward();
    EXPECT_FLOAT_EQ(view->rate(), 2.0f);
    view->playPauseToggle(); // rate 2 is not 1: plays at normal speed
    EXPECT_FLOAT_EQ(view->rate(), 1.0f);
    view->playPauseToggle();
    EXPECT_FLOAT_EQ(view->rate(), 0.0f);
    const QVector<float> expected { 1, 2, 4, 6, -2, -4, 2, 1, 0 };
    QTest::qWait(200);
    EXPECT_EQ(delegate.log(view).rates, expected);
}

TEST_F(PlayerViewTest, PlaysToTheEndAndStartsOverFromThere)
{
    TavroAVView* view = loadedView(clips().greenFractional);
    EXPECT_NEAR(view->duration(), 4.5, 0.05);
    view->setCurrentTime(4.0);
    ASSERT_TRUE(waitForTime(view, 4.0));
    view->play();
    ASSERT_TRUE(delegate.waitForEnd(view, 1, kWaitMs));
    EXPECT_EQ(view->currentTime(), view->duration());
    EXPECT_TRUE(QTest::qWaitFor([&] { return view->rate() == 0.0f; }, kWaitMs));
    const QVector<double>& times = delegate.log(view).times;
    for (qsizetype i = 1; i < times.size(); ++i)
        EXPECT_NE(std::floor(times[i] * 10), std::floor(times[i - 1] * 10))
            << "one report per tenth";
    view->play();
    EXPECT_TRUE(QTest::qWaitFor([&] { return view->currentTime() < 1.0; }, kWaitMs))
        << view->currentTime();
    EXPECT_FLOAT_EQ(view->rate(), 1.0f);
}

TEST_F(PlayerViewTest, UpsideDownMirrorsThePictureVertically)
{
    TavroAVView* view = loadedView(clips().redOverBlue);
    const QImage upright = picture(view);
    EXPECT_EQ(upright.size(), QSize(320, 240) * view->devicePixelRatioF());
    EXPECT_EQ(dominant(colourAt(upright, 0.5, 0.1)), 'r');
    EXPECT_EQ(dominant(colourAt(upright, 0.5, 0.9)), 'b');
    view->setUpsideDown(true);
    const QImage mirrored = view->grabFramebuffer();
    EXPECT_EQ(dominant(colourAt(mirrored, 0.5, 0.1)), 'b');
    EXPECT_EQ(dominant(colourAt(mirrored, 0.5, 0.9)), 'r');
    view->setUpsideDown(false);
    EXPECT_EQ(dominant(colourAt(view->grabFramebuffer(), 0.5, 0.1)), 'r');
}

TEST_F(PlayerViewTest, KeepsItsPictureWhenMovedToAnotherWindow)
{
    // Full screen takes the view out of the main window into a window of its
    // own, which gives the widget a new GL context.
    QWidget window;
    window.resize(400, 300);
    auto* view = new TavroAVView(&window); // owned by the window until it leaves
    view->setDelegate(&delegate);
    view->resize(320, 240);
    window.show();
    view->setFileName(clips().redOverBlue);
    ASSERT_TRUE(delegate.waitForStatus(view, S::Prepared, kWaitMs));
    EXPECT_EQ(dominant(colourAt(picture(view), 0.5, 0.1)), 'r');
    view->setParent(nullptr);
    views.emplace_back(view);
    view->resize(640, 480);
    view->show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(view));
    const QImage moved = view->grabFramebuffer();
    EXPECT_EQ(moved.size(), QSize(640, 480) * view->devicePixelRatioF());
    EXPECT_EQ(dominant(colourAt(moved, 0.5, 0.1)), 'r');
    EXPECT_EQ(dominant(colourAt(moved, 0.5, 0.9)), 'b');
    EXPECT_EQ(view->status(), S::Prepared);
}

TEST_F(PlayerViewTest, OnScreenThePictureIsUprightOrMirrored)
{
    // A picture that fills its view is drawn by the player straight into the
    // window: what the screen shows, not a read-back of a texture.
    TavroAVView* view = loadedView(clips().redOverBlue);
    picture(view);
    auto screenAt = [&](double fy) {
        const QImage screen = view->screen()->grabWindow(view->winId()).toImage();
        return dominant(colourAt(screen, 0.5, fy));
    };
    EXPECT_TRUE(QTest::qWaitFor([&] { return screenAt(0.1) == 'r'; }, kWaitMs));
    EXPECT_EQ(screenAt(0.9), 'b');
    view->setUpsideDown(true);
    EXPECT_TRUE(QTest::qWaitFor([&] { return screenAt(0.1) == 'b'; }, kWaitMs));
    EXPECT_EQ(screenAt(0.9), 'r');
}

TEST_F(PlayerViewTest, OnScreenAnEnlargedViewShowsOnlyWhatItsAreaShows)
{
    // The picture is a native window, which its parents do not clip: an
    // enlarged view (zoom) must not spill over the widgets around its area.
    QWidget window;
    QPalette green = window.palette();
    green.setColor(QPalette::Window, QColor(0, 200, 0));
    window.setPalette(green);
    window.setAutoFillBackground(true);
    window.resize(400, 300);
    auto* area = new QWidget(&window);
    area->setGeometry(100, 100, 200, 150);
    auto* view = new TavroAVView(area);
    view->setDelegate(&delegate);
    // Twice the area's size (the clip's 4:3), moved up by one area: the
    // area shows the lower left quarter of the picture, blue.
    view->setGeometry(0, -150, 400, 300);
    window.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
    view->setFileName(clips().redOverBlue);
    ASSERT_TRUE(delegate.waitForStatus(view, S::Prepared, kWaitMs));
    picture(view);
    QImage screen;
    auto at = [&](int x, int y) {
        return dominant(screen.pixelColor(QPoint(x, y) * screen.devicePixelRatio()));
    };
    // Once drawn: the area's picture and, around it, something painted (on a busy
    // machine the window's own background may still be missing for a moment).
    const bool shown = QTest::qWaitFor(
        [&] {
            screen = window.screen()->grabWindow(window.winId()).toImage();
            return at(200, 175) == 'b' && at(200, 50) != '?' && at(200, 95) != '?'
                && at(50, 175) != '?' && at(350, 175) != '?';
        },
        kWaitMs);
    EXPECT_TRUE(shown) << "the area shows the picture's lower half";
    EXPECT_EQ(at(200, 105), 'b');
    EXPECT_EQ(at(200, 245), 'b');
    // Above and beside the area, where the unclipped picture would lie.
    EXPECT_EQ(at(200, 50), 'g');
    EXPECT_EQ(at(200, 95), 'g');
    EXPECT_EQ(at(50, 175), 'g');
    EXPECT_EQ(at(350, 175), 'g');

    // Dragged down by half an area: the middle of the picture (red over blue) shows.
    view->move(0, -75);
    ASSERT_TRUE(QTest::qWaitFor(
        [&] {
            screen = window.screen()->grabWindow(window.winId()).toImage();
            return at(200, 110) == 'r' && at(200, 90) != '?';
        },
        kWaitMs));
    EXPECT_EQ(at(200, 240), 'b');
    EXPECT_EQ(at(200, 90), 'g');
}

TEST_F(PlayerViewTest, SecondVideoStreamOfAnAvi)
{
    TavroAVView* first = loadedView(clips().dualStreamAvi, 1);
    TavroAVView* second = loadedView(clips().dualStreamAvi, 2);
    EXPECT_EQ(dominant(colourAt(picture(first), 0.5, 0.5)), 'r');
    EXPECT_EQ(dominant(colourAt(picture(second), 0.5, 0.5)), 'b');
    EXPECT_EQ(second->videoTrack(), 2);
}

TEST_F(PlayerViewTest, SnapshotIsTheFirstFrameAtTheStreamSize)
{
    TavroAVView* empty = makeView();
    EXPECT_TRUE(empty->snapshot().isNull());

    TavroAVView* view = loadedView(clips().redOverBlue);
    view->setCurrentTime(9.0);
    view->setUpsideDown(true);
    const QImage still = view->snapshot();
    ASSERT_EQ(still.size(), QSize(320, 240));
    EXPECT_EQ(dominant(colourAt(still, 0.5, 0.1)), 'r') << "not mirrored";
    EXPECT_EQ(dominant(colourAt(still, 0.5, 0.9)), 'b');

    // The second stream's frame, at the size of the first stream.
    TavroAVView* rear = loadedView(clips().dualStreamAvi, 2);
    const QImage rearStill = rear->snapshot();
    ASSERT_EQ(rearStill.size(), QSize(320, 240));
    EXPECT_EQ(dominant(colourAt(rearStill, 0.5, 0.5)), 'b');

    TavroAVView* sound = makeView();
    sound->setFileName(clips().audioOnly);
    ASSERT_TRUE(delegate.waitForStatus(sound, S::Error, kWaitMs));
    EXPECT_EQ(sound->snapshot().size(), QSize(1920, 1080));
}

TEST_F(PlayerViewTest, SwapExchangesPlayingMediaWithoutReloading)
{
    TavroAVView* big = loadedView(clips().redOverBlue);
    TavroAVView* small = loadedView(clips().greenFractional);
    small->setVolume(0.0f);
    big->setUpsideDown(true);
    big->play();
    small->play();
    ASSERT_TRUE(QTest::qWaitFor(
        [&] { return big->currentTime() > 0.3 && small->currentTime() > 0.3; }, kWaitMs));
    EXPECT_EQ(dominant(colourAt(picture(big), 0.5, 0.1)), 'b');
    const auto statusesBefore
        = delegate.log(big).statuses.size() + delegate.log(small).statuses.size();

    big->swapPlayerItemWith(*small);
    EXPECT_EQ(big->fileName(), clips().greenFractional);
    EXPECT_EQ(small->fileName(), clips().redOverBlue);
    EXPECT_NEAR(big->duration(), 4.5, 0.05);
    EXPECT_FLOAT_EQ(big->volume(), 0.0f) << "the volume goes with the media";
    EXPECT_TRUE(big->upsideDown());
    EXPECT_FALSE(small->upsideDown());
    EXPECT_EQ(big->status(), S::Prepared);
    EXPECT_EQ(small->status(), S::Prepared);

    // Both keep running, each picture now in the other view at its size.
    const double bigAt = big->currentTime();
    const double smallAt = small->currentTime();
    EXPECT_TRUE(QTest::qWaitFor(
        [&] { return big->currentTime() > bigAt + 0.3 && small->currentTime() > smallAt + 0.3; },
        kWaitMs));
    const qint64 presented = small->framesPresented();
    ASSERT_TRUE(QTest::qWaitFor([&] { return small->framesPresented() > presented; }, kWaitMs));
    const QImage smallPicture = small->grabFramebuffer();
    EXPECT_EQ(dominant(colourAt(smallPicture, 0.5, 0.1)), 'r');
    EXPECT_EQ(dominant(colourAt(smallPicture, 0.5, 0.9)), 'b');
    EXPECT_EQ(dominant(colourAt(big->grabFramebuffer(), 0.5, 0.5)), 'g');
    EXPECT_EQ(
        delegate.log(big).statuses.size() + delegate.log(small).statuses.size(), statusesBefore);
}

TEST_F(PlayerViewTest, CloseResetAndEmptyNameReturnToInit)
{
    using Action = void (*)(TavroAVView*);
    const Action actions[] = {
        [](TavroAVView* v) { v->close(); },
        [](TavroAVView* v) { v->reset(); },
        [](TavroAVView* v) { v->setFileName(QString()); },
    };
    for (Action action : actions) {
        TavroAVView* view = loadedView(clips().redOverBlue);
        view->play();
        action(view);
        EXPECT_EQ(view->status(), S::Init);
        EXPECT_FALSE(view->hasMovie());
        EXPECT_TRUE(view->fileName().isEmpty());
        EXPECT_DOUBLE_EQ(view->currentTime(), 0.0);
        EXPECT_DOUBLE_EQ(view->duration(), 0.0);
        EXPECT_TRUE(view->snapshot().isNull());
        ASSERT_TRUE(QTest::qWaitFor(
            [&] { return delegate.log(view).statuses.last() == S::Init; }, kWaitMs));
        view->play(); // harmless without media
    }
}

TEST_F(PlayerViewTest, ReloadingWhileLoadingStartsOneFreshLoad)
{
    TavroAVView* view = makeView();
    view->setFileName(clips().garbage);
    view->setFileName(clips().redOverBlue);
    ASSERT_TRUE(delegate.waitForStatus(view, S::Prepared, kWaitMs));
    QTest::qWait(200);
    // Closing the first load reports Init, then the new name sets Init again.
    EXPECT_EQ(delegate.log(view).statuses,
        (QVector<S> { S::Init, S::Loading, S::Init, S::Init, S::Loading, S::Prepared }));
}

TEST_F(PlayerViewTest, DestroyedWhileLoadingOrFromItsOwnCallback)
{
    for (int waitMs : { 0, 5, 30, 100 }) {
        auto view = std::make_unique<TavroAVView>();
        view->setDelegate(&delegate);
        view->show();
        view->setFileName(clips().redOverBlue);
        QTest::qWait(waitMs);
        view.reset();
    }
    // An owner that loads the next clip when one ends closes the player in
    // the middle of its own event handling.
    struct NextOnEnd : RecordingPlayerDelegate {
        QString next;
        void tavroAVViewDidPlayToEndTime(PlayerView* view) override
        {
            RecordingPlayerDelegate::tavroAVViewDidPlayToEndTime(view);
            view->setFileName(next);
        }
    } owner;
    owner.next = clips().redOverBlue;
    TavroAVView* view = makeView();
    view->setDelegate(&owner);
    view->setFileName(clips().greenFractional);
    ASSERT_TRUE(owner.waitForStatus(view, S::Prepared, kWaitMs));
    view->setCurrentTime(4.0);
    view->play();
    ASSERT_TRUE(owner.waitForEnd(view, 1, kWaitMs));
    EXPECT_TRUE(
        QTest::qWaitFor([&] { return owner.log(view).statuses.count(S::Prepared) == 2; }, kWaitMs));
    EXPECT_EQ(view->fileName(), clips().redOverBlue);

    // An owner that closes the view when it hears the rate drop to 0, from
    // inside the pause call itself.
    struct CloseOnPause : RecordingPlayerDelegate {
        void tavroAVViewDidUpdateRate(PlayerView* view, float rate) override
        {
            RecordingPlayerDelegate::tavroAVViewDidUpdateRate(view, rate);
            if (rate == 0.0f)
                view->close();
        }
    } closer;
    view->setDelegate(&closer);
    view->play();
    view->pause();
    EXPECT_EQ(view->status(), S::Init);
    QTest::qWait(100);
    EXPECT_TRUE(view->fileName().isEmpty());
}

TEST_F(PlayerViewTest, RightButtonReleaseAsksForFullScreenAndVolumeSticks)
{
    TavroAVView* view = loadedView(clips().redOverBlue);
    QTest::mouseClick(view, Qt::LeftButton);
    EXPECT_EQ(delegate.log(view).fullscreenRequests, 0);
    QTest::mouseClick(view, Qt::RightButton);
    EXPECT_EQ(delegate.log(view).fullscreenRequests, 1);

    for (float volume : { 0.25f, 1.0f, 0.0f }) {
        view->setVolume(volume);
        EXPECT_FLOAT_EQ(view->volume(), volume);
        QTest::qWait(100);
        EXPECT_FLOAT_EQ(view->volume(), volume) << "after mpv confirmed it";
    }
    view->setVolume(3.0f);
    EXPECT_FLOAT_EQ(view->volume(), 1.0f);
}
