// Grouping clips into drives: time order, the two-minute gap, rear partners.
#include "ExportTestSupport.h"

#include "export/RouteTrips.h"

#include <gtest/gtest.h>

using namespace ExportTestSupport;

namespace {

constexpr int64_t kStart = 1710497700000; // 2024-03-15 10:15:00 UTC
constexpr int64_t kMinute = 60000;

// A clip of `seconds` seconds from `start`, ten samples a second.
ClipTimeline clipAt(const QString& file, int64_t start, int seconds = 60)
{
    QVector<RouteSample> samples;
    for (int i = 0; i < seconds * 10; ++i)
        samples.append(sample(37.0 + i * 1e-5, 127.0, start + i * 100));
    return handMade(file, samples);
}

QStringList names(const RouteTrip& trip)
{
    QStringList files;
    for (const ClipTimeline* clip : trip.clips)
        files << clip->file;
    return files;
}

} // namespace

TEST(RouteTrips, GapsUpToTheLimitJoinClipsInTimeOrder)
{
    const struct {
        const char* what;
        int64_t gap; // from the end of one clip to the start of the next
        int64_t limit;
        int trips;
    } cases[] = {
        { "back to back", 100, RouteTrips::kMaxGapMsecs, 1 },
        { "a minute", kMinute, RouteTrips::kMaxGapMsecs, 1 },
        { "two minutes", 2 * kMinute, RouteTrips::kMaxGapMsecs, 1 },
        { "just over two minutes", 2 * kMinute + 100, RouteTrips::kMaxGapMsecs, 2 },
        { "ten minutes", 10 * kMinute, RouteTrips::kMaxGapMsecs, 2 },
        { "a minute, ten seconds allowed", kMinute, 10000, 2 },
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        const ClipTimeline first = clipAt("/card/cont_rec/a_F.mp4", kStart);
        const ClipTimeline second = clipAt("/card/cont_rec/b_F.mp4", first.endUtc() + c.gap);
        // Given in reverse: the trip still runs in time order.
        const QVector<ClipTimeline> reversed { second, first }; // the trips point into it
        const QVector<RouteTrip> trips = RouteTrips::plan(reversed, c.limit);
        ASSERT_EQ(trips.size(), c.trips);
        EXPECT_TRUE(names(trips.first()).first().endsWith("a_F.mp4"));
    }
    // Where the container tells the video's length, the recording ends there
    // (not with the last sample, 0.1 s before the end of a whole second).
    ClipTimeline first = clipAt("/card/cont_rec/a_F.mp4", kStart);
    first.media.seconds = 60.5;
    const QVector<ClipTimeline> pair { first,
        clipAt("/card/cont_rec/b_F.mp4", kStart + 60500 + 2 * kMinute - 1) };
    EXPECT_EQ(RouteTrips::plan(pair).size(), 1);
}

TEST(RouteTrips, RearPartnerCountsOnce)
{
    const QVector<ClipTimeline> clips {
        clipAt("/card/cont_rec/0815_F.mp4", kStart), clipAt("/card/cont_rec/0815_R.mp4", kStart),
        clipAt("/card/evt_rec/0816_F_BC.mp4", kStart + kMinute),
        clipAt("/card/evt_rec/0816_R_BC.mp4", kStart + kMinute),
        clipAt("/card/cont_rec/0817_R.mp4", kStart + 2 * kMinute), // its front is not there
    };
    const QVector<RouteTrip> trips = RouteTrips::plan(clips);
    ASSERT_EQ(trips.size(), 1);
    EXPECT_EQ(names(trips.first()),
        QStringList({ "/card/cont_rec/0815_F.mp4", "/card/evt_rec/0816_F_BC.mp4",
            "/card/cont_rec/0817_R.mp4" }));
    EXPECT_EQ(trips.first().fixCount(), 3 * 600);

    // A front clip without telemetry leaves its rear in.
    const QVector<ClipTimeline> emptyFront { handMade("/card/x_F.mp4", {}),
        clipAt("/card/x_R.mp4", kStart) };
    const QVector<RouteTrip> kept = RouteTrips::plan(emptyFront);
    ASSERT_EQ(kept.size(), 2);
    EXPECT_EQ(names(kept.first()), QStringList { "/card/x_R.mp4" });
}

TEST(RouteTrips, ClipsWithoutTimeStandAlone)
{
    const QVector<ClipTimeline> clips {
        handMade("/card/untimed.avi", { sample(1, 1), sample(1, 2) }),
        clipAt("/card/b.mp4", kStart + kMinute),
        clipAt("/card/a.mp4", kStart),
        handMade("/card/empty.avi", {}),
    };
    const QVector<RouteTrip> trips = RouteTrips::plan(clips);
    ASSERT_EQ(trips.size(), 3);
    EXPECT_EQ(names(trips[0]), QStringList({ "/card/a.mp4", "/card/b.mp4" }));
    EXPECT_EQ(names(trips[1]), QStringList { "/card/untimed.avi" });
    EXPECT_EQ(names(trips[2]), QStringList { "/card/empty.avi" });
    EXPECT_FALSE(trips[1].hasTimes());

    const QVector<RouteTrip> perClip = RouteTrips::perClip(clips);
    ASSERT_EQ(perClip.size(), 4);
    EXPECT_EQ(names(perClip[1]), QStringList { "/card/b.mp4" });
}

TEST(RouteTrips, FileNameClockFollowsTheGpsClockOfTheCard)
{
    // The camera names clips in its own clock; GPS says the drive began at kStart.
    const int64_t named = ClipTimeline::fileNameTime("20240315_191500_F.mp4");
    ASSERT_NE(named, kNoUtcMsecs);
    ClipTimeline tail
        = handMade("/card/cont_rec/20240315_191600_T.avi", { sample(37, 127), sample(37, 127) });
    tail.timeSource = ClipTimeline::TimeSource::FileName;
    const int64_t tailNamed = ClipTimeline::fileNameTime("20240315_191600_T.avi");
    for (int i = 0; i < tail.samples.size(); ++i)
        tail.samples[i].utcMsecs = tailNamed + i * 100;
    QVector<ClipTimeline> clips { clipAt("/card/cont_rec/20240315_191500_F.mp4", kStart + 400),
        tail, clipAt("/card/cont_rec/20240315_191700_F.mp4", kStart + 2 * kMinute) };
    RouteTrips::alignCameraClock(clips);
    EXPECT_EQ(clips[1].startUtc(), kStart + kMinute); // the offset, to the second
    EXPECT_EQ(clips[0].startUtc(), kStart + 400); // GPS times stay
    const QVector<RouteTrip> trips = RouteTrips::plan(clips);
    ASSERT_EQ(trips.size(), 1);
    EXPECT_TRUE(names(trips.first()).at(1).endsWith("_T.avi"));

    // Without a clip that has both clocks, nothing moves.
    QVector<ClipTimeline> alone { tail };
    RouteTrips::alignCameraClock(alone);
    EXPECT_EQ(alone.first().startUtc(), tailNamed);
}
