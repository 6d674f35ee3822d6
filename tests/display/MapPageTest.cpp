// The map page in a real QtWebEngine, without network: calls sent before the
// page has loaded, the route polyline, centring on a position, the offline
// note. Leaflet's own state is read back through the page's tavroMapState().
#include "ClipDataBuilder.h"
#include "display/MapController.h"
#include "display/MapScripts.h"
#include "display/MapWindow.h"

#include <QDir>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSignalSpy>
#include <QTest>

#include <gtest/gtest.h>

#include <functional>
#include <memory>

namespace {

// Nothing listens on the discard port: every tile fails at once, as offline.
constexpr const char* kUnreachableTiles = "http://127.0.0.1:9/{z}/{x}/{y}.png";
constexpr int kPageTimeoutMs = 10000;
// A script sent while a document is being replaced may never answer.
constexpr int kScriptTimeoutMs = 2000;

QJsonObject mapState(MapWindow& view)
{
    auto result = std::make_shared<QString>();
    auto done = std::make_shared<bool>(false);
    view.evaluate(
        QStringLiteral("typeof tavroMapState === 'function' ? tavroMapState() : '{}'"),
        [result, done](const QVariant& value) {
            *result = value.toString();
            *done = true;
        });
    if (!QTest::qWaitFor([done] { return *done; }, kScriptTimeoutMs))
        return {};
    return QJsonDocument::fromJson(result->toUtf8()).object();
}

bool waitForState(MapWindow& view, const std::function<bool(const QJsonObject&)>& wanted,
    QJsonObject* last = nullptr)
{
    QJsonObject state;
    const bool ok = QTest::qWaitFor(
        [&] {
            state = mapState(view);
            return wanted(state);
        },
        kPageTimeoutMs);
    if (last)
        *last = state;
    return ok;
}

void expectLngLat(
    const QJsonValue& value, double lng, double lat, double tolerance, const char* what)
{
    const QJsonArray pair = value.toArray();
    ASSERT_EQ(pair.size(), 2) << what;
    EXPECT_NEAR(pair[0].toDouble(), lng, tolerance) << what;
    EXPECT_NEAR(pair[1].toDouble(), lat, tolerance) << what;
}

void keepScreenshot(MapWindow& window, const QString& name)
{
    const QString dir = qEnvironmentVariable("TAVRO_SCREENSHOT_DIR");
    if (dir.isEmpty())
        return;
    QTest::qWait(500); // let the page's last changes reach the screen
    window.grabWindow().save(QDir(dir).filePath(name));
}

class MapPageTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        qputenv(MapController::kTileUrlEnvironment, kUnreachableTiles);
        m_view.resize(480, 320);
        m_view.show();
    }
    void TearDown() override { qunsetenv(MapController::kTileUrlEnvironment); }

    MapWindow m_view;
};

const GpsPoint kRoute[] = {
    { 37.5000f, 127.0000f }, { 37.5010f, 127.0020f },
    { 37.5010f, 127.0020f }, // same place: one point
    { 37.5030f, 127.0050f }, { 37.5000f, 127.0000f }, // back at the start: drawn again
};

} // namespace

TEST_F(MapPageTest, CallsSentBeforeTheLoadAreAppliedAfterIt)
{
    MapController controller;
    controller.initWithMapWindow(&m_view);
    EXPECT_EQ(controller.mapWindow(), &m_view);
    QSignalSpy loaded(&m_view, &MapWindow::loadFinished);

    // The playback session sends these right after load(), before the page exists.
    controller.load();
    controller.addRoute(makeGpsRecord({ std::begin(kRoute), std::end(kRoute) }));
    controller.moveToLat(37.5010f, 127.0020f);
    const QString note = QStringLiteral("Hors ligne : la \"carte\" n'est pas disponible\n");
    controller.setOfflineText(note);
    ASSERT_TRUE(loaded.wait(kPageTimeoutMs));

    QJsonObject state;
    ASSERT_TRUE(waitForState(
        m_view, [](const QJsonObject& s) { return s[QStringLiteral("position")].isArray(); },
        &state))
        << QJsonDocument(state).toJson().toStdString();
    EXPECT_TRUE(loaded[0][0].toBool());

    EXPECT_EQ(state[QStringLiteral("leafletVersion")].toString().toStdString(), "1.9.4");
    EXPECT_TRUE(state[QStringLiteral("initialized")].toBool());
    EXPECT_EQ(state[QStringLiteral("pending")].toInt(), 0);
    const QJsonArray route = state[QStringLiteral("route")].toArray();
    ASSERT_EQ(route.size(), 4);
    expectLngLat(route[0], 127.0000, 37.5000, 1e-5, "route 0");
    expectLngLat(route[1], 127.0020, 37.5010, 1e-5, "route 1");
    expectLngLat(route[2], 127.0050, 37.5030, 1e-5, "route 2");
    expectLngLat(route[3], 127.0000, 37.5000, 1e-5, "route 3");
    EXPECT_EQ(state[QStringLiteral("routeColour")].toString().toStdString(), "red");
    EXPECT_EQ(state[QStringLiteral("routeWidth")].toDouble(), 4.0);
    EXPECT_EQ(state[QStringLiteral("routeOpacity")].toDouble(), 0.5);
    EXPECT_TRUE(state[QStringLiteral("routeDrawn")].toBool());
    expectLngLat(state[QStringLiteral("position")], 127.0020, 37.5010, 1e-5, "position");
    expectLngLat(state[QStringLiteral("center")], 127.0020, 37.5010, 1e-4, "centre");
    EXPECT_EQ(state[QStringLiteral("scriptErrors")].toInt(), 0);

    // No tile can be fetched: the note says so, the route is still there.
    ASSERT_TRUE(waitForState(
        m_view, [](const QJsonObject& s) { return s[QStringLiteral("offlineNoteShown")].toBool(); },
        &state))
        << QJsonDocument(state).toJson().toStdString();
    EXPECT_GT(state[QStringLiteral("tileErrors")].toInt(), 0);
    EXPECT_EQ(state[QStringLiteral("tileLoads")].toInt(), 0);
    EXPECT_EQ(state[QStringLiteral("offlineNote")].toString(), note);
    keepScreenshot(m_view, QStringLiteral("map-offline-route.png"));
}

TEST_F(MapPageTest, MoveToCentresTheMapAndANewRouteReplacesTheOld)
{
    MapController controller;
    controller.initWithMapWindow(&m_view);
    QSignalSpy loaded(&m_view, &MapWindow::loadFinished);
    controller.load();
    ASSERT_TRUE(loaded.wait(kPageTimeoutMs));
    ASSERT_TRUE(waitForState(
        m_view, [](const QJsonObject& s) { return s[QStringLiteral("initialized")].toBool(); }));

    const struct {
        float lat;
        float lng;
    } positions[] = { { 48.8584f, 2.2945f }, { -33.8568f, 151.2153f }, { 40.6892f, -74.0445f } };
    for (const auto& p : positions) {
        controller.moveToLat(p.lat, p.lng);
        QJsonObject state;
        EXPECT_TRUE(waitForState(
            m_view,
            [&](const QJsonObject& s) {
                const QJsonArray c = s[QStringLiteral("center")].toArray();
                return c.size() == 2 && std::abs(c[0].toDouble() - p.lng) < 1e-4
                    && std::abs(c[1].toDouble() - p.lat) < 1e-4;
            },
            &state))
            << p.lat << "," << p.lng << " " << QJsonDocument(state).toJson().toStdString();
        expectLngLat(state[QStringLiteral("position")], p.lng, p.lat, 1e-5, "position");
        EXPECT_GE(state[QStringLiteral("zoom")].toInt(), 10);
    }

    controller.addRoute(makeGpsRecord({ { 51.5f, -0.125f }, { 51.5f, -0.12f } }));
    ASSERT_TRUE(waitForState(m_view,
        [](const QJsonObject& s) { return s[QStringLiteral("route")].toArray().size() == 2; }));
    // A clip without positions clears the route; nothing on the page throws.
    controller.addRoute(makeGpsRecord({}));
    QJsonObject state;
    ASSERT_TRUE(waitForState(
        m_view, [](const QJsonObject& s) { return s[QStringLiteral("route")].isNull(); }, &state));
    EXPECT_EQ(state[QStringLiteral("scriptErrors")].toInt(), 0);
    keepScreenshot(m_view, QStringLiteral("map-offline-position.png"));
}

TEST_F(MapPageTest, PageKeepsScriptsUntilLoadedAndStaysOnTheMap)
{
    MapWindow& page = m_view;
    QSignalSpy loaded(&m_view, &MapWindow::loadFinished);
    page.load(MapScripts::pageUrl(QString::fromLatin1(kUnreachableTiles)));
    page.runJavaScript(QStringLiteral("initialize()"));
    page.runJavaScript(QStringLiteral("MapMoveToAuto(10.5,20.25,-1)"));
    EXPECT_FALSE(page.isLoaded());
    EXPECT_EQ(page.pendingScriptCount(), 2);

    ASSERT_TRUE(loaded.wait(kPageTimeoutMs));
    EXPECT_TRUE(page.isLoaded());
    EXPECT_EQ(page.pendingScriptCount(), 0);
    QJsonObject state;
    ASSERT_TRUE(waitForState(
        m_view, [](const QJsonObject& s) { return s[QStringLiteral("position")].isArray(); },
        &state));
    expectLngLat(state[QStringLiteral("center")], 10.5, 20.25, 1e-4, "centre");

    // Navigating away from the map page is refused; the map stays.
    const QUrl mapUrl = m_view.url();
    page.runJavaScript(QStringLiteral("window.location.href = 'file:///etc/hostname'"));
    QTest::qWait(300);
    EXPECT_EQ(m_view.url(), mapUrl);
    ASSERT_TRUE(waitForState(
        m_view, [](const QJsonObject& s) { return s[QStringLiteral("initialized")].toBool(); }));
}

namespace {

QString evaluate(MapWindow& view, const QString& script)
{
    auto result = std::make_shared<QString>();
    auto done = std::make_shared<bool>(false);
    view.evaluate(script, [result, done](const QVariant& value) {
        *result = value.toString();
        *done = true;
    });
    if (!QTest::qWaitFor([done] { return *done; }, kScriptTimeoutMs))
        return QStringLiteral("(no answer)");
    return *result;
}

} // namespace

TEST_F(MapPageTest, PageIsFencedIn)
{
    MapWindow& page = m_view;
    QSignalSpy loaded(&m_view, &MapWindow::loadFinished);
    page.load(MapScripts::pageUrl(QString::fromLatin1(kUnreachableTiles)));
    page.runJavaScript(QStringLiteral("initialize()"));
    ASSERT_TRUE(loaded.wait(kPageTimeoutMs));
    ASSERT_TRUE(waitForState(m_view, [](const QJsonObject& s) {
        return s[QStringLiteral("initialized")].toBool();
    })) << "the page runs under its own policy";
    // No local file, no frame that goes anywhere, a policy in the page.
    const auto* settings = m_view.webView()->property("settings").value<QObject*>();
    ASSERT_NE(settings, nullptr);
    EXPECT_FALSE(settings->property("localContentCanAccessFileUrls").toBool());
    EXPECT_FALSE(settings->property("javascriptCanOpenWindows").toBool());
    EXPECT_TRUE(evaluate(m_view,
        QStringLiteral("document.querySelector('meta[http-equiv=\"Content-Security-Policy\"]')"
                       ".content"))
                    .contains(QStringLiteral("default-src 'none'")));
    evaluate(m_view,
        QStringLiteral("var f = document.createElement('iframe'); f.id = 'probe';"
                       " f.src = 'qrc:/map/mapview.html'; document.body.appendChild(f); 1"));
    QTest::qWait(500);
    EXPECT_NE(evaluate(m_view,
                  QStringLiteral("(function(){ try { return document.getElementById('probe')"
                                 ".contentWindow.location.href; } catch (e) { return 'x'; } })()")),
        QStringLiteral("qrc:/map/mapview.html"));
}
