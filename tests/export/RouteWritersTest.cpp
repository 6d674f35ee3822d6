// The GPX, KML, GeoJSON and CSV writers on small hand-made timelines, read
// back with Qt's XML and JSON readers and with gpsbabel.
#include "ExportTestSupport.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <gtest/gtest.h>

#include <cmath>

using namespace ExportTestSupport;

namespace {

// Two seconds south and west of Greenwich, then one without a fix.
ClipTimeline southWestClip()
{
    QVector<Second> seconds(3);
    seconds[0].time = "101500.00";
    seconds[1].time = "101501.00";
    seconds[1].lat = "3350.5000"; // 33°50.5' = 33.841667
    seconds[1].lng = "07030.0000"; // 70°30'
    seconds[2].time = "101502.00";
    seconds[2].status = "V";
    for (Second& s : seconds) {
        s.ns = "S";
        s.ew = "W";
        s.date = "150324";
    }
    return timelineFromSubtitles("/card/cont_rec/20240315_101500_F.mp4", subtitleText(seconds));
}

QVector<RouteTrip> tripOf(const ClipTimeline& clip)
{
    return { RouteTrip { { &clip } } };
}

} // namespace

TEST(RouteWriters, GpxHasOneTrackPointPerFixWithTimeAndSpeed)
{
    const ClipTimeline clip = southWestClip();
    ASSERT_EQ(clip.samples.size(), 30);
    ASSERT_EQ(clip.fixCount(), 20);
    const QByteArray gpx = render(RouteFormat::Gpx, tripOf(clip));
    EXPECT_TRUE(gpx.contains("xmlns=\"http://www.topografix.com/GPX/1/1\""));
    EXPECT_TRUE(gpx.contains("version=\"1.1\""));
    EXPECT_EQ(elementTexts(gpx, "trk").size(), 1);
    EXPECT_EQ(elementTexts(gpx, "trkseg").size(), 1);
    const QStringList lats = attributeValues(gpx, "trkpt", "lat");
    const QStringList lons = attributeValues(gpx, "trkpt", "lon");
    ASSERT_EQ(lats.size(), 20);
    EXPECT_EQ(lats.first(), "-37.3874588"); // float degrees of 37°23.2475'
    EXPECT_EQ(lons.first(), "-126.9735031");
    EXPECT_EQ(lats.last(), "-33.8416672");
    EXPECT_EQ(lons.last(), "-70.5000000");
    const QStringList times = elementTexts(gpx, "time");
    ASSERT_EQ(times.size(), 20);
    EXPECT_EQ(times.first(), "2024-03-15T10:15:00.000Z");
    EXPECT_EQ(times.last(), "2024-03-15T10:15:01.900Z");
    // 10 knots are 19 km/h in the record: 5.28 m/s.
    const QStringList speeds = elementTexts(gpx, "speed");
    ASSERT_EQ(speeds.size(), 20);
    EXPECT_EQ(speeds.first(), "5.28");
}

TEST(RouteWriters, KmlTrackKeepsTimesAndUsesLongitudeFirst)
{
    const ClipTimeline clip = southWestClip();
    const QByteArray kml = render(RouteFormat::Kml, tripOf(clip));
    EXPECT_TRUE(kml.contains("xmlns=\"http://www.opengis.net/kml/2.2\""));
    const QStringList whens = elementTexts(kml, "when");
    const QStringList coords = elementTexts(kml, "coord");
    ASSERT_EQ(whens.size(), 20);
    ASSERT_EQ(coords.size(), 20);
    EXPECT_EQ(whens.first(), "2024-03-15T10:15:00.000Z");
    EXPECT_EQ(coords.first(), "-126.9735031 -37.3874588 0");
    EXPECT_TRUE(elementTexts(kml, "LineString").isEmpty());
}

TEST(RouteWriters, WithoutTimesKmlDrawsALineAndGpxLeavesTimesOut)
{
    const ClipTimeline clip
        = handMade("clip.avi", { sample(48.8566, 2.3522), sample(-22.9068, -43.1729) });
    const QByteArray kml = render(RouteFormat::Kml, tripOf(clip));
    EXPECT_TRUE(elementTexts(kml, "Track").isEmpty());
    EXPECT_EQ(elementTexts(kml, "coordinates"),
        QStringList { "2.3522000,48.8566000,0 -43.1729000,-22.9068000,0" });
    const QByteArray gpx = render(RouteFormat::Gpx, tripOf(clip));
    EXPECT_EQ(attributeValues(gpx, "trkpt", "lat"), QStringList({ "48.8566000", "-22.9068000" }));
    EXPECT_TRUE(elementTexts(gpx, "time").isEmpty());
}

TEST(RouteWriters, NoFixWritesNoPointButTheTableKeepsTheSamples)
{
    QVector<Second> seconds(2);
    for (Second& s : seconds)
        s.status = "V";
    const ClipTimeline clip = timelineFromSubtitles("clip_F.mp4", subtitleText(seconds));
    const QVector<RouteTrip> trips = tripOf(clip);
    ASSERT_EQ(clip.samples.size(), 20);
    for (const RouteFormat format : { RouteFormat::Gpx, RouteFormat::Kml, RouteFormat::GeoJson })
        EXPECT_FALSE(RouteWriters::hasContent(format, trips));
    EXPECT_TRUE(RouteWriters::hasContent(RouteFormat::Csv, trips));
    EXPECT_TRUE(attributeValues(render(RouteFormat::Gpx, trips), "trkpt", "lat").isEmpty());
    EXPECT_TRUE(elementTexts(render(RouteFormat::Kml, trips), "Placemark").isEmpty());
    const QJsonObject geo = QJsonDocument::fromJson(render(RouteFormat::GeoJson, trips)).object();
    EXPECT_EQ(geo["type"].toString(), "FeatureCollection");
    EXPECT_TRUE(geo["features"].toArray().isEmpty());
    const QList<QByteArray> rows = render(RouteFormat::Csv, trips).split('\n');
    ASSERT_EQ(rows.size(), 22); // header, 20 rows, end
    EXPECT_EQ(rows[1], "clip_F.mp4,2024-01-01T12:00:00.000Z,0.0,0,0,128,,,0");
}

TEST(RouteWriters, OneSampleIsAPoint)
{
    const ClipTimeline clip = handMade("one.mp4", { sample(-1.5, -2.25, 1700000000000) });
    const QVector<RouteTrip> trips = tripOf(clip);
    EXPECT_EQ(attributeValues(render(RouteFormat::Gpx, trips), "trkpt", "lon"),
        QStringList { "-2.2500000" });
    EXPECT_EQ(elementTexts(render(RouteFormat::Kml, trips), "coord"),
        QStringList { "-2.2500000 -1.5000000 0" });
    const QJsonObject feature = QJsonDocument::fromJson(render(RouteFormat::GeoJson, trips))
                                    .object()["features"]
                                    .toArray()
                                    .first()
                                    .toObject();
    const QJsonObject geometry = feature["geometry"].toObject();
    EXPECT_EQ(geometry["type"].toString(), "Point");
    EXPECT_EQ(geometry["coordinates"].toArray(), QJsonArray({ -2.25, -1.5 }));
    EXPECT_EQ(feature["properties"].toObject()["start"].toString(), "2023-11-14T22:13:20.000Z");
}

TEST(RouteWriters, GeoJsonReadsBackAsOneLinePerClip)
{
    const ClipTimeline first = southWestClip();
    ClipTimeline second = handMade("/card/b.mp4",
        { sample(10.0, 20.0, kNoUtcMsecs, 50), sample(10.5, 20.5, kNoUtcMsecs, 80) });
    second.samples[1].gx = 3 * 128; // a knock of 3 g sideways (with 1 g down)
    const QByteArray json
        = render(RouteFormat::GeoJson, { RouteTrip { { &first } }, RouteTrip { { &second } } });
    QJsonParseError error;
    const QJsonDocument doc = QJsonDocument::fromJson(json, &error);
    ASSERT_EQ(error.error, QJsonParseError::NoError);
    const QJsonArray features = doc.object()["features"].toArray();
    ASSERT_EQ(features.size(), 2);
    const QJsonObject a = features[0].toObject();
    EXPECT_EQ(a["type"].toString(), "Feature");
    const QJsonArray line = a["geometry"].toObject()["coordinates"].toArray();
    ASSERT_EQ(line.size(), 20);
    EXPECT_NEAR(line[0].toArray()[0].toDouble(), -126.9735031, 1e-9); // longitude first
    EXPECT_NEAR(line[0].toArray()[1].toDouble(), -37.3874588, 1e-9);
    const QJsonObject aProps = a["properties"].toObject();
    EXPECT_EQ(aProps["file"].toString(), "/card/cont_rec/20240315_101500_F.mp4");
    EXPECT_EQ(aProps["start"].toString(), "2024-03-15T10:15:00.000Z");
    EXPECT_EQ(aProps["end"].toString(), "2024-03-15T10:15:02.900Z");
    EXPECT_EQ(aProps["maxSpeedKmh"].toInt(), 19);
    EXPECT_EQ(aProps["trip"].toInt(), 1);
    const QJsonObject bProps = features[1].toObject()["properties"].toObject();
    EXPECT_TRUE(bProps["start"].isNull());
    EXPECT_EQ(bProps["maxSpeedKmh"].toInt(), 80);
    EXPECT_NEAR(bProps["peakG"].toDouble(), std::sqrt(10.0), 1e-3);
    EXPECT_EQ(bProps["trip"].toInt(), 2);
}

TEST(RouteWriters, CsvHasEveryClipSampleInTheCLocale)
{
    const ClipTimeline clip = southWestClip();
    const QList<QByteArray> rows = render(RouteFormat::Csv, tripOf(clip)).split('\n');
    ASSERT_EQ(rows.size(), 32);
    EXPECT_EQ(rows[0], "file,utc,t,gx,gy,gz,lat,lng,speed_kmh");
    EXPECT_EQ(rows[2],
        "/card/cont_rec/20240315_101500_F.mp4,2024-03-15T10:15:00.100Z,0.1,1,-1,128,-37.3874588,"
        "-126.9735031,19");
    EXPECT_EQ(rows[30].split(',').mid(6), QList<QByteArray>({ "", "", "0" }));
    const ClipTimeline comma = handMade("a,\"b\".avi", { sample(1, 2) });
    EXPECT_TRUE(render(RouteFormat::Csv, tripOf(comma)).contains("\n\"a,\"\"b\"\".avi\",,0.0,"));
}

TEST(RouteWriters, GpsbabelReadsTheSamePoints)
{
    if (!haveGpsbabel())
        GTEST_SKIP() << "gpsbabel is not installed";
    const ClipTimeline clip = southWestClip();
    const ClipTimeline other = handMade("x.mp4",
        { sample(0.0000001, -0.0000001, 1710497700000),
            sample(89.9999999, 179.9999999, 1710497700100) });
    const QVector<RouteTrip> trips { RouteTrip { { &clip } }, RouteTrip { { &other } } };
    QVector<const RouteSample*> expected;
    for (const ClipTimeline* c : { &clip, &other }) {
        for (const RouteSample& s : c->samples) {
            if (s.hasFix)
                expected.append(&s);
        }
    }
    for (const auto& [format, name] :
        { std::pair { RouteFormat::Gpx, "gpx" }, std::pair { RouteFormat::Kml, "kml" } }) {
        SCOPED_TRACE(name);
        const auto points = gpsbabelPoints(name, render(format, trips));
        ASSERT_TRUE(points.has_value());
        ASSERT_EQ(points->size(), expected.size());
        for (qsizetype i = 0; i < points->size(); ++i) {
            EXPECT_NEAR(points->at(i).lat, expected[i]->lat, 1e-6) << i;
            EXPECT_NEAR(points->at(i).lng, expected[i]->lng, 1e-6) << i;
        }
        EXPECT_EQ(points->first().date, "2024/03/15");
        EXPECT_EQ(points->first().time, "10:15:00");
    }
}
