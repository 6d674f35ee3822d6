#pragma once

#include "display/MapPage.h"

#include <QObject>
#include <QPointer>
#include <QStringList>
#include <QWebEngineView>

class MapRequestGuard;
class QWebEngineProfile;

// The map page in a QWebEngineView. Scripts sent while the page is loading
// wait here and run in order once it has finished loading.
class WebEngineMapPage : public QObject, public MapPage {
    Q_OBJECT
public:
    // Not a child of the view: the owner may outlive it. Gives the view the map's own web page
    // (profile with disk cache and the viewer's User-Agent, navigation kept on the map page).
    explicit WebEngineMapPage(QWebEngineView* view);

    void load(const QUrl& url) override;
    void runJavaScript(const QString& script) override;

    QWebEngineView* view() const { return m_view; }
    bool isLoaded() const { return m_loaded; }
    int pendingScriptCount() const { return static_cast<int>(m_pending.size()); }

    // The profile every map page shares: tiles are cached on disk and fetched
    // with an identifying User-Agent, as tile servers ask of applications.
    static QWebEngineProfile* sharedProfile();

private:
    void onLoadFinished(bool ok);

    QPointer<QWebEngineView> m_view;
    MapRequestGuard* m_guard = nullptr; // owned by the page
    bool m_loaded = false;
    QStringList m_pending;
};
