// The map page in a real QtWebEngine, without network: calls sent before it
// has loaded, the route, centring, the offline note, the queue of a page still
// loading, the fence. Leaflet's state is read back through tavroMapState().
#include "ClipDataBuilder.h"
#include "display/MapController.h"
#include "display/MapScripts.h"
#include "display/MapWindow.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSignalSpy>
#include <QTest>

#include <gtest/gtest.h>

namespace {

// Nothing listens on the discard port: every tile fails at once, as offline.
constexpr const char* kUnreachableTiles = "http://127.0.0.1:9/{z}/{x}/{y}.png";
constexpr int kPageTimeoutMs = 10000;

// A script's result; one sent while a document is being replaced may never answer.
QString evaluate(MapWindow& view, const QString& script)
{
    auto result = std::make_shared<std::optional<QString>>();
    view.evaluate(script, [result](const QVariant& value) { *result = value.toString(); });
    (void)QTest::qWaitFor([result] { return result->has_value(); }, 2000);
    return result->value_or(QStringLiteral("(no answer)"));
}

// Waits until the page's state satisfies `wanted`; returns the last state.
QJsonObject waitForState(MapWindow& view, const std::function<bool(const QJsonObject&)>& wanted)
{
    QJsonObject state;
    EXPECT_TRUE(QTest::qWaitFor(
        [&] {
            const QString json
                = evaluate(view, "typeof tavroMapState == 'function' ? tavroMapState() : '{}'");
            state = QJsonDocument::fromJson(json.toUtf8()).object();
            return wanted(state);
        },
        kPageTimeoutMs))
        << QJsonDocument(state).toJson().toStdString();
    return state;
}

void expectLngLat(const QJsonValue& value, double lng, double lat, double tolerance)
{
    const QJsonArray pair = value.toArray();
    ASSERT_EQ(pair.size(), 2);
    EXPECT_NEAR(pair[0].toDouble(), lng, tolerance);
    EXPECT_NEAR(pair[1].toDouble(), lat, tolerance);
}

class MapPageTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        qputenv(MapController::kTileUrlEnvironment, kUnreachableTiles);
        m_view.resize(480, 320);
        m_view.show();
        m_controller.initWithMapWindow(&m_view);
    }
    void TearDown() override
    {
        qunsetenv(MapController::kTileUrlEnvironment);
        EXPECT_EQ(MapController::tileUrl(), MapScripts::kDefaultTileUrl);
    }

    MapWindow m_view;
    MapController m_controller;
};

} // namespace

TEST_F(MapPageTest, CallsSentBeforeTheLoadAreAppliedAfterIt)
{
    QSignalSpy loaded(&m_view, &MapWindow::loadFinished);
    // The playback session sends these right after load(), before the page exists.
    m_controller.load();
    m_controller.addRoute(makeGpsRecord({ { 37.5000f, 127.0000f }, { 37.5010f, 127.0020f },
        { 37.5010f, 127.0020f }, { 37.5030f, 127.0050f }, { 37.5000f, 127.0000f } }));
    m_controller.moveToLat(37.5010f, 127.0020f);
    const QString note = QStringLiteral("Hors ligne : la \"carte\" n'est pas disponible\n");
    m_controller.setOfflineText(note);
    EXPECT_EQ(m_view.pendingScriptCount(), 4);
    ASSERT_TRUE(loaded.wait(kPageTimeoutMs));
    EXPECT_EQ(m_view.pendingScriptCount(), 0);

    QJsonObject state
        = waitForState(m_view, [](const QJsonObject& s) { return s["position"].isArray(); });
    EXPECT_EQ(state["leafletVersion"].toString(), "1.9.4");
    EXPECT_TRUE(state["initialized"].toBool());
    // The repeated point is dropped, the return to the start is drawn.
    const QJsonArray route = state["route"].toArray();
    ASSERT_EQ(route.size(), 4);
    expectLngLat(route[3], 127.0000, 37.5000, 1e-5);
    EXPECT_EQ(state["routeColour"].toString(), "red");
    expectLngLat(state["position"], 127.0020, 37.5010, 1e-5);
    expectLngLat(state["center"], 127.0020, 37.5010, 1e-4);
    EXPECT_EQ(state["scriptErrors"].toInt(), 0);
    // No tile can be fetched: the note says so, the route is still there.
    state
        = waitForState(m_view, [](const QJsonObject& s) { return s["offlineNoteShown"].toBool(); });
    EXPECT_GT(state["tileErrors"].toInt(), 0);
    EXPECT_EQ(state["tileLoads"].toInt(), 0);
    EXPECT_EQ(state["offlineNote"].toString(), note);
    EXPECT_TRUE(state["routeDrawn"].toBool());
    // A later move centres the map; a new route replaces the old.
    m_controller.moveToLat(-33.8568f, 151.2153f);
    state = waitForState(m_view, [](const QJsonObject& s) {
        const QJsonArray c = s["center"].toArray();
        return c.size() == 2 && std::abs(c[0].toDouble() - 151.2153) < 1e-4
            && std::abs(c[1].toDouble() + 33.8568) < 1e-4;
    });
    expectLngLat(state["position"], 151.2153, -33.8568, 1e-5);
    EXPECT_GE(state["zoom"].toInt(), 10);
    m_controller.addRoute(makeGpsRecord({ { 51.5f, -0.125f }, { 51.5f, -0.12f } }));
    waitForState(m_view, [](const QJsonObject& s) { return s["route"].toArray().size() == 2; });
    // A clip without positions clears the route; nothing on the page throws.
    m_controller.addRoute(makeGpsRecord({}));
    state = waitForState(m_view, [](const QJsonObject& s) { return s["route"].isNull(); });
    EXPECT_EQ(state["scriptErrors"].toInt(), 0);
}

TEST_F(MapPageTest, PageIsFencedIn)
{
    // At most 512 scripts wait for the page; the oldest go first.
    m_view.load(MapScripts::pageUrl(QString::fromLatin1(kUnreachableTiles)));
    m_view.runJavaScript(QStringLiteral("MapMoveToAuto(1,2,-1)"));
    m_view.runJavaScript(QStringLiteral("initialize()"));
    for (int i = 0; i < 511; ++i)
        m_view.runJavaScript(QStringLiteral("void 0"));
    EXPECT_EQ(m_view.pendingScriptCount(), 512);
    waitForState(m_view, [](const QJsonObject& s) { return s["initialized"].toBool(); });
    // Navigating away is refused and the map stays; no local file, no window,
    // a policy in the page, no frame that goes anywhere.
    const QUrl mapUrl = m_view.url();
    m_view.runJavaScript(QStringLiteral("window.location.href = 'file:///etc/hostname'"));
    QTest::qWait(300);
    EXPECT_EQ(m_view.url(), mapUrl);
    const auto* settings = m_view.webView()->property("settings").value<QObject*>();
    ASSERT_NE(settings, nullptr);
    EXPECT_FALSE(settings->property("localContentCanAccessFileUrls").toBool());
    EXPECT_FALSE(settings->property("javascriptCanOpenWindows").toBool());
    EXPECT_TRUE(evaluate(
        m_view, "document.querySelector('meta[http-equiv=\"Content-Security-Policy\"]').content")
                    .contains(QStringLiteral("default-src 'none'")));
    evaluate(m_view,
        "var f = document.createElement('iframe'); f.id = 'probe';"
        " f.src = 'qrc:/map/mapview.html'; document.body.appendChild(f); 1");
    QTest::qWait(500);
    EXPECT_NE(evaluate(m_view,
                  "(function(){ try { return document.getElementById('probe')"
                  ".contentWindow.location.href; } catch (e) { return 'x'; } })()"),
        QStringLiteral("qrc:/map/mapview.html"));
    waitForState(m_view, [](const QJsonObject& s) { return s["initialized"].toBool(); });
}
