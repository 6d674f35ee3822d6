#pragma once

#include "display/MapPage.h"

#include <QHash>
#include <QPointer>
#include <QQuickView>
#include <QStringList>

#include <functional>

class MapRequestGuard;
class QQuickWebEngineProfile;

// The map page in a window of its own: a Qt Quick window holding a web view,
// placed in the main window through a window container. Web content drawn by
// a widget would make Qt compose the whole main window through OpenGL on
// every change of any widget; in a window of its own, the map costs only its
// own pixels and the main window keeps repainting just what changes.
//
// Scripts sent while the page is loading wait here and run, in order, once it
// has loaded. The page stays on the map: it navigates nowhere else, opens no
// window, reaches only its own resources and the tile server, and hands links
// to the desktop's browser.
class MapWindow : public QQuickView, public MapPage {
    Q_OBJECT
public:
    explicit MapWindow(QWindow* parent = nullptr);
    ~MapWindow() override;

    void load(const QUrl& url) override;
    void runJavaScript(const QString& script) override;
    // Runs `script` on the page as it is now and hands its result to `done`
    // later, on this thread (never if the window goes first).
    void evaluate(const QString& script, std::function<void(const QVariant&)> done);

    bool isLoaded() const { return m_loaded; }
    int pendingScriptCount() const { return static_cast<int>(m_pending.size()); }
    QUrl url() const;
    // The web view item (for its settings).
    QObject* webView() const { return m_web; }

    // The profile every map page shares: tiles are cached on disk and fetched
    // with an identifying User-Agent, as tile servers ask of applications.
    static QQuickWebEngineProfile* sharedProfile();

    // Called from the window's QML.
    Q_INVOKABLE bool acceptNavigation(const QUrl& url, bool linkClicked, bool mainFrame);
    Q_INVOKABLE void openRequestedWindow(const QUrl& url, bool userInitiated);
    Q_INVOKABLE void loadEnded(bool ok);
    Q_INVOKABLE void consoleMessage(
        int level, const QString& message, int lineNumber, const QString& sourceId);
    Q_INVOKABLE void scriptResult(int id, const QVariant& value);

signals:
    void loadFinished(bool ok);

private:
    static MapRequestGuard* sharedGuard();
    void send(const QString& script);

    QPointer<QObject> m_web;
    bool m_loaded = false;
    QStringList m_pending;
    int m_nextScriptId = 0;
    QHash<int, std::function<void(const QVariant&)>> m_waiting;
};
