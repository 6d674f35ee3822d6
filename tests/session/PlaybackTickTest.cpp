// The playback tick: which telemetry sample is shown at which media time, how
// often the read-outs and the map refresh, the time text, seeks and steps.
#include "SessionFixture.h"

#include <functional>

namespace {

class PlaybackTickTest : public SessionTest {
protected:
    // Plays a clip with `samples` telemetry samples (65 s at most).
    void playTelemetryClip(int samples, bool withGps = true)
    {
        addAviClip(QStringLiteral("cont_rec/drive.avi"), samples, withGps);
        refresh();
        playRow(0);
        ASSERT_FALSE(m_session->isVideoPaused());
    }
    // The read-outs, speed and map position show sample n of the test clips.
    void expectSample(int n, const std::string& what)
    {
        EXPECT_EQ(m_view.sensorText(),
            QString::asprintf("%.3f %.3f 1.000 37.%04d 127.%04d", n / 128.0, -n / 128.0, n, n))
            << what;
        EXPECT_EQ(m_view.speed, n % 200) << what;
        EXPECT_EQ(m_view.mapMoves.value(m_view.mapMoves.size() - 1).first, 37.0f + n / 10000.0f)
            << what;
    }
};

} // namespace

TEST_F(PlaybackTickTest, ShowsTheSampleOfTheTenthOfASecondAndRefreshesAfterIntervals)
{
    playTelemetryClip(650);
    const std::pair<double, int> steps[] = {
        { 12.34, 123 },
        { 30.05, 300 },
        { 64.97, 649 },
        { 65.05, 649 }, // index 650: no sample, the read-outs keep their values
        { 179.9, 649 },
    };
    for (const auto& [seconds, sample] : steps) {
        tickAt(seconds);
        expectSample(sample, std::to_string(seconds));
        EXPECT_EQ(m_view.seekValue, seconds);
    }
    EXPECT_EQ(m_view.playTimeText, QStringLiteral("02:59/03:00"));

    // More than 0.3 s (in single precision) for the read-outs, more than 1 s for the map.
    m_session->stopVideo();
    m_session->playVideo();
    const struct {
        double seconds;
        bool sensors;
        bool map;
    } ticks[] = {
        { 0.2, false, false },
        { 0.31, true, false },
        { 0.6100000005, false, false }, // 0.3000000005 later is not more than 0.3f
        { 0.6101, true, false }, // 0.3001 later is
        { 1.2, true, true },
        { 2.1, true, false },
        { 2.3, false, true },
        { 2.61, true, false },
    };
    for (const auto& t : ticks)
        EXPECT_EQ(tickAt(t.seconds), std::pair(t.sensors, t.map)) << t.seconds;
}

TEST_F(PlaybackTickTest, SeekingLandsOnTheWholeSecondAndTheDisplaysFollowOnceThePlayerIsThere)
{
    playTelemetryClip(650);
    tickAt(30.05);
    m_big.clearCalls();
    m_small.clearCalls();
    m_session->seekTimeSliderTouchedDown();
    m_session->seekTimeSliderDragged(20.0); // dragging does not seek
    tickAt(30.1);
    EXPECT_EQ(m_view.seekValue, 30.05) << "the held slider is left alone";
    m_session->seekTimeSliderTouchedUp(12.7);
    EXPECT_EQ(m_big.calls(), QStringList { QStringLiteral("setCurrentTime 12.7") });
    EXPECT_EQ(m_small.calls(), QStringList { QStringLiteral("setCurrentTime 12.7") });
    EXPECT_FALSE(m_session->isVideoPaused()); // seeking does not pause
    // The player answers later: a tick before that shows nothing stale.
    EXPECT_EQ(tickAt(30.1), std::pair(false, false));
    EXPECT_EQ(m_view.playTimeText, QStringLiteral("00:30/03:00"));
    // As soon as it has landed, everything shows the new moment.
    settle();
    EXPECT_EQ(m_small.currentTime(), 13.0);
    expectSample(130, "landed");
    EXPECT_EQ(m_view.seekValue, 13.0);
    EXPECT_EQ(m_view.playTimeText, QStringLiteral("00:13/03:00"));
    // Playback goes on from there: the read-outs refresh 0.3 s later, not
    // only once the old moment (30 s) is passed again.
    EXPECT_FALSE(tickAt(13.2).first);
    EXPECT_TRUE(tickAt(13.4).first);
}

TEST_F(PlaybackTickTest, FrameStepsAndPausedSeeksShowTheMomentTheyLandOn)
{
    playTelemetryClip(650);
    tickAt(20.05);
    const struct {
        const char* what;
        std::function<void()> act;
        double landed; // the player's position once it has answered
    } steps[] = {
        { "step back", [this] { m_session->rewindButtonTouched(); }, 19.95 },
        { "step forward", [this] { m_session->fastForwardButtonTouched(); }, 20.05 },
        { "key left", [this] { m_session->keyDown(Qt::Key_Left, {}); }, 19.95 },
        { "paused seek", [this] { m_session->seekTimeSliderTouchedUp(7.2); }, 7.0 },
        { "step after the seek", [this] { m_session->fastForwardButtonTouched(); }, 7.1 },
    };
    for (const auto& step : steps) {
        const QString before = m_view.sensorText();
        step.act();
        EXPECT_TRUE(m_session->isVideoPaused()) << step.what;
        EXPECT_EQ(m_view.sensorText(), before) << step.what << ": nothing stale is shown";
        settle();
        ASSERT_NEAR(m_big.currentTime(), step.landed, 1e-9) << step.what;
        expectSample(int(step.landed * 10.0 + 1e-6), step.what);
        EXPECT_EQ(m_view.playTimeText, QString::asprintf("00:%02d/03:00", int(step.landed)));
    }
}

TEST_F(PlaybackTickTest, WithoutTelemetryOrPositionsAndTheMapsCover)
{
    // Without telemetry only the time moves; without positions the map stays covered.
    playTelemetryClip(0);
    EXPECT_EQ(m_view.graphCount, 0);
    EXPECT_EQ(tickAt(5.5), std::pair(false, false));
    EXPECT_EQ(m_view.playTimeText, QStringLiteral("00:05/03:00"));
    EXPECT_EQ(m_view.sensorText(), QStringLiteral("0.000 0.000 0.000 0.0000 0.0000"));
    addAviClip(QStringLiteral("cont_rec/no_gps.avi"), 650, false);
    refresh();
    playRow(1);
    EXPECT_FALSE(m_view.gpsIndicatorVisible);
    EXPECT_EQ(tickAt(5.0), std::pair(true, false));
    EXPECT_TRUE(m_view.mapCovered);

    addAviClip(QStringLiteral("cont_rec/gps.avi"), 300, true);
    refresh();
    playRow(1);
    EXPECT_TRUE(m_view.gpsIndicatorVisible);
    EXPECT_EQ(m_view.routes, QList<int> { 300 });
    EXPECT_EQ(tickAt(5.0), std::pair(true, true));
    EXPECT_FALSE(m_view.mapCovered);
    // The same position is not sent again; a zero position covers the map.
    m_session->updateMapWithLat(37.5f, 127.25f);
    m_session->updateMapWithLat(37.5f, 127.25f);
    EXPECT_EQ(m_view.mapMoves.size(), 2);
    m_session->updateMapWithLat(0.0f, 0.0f);
    EXPECT_TRUE(m_view.mapCovered);
    m_session->updateMapWithLat(0.0f, 127.25f);
    m_session->updateMapWithLat(37.5f, 0.0f);
    EXPECT_FALSE(m_view.mapCovered);
    EXPECT_EQ(m_view.mapMoves.size(), 4);
}
