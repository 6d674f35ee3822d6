#include "display/MapController.h"

#include "display/MapPage.h"
#include "display/MapScripts.h"
#include "display/WebEngineMapPage.h"

#include <QSettings>
#include <QWebEngineView>

MapController::MapController(QObject* parent)
    : QObject(parent)
{
}

MapController::~MapController() = default;

void MapController::initWithWebView(QWebEngineView* webView)
{
    m_webView = webView;
    m_page = std::make_unique<WebEngineMapPage>(webView);
}

void MapController::initWithPage(std::unique_ptr<MapPage> page)
{
    m_webView = nullptr;
    m_page = std::move(page);
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
    if (!m_page)
        return;
    m_page->load(MapScripts::pageUrl(tileUrl()));
    run(QString::fromLatin1(MapScripts::kInitializeScript));
}

void MapController::run(const QString& script)
{
    if (m_page)
        m_page->runJavaScript(script);
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
