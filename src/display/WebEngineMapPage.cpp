#include "display/WebEngineMapPage.h"

#include "TavroVersion.h"
#include "display/DisplayLogging.h"
#include "display/MapRequestGuard.h"
#include "display/MapScripts.h"
#include "display/MapWebPage.h"

#include <QCoreApplication>
#include <QDir>
#include <QStandardPaths>
#include <QUrlQuery>
#include <QWebEngineProfile>
#include <QWebEngineSettings>
#include <QWebEngineView>

namespace {

// Positions arrive once a second; a page that never loads must not collect
// them without end.
constexpr int kMaxPendingScripts = 512;
constexpr qint64 kTileCacheBytes = 200 * 1024 * 1024;

} // namespace

QWebEngineProfile* WebEngineMapPage::sharedProfile()
{
    static QWebEngineProfile* profile = [] {
        auto* p = new QWebEngineProfile(QStringLiteral("tavro-map"), QCoreApplication::instance());
        const QString cache = QStandardPaths::writableLocation(QStandardPaths::CacheLocation);
        p->setCachePath(QDir(cache).filePath(QStringLiteral("map")));
        p->setHttpCacheType(QWebEngineProfile::DiskHttpCache);
        p->setHttpCacheMaximumSize(kTileCacheBytes);
        p->setPersistentCookiesPolicy(QWebEngineProfile::NoPersistentCookies);
        p->setHttpUserAgent(
            QStringLiteral("TavroViewer/%1 (Linux dash-camera clip viewer; QtWebEngine)")
                .arg(Tavro::versionString()));
        return p;
    }();
    return profile;
}

WebEngineMapPage::WebEngineMapPage(QWebEngineView* view)
    : QObject(nullptr)
    , m_view(view)
{
    auto* page = new MapWebPage(sharedProfile(), view);
    // The page lives in the viewer's resources and fetches tiles from the
    // web: from the tile server only, and never a local file.
    page->settings()->setAttribute(QWebEngineSettings::LocalContentCanAccessRemoteUrls, true);
    page->settings()->setAttribute(QWebEngineSettings::LocalContentCanAccessFileUrls, false);
    page->settings()->setAttribute(QWebEngineSettings::JavascriptCanOpenWindows, false);
    m_guard = new MapRequestGuard(page);
    page->setUrlRequestInterceptor(m_guard);
    view->setPage(page);
    view->setContextMenuPolicy(Qt::NoContextMenu);
    connect(view, &QWebEngineView::loadFinished, this, &WebEngineMapPage::onLoadFinished);
}

void WebEngineMapPage::load(const QUrl& url)
{
    if (m_view.isNull())
        return;
    m_loaded = false;
    // The tile server is the one the page is told to use.
    const QString tiles
        = QUrlQuery(url).queryItemValue(QStringLiteral("tiles"), QUrl::FullyDecoded);
    m_guard->setTileUrl(tiles.isEmpty() ? QString::fromLatin1(MapScripts::kDefaultTileUrl) : tiles);
    m_view->load(url);
}

void WebEngineMapPage::runJavaScript(const QString& script)
{
    if (m_view.isNull())
        return;
    if (m_loaded) {
        m_view->page()->runJavaScript(script);
        return;
    }
    if (m_pending.size() >= kMaxPendingScripts)
        m_pending.removeFirst();
    m_pending.append(script);
}

// A refused navigation (a link the page offers) also ends in loadFinished(false);
// the map page stays, so only a successful load changes anything.
void WebEngineMapPage::onLoadFinished(bool ok)
{
    if (!ok) {
        qCDebug(lcDisplay) << "map page load did not finish:" << m_view->url();
        return;
    }
    if (m_loaded || m_view.isNull())
        return;
    m_loaded = true;
    const QStringList scripts = std::exchange(m_pending, {});
    for (const QString& script : scripts)
        m_view->page()->runJavaScript(script);
}
