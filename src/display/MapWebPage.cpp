#include "display/MapWebPage.h"

#include "display/DisplayLogging.h"

#include <QColor>
#include <QDesktopServices>

namespace {

bool isOwnPage(const QUrl& url)
{
    return url.scheme() == QLatin1String("qrc") || url.scheme() == QLatin1String("about");
}

bool isWebLink(const QUrl& url)
{
    return url.scheme() == QLatin1String("https") || url.scheme() == QLatin1String("http");
}

} // namespace

MapWebPage::MapWebPage(QWebEngineProfile* profile, QObject* parent)
    : QWebEnginePage(profile, parent)
{
    setBackgroundColor(QColor(0xd5, 0xd8, 0xdc));
}

bool MapWebPage::acceptNavigationRequest(const QUrl& url, NavigationType type, bool isMainFrame)
{
    // Sub-frames never navigate anywhere; the page itself stays on its own.
    if (!isMainFrame)
        return false;
    if (isOwnPage(url))
        return true;
    if (type == NavigationTypeLinkClicked && isWebLink(url))
        QDesktopServices::openUrl(url);
    return false;
}

QWebEnginePage* MapWebPage::createWindow(WebWindowType)
{
    // target="_blank" links: never a second web view; the link request that
    // follows is refused above after handing the address to the browser.
    return this;
}

void MapWebPage::javaScriptConsoleMessage(JavaScriptConsoleMessageLevel level,
    const QString& message, int lineNumber, const QString& sourceID)
{
    qCDebug(lcDisplay) << "map page" << level << sourceID << lineNumber << message;
}
