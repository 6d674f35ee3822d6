// Playing a trip: one timeline per camera, the telemetry of the clip shown,
// the marks on the seek slider, and the keys and buttons that move on it.
#include "SessionFixture.h"

#include "player/PlayerTimeline.h"

#include <QRegularExpression>

#include <functional>

namespace {

constexpr int64_t kStart = 1710497700000; // 2024-03-15 10:15:00 UTC

// Telemetry of `seconds` whose sample n reads gx = n % 50 (in 1/128 g) with
// 1 g down, at 37 + tag / 100 + n / 10000, 127 (the clip's tag tells it), or
// without `gps` no fix and gx = 55; a 2 g knock at `knockAtTenth`.
std::shared_ptr<ClipTimeline> telemetry(
    const QString& file, int64_t start, int seconds, int tag, bool gps, int knockAtTenth = -1)
{
    auto timeline = std::make_shared<ClipTimeline>();
    timeline->file = file;
    timeline->timeSource = ClipTimeline::TimeSource::Gps;
    timeline->media.seconds = seconds;
    timeline->media.videoStreams = 1;
    for (int n = 0; n < seconds * 10; ++n) {
        RouteSample s;
        s.t = n / 10.0;
        s.gx = n == knockAtTenth ? 256 : (gps ? n % 50 : 55);
        s.gz = 128;
        s.hasFix = gps;
        s.lat = gps ? double(37.0f + tag / 100.0f + n / 10000.0f) : 0.0;
        s.lng = gps ? 127.0 : 0.0;
        s.speedKmh = n % 200;
        s.utcMsecs = start + n * 100;
        timeline->samples.append(s);
    }
    return timeline;
}

// 10 s with its rear camera, 10 s (after half a second), and an event
// recording of 5 s without GPS whose knock comes 2 s in.
Trip threeClipTrip()
{
    return Trip::fromClips({
        { "/card/cont_rec/a_F.mp4", "/card/cont_rec/a_R.mp4", TripClip::Source::Continuous, 0, 0,
            telemetry("/card/cont_rec/a_F.mp4", kStart, 10, 0, true) },
        { "/card/cont_rec/b_F.mp4", {}, TripClip::Source::Continuous, 0, 0,
            telemetry("/card/cont_rec/b_F.mp4", kStart + 10500, 10, 1, true) },
        { "/card/evt_rec/c_F.mp4", {}, TripClip::Source::Event, 0, 0,
            telemetry("/card/evt_rec/c_F.mp4", kStart + 21000, 5, 2, false, 20) },
    });
}

class PlaybackTripTest : public SessionTest {
protected:
    void playTrip()
    {
        m_big.setAutoPrepareDuration(25.0);
        m_small.setAutoPrepareDuration(25.0);
        m_session->playTrip(threeClipTrip());
        settle();
        ASSERT_TRUE(m_session->isPlayingTrip());
        ASSERT_FALSE(m_session->isVideoPaused());
    }

    // Presses a key or a button, then lets the views land where they were sent.
    void press(const std::function<void()>& act)
    {
        m_big.clearCalls();
        m_small.clearCalls();
        act();
        settle();
    }
    void press(int key)
    {
        press([&] { EXPECT_TRUE(m_session->keyDown(key, Qt::NoModifier)); });
    }

    QStringList seeks(const ScriptedPlayerView& view) const
    {
        return view.calls().filter(QStringLiteral("setCurrentTime"));
    }
};

// A G value in 1/128 g as the read-outs show it.
QString gText(int raw)
{
    return QString::asprintf("%.3f", raw / 128.0);
}

} // namespace

TEST_F(PlaybackTripTest, BothCamerasRunOnOneTimelineAndTheTelemetryFollowsTheClipShown)
{
    playTrip();
    // The front camera's clips back to back for their lengths; the rear's the
    // same lengths, black where a clip has no rear camera.
    const QString front = m_big.fileName();
    const QString rear = m_small.fileName();
    ASSERT_TRUE(PlayerTimeline::isTimeline(front)) << front.toStdString();
    const QRegularExpression segment(QStringLiteral("%\\d+%([^,]+),length=([\\d.]+)"));
    QStringList frontParts;
    for (const QRegularExpressionMatch& m : segment.globalMatch(front))
        frontParts << m.captured(1) + u' ' + m.captured(2);
    EXPECT_EQ(frontParts,
        QStringList({ "/card/cont_rec/a_F.mp4 10.000000", "/card/cont_rec/b_F.mp4 10.000000",
            "/card/evt_rec/c_F.mp4 5.000000" }));
    EXPECT_TRUE(rear.contains("/card/cont_rec/a_R.mp4,length=10.000000"));
    EXPECT_EQ(rear.count("av://lavfi:color=c=black"), 2);

    // The seek slider: three clip starts, the event recording and the knock.
    QStringList marks;
    for (const SeekMark& mark : m_view.seekMarks)
        marks << QStringLiteral("%1@%2").arg(int(mark.kind)).arg(mark.seconds);
    EXPECT_EQ(marks, QStringList({ "0@0", "0@10", "0@20", "2@20", "1@22" }));
    EXPECT_TRUE(m_view.seekMarks[4].toolTip.contains("2.00 g"));
    // The map has the route of both clips with positions.
    EXPECT_EQ(m_view.routePoints.size(), 200);
    EXPECT_TRUE(m_view.gpsIndicatorVisible);

    tickAt(4.0);
    EXPECT_EQ(m_view.sensorTexts.value(0), gText(40));
    EXPECT_EQ(m_view.sensorTexts.value(3), QStringLiteral("37.0040"));
    EXPECT_EQ(m_view.graphCount, 100);
    tickAt(12.3); // 2.3 s into the second clip
    EXPECT_EQ(m_view.sensorTexts.value(0), gText(23));
    EXPECT_EQ(m_view.sensorTexts.value(3), QStringLiteral("37.0123"));
    EXPECT_EQ(m_session->currentTripClip(), 1);
    tickAt(24.0); // the event recording: no position, the map keeps the route
    EXPECT_EQ(m_view.sensorTexts.value(0), gText(55));
    EXPECT_EQ(m_view.graphCount, 50);
    EXPECT_FALSE(m_view.mapCovered);

    // The rear camera put back where the front one is when they drift apart.
    m_small.clearCalls();
    m_big.setMediaTime(24.1);
    m_small.setMediaTime(23.0);
    m_session->playVideoTimerCallback();
    EXPECT_EQ(seeks(m_small), QStringList { "setCurrentTimeExactly 24.1" });

    // At the end the trip stays on its last picture; a clip leaves the trip.
    m_big.setMediaTime(25.0);
    m_session->tavroAVViewDidPlayToEndTime(&m_big);
    EXPECT_TRUE(m_session->isVideoPaused());
    EXPECT_TRUE(m_session->isPlayingTrip());
    addMp4Clip(QStringLiteral("cont_rec/x_F.mp4"));
    refresh();
    playRow(0);
    EXPECT_FALSE(m_session->isPlayingTrip());
    EXPECT_TRUE(m_view.seekMarks.isEmpty());
}

TEST_F(PlaybackTripTest, PageKeysAndClipButtonsLandOnTheMarks)
{
    playTrip();
    press(Qt::Key_PageDown); // to the event recording
    EXPECT_EQ(seeks(m_big), QStringList { "setCurrentTimeExactly 20" });
    EXPECT_EQ(seeks(m_small), QStringList { "setCurrentTimeExactly 20" });
    EXPECT_EQ(m_big.currentTime(), 20.0);
    EXPECT_EQ(m_view.sensorTexts.value(0), gText(55));
    EXPECT_EQ(m_view.seekValue, 20.0);

    // A second press before the views have landed goes on from where the
    // first one sent them.
    press([&] {
        m_session->keyDown(Qt::Key_PageDown, Qt::NoModifier);
        m_session->keyDown(Qt::Key_PageDown, Qt::NoModifier);
    });
    EXPECT_EQ(seeks(m_big), QStringList({ "setCurrentTimeExactly 22" })) << "past the last mark";
    EXPECT_EQ(m_big.currentTime(), 22.0);
    EXPECT_EQ(m_view.sensorTexts.value(0), gText(256)); // the knock

    press(Qt::Key_PageUp);
    EXPECT_EQ(seeks(m_big), QStringList { "setCurrentTimeExactly 20" });
    press(Qt::Key_PageUp); // nothing before the first mark
    EXPECT_TRUE(seeks(m_big).isEmpty());

    // Previous / next clip move between the trip's clips.
    press([&] { m_session->playPrevFileButtonTouched(); });
    EXPECT_EQ(seeks(m_big), QStringList { "setCurrentTimeExactly 10" });
    press([&] { m_session->playNextFileButtonTouched(); });
    EXPECT_EQ(seeks(m_big), QStringList { "setCurrentTimeExactly 20" });

    // Outside a trip the page keys are the list's.
    addMp4Clip(QStringLiteral("cont_rec/x_F.mp4"));
    refresh();
    playRow(0);
    EXPECT_FALSE(m_session->keyDown(Qt::Key_PageDown, Qt::NoModifier));
}
