// The rules the real and the scripted player view share, and the real view on
// libmpv with clips ffmpeg makes for the run. Runs under a display with OpenGL
// (xvfb-run with Mesa in CI).
#include "player/TavroAVView.h"
#include "PlayerClips.h"
#include "RecordingPlayerDelegate.h"
#include "TestTiming.h"
#include "player/PlayerRules.h"

#include <QScreen>
#include <QTest>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <memory>

using S = TavroAVViewStatus;

namespace {

const int kWaitMs = TestTiming::scaled(15000);

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

// The dominant colours at the middle of the top and bottom tenth: "rb" is red over blue.
QString topAndBottom(const QImage& image)
{
    const auto at = [&](double fy) {
        return dominant(image.pixelColor(image.width() / 2, int(fy * (image.height() - 1))));
    };
    return QString(QChar(at(0.1))) + QChar(at(0.9));
}

class PlayerViewTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        if (!clips().ok)
            GTEST_SKIP() << clips().error.toStdString();
    }
    static const PlayerClips& clips() { return PlayerClips::shared(); }

    TavroAVView* makeView()
    {
        auto* view = views.emplace_back(std::make_unique<TavroAVView>()).get();
        view->setDelegate(&delegate);
        view->resize(320, 240);
        view->show();
        return view;
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
    static bool waitForTime(TavroAVView* view, double seconds)
    {
        return QTest::qWaitFor(
            [&] { return std::abs(view->currentTime() - seconds) <= 1e-3; }, kWaitMs);
    }
    // The picture as the window shows it, after at least one frame.
    static QImage picture(TavroAVView* view)
    {
        EXPECT_TRUE(QTest::qWaitFor([&] { return view->framesPresented() > 0; }, kWaitMs));
        return view->grabFramebuffer();
    }

    RecordingPlayerDelegate delegate;
    std::vector<std::unique_ptr<TavroAVView>> views;
};

} // namespace

TEST(PlayerRules, RatesSeeksAndTimeSlots)
{
    const float nan = std::numeric_limits<float>::quiet_NaN();
    // From below 2 (or NaN) fast forward starts at 2, then adds 2; rewind mirrors it.
    const std::tuple<float, float, float> rates[] = { { 0.0f, 2.0f, -2.0f }, { 1.99f, 2.0f, -2.0f },
        { 2.0f, 4.0f, -2.0f }, { 10.0f, 12.0f, -2.0f }, { -1.99f, 2.0f, -2.0f },
        { -2.0f, 2.0f, -4.0f }, { -6.0f, 2.0f, -8.0f }, { nan, 2.0f, -2.0f } };
    for (const auto& [rate, forward, backward] : rates) {
        EXPECT_EQ(PlayerRules::nextFastForwardRate(rate), forward) << rate;
        EXPECT_EQ(PlayerRules::nextRewindRate(rate), backward) << rate;
    }
    const double inf = std::numeric_limits<double>::infinity();
    const std::pair<double, double> seeks[] = { { 12.7, 13 }, { 12.5, 13 }, { 12.49, 12 },
        { 0.4, 0 }, { 59.99, 60 }, { nan, 0 }, { inf, 0 } };
    for (const auto& [in, out] : seeks)
        EXPECT_EQ(PlayerRules::wholeSecondSeekTarget(in), out) << in;
    const std::pair<double, long long> tenths[]
        = { { 0.0, 0 }, { 0.09, 0 }, { 0.1, 1 }, { 0.3, 3 }, { 12.34, 123 }, { -inf, 0 } };
    for (const auto& [in, out] : tenths) // 0.3 * 10 is 2.9999999999999996
        EXPECT_EQ(PlayerRules::timeObserverSlot(in), out) << in;
    // The whole seconds of the duration, counted in microseconds.
    EXPECT_DOUBLE_EQ(PlayerRules::snapshotTime(60.5), 60e-6);
    EXPECT_EQ(PlayerRules::snapshotTime(0.0), 0.0);
    EXPECT_EQ(PlayerRules::snapshotTime(-3.0), 0.0);
    EXPECT_EQ(PlayerRules::snapshotTime(nan), 0.0);
}

TEST_F(PlayerViewTest, LoadingEndsInPreparedOrError)
{
    const std::tuple<QString, S, bool> cases[] = {
        { clips().redOverBlue, S::Prepared, false }, { clips().garbage, S::Error, false },
        { clips().missing, S::Error, false },
        { clips().audioOnly, S::Error, true }, // no video: a note instead of a picture
    };
    for (const auto& [path, last, noVideo] : cases) {
        TavroAVView* view = makeView();
        view->setFileName(path);
        EXPECT_EQ(view->status(), S::Loading);
        EXPECT_TRUE(view->hasMovie());
        EXPECT_TRUE(view->findChild<QWidget*>(QStringLiteral("loadingSpinner"))->isVisible());
        ASSERT_TRUE(delegate.waitForStatus(view, last, kWaitMs));
        QTest::qWait(300); // nothing may follow the final status
        EXPECT_EQ(delegate.log(view).statuses, (QVector<S> { S::Init, S::Loading, last }));
        EXPECT_EQ(view->hasMovie(), last == S::Prepared);
        EXPECT_EQ(view->findChild<QWidget*>(QStringLiteral("noVideoView"))->isVisible(), noVideo);
        EXPECT_FALSE(view->findChild<QWidget*>(QStringLiteral("loadingSpinner"))->isVisible());
        if (noVideo) { // the sound still plays; a still is a blank full HD picture
            EXPECT_EQ(view->snapshot().size(), QSize(1920, 1080));
            view->play();
            EXPECT_TRUE(QTest::qWaitFor([&] { return view->currentTime() > 0.3; }, kWaitMs));
        }
    }
    // Reloading while loading starts one fresh load: closing the first
    // reports Init, then the new name sets Init again.
    TavroAVView* view = makeView();
    view->setFileName(clips().garbage);
    view->setFileName(clips().redOverBlue);
    ASSERT_TRUE(delegate.waitForStatus(view, S::Prepared, kWaitMs));
    QTest::qWait(200);
    EXPECT_EQ(delegate.log(view).statuses,
        (QVector<S> { S::Init, S::Loading, S::Init, S::Init, S::Loading, S::Prepared }));
}

// Seeks land on whole seconds and steps move one frame. Keys pressed quickly
// after a click on the slider: mpv would merge the seeks and spend a step
// asked during a seek on the seek's own frame, so the moves follow in order.
TEST_F(PlayerViewTest, SeeksAndStepsFollowInTheOrderAsked)
{
    TavroAVView* view = loadedView(clips().redOverBlue);
    view->setCurrentTime(12.7);
    EXPECT_TRUE(waitForTime(view, 13.0)) << view->currentTime();
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
        [&] { return std::abs(delegate.log(view).times.last() - 8.9) < 1e-3; }, kWaitMs));
    QTest::qWait(300);
    EXPECT_NEAR(delegate.log(view).times.last(), 8.9, 1e-3);
    // A step back from the first frame has nowhere to go; what follows still moves.
    view->setCurrentTime(0.0);
    ASSERT_TRUE(
        QTest::qWaitFor([&] { return std::abs(delegate.log(view).times.last()) < 1e-3; }, kWaitMs));
    view->stepBackward();
    view->setCurrentTime(6.2);
    ASSERT_TRUE(waitForTime(view, 6.0)) << view->currentTime();
    // A held arrow key: its repeats come faster than mpv steps. While a step
    // is under way they fold into one more, so the picture stops right after
    // the key is let go instead of working through every repeat.
    for (const auto& [step, landing] : { std::pair { &TavroAVView::stepForward, 6.2 },
             std::pair { &TavroAVView::stepBackward, 6.0 } }) {
        for (int repeat = 0; repeat < 10; ++repeat)
            (view->*step)();
        EXPECT_TRUE(waitForTime(view, landing)) << view->currentTime();
        QTest::qWait(TestTiming::scaled(600));
        EXPECT_NEAR(view->currentTime(), landing, 1e-3);
    }
}

TEST_F(PlayerViewTest, RatesPlayToTheEndAndStartOverFromThere)
{
    TavroAVView* view = loadedView(clips().redOverBlue);
    view->setCurrentTime(8.0);
    ASSERT_TRUE(waitForTime(view, 8.0));
    view->play();
    for (int i = 0; i < 3; ++i)
        view->fastForward();
    view->rewind();
    const double before = view->currentTime();
    EXPECT_TRUE(QTest::qWaitFor([&] { return view->currentTime() < before - 0.3; }, kWaitMs))
        << "rewinding moves backwards";
    view->rewind();
    view->fastForward();
    view->playPauseToggle(); // rate 2 is not 1: plays at normal speed
    view->playPauseToggle();
    QTest::qWait(200);
    EXPECT_EQ(delegate.log(view).rates, (QVector<float> { 1, 2, 4, 6, -2, -4, 2, 1, 0 }));

    TavroAVView* green = loadedView(clips().greenFractional);
    green->setCurrentTime(4.0);
    ASSERT_TRUE(waitForTime(green, 4.0));
    green->play();
    ASSERT_TRUE(delegate.waitForEnd(green, 1, kWaitMs));
    EXPECT_EQ(green->currentTime(), green->duration());
    EXPECT_TRUE(QTest::qWaitFor([&] { return green->rate() == 0.0f; }, kWaitMs));
    const QVector<double> times = delegate.log(green).times;
    for (qsizetype i = 1; i < times.size(); ++i)
        EXPECT_NE(std::floor(times[i] * 10), std::floor(times[i - 1] * 10)) << "one per tenth";
    green->play();
    EXPECT_TRUE(QTest::qWaitFor([&] { return green->currentTime() < 1.0; }, kWaitMs));
    EXPECT_EQ(green->rate(), 1.0f);
}

// The player draws straight into the window: what the screen shows, not a
// read-back of a texture.
TEST_F(PlayerViewTest, PictureUprightOrMirroredOnScreenAndInAnotherWindow)
{
    TavroAVView* view = loadedView(clips().redOverBlue);
    const QImage upright = picture(view);
    EXPECT_EQ(upright.size(), QSize(320, 240) * view->devicePixelRatioF());
    EXPECT_EQ(topAndBottom(upright), "rb");
    const auto onScreen = [&](TavroAVView* v) {
        return topAndBottom(v->screen()->grabWindow(v->winId()).toImage());
    };
    EXPECT_TRUE(QTest::qWaitFor([&] { return onScreen(view) == "rb"; }, kWaitMs));
    view->setUpsideDown(true);
    EXPECT_EQ(topAndBottom(view->grabFramebuffer()), "br");
    EXPECT_TRUE(QTest::qWaitFor([&] { return onScreen(view) == "br"; }, kWaitMs));
    // Stills are never mirrored, at the stream's size.
    EXPECT_EQ(view->snapshot().size(), QSize(320, 240));
    EXPECT_EQ(topAndBottom(view->snapshot()), "rb");
    view->setUpsideDown(false);
    EXPECT_EQ(topAndBottom(view->grabFramebuffer()), "rb");
    for (float volume : { 0.25f, 1.0f, 0.0f }) {
        view->setVolume(volume);
        QTest::qWait(100);
        EXPECT_EQ(view->volume(), volume) << "after mpv confirmed it";
    }
    view->setVolume(3.0f);
    EXPECT_EQ(view->volume(), 1.0f);

    // Moved into a window of its own, the view has a new GL context to draw with.
    QWidget window;
    view->setParent(&window);
    view->show();
    window.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
    EXPECT_EQ(topAndBottom(view->grabFramebuffer()), "rb");
    view->setParent(nullptr);
    view->resize(640, 480);
    view->show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(view));
    const QImage moved = view->grabFramebuffer();
    EXPECT_EQ(moved.size(), QSize(640, 480) * view->devicePixelRatioF());
    EXPECT_EQ(topAndBottom(moved), "rb");
}

TEST_F(PlayerViewTest, SecondVideoStreamPictureAndStill)
{
    TavroAVView* first = loadedView(clips().dualStreamAvi, 1);
    TavroAVView* second = loadedView(clips().dualStreamAvi, 2);
    EXPECT_EQ(topAndBottom(picture(first)), "rr");
    EXPECT_EQ(topAndBottom(picture(second)), "bb");
    EXPECT_EQ(second->videoTrack(), 2);
    // The second stream's still, at the size of the first stream.
    EXPECT_EQ(second->snapshot().size(), QSize(320, 240));
    EXPECT_EQ(topAndBottom(second->snapshot()), "bb");
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
    const auto statuses = delegate.log(big).statuses.size() + delegate.log(small).statuses.size();
    big->swapPlayerItemWith(*small);
    EXPECT_EQ(big->fileName(), clips().greenFractional);
    EXPECT_EQ(small->fileName(), clips().redOverBlue);
    EXPECT_NEAR(big->duration(), 4.5, 0.05);
    EXPECT_EQ(big->volume(), 0.0f) << "the volume goes with the media";
    EXPECT_TRUE(big->upsideDown() && !small->upsideDown()) << "the mirror stays with the view";
    // Both keep running, nothing reloaded (the on-screen test looks at the pictures).
    const double bigAt = big->currentTime();
    const double smallAt = small->currentTime();
    EXPECT_TRUE(QTest::qWaitFor(
        [&] { return big->currentTime() > bigAt + 0.3 && small->currentTime() > smallAt + 0.3; },
        kWaitMs));
    EXPECT_EQ(delegate.log(big).statuses.size() + delegate.log(small).statuses.size(), statuses);
}

TEST_F(PlayerViewTest, CloseResetAndEmptyNameReturnToInit)
{
    using Action = void (*)(TavroAVView*);
    for (const Action action :
        { Action([](TavroAVView* v) { v->close(); }), Action([](TavroAVView* v) { v->reset(); }),
            Action([](TavroAVView* v) { v->setFileName(QString()); }) }) {
        TavroAVView* view = loadedView(clips().redOverBlue);
        view->play();
        action(view);
        EXPECT_EQ(view->status(), S::Init);
        EXPECT_FALSE(view->hasMovie());
        EXPECT_TRUE(view->fileName().isEmpty());
        EXPECT_EQ(view->currentTime(), 0.0);
        EXPECT_EQ(view->duration(), 0.0);
        EXPECT_TRUE(view->snapshot().isNull());
        ASSERT_TRUE(QTest::qWaitFor(
            [&] { return delegate.log(view).statuses.last() == S::Init; }, kWaitMs));
        view->play(); // harmless without media
    }
}

TEST_F(PlayerViewTest, DestroyedWhileLoadingOrFromItsOwnCallback)
{
    for (int waitMs : { 0, 5, 30, 100 }) {
        auto view = std::make_unique<TavroAVView>();
        view->setDelegate(&delegate);
        view->show();
        view->setFileName(clips().redOverBlue);
        QTest::qWait(waitMs);
    }
    // An owner that loads the next clip at the end closes the player inside its
    // own event handling; one that closes on a rate of 0 does so inside pause().
    struct Owner : RecordingPlayerDelegate {
        QString next;
        void tavroAVViewDidPlayToEndTime(PlayerView* view) override
        {
            RecordingPlayerDelegate::tavroAVViewDidPlayToEndTime(view);
            view->setFileName(next);
        }
        void tavroAVViewDidUpdateRate(PlayerView* view, float rate) override
        {
            RecordingPlayerDelegate::tavroAVViewDidUpdateRate(view, rate);
            if (rate == 0.0f && next.isEmpty())
                view->close();
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
    owner.next.clear();
    view->play();
    view->pause();
    EXPECT_EQ(view->status(), S::Init);
    QTest::qWait(100);
    EXPECT_TRUE(view->fileName().isEmpty());
}
