// Route export on hand-made telemetry: the clock of each sample (RMC date and
// time, or the file name), grouping clips into trips, and the GPX, KML,
// GeoJSON and CSV writers read back with Qt's readers and with gpsbabel.
#include "ExportTestSupport.h"

#include "export/RouteTrips.h"
#include "telemetry/RmcSentence.h"

#include <QDateTime>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <gtest/gtest.h>

#include <cmath>

using namespace ExportTestSupport;

namespace {

constexpr int64_t kStart = 1710497700000; // 2024-03-15 10:15:00 UTC
constexpr int64_t kMinute = 60000;

QString isoOf(int64_t msecs)
{
    return msecs == kNoUtcMsecs
        ? QStringLiteral("none")
        : QDateTime::fromMSecsSinceEpoch(msecs, Qt::UTC).toString(Qt::ISODateWithMs);
}

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

// Two seconds south and west of Greenwich, then one without a fix.
ClipTimeline southWestClip()
{
    QVector<Second> seconds(3);
    for (int i = 0; i < 3; ++i) {
        seconds[i] = { "10150" + QByteArray::number(i) + ".00", "150324", i == 2 ? "V" : "A",
            "3723.2475", "S", "12658.4100", "W", "10.0" };
    }
    seconds[1].lat = "3350.5000"; // 33°50.5' = 33.841667
    seconds[1].lng = "07030.0000"; // 70°30'
    return timelineFromSubtitles("/card/cont_rec/20240315_101500_F.mp4", subtitleText(seconds));
}

QVector<RouteTrip> tripOf(const ClipTimeline& clip)
{
    return { RouteTrip { { &clip } } };
}

} // namespace

TEST(RmcClock, TimeAndDateFields)
{
    const std::pair<const char*, const char*> cases[] = {
        { "081502 150324", "2024-03-15T08:15:02.000Z" },
        { "081502.25 150324", "2024-03-15T08:15:02.250Z" },
        { "235959.999 311299", "2099-12-31T23:59:59.999Z" },
        { "000000.00 290224", "2024-02-29T00:00:00.000Z" }, // leap day
        { "120000.00 010124*6A", "2024-01-01T12:00:00.000Z" }, // checksum after the date
        { "120000.00 290223", "none" }, // no 29 February in 2023
        { "240000 010124", "none" },
        { "126000 010124", "none" },
        { "120060 010124", "none" },
        { "12000 010124", "none" },
        { "12a000 010124", "none" },
        { "120000.x 010124", "none" },
        { "120000 ", "none" },
        { " 010124", "none" },
        { "120000 0101245", "none" },
        { "120000 010024", "none" },
        { "120000 320124", "none" },
    };
    for (const auto& [fields, expected] : cases) {
        const QList<QByteArray> parts = QByteArray(fields).split(' ');
        EXPECT_EQ(isoOf(RmcSentence::utcMsecs(parts[0], parts[1])), QLatin1String(expected))
            << fields;
    }
}

TEST(RmcClock, SamplesCountOnThroughMidnightAndSecondsWithoutClock)
{
    QVector<Second> seconds(3);
    seconds[0] = { "235959.00", "310124" };
    seconds[1] = { "000000.00", "010224" };
    seconds[2] = { "", "010224" }; // no clock: counted on from its neighbour
    const ClipTimeline clip = timelineFromSubtitles("clip_F.mp4", subtitleText(seconds));
    ASSERT_EQ(clip.samples.size(), 30);
    EXPECT_EQ(clip.timeSource, ClipTimeline::TimeSource::Gps);
    EXPECT_EQ(isoOf(clip.samples[0].utcMsecs), "2024-01-31T23:59:59.000Z");
    EXPECT_EQ(isoOf(clip.samples[10].utcMsecs), "2024-02-01T00:00:00.000Z");
    for (int i = 1; i < clip.samples.size(); ++i)
        EXPECT_EQ(clip.samples[i].utcMsecs - clip.samples[i - 1].utcMsecs, 100) << i;
    seconds[0].time = "garbage"; // counted back from the second after it
    EXPECT_EQ(isoOf(timelineFromSubtitles("b.mp4", subtitleText(seconds)).samples[0].utcMsecs),
        "2024-01-31T23:59:59.000Z");
}

TEST(RmcClock, FileNameWhenTheSentencesHaveNoClock)
{
    const auto local = [](int y, int mo, int d, int h, int mi, int s) {
        return QDateTime(QDate(y, mo, d), QTime(h, mi, s), Qt::LocalTime).toMSecsSinceEpoch();
    };
    const std::pair<const char*, int64_t> cases[] = {
        { "20240315_081502_F.mp4", local(2024, 3, 15, 8, 15, 2) },
        { "Rec_20160307_140509.avi", local(2016, 3, 7, 14, 5, 9) },
        { "SAVED_20240315-081502.mp4", local(2024, 3, 15, 8, 15, 2) },
        { "20240315081502.mp4", local(2024, 3, 15, 8, 15, 2) },
        { "20000101_000000.mp4", local(2000, 1, 1, 0, 0, 0) },
        { "19991231_235959.mp4", kNoUtcMsecs }, // before the cameras' time
        { "clip.avi", kNoUtcMsecs }, { "20241332_081502.mp4", kNoUtcMsecs }, // month 13
        { "120240315_081502.mp4", kNoUtcMsecs }, // nine digits: not a date
    };
    for (const auto& [name, expected] : cases)
        EXPECT_EQ(ClipTimeline::fileNameTime(QString::fromLatin1(name)), expected) << name;
    QVector<Second> noClock(2);
    for (Second& s : noClock)
        s.date = "";
    const ClipTimeline named
        = timelineFromSubtitles("20240315_081502_F.mp4", subtitleText(noClock));
    EXPECT_EQ(named.timeSource, ClipTimeline::TimeSource::FileName);
    EXPECT_EQ(named.startUtc(), cases[0].second);
    EXPECT_EQ(named.endUtc() - named.startUtc(), 1900);
    const ClipTimeline unnamed = timelineFromSubtitles("clip.mp4", subtitleText(noClock));
    EXPECT_EQ(unnamed.timeSource, ClipTimeline::TimeSource::None);
    EXPECT_EQ(unnamed.startUtc(), kNoUtcMsecs);
}

TEST(RouteTrips, GapsUpToTheLimitJoinClipsInTimeOrder)
{
    const int64_t limit = RouteTrips::kMaxGapMsecs;
    const struct {
        int64_t gap; // from the end of one clip to the start of the next
        int64_t limit;
        int trips;
    } cases[] = { { 100, limit, 1 }, { 2 * kMinute - 1, limit, 1 }, { 2 * kMinute, limit, 1 },
        { 2 * kMinute + 1, limit, 2 }, { 10 * kMinute, limit, 2 }, { kMinute, 10000, 2 } };
    for (const auto& c : cases) {
        const ClipTimeline first = clipAt("/card/cont_rec/a_F.mp4", kStart);
        const ClipTimeline second = clipAt("/card/cont_rec/b_F.mp4", first.endUtc() + c.gap);
        // Given in reverse: the trip still runs in time order.
        const QVector<ClipTimeline> reversed { second, first };
        const QVector<RouteTrip> planned = RouteTrips::plan(reversed, c.limit);
        ASSERT_EQ(planned.size(), c.trips) << c.gap << " " << c.limit;
        EXPECT_TRUE(names(planned.first()).first().endsWith("a_F.mp4"));
    }
    // Where the container tells the video's length, the recording ends there
    // (not with the last sample, 0.1 s before the end of a whole second).
    ClipTimeline first = clipAt("/card/cont_rec/a_F.mp4", kStart);
    first.media.seconds = 60.5;
    const QVector<ClipTimeline> pair { first,
        clipAt("/card/cont_rec/b_F.mp4", kStart + 60500 + 2 * kMinute) };
    EXPECT_EQ(RouteTrips::plan(pair).size(), 1);
    const QVector<ClipTimeline> apart { first,
        clipAt("/card/cont_rec/b_F.mp4", kStart + 60500 + 2 * kMinute + 1) };
    EXPECT_EQ(RouteTrips::plan(apart).size(), 2);
}

TEST(RouteTrips, RearPartnersCountOnceAndClipsWithoutTimeStandAlone)
{
    const QVector<ClipTimeline> clips {
        clipAt("/card/cont_rec/0815_F.mp4", kStart),
        clipAt("/card/cont_rec/0815_R.mp4", kStart),
        clipAt("/card/evt_rec/0816_F_BC.mp4", kStart + kMinute),
        clipAt("/card/evt_rec/0816_R_BC.mp4", kStart + kMinute),
        clipAt("/card/cont_rec/0817_R.mp4", kStart + 2 * kMinute), // its front is not there
        handMade("/card/untimed.avi", { sample(1, 1), sample(1, 2) }),
        handMade("/card/x_F.mp4", {}), // without telemetry: its rear stays in
        clipAt("/card/x_R.mp4", kStart + 60 * kMinute),
    };
    const QVector<RouteTrip> trips = RouteTrips::plan(clips);
    ASSERT_EQ(trips.size(), 4);
    EXPECT_EQ(names(trips[0]),
        QStringList({ "/card/cont_rec/0815_F.mp4", "/card/evt_rec/0816_F_BC.mp4",
            "/card/cont_rec/0817_R.mp4" }));
    EXPECT_EQ(trips[0].fixCount(), 3 * 600);
    EXPECT_EQ(names(trips[1]), QStringList { "/card/x_R.mp4" });
    EXPECT_EQ(names(trips[2]), QStringList { "/card/untimed.avi" });
    EXPECT_FALSE(trips[2].hasTimes());
    EXPECT_EQ(names(trips[3]), QStringList { "/card/x_F.mp4" });
    const QVector<RouteTrip> perClip = RouteTrips::perClip(clips);
    ASSERT_EQ(perClip.size(), 8);
    EXPECT_EQ(names(perClip[1]), QStringList { "/card/cont_rec/0815_R.mp4" });
}

TEST(RouteTrips, FileNameClockFollowsTheGpsClockOfTheCard)
{
    // The camera names clips in its own clock; GPS says the drive began at kStart.
    const int64_t tailNamed = ClipTimeline::fileNameTime("20240315_191600_T.avi");
    ClipTimeline tail = handMade("/card/cont_rec/20240315_191600_T.avi",
        { sample(37, 127, tailNamed), sample(37, 127, tailNamed + 100) });
    tail.timeSource = ClipTimeline::TimeSource::FileName;
    QVector<ClipTimeline> alone { tail };
    RouteTrips::alignCameraClock(alone); // without a clip that has both clocks, nothing moves
    EXPECT_EQ(alone.first().startUtc(), tailNamed);
    QVector<ClipTimeline> clips { clipAt("/card/cont_rec/20240315_191500_F.mp4", kStart + 400),
        tail, clipAt("/card/cont_rec/20240315_191700_F.mp4", kStart + 2 * kMinute) };
    RouteTrips::alignCameraClock(clips);
    EXPECT_EQ(clips[1].startUtc(), kStart + kMinute); // the offset, to the second
    EXPECT_EQ(clips[0].startUtc(), kStart + 400); // GPS times stay
    const QVector<RouteTrip> trips = RouteTrips::plan(clips);
    ASSERT_EQ(trips.size(), 1);
    EXPECT_TRUE(names(trips.first()).at(1).endsWith("_T.avi"));
}

TEST(RouteWriters, GpxAndKmlHaveOnePointPerFixWithTimeAndSpeed)
{
    const ClipTimeline clip = southWestClip();
    ASSERT_EQ(clip.samples.size(), 30);
    ASSERT_EQ(clip.fixCount(), 20);
    const QByteArray gpx = render(RouteFormat::Gpx, tripOf(clip));
    EXPECT_TRUE(gpx.contains("xmlns=\"http://www.topografix.com/GPX/1/1\""));
    EXPECT_TRUE(gpx.contains("version=\"1.1\""));
    EXPECT_EQ(elementTexts(gpx, "trkseg").size(), 1);
    const QStringList lats = attributeValues(gpx, "trkpt", "lat");
    const QStringList lons = attributeValues(gpx, "trkpt", "lon");
    const QStringList times = elementTexts(gpx, "time");
    const QStringList speeds = elementTexts(gpx, "speed");
    ASSERT_EQ(lats.size(), 20);
    ASSERT_EQ(times.size(), 20);
    ASSERT_EQ(speeds.size(), 20);
    // Float degrees of 37°23.2475' and 33°50.5'; 10 knots are 19 km/h in the record: 5.28 m/s.
    EXPECT_EQ(lats.first() + ' ' + lons.first() + ' ' + times.first() + ' ' + speeds.first(),
        "-37.3874588 -126.9735031 2024-03-15T10:15:00.000Z 5.28");
    EXPECT_EQ(lats.last() + ' ' + lons.last() + ' ' + times.last(),
        "-33.8416672 -70.5000000 2024-03-15T10:15:01.900Z");
    // KML keeps the times in a track, longitude first.
    const QByteArray kml = render(RouteFormat::Kml, tripOf(clip));
    EXPECT_TRUE(kml.contains("xmlns=\"http://www.opengis.net/kml/2.2\""));
    EXPECT_EQ(elementTexts(kml, "when").mid(0, 1), QStringList { "2024-03-15T10:15:00.000Z" });
    EXPECT_EQ(elementTexts(kml, "coord").size(), 20);
    EXPECT_EQ(elementTexts(kml, "coord").first(), "-126.9735031 -37.3874588 0");
    EXPECT_TRUE(elementTexts(kml, "LineString").isEmpty());
    // Without times KML draws a line and GPX leaves the times out.
    const ClipTimeline untimed
        = handMade("clip.avi", { sample(48.8566, 2.3522), sample(-22.9068, -43.1729) });
    EXPECT_EQ(elementTexts(render(RouteFormat::Kml, tripOf(untimed)), "coordinates"),
        QStringList { "2.3522000,48.8566000,0 -43.1729000,-22.9068000,0" });
    const QByteArray untimedGpx = render(RouteFormat::Gpx, tripOf(untimed));
    EXPECT_EQ(
        attributeValues(untimedGpx, "trkpt", "lat"), QStringList({ "48.8566000", "-22.9068000" }));
    EXPECT_TRUE(elementTexts(untimedGpx, "time").isEmpty());
}

TEST(RouteWriters, GeoJsonAndCsv)
{
    const ClipTimeline first = southWestClip();
    ClipTimeline second = handMade("/card/b.mp4",
        { sample(10.0, 20.0, kNoUtcMsecs, 50), sample(10.5, 20.5, kNoUtcMsecs, 80) });
    second.samples[1].gx = 3 * 128; // a knock of 3 g sideways (with 1 g down)
    const ClipTimeline one = handMade("one.mp4", { sample(-1.5, -2.25, 1700000000000) });
    const QJsonArray features = QJsonDocument::fromJson(
        render(RouteFormat::GeoJson,
            { RouteTrip { { &first } }, RouteTrip { { &second } }, RouteTrip { { &one } } }))
                                    .object()["features"]
                                    .toArray();
    ASSERT_EQ(features.size(), 3);
    const QJsonObject a = features[0].toObject();
    const QJsonArray line = a["geometry"].toObject()["coordinates"].toArray();
    ASSERT_EQ(line.size(), 20);
    EXPECT_EQ(line[0].toArray(), QJsonArray({ -126.9735031, -37.3874588 })); // longitude first
    EXPECT_EQ(a["properties"].toObject(),
        (QJsonObject { { "file", "/card/cont_rec/20240315_101500_F.mp4" },
            { "start", "2024-03-15T10:15:00.000Z" }, { "end", "2024-03-15T10:15:02.900Z" },
            { "name", "20240315_101500_F.mp4" }, { "maxSpeedKmh", 19 }, { "peakG", 1.005 },
            { "trip", 1 } }));
    const QJsonObject b = features[1].toObject()["properties"].toObject();
    EXPECT_TRUE(b["start"].isNull());
    EXPECT_EQ(b["maxSpeedKmh"].toInt(), 80);
    EXPECT_NEAR(b["peakG"].toDouble(), std::sqrt(10.0), 1e-3);
    EXPECT_EQ(b["trip"].toInt(), 2);
    const QJsonObject point = features[2].toObject()["geometry"].toObject();
    EXPECT_EQ(point,
        (QJsonObject { { "type", "Point" }, { "coordinates", QJsonArray { -2.25, -1.5 } } }));

    const QList<QByteArray> rows = render(RouteFormat::Csv, tripOf(first)).split('\n');
    ASSERT_EQ(rows.size(), 32); // header, 30 rows, end
    EXPECT_EQ(rows[0], "file,utc,t,gx,gy,gz,lat,lng,speed_kmh");
    EXPECT_EQ(rows[2],
        "/card/cont_rec/20240315_101500_F.mp4,2024-03-15T10:15:00.100Z,0.1,1,-1,128,-37.3874588,"
        "-126.9735031,19");
    EXPECT_EQ(rows[30].split(',').mid(6), QList<QByteArray>({ "", "", "0" })); // no fix
    const ClipTimeline comma = handMade("a,\"b\".avi", { sample(1, 2) });
    EXPECT_TRUE(render(RouteFormat::Csv, tripOf(comma)).contains("\n\"a,\"\"b\"\".avi\",,0.0,"));

    // Without a fix only the table has content; without samples nothing has.
    const ClipTimeline noFix = handMade("c.mp4", { sample(0, 0, kStart) });
    for (const RouteFormat format : { RouteFormat::Gpx, RouteFormat::Kml, RouteFormat::GeoJson })
        EXPECT_FALSE(RouteWriters::hasContent(format, tripOf(noFix)));
    EXPECT_TRUE(RouteWriters::hasContent(RouteFormat::Csv, tripOf(noFix)));
    EXPECT_FALSE(RouteWriters::hasContent(RouteFormat::Csv, tripOf(handMade("d.mp4", {}))));
    EXPECT_TRUE(QJsonDocument::fromJson(render(RouteFormat::GeoJson, tripOf(noFix)))
                    .object()["features"]
                    .toArray()
                    .isEmpty());
}

TEST(RouteWriters, GpsbabelReadsTheSamePoints)
{
    if (!haveGpsbabel())
        GTEST_SKIP() << "gpsbabel is not installed";
    const ClipTimeline clip = southWestClip();
    const ClipTimeline other = handMade("x.mp4",
        { sample(0.0000001, -0.0000001, kStart), sample(89.9999999, 179.9999999, kStart + 100) });
    QVector<const RouteSample*> expected;
    for (const ClipTimeline* c : { &clip, &other }) {
        for (const RouteSample& s : c->samples) {
            if (s.hasFix)
                expected.append(&s);
        }
    }
    for (const auto& [format, name] :
        { std::pair { RouteFormat::Gpx, "gpx" }, std::pair { RouteFormat::Kml, "kml" } }) {
        const auto points = gpsbabelPoints(
            name, render(format, { RouteTrip { { &clip } }, RouteTrip { { &other } } }));
        ASSERT_TRUE(points.has_value());
        ASSERT_EQ(points->size(), expected.size());
        for (qsizetype i = 0; i < points->size(); ++i) {
            EXPECT_NEAR(points->at(i).lat, expected[i]->lat, 1e-6) << name << i;
            EXPECT_NEAR(points->at(i).lng, expected[i]->lng, 1e-6) << name << i;
        }
        EXPECT_EQ(points->first().date + ' ' + points->first().time, "2024/03/15 10:15:00");
    }
}
