#include "display/MapController.h"

#include "display/MapPage.h"
#include "display/MapScripts.h"
#include "display/MapWindow.h"

#include <QSettings>

MapController::MapController(QObject* parent)
    : QObject(parent)
{
}

MapController::~MapController() = default;

void MapController::initWithMapWindow(MapWindow* window)
{
    m_window = window;
    m_ownedPage.reset();
}

void MapController::initWithPage(std::unique_ptr<MapPage> page)
{
    m_window = nullptr;
    m_ownedPage = std::move(page);
}

// The window goes with the main window's widgets; calls after that go nowhere.
MapPage* MapController::page() const
{
    if (m_window)
        return m_window.data();
    return m_ownedPage.get();
}

QString MapController::tileUrl()
{
    const QString fromEnvironment = qEnvironmentVariable(kTileUrlEnvironment);
    if (!fromEnvironment.isEmpty())
        return fromEnvironment;
    const QString fromSettings = QSettings().value(kTileUrlKey).toString();
    return fromSettings.isEmpty() ? QString::fromLatin1(MapScripts::kDefaultTileUrl) : fromSettings;
}

void MapController::load()
{
    if (!page())
        return;
    page()->load(MapScripts::pageUrl(tileUrl()));
    run(QString::fromLatin1(MapScripts::kInitializeScript));
}

void MapController::run(const QString& script)
{
    if (MapPage* target = page())
        target->runJavaScript(script);
}

void MapController::moveToLat(float lat, float lng)
{
    run(MapScripts::moveToScript(lat, lng));
}

void MapController::setOfflineText(const QString& text)
{
    run(MapScripts::offlineTextScript(text));
}

void MapController::addRoute(const TavroClipData& clipData)
{
    run(MapScripts::routeScript(clipData));
}

void MapController::addRoute(const QVector<QPointF>& points)
{
    run(MapScripts::routeScript(points));
}
