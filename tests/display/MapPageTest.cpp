// The map page in a real QtWebEngine, without network: the queue of calls
// sent before it has loaded, the route, centring, the offline note and the
// fence. Leaflet's state is read back through tavroMapState().
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

bool isNear(const QJsonValue& value, double lng, double lat, double tolerance)
{
    const QJsonArray pair = value.toArray();
    return pair.size() == 2 && std::abs(pair[0].toDouble() - lng) < tolerance
        && std::abs(pair[1].toDouble() - lat) < tolerance;
}

} // namespace

TEST(MapPageTest, CallsSentBeforeTheLoadAreAppliedAfterItAndThePageIsFencedIn)
{
    MapWindow view;
    view.resize(480, 320);
    view.show();
    MapController controller;
    controller.initWithMapWindow(&view);
    QSignalSpy loaded(&view, &MapWindow::loadFinished);
    // The playback session sends its calls right after the load, before the
    // page exists. At most 512 wait; the oldest go first.
    view.load(MapScripts::pageUrl(QString::fromLatin1(kUnreachableTiles)));
    view.runJavaScript(QStringLiteral("MapMoveToAuto(1,2,-1)"));
    view.runJavaScript(QString::fromLatin1(MapScripts::kInitializeScript));
    for (int i = 0; i < 508; ++i)
        view.runJavaScript(QStringLiteral("void 0"));
    controller.addRoute(makeGpsRecord({ { 37.5000f, 127.0000f }, { 37.5010f, 127.0020f },
        { 37.5010f, 127.0020f }, { 37.5030f, 127.0050f }, { 37.5000f, 127.0000f } }));
    controller.moveToLat(37.5010f, 127.0020f);
    const QString note = QStringLiteral("Hors ligne : la \"carte\" n'est pas disponible\n");
    controller.setOfflineText(note);
    EXPECT_EQ(view.pendingScriptCount(), 512);
    ASSERT_TRUE(loaded.wait(kPageTimeoutMs));
    EXPECT_EQ(view.pendingScriptCount(), 0);

    QJsonObject state
        = waitForState(view, [](const QJsonObject& s) { return s["position"].isArray(); });
    EXPECT_TRUE(state["initialized"].toBool());
    // The repeated point is dropped, the return to the start is drawn.
    const QJsonArray route = state["route"].toArray();
    ASSERT_EQ(route.size(), 4);
    EXPECT_TRUE(isNear(route[3], 127.0000, 37.5000, 1e-5));
    EXPECT_TRUE(isNear(state["position"], 127.0020, 37.5010, 1e-5));
    EXPECT_TRUE(isNear(state["center"], 127.0020, 37.5010, 1e-4));
    // No tile can be fetched: the note says so, the route is still there.
    state = waitForState(view, [](const QJsonObject& s) { return s["offlineNoteShown"].toBool(); });
    EXPECT_GT(state["tileErrors"].toInt(), 0);
    EXPECT_EQ(state["offlineNote"].toString(), note);
    EXPECT_TRUE(state["routeDrawn"].toBool());
    // A later move centres the map.
    controller.moveToLat(-33.8568f, 151.2153f);
    state = waitForState(
        view, [](const QJsonObject& s) { return isNear(s["center"], 151.2153, -33.8568, 1e-4); });
    EXPECT_TRUE(isNear(state["position"], 151.2153, -33.8568, 1e-5));
    EXPECT_GE(state["zoom"].toInt(), 10);
    // A clip without positions clears the route; nothing on the page throws.
    controller.addRoute(makeGpsRecord({}));
    state = waitForState(view, [](const QJsonObject& s) { return s["route"].isNull(); });
    EXPECT_EQ(state["scriptErrors"].toInt(), 0);

    // Navigating away is refused and the map stays; no frame goes anywhere.
    const QUrl mapUrl = view.url();
    view.runJavaScript(QStringLiteral("window.location.href = 'file:///etc/hostname'"));
    QTest::qWait(300);
    EXPECT_EQ(view.url(), mapUrl);
    evaluate(view,
        "var f = document.createElement('iframe'); f.id = 'probe';"
        " f.src = 'qrc:/map/mapview.html'; document.body.appendChild(f); 1");
    QTest::qWait(500);
    EXPECT_NE(evaluate(view,
                  "(function(){ try { return document.getElementById('probe')"
                  ".contentWindow.location.href; } catch (e) { return 'x'; } })()"),
        QStringLiteral("qrc:/map/mapview.html"));
    waitForState(view, [](const QJsonObject& s) { return s["initialized"].toBool(); });
}
