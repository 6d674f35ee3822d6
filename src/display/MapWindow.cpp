#include "display/MapWindow.h"

#include "TavroVersion.h"
#include "display/DisplayLogging.h"
#include "display/MapRequestGuard.h"
#include "display/MapScripts.h"

#include <QCoreApplication>
#include <QDesktopServices>
#include <QDir>
#include <QQmlContext>
#include <QQmlError>
#include <QQuickItem>
#include <QQuickWebEngineProfile>
#include <QStandardPaths>
#include <QUrlQuery>

namespace {

// Positions arrive once a second; a page that never loads must not collect
// them without end.
constexpr int kMaxPendingScripts = 512;
constexpr qint64 kTileCacheBytes = 200 * 1024 * 1024;
const QColor kBackground(0xd5, 0xd8, 0xdc);

bool isOwnPage(const QUrl& url)
{
    return url.scheme() == QLatin1String("qrc") || url.scheme() == QLatin1String("about");
}

bool isWebLink(const QUrl& url)
{
    return url.scheme() == QLatin1String("https") || url.scheme() == QLatin1String("http");
}

} // namespace

QQuickWebEngineProfile* MapWindow::sharedProfile()
{
    static QQuickWebEngineProfile* profile = [] {
        auto* p = new QQuickWebEngineProfile(QCoreApplication::instance());
        p->setStorageName(QStringLiteral("tavro-map"));
        p->setOffTheRecord(false);
        const QString cache = QStandardPaths::writableLocation(QStandardPaths::CacheLocation);
        p->setCachePath(QDir(cache).filePath(QStringLiteral("map")));
        p->setHttpCacheType(QQuickWebEngineProfile::DiskHttpCache);
        p->setHttpCacheMaximumSize(kTileCacheBytes);
        p->setPersistentCookiesPolicy(QQuickWebEngineProfile::NoPersistentCookies);
        p->setHttpUserAgent(
            QStringLiteral("TavroViewer/%1 (Linux dash-camera clip viewer; QtWebEngine)")
                .arg(Tavro::versionString()));
        p->setUrlRequestInterceptor(sharedGuard());
        return p;
    }();
    return profile;
}

// One guard for the one profile; the page being loaded tells it its tile server.
MapRequestGuard* MapWindow::sharedGuard()
{
    static MapRequestGuard* guard = new MapRequestGuard(QCoreApplication::instance());
    return guard;
}

MapWindow::MapWindow(QWindow* parent)
    : QQuickView(parent)
{
    setColor(kBackground);
    setResizeMode(QQuickView::SizeRootObjectToView);
    rootContext()->setContextProperty(QStringLiteral("mapHost"), this);
    rootContext()->setContextProperty(QStringLiteral("mapProfile"), sharedProfile());
    setSource(QUrl(QStringLiteral("qrc:/map/MapHost.qml")));
    if (rootObject())
        m_web = rootObject()->findChild<QObject*>(QStringLiteral("mapWeb"));
    if (!m_web) {
        for (const QQmlError& error : errors())
            qCWarning(lcDisplay) << "map window:" << error.toString();
    }
}

MapWindow::~MapWindow() = default;

QUrl MapWindow::url() const
{
    return m_web ? m_web->property("url").toUrl() : QUrl();
}

void MapWindow::load(const QUrl& url)
{
    if (!m_web)
        return;
    m_loaded = false;
    // The tile server is the one the page is told to use.
    const QString tiles
        = QUrlQuery(url).queryItemValue(QStringLiteral("tiles"), QUrl::FullyDecoded);
    sharedGuard()->setTileUrl(
        tiles.isEmpty() ? QString::fromLatin1(MapScripts::kDefaultTileUrl) : tiles);
    m_web->setProperty("url", url);
}

void MapWindow::runJavaScript(const QString& script)
{
    if (m_loaded) {
        send(script);
        return;
    }
    if (m_pending.size() >= kMaxPendingScripts)
        m_pending.removeFirst();
    m_pending.append(script);
}

void MapWindow::send(const QString& script)
{
    if (rootObject())
        QMetaObject::invokeMethod(rootObject(), "run", Q_ARG(QVariant, script));
}

void MapWindow::evaluate(const QString& script, std::function<void(const QVariant&)> done)
{
    if (!rootObject())
        return;
    const int id = m_nextScriptId++;
    m_waiting.insert(id, std::move(done));
    QMetaObject::invokeMethod(
        rootObject(), "evaluate", Q_ARG(QVariant, id), Q_ARG(QVariant, script));
}

void MapWindow::scriptResult(int id, const QVariant& value)
{
    const auto done = m_waiting.take(id);
    if (done)
        done(value);
}

// Sub-frames never navigate anywhere; the page itself stays on its own. A
// link the user follows opens in the desktop's browser.
bool MapWindow::acceptNavigation(const QUrl& url, bool linkClicked, bool mainFrame)
{
    if (!mainFrame)
        return false;
    if (isOwnPage(url))
        return true;
    if (linkClicked && isWebLink(url))
        QDesktopServices::openUrl(url);
    return false;
}

// target="_blank" links: never a second web view, the browser instead.
void MapWindow::openRequestedWindow(const QUrl& url, bool userInitiated)
{
    if (userInitiated && isWebLink(url))
        QDesktopServices::openUrl(url);
}

// A refused navigation (a link the page offers) also ends in a failed load;
// the map page stays, so only a successful load changes anything.
void MapWindow::loadEnded(bool ok)
{
    emit loadFinished(ok);
    if (!ok) {
        qCDebug(lcDisplay) << "map page load did not finish:" << url();
        return;
    }
    if (m_loaded)
        return;
    m_loaded = true;
    const QStringList scripts = std::exchange(m_pending, {});
    for (const QString& script : scripts)
        send(script);
}

void MapWindow::consoleMessage(
    int level, const QString& message, int lineNumber, const QString& sourceId)
{
    qCDebug(lcDisplay) << "map page" << level << sourceId << lineNumber << message;
}
