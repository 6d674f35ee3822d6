// The rules behind the telemetry views on worked examples: the G-sensor graph's
// points, the speedometer's digits and gauge, the map page's scripts, address
// and request guard (the scripts on a real page are in MapPageTest).
#include "ClipDataBuilder.h"
#include "display/GravityGraphPoints.h"
#include "display/MapRequestGuard.h"
#include "display/MapScripts.h"
#include "display/SpeedReadout.h"

#include <QUrlQuery>

#include <gtest/gtest.h>

namespace {

// The points as "x,y x,y", to six significant digits.
std::string curve(const QList<QPointF>& points)
{
    QStringList texts;
    for (const QPointF& p : points)
        texts << QStringLiteral("%1,%2").arg(p.x(), 0, 'g', 6).arg(p.y(), 0, 'g', 6);
    return texts.join(u' ').toStdString();
}

} // namespace

TEST(GravityGraphPointsTest, SamplesStepAcrossTheWidthAndHangByMagnitude)
{
    // 1 g (raw 128) hangs 12.8 units below the zero line whatever its sign;
    // past the bottom edge a point is held there. Only the clipDataCount
    // first samples count: an earlier, longer clip may have left more.
    const struct {
        std::vector<GSample> samples;
        int count; // clipDataCount; -1: the number of samples
        float base;
        const char *x, *y, *z;
    } cases[] = { { { { 128, -256, -5 } }, -1, 50, "1,37.2", "1,24.4", "1,49.5" },
        { { { 10000, -10000, 32767 }, { -32768, 0, 9990 } }, -1, 999.5f, "0.5,0 1,0",
            "0.5,0 1,999.5", "0.5,0 1,0.5" },
        { { { 10000, 0, 0 } }, -1, 1500, "1,500", "1,1500", "1,1500" },
        { { { 10, 20, 30 }, { 40, 50, 60 }, { 70, 80, 90 } }, 2, 10, "0.5,9 1,6", "0.5,8 1,5",
            "0.5,7 1,4" },
        { { { 1, 2, 3 } }, 0, 10, "", "", "" } };
    for (const auto& c : cases) {
        TavroClipData data = makeGRecord(c.samples);
        if (c.count >= 0)
            data.setClipDataCount(c.count);
        const GravityGraphPoints points = GravityGraphPoints::generatePoints(data, c.base);
        EXPECT_EQ(std::vector<std::string>({ curve(points.gxPointList), curve(points.gyPointList),
                      curve(points.gzPointList) }),
            std::vector<std::string>({ c.x, c.y, c.z }))
            << c.samples.size() << " at " << c.base;
    }
    // A full clip: the first point one step in, the last at the right edge.
    std::vector<GSample> full(TavroClipData::kCapacity, GSample { 0, -64, 128 });
    full.back() = { 300, 0, 0 };
    const GravityGraphPoints points = GravityGraphPoints::generatePoints(makeGRecord(full), 100);
    ASSERT_EQ(points.gyPointList.size(), 650);
    EXPECT_EQ(
        curve({ points.gyPointList.front(), points.gxPointList.back() }), "0.00153846,93.6 1,70");
}

TEST(SpeedReadoutTest, DigitsAndGaugeInBothUnits)
{
    constexpr int N = SpeedReadout::kNoDigit; // the slot is cleared
    const struct {
        int kmh, unit, number100, number10, number1, gauge;
    } cases[] = {
        { 8, 0, N, N, N, 0 }, { 9, 0, N, N, 9, 0 }, { 10, 0, N, 1, 0, 1 }, { 55, 0, N, 5, 5, 5 },
        { 100, 0, 1, 0, 0, 10 }, { 105, 0, 1, 0, 5, 10 }, { 239, 0, 2, 3, 9, 23 },
        { 240, 0, 2, 4, 0, 24 }, { 999, 0, 9, 9, 9, 24 },
        { 1024, 0, N, 2, 4, 24 }, // the out-of-range speed: 024 shows as 24
        { 1234, 0, 2, 3, 4, 24 }, // only three digits fit
        { -20, 0, N, N, N, 0 },
        // mph rounded half away from zero; dark below 9 km/h in both units.
        { 8, 1, N, N, N, 0 }, { 9, 1, N, N, 6, 0 }, { 16, 1, N, 1, 0, 1 }, { 55, 1, N, 3, 4, 3 },
        { 100, 1, N, 6, 2, 6 }, { 161, 1, 1, 0, 0, 10 }, { 387, 1, 2, 4, 0, 24 },
        { 1024, 1, 6, 3, 6, 24 }, { 105, 2, N, 6, 5, 6 } // any non-zero unit is mph
    };
    for (const auto& c : cases) {
        const SpeedReadout r = SpeedReadout::forSpeed(c.kmh, c.unit);
        EXPECT_EQ(std::vector<int>({ r.number100, r.number10, r.number1, r.gaugeSegments, r.mph }),
            std::vector<int>({ c.number100, c.number10, c.number1, c.gauge, c.unit != 0 }))
            << c.kmh << " km/h, unit " << c.unit;
    }
    EXPECT_EQ(SpeedReadout::shownSpeed(1, 1), 1); // 0.62
    EXPECT_EQ(SpeedReadout::shownSpeed(-9, 1), -6);
}

TEST(MapScriptsTest, MoveToOfflineTextPageAddressAndRoute)
{
    // Longitude first; single precision shows in the sixth decimal.
    EXPECT_EQ(
        MapScripts::moveToScript(37.3874f, 126.9735f), "MapMoveToAuto(126.973503,37.387402,-1)");
    // Quotes, backslashes and line breaks of a translation cannot break out of the string.
    EXPECT_EQ(
        MapScripts::offlineTextScript("l'\"a\"\\\n"), "setOfflineText(\"l'\\\"a\\\"\\\\\\n\")");
    // Another tile server travels as the "tiles" query item.
    EXPECT_EQ(MapScripts::pageUrl(MapScripts::kDefaultTileUrl).toString(), "qrc:/map/mapview.html");
    const QUrl url = MapScripts::pageUrl("http://tiles.example/{z}/{x}/{y}.png?k=a&b=c");
    EXPECT_EQ(url.path(), "/map/mapview.html");
    EXPECT_EQ(QUrlQuery(url).queryItemValue("tiles", QUrl::FullyDecoded),
        "http://tiles.example/{z}/{x}/{y}.png?k=a&b=c");

    // The route drops only repeats of the previous point within gpsDataCount.
    const GpsPoint A { 37.5f, 127.25f }, B { 37.625f, 127.5f }, C { 37.75f, 127.125f },
        D { 37.875f, 127.125f }, E { 37.875f, 127.0f }, NoFix {};
    const QString a = "127.250000,37.500000|", b = "127.500000,37.625000|";
    const struct {
        std::vector<GpsPoint> points;
        int gpsCount; // -2: samples with a fix, as the builder counts
        QString route;
    } cases[] = { { {}, -2, "" }, { { A }, -2, a }, { { A, A, A, B, B }, -2, a + b },
        { { A, B, A }, -2, a + b + a },
        // The same longitude or latitude as the point before makes a new point.
        { { C, D, E }, -2, "127.125000,37.750000|127.125000,37.875000|127.000000,37.875000|" },
        // Two no-fix samples at the start: gpsDataCount 3 walks indices 0..2,
        // the (0, 0) samples equal the initial point and vanish, B and C are lost.
        { { NoFix, NoFix, A, B, C }, -2, a },
        // A no-fix gap inside the route is drawn as a point at (0, 0).
        { { A, NoFix, B }, -2, a + "0.000000,0.000000|" },
        // The count is taken unsigned: past the valid samples the out-of-range
        // point is read once.
        { { A, B }, -1, a + b + "512.000000,512.000000|" }, { { A, B }, 0, "" } };
    for (const auto& c : cases) {
        TavroClipData data = makeGpsRecord(c.points);
        if (c.gpsCount != -2)
            data.setGpsDataCount(c.gpsCount);
        EXPECT_EQ(MapScripts::routeScript(data).toStdString(),
            ("addPolyLine('" + c.route.chopped(c.route.isEmpty() ? 0 : 1) + "', 'red', 4, 0.5)")
                .toStdString());
    }
}

TEST(MapRequestGuardTest, OnlyThePageItselfAndTheTileServerAreReached)
{
    MapRequestGuard osm, mirrors, none;
    osm.setTileUrl(MapScripts::kDefaultTileUrl);
    mirrors.setTileUrl("http://{s}.tiles.example.org:8080/{z}/{x}/{y}.png");
    const auto expect
        = [](const MapRequestGuard& guard, bool allowed, std::vector<const char*> urls) {
              for (const char* url : urls)
                  EXPECT_EQ(guard.allows(QUrl(QString::fromLatin1(url))), allowed) << url;
          };
    // Any port when the template names none; upper case is the same host.
    expect(osm, true,
        { "qrc:/map/leaflet/leaflet.js", "data:image/png;base64,AAAA",
            "https://tile.openstreetmap.org/3/4/2.png", "https://TILE.openstreetmap.org/3/4/2.png",
            "https://tile.openstreetmap.org:8443/3/4/2.png" });
    expect(osm, false,
        { "http://tile.openstreetmap.org/3/4/2.png", "ws://tile.openstreetmap.org/",
            "https://tile.openstreetmap.org.evil.example/3/4/2.png",
            "https://ile.openstreetmap.org/3/4/2.png",
            "https://evil.example/?tile.openstreetmap.org", "file:///etc/passwd" });
    // "{s}" stands for one label; the template's port only.
    expect(mirrors, true,
        { "http://a.tiles.example.org:8080/1/2/3.png",
            "http://b.tiles.example.org:8080/1/2/3.png" });
    expect(mirrors, false,
        { "http://a.b.tiles.example.org:8080/1/2/3.png", "http://a.tiles.example.org/1/2/3.png",
            "http://a.tiles.example.org:8081/1/2/3.png",
            "https://tile.openstreetmap.org/3/4/2.png" });
    // Without a tile server only the page itself.
    expect(none, true, { "qrc:/map/mapview.html" });
    expect(none, false, { "https://tile.openstreetmap.org/1/1/1.png" });
}
