#pragma once

#include <QWebEnginePage>

// The map page's web page: it stays on the viewer's own map page. Links the
// page offers (the tile attribution) open in the user's browser instead.
class MapWebPage : public QWebEnginePage {
    Q_OBJECT
public:
    MapWebPage(QWebEngineProfile* profile, QObject* parent);

protected:
    bool acceptNavigationRequest(const QUrl& url, NavigationType type, bool isMainFrame) override;
    QWebEnginePage* createWindow(WebWindowType type) override;
    void javaScriptConsoleMessage(JavaScriptConsoleMessageLevel level, const QString& message,
        int lineNumber, const QString& sourceID) override;
};
