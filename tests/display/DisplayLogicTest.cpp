// The rules behind the telemetry views, without widgets: the G-sensor graph's
// points, the speedometer's digits and gauge, and the map page's script texts.
#include "ClipDataBuilder.h"
#include "RecordingMapPage.h"
#include "display/GravityGraphPoints.h"
#include "display/MapController.h"
#include "display/MapRequestGuard.h"
#include "display/MapScripts.h"
#include "display/SpeedReadout.h"

#include <QUrlQuery>

#include <gtest/gtest.h>

#include <memory>

namespace {

struct ExpectedPoint {
    float x;
    float y;
};

void expectCurve(
    const QList<QPointF>& actual, const std::vector<ExpectedPoint>& expected, const char* axis)
{
    ASSERT_EQ(actual.size(), static_cast<qsizetype>(expected.size())) << axis;
    for (size_t i = 0; i < expected.size(); ++i) {
        EXPECT_FLOAT_EQ(static_cast<float>(actual[i].x()), expected[i].x) << axis << " x of " << i;
        EXPECT_FLOAT_EQ(static_cast<float>(actual[i].y()), expected[i].y) << axis << " y of " << i;
    }
}

} // namespace

TEST(GravityGraphPointsTest, EmptyRecordGivesThreeEmptyCurves)
{
    const GravityGraphPoints points = GravityGraphPoints::generatePoints(makeGRecord({}), 60.0f);
    EXPECT_TRUE(points.gxPointList.isEmpty());
    EXPECT_TRUE(points.gyPointList.isEmpty());
    EXPECT_TRUE(points.gzPointList.isEmpty());
}

TEST(GravityGraphPointsTest, OneSampleSpansTheWholeWidth)
{
    // 1 g (raw 128) hangs 12.8 units below the zero line, whatever its sign.
    const GravityGraphPoints points
        = GravityGraphPoints::generatePoints(makeGRecord({ { 128, -256, -5 } }), 50.0f);
    expectCurve(points.gxPointList, { { 1.0f, 37.2f } }, "x");
    expectCurve(points.gyPointList, { { 1.0f, 24.4f } }, "y");
    expectCurve(points.gzPointList, { { 1.0f, 49.5f } }, "z");
}

TEST(GravityGraphPointsTest, ManySamplesStepEvenlyAndHangByMagnitude)
{
    std::vector<GSample> samples;
    std::vector<ExpectedPoint> gx, gy, gz;
    const int n = TavroClipData::kCapacity;
    for (int i = 0; i < n; ++i) {
        const int x = (i % 7 - 3) * 40; // -120 .. 120, both signs
        const int y = -i / 2;
        const int z = 128 + i % 5;
        samples.push_back({ x, y, z });
        const float fx = static_cast<float>(i + 1) / static_cast<float>(n);
        gx.push_back({ fx, 100.0f - std::abs(x) / 10.0f });
        gy.push_back({ fx, 100.0f - std::abs(y) / 10.0f });
        gz.push_back({ fx, 100.0f - z / 10.0f });
    }
    const GravityGraphPoints points
        = GravityGraphPoints::generatePoints(makeGRecord(samples), 100.0f);
    expectCurve(points.gxPointList, gx, "x");
    expectCurve(points.gyPointList, gy, "y");
    expectCurve(points.gzPointList, gz, "z");
    EXPECT_FLOAT_EQ(static_cast<float>(points.gxPointList.front().x()), 1.0f / 650.0f);
    EXPECT_FLOAT_EQ(static_cast<float>(points.gxPointList.back().x()), 1.0f);
}

TEST(GravityGraphPointsTest, LargeValuesStopAtTheBottomEdge)
{
    // With the zero line below 1000, raw +-10000 (1000 units) reaches past the
    // bottom edge and is held there; above 1000 it is not.
    const TavroClipData data = makeGRecord({ { 10000, -10000, 32767 }, { -32768, 0, 9990 } });
    GravityGraphPoints points = GravityGraphPoints::generatePoints(data, 999.5f);
    expectCurve(points.gxPointList, { { 0.5f, 0.0f }, { 1.0f, 0.0f } }, "x");
    expectCurve(points.gyPointList, { { 0.5f, 0.0f }, { 1.0f, 999.5f } }, "y");
    expectCurve(points.gzPointList, { { 0.5f, 0.0f }, { 1.0f, 0.5f } }, "z");

    points = GravityGraphPoints::generatePoints(data, 1500.0f);
    expectCurve(points.gxPointList, { { 0.5f, 500.0f }, { 1.0f, 0.0f } }, "x at base 1500");
}

TEST(GravityGraphPointsTest, OnlyTheValidSamplesAreDrawn)
{
    // An earlier, longer clip may have left samples behind the valid ones.
    TavroClipData data = makeGRecord({ { 10, 20, 30 }, { 40, 50, 60 }, { 70, 80, 90 } });
    data.setClipDataCount(2);
    const GravityGraphPoints points = GravityGraphPoints::generatePoints(data, 10.0f);
    expectCurve(points.gxPointList, { { 0.5f, 9.0f }, { 1.0f, 6.0f } }, "x");
}

// ---------------------------------------------------------------- speedometer

namespace {

struct SpeedCase {
    int kmh;
    int unit;
    // digits hundreds, tens, units; -1 = cleared
    int number100;
    int number10;
    int number1;
    int gauge;
};

void expectReadout(const SpeedCase& c)
{
    const SpeedReadout r = SpeedReadout::forSpeed(c.kmh, c.unit);
    const std::string what = std::to_string(c.kmh) + " km/h, unit " + std::to_string(c.unit);
    EXPECT_EQ(r.number100, c.number100) << what;
    EXPECT_EQ(r.number10, c.number10) << what;
    EXPECT_EQ(r.number1, c.number1) << what;
    EXPECT_EQ(r.gaugeSegments, c.gauge) << what;
    EXPECT_EQ(r.mph, c.unit != 0) << what;
}

constexpr int N = SpeedReadout::kNoDigit;

} // namespace

TEST(SpeedReadoutTest, KilometresPerHour)
{
    const SpeedCase cases[] = {
        { 0, 0, N, N, N, 0 },
        { 8, 0, N, N, N, 0 }, // slow: dark digits
        { 9, 0, N, N, 9, 0 },
        { 10, 0, N, 1, 0, 1 },
        { 55, 0, N, 5, 5, 5 },
        { 100, 0, 1, 0, 0, 10 },
        { 105, 0, 1, 0, 5, 10 },
        { 239, 0, 2, 3, 9, 23 },
        { 240, 0, 2, 4, 0, 24 },
        { 999, 0, 9, 9, 9, 24 },
        { 1024, 0, N, 2, 4, 24 }, // the out-of-range speed: 024 shows as 24
        { 1234, 0, 2, 3, 4, 24 }, // only three digits fit
        { -20, 0, N, N, N, 0 },
    };
    for (const SpeedCase& c : cases)
        expectReadout(c);
}

TEST(SpeedReadoutTest, MilesPerHour)
{
    const SpeedCase cases[] = {
        { 8, 1, N, N, N, 0 }, { 9, 1, N, N, 6, 0 }, // 5.59 rounds to 6
        { 16, 1, N, 1, 0, 1 }, // 9.94 -> 10
        { 55, 1, N, 3, 4, 3 }, // 34.18
        { 100, 1, N, 6, 2, 6 }, // 62.14
        { 105, 1, N, 6, 5, 6 }, // 65.24
        { 161, 1, 1, 0, 0, 10 }, // 100.04
        { 387, 1, 2, 4, 0, 24 }, // 240.47
        { 1024, 1, 6, 3, 6, 24 }, // 636.28
        { 105, 2, N, 6, 5, 6 }, // any non-zero unit is mph
    };
    for (const SpeedCase& c : cases)
        expectReadout(c);
    // Rounded half away from zero, negative speeds too.
    EXPECT_EQ(SpeedReadout::shownSpeed(9, 1), 6);
    EXPECT_EQ(SpeedReadout::shownSpeed(1, 1), 1); // 0.62
    EXPECT_EQ(SpeedReadout::shownSpeed(-9, 1), -6);
    EXPECT_EQ(SpeedReadout::shownSpeed(-9, 0), -9);
}

// ---------------------------------------------------------------- map scripts

TEST(MapScriptsTest, MoveToPutsLongitudeFirstWithSixDecimals)
{
    const struct {
        float lat;
        float lng;
        const char* script;
    } cases[] = {
        { 37.5f, 127.25f, "MapMoveToAuto(127.250000,37.500000,-1)" },
        { -33.875f, -70.5f, "MapMoveToAuto(-70.500000,-33.875000,-1)" },
        { 0.0f, 0.0f, "MapMoveToAuto(0.000000,0.000000,-1)" },
        // single precision shows in the sixth decimal
        { 37.3874f, 126.9735f, "MapMoveToAuto(126.973503,37.387402,-1)" },
    };
    for (const auto& c : cases)
        EXPECT_EQ(MapScripts::moveToScript(c.lat, c.lng).toStdString(), c.script);
}

namespace {

void expectRoute(const TavroClipData& data, const char* points)
{
    EXPECT_EQ(MapScripts::routeScript(data).toStdString(),
        std::string("addPolyLine('") + points + "', 'red', 4, 0.5)");
}

const GpsPoint A { 37.5f, 127.25f };
const GpsPoint B { 37.625f, 127.5f };
const GpsPoint C { 37.75f, 127.125f };
const GpsPoint NoFix { 0.0f, 0.0f };

} // namespace

TEST(MapScriptsTest, RouteDropsOnlyRepeatsOfThePreviousPoint)
{
    expectRoute(makeGpsRecord({}), "");
    expectRoute(makeGpsRecord({ A }), "127.250000,37.500000");
    expectRoute(makeGpsRecord({ A, A, A, B, B }), "127.250000,37.500000|127.500000,37.625000");
    expectRoute(makeGpsRecord({ A, B, A }),
        "127.250000,37.500000|127.500000,37.625000|127.250000,37.500000");
    expectRoute(makeGpsRecord({ A, B, C, C }),
        "127.250000,37.500000|127.500000,37.625000|127.125000,37.750000");
}

TEST(MapScriptsTest, RouteWalksOnlyTheFirstGpsDataCountSamples)
{
    // Two samples without a fix at the start: gpsDataCount is 3, so only
    // indices 0..2 are walked; the no-fix samples equal the initial (0, 0) and
    // vanish, and B and C at the end are lost.
    expectRoute(makeGpsRecord({ NoFix, NoFix, A, B, C }), "127.250000,37.500000");
    // A no-fix gap inside the route is drawn as a point at (0, 0).
    expectRoute(makeGpsRecord({ A, NoFix, B }), "127.250000,37.500000|0.000000,0.000000");
}

TEST(MapScriptsTest, RouteCountIsTakenUnsigned)
{
    // A count past the valid samples reads the out-of-range point once.
    TavroClipData data = makeGpsRecord({ A, B });
    data.setGpsDataCount(-1);
    expectRoute(data, "127.250000,37.500000|127.500000,37.625000|512.000000,512.000000");
    data.setGpsDataCount(0);
    expectRoute(data, "");
}

TEST(MapScriptsTest, PageAddressCarriesAnotherTileServer)
{
    EXPECT_EQ(MapScripts::pageUrl().toString().toStdString(), "qrc:/map/mapview.html");
    EXPECT_EQ(MapScripts::pageUrl(MapScripts::kDefaultTileUrl).toString().toStdString(),
        "qrc:/map/mapview.html");
    const QUrl url
        = MapScripts::pageUrl(QStringLiteral("http://tiles.example/{z}/{x}/{y}.png?k=a&b=c"));
    EXPECT_EQ(url.path().toStdString(), "/map/mapview.html");
    EXPECT_EQ(
        QUrlQuery(url).queryItemValue(QStringLiteral("tiles"), QUrl::FullyDecoded).toStdString(),
        "http://tiles.example/{z}/{x}/{y}.png?k=a&b=c");
}

TEST(MapScriptsTest, OfflineTextTravelsAsOneScriptString)
{
    EXPECT_EQ(MapScripts::offlineTextScript(QStringLiteral("Offline")).toStdString(),
        "setOfflineText(\"Offline\")");
    // Quotes, backslashes and line breaks of a translation cannot break out of the string.
    EXPECT_EQ(MapScripts::offlineTextScript(QStringLiteral("l'\"a\"\\\n")).toStdString(),
        "setOfflineText(\"l'\\\"a\\\"\\\\\\n\")");
}

// ---------------------------------------------------------------- controller

TEST(MapRequestGuardTest, OnlyThePageItselfAndTheTileServerAreReached)
{
    MapRequestGuard guard;
    guard.setTileUrl(QString::fromLatin1(MapScripts::kDefaultTileUrl));
    MapRequestGuard mirrors;
    mirrors.setTileUrl(QStringLiteral("http://{s}.tiles.example.org:8080/{z}/{x}/{y}.png"));
    const struct {
        const MapRequestGuard& guard;
        const char* url;
        bool allowed;
    } cases[] = {
        { guard, "qrc:/map/mapview.html", true },
        { guard, "qrc:/map/leaflet/leaflet.js", true },
        { guard, "data:image/png;base64,AAAA", true },
        { guard, "https://tile.openstreetmap.org/3/4/2.png", true },
        { guard, "https://TILE.openstreetmap.org/3/4/2.png", true },
        { guard, "http://tile.openstreetmap.org/3/4/2.png", false }, // another scheme
        { guard, "https://tile.openstreetmap.org.evil.example/3/4/2.png", false },
        { guard, "https://evil.example/?tile.openstreetmap.org", false },
        { guard, "file:///etc/passwd", false },
        { guard, "ws://tile.openstreetmap.org/", false },
        { mirrors, "http://a.tiles.example.org:8080/1/2/3.png", true },
        { mirrors, "http://b.tiles.example.org:8080/1/2/3.png", true },
        { mirrors, "http://a.b.tiles.example.org:8080/1/2/3.png", false },
        { mirrors, "http://a.tiles.example.org/1/2/3.png", false }, // another port
        { mirrors, "https://tile.openstreetmap.org/3/4/2.png", false },
    };
    for (const auto& c : cases)
        EXPECT_EQ(c.guard.allows(QUrl(QString::fromLatin1(c.url))), c.allowed) << c.url;
    MapRequestGuard none;
    EXPECT_FALSE(none.allows(QUrl(QStringLiteral("https://tile.openstreetmap.org/1/1/1.png"))));
    EXPECT_TRUE(none.allows(QUrl(QStringLiteral("qrc:/map/mapview.html"))));
}

TEST(MapControllerTest, SendsTheCallsInOrder)
{
    qunsetenv(MapController::kTileUrlEnvironment);
    RecordingMapPage::Log log;
    MapController controller;
    controller.initWithPage(std::make_unique<RecordingMapPage>(log));
    controller.load();
    controller.addRoute(makeGpsRecord({ A, B }));
    controller.moveToLat(37.5f, 127.25f);
    controller.run(QStringLiteral("void 0"));

    ASSERT_EQ(log.loads.size(), 1);
    EXPECT_EQ(log.loads[0].toString().toStdString(), "qrc:/map/mapview.html");
    const QStringList expected {
        QStringLiteral("initialize()"),
        QStringLiteral("addPolyLine('127.250000,37.500000|127.500000,37.625000', 'red', 4, 0.5)"),
        QStringLiteral("MapMoveToAuto(127.250000,37.500000,-1)"),
        QStringLiteral("void 0"),
    };
    EXPECT_EQ(log.scripts, expected);
}

TEST(MapControllerTest, TileServerComesFromTheEnvironment)
{
    qputenv(MapController::kTileUrlEnvironment, "http://127.0.0.1:9/{z}/{x}/{y}.png");
    RecordingMapPage::Log log;
    MapController controller;
    controller.initWithPage(std::make_unique<RecordingMapPage>(log));
    controller.load();
    qunsetenv(MapController::kTileUrlEnvironment);
    ASSERT_EQ(log.loads.size(), 1);
    EXPECT_EQ(QUrlQuery(log.loads[0])
                  .queryItemValue(QStringLiteral("tiles"), QUrl::FullyDecoded)
                  .toStdString(),
        "http://127.0.0.1:9/{z}/{x}/{y}.png");
    EXPECT_EQ(MapController::tileUrl().toStdString(), MapScripts::kDefaultTileUrl);
}
