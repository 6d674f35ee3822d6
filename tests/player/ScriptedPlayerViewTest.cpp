// The scripted player view the playback session is tested with: it must keep
// the real view's contract, or the session's tests would prove nothing.
#include "ScriptedPlayerView.h"
#include "RecordingPlayerDelegate.h"

#include <QCoreApplication>
#include <QTest>

#include <gtest/gtest.h>

using S = TavroAVViewStatus;

namespace {

struct ScriptedFixture : ::testing::Test {
    ScriptedPlayerView view;
    RecordingPlayerDelegate delegate;
    void SetUp() override { view.setDelegate(&delegate); }
    QVector<S> statuses() const
    {
        return delegate.log(const_cast<ScriptedPlayerView*>(&view)).statuses;
    }
    const RecordingPlayerDelegate::Log& log() { return delegate.log(&view); }
};

} // namespace

TEST_F(ScriptedFixture, StatusesArriveLaterAndInOrder)
{
    view.setFileName(QStringLiteral("/card/a_F.mp4"));
    EXPECT_EQ(view.status(), S::Loading);
    EXPECT_TRUE(view.hasMovie());
    EXPECT_TRUE(statuses().isEmpty()) << "delivered inside the call";
    QCoreApplication::processEvents();
    EXPECT_EQ(statuses(), (QVector<S> { S::Init, S::Loading }));
    view.finishLoading(61.2);
    EXPECT_DOUBLE_EQ(view.duration(), 61.2);
    QCoreApplication::processEvents();
    EXPECT_EQ(statuses(), (QVector<S> { S::Init, S::Loading, S::Prepared }));
}

TEST_F(ScriptedFixture, LoadOutcomes)
{
    view.setFileName(QStringLiteral("/card/bad.mp4"));
    view.failLoading();
    EXPECT_EQ(view.status(), S::Error);
    EXPECT_FALSE(view.hasMovie());
    EXPECT_DOUBLE_EQ(view.duration(), 0.0);

    view.setFileName(QStringLiteral("/card/sound.m4a"));
    view.finishLoadingWithoutVideo(2.0);
    EXPECT_EQ(view.status(), S::Error);
    EXPECT_DOUBLE_EQ(view.duration(), 2.0) << "the sound stays attached";

    view.setFileName(QString());
    EXPECT_EQ(view.status(), S::Init);
    EXPECT_TRUE(view.fileName().isEmpty());
    QCoreApplication::processEvents();
    EXPECT_EQ(statuses().last(), S::Init);
    EXPECT_EQ(view.loadCount(), 2);
}

TEST_F(ScriptedFixture, RatesSeeksAndTheEnd)
{
    view.setAutoPrepareDuration(4.5);
    view.setFileName(QStringLiteral("/card/a.mp4"));
    view.play();
    view.advance(0.35);
    EXPECT_NEAR(view.currentTime(), 0.3, 1e-9);
    EXPECT_EQ(log().times.size(), 3);
    view.fastForward();
    view.fastForward();
    EXPECT_FLOAT_EQ(view.rate(), 4.0f);
    view.rewind();
    EXPECT_FLOAT_EQ(view.rate(), -2.0f);
    const qsizetype reports = log().times.size();
    view.setCurrentTime(2.7);
    EXPECT_DOUBLE_EQ(view.currentTime(), 0.3) << "a seek lands later, as libmpv's does";
    EXPECT_EQ(log().times.size(), reports);
    QCoreApplication::processEvents();
    EXPECT_DOUBLE_EQ(view.currentTime(), 3.0);
    EXPECT_EQ(log().times.last(), 3.0);
    view.play();
    view.advance(10.0);
    EXPECT_DOUBLE_EQ(view.currentTime(), 4.5);
    EXPECT_EQ(log().ends, 1);
    EXPECT_FLOAT_EQ(view.rate(), 0.0f);
    view.play(); // at the very end: starts over
    EXPECT_DOUBLE_EQ(view.currentTime(), 0.0);
    EXPECT_FLOAT_EQ(view.rate(), 1.0f);
    view.playPauseToggle();
    EXPECT_FLOAT_EQ(view.rate(), 0.0f);
    EXPECT_EQ(log().rates, (QVector<float> { 1, 2, 4, -2, 1, 0, 1, 0 }));
}

TEST_F(ScriptedFixture, SwapMovesTheMediaOnly)
{
    ScriptedPlayerView other;
    other.setDelegate(&delegate);
    view.setAutoPrepareDuration(10.0);
    other.setAutoPrepareDuration(20.0);
    view.setFileName(QStringLiteral("/card/F.mp4"));
    other.setFileName(QStringLiteral("/card/R.mp4"));
    other.setVolume(0.0f);
    view.setUpsideDown(true);
    view.play();
    view.advance(1.0);
    QCoreApplication::processEvents();
    view.swapPlayerItemWith(other);
    EXPECT_EQ(view.fileName(), QStringLiteral("/card/R.mp4"));
    EXPECT_EQ(other.fileName(), QStringLiteral("/card/F.mp4"));
    EXPECT_DOUBLE_EQ(view.duration(), 20.0);
    EXPECT_DOUBLE_EQ(other.currentTime(), 1.0);
    EXPECT_FLOAT_EQ(view.volume(), 0.0f) << "the volume goes with the media";
    EXPECT_TRUE(view.upsideDown());
    EXPECT_FALSE(other.upsideDown());
    EXPECT_EQ(view.loadCount() + other.loadCount(), 2);
    EXPECT_EQ(view.status(), S::Prepared);
    EXPECT_TRUE(view.calls().contains(QStringLiteral("swapPlayerItemWith")));
    other.releaseRightButton();
    EXPECT_EQ(delegate.log(&other).fullscreenRequests, 1);
}
