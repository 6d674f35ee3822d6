#pragma once

#include "editors/web/CardPageAccess.h"
#include "editors/web/WebSettingPage.h"

#include <QWebEnginePage>
#include <QWebEngineUrlRequestInterceptor>

#include <functional>
#include <memory>

class QWebChannel;
class QWebEngineProfile;
class WebDashcam;

// Refuses every request of the settings page that CardPageAccess does not
// allow: remote hosts, other local files, other schemes.
class CardPageInterceptor : public QWebEngineUrlRequestInterceptor {
    Q_OBJECT
public:
    CardPageInterceptor(const CardPageAccess& access, QObject* parent);
    void interceptRequest(QWebEngineUrlRequestInfo& info) override;

private:
    const CardPageAccess m_access;
};

// The camera's settings page in QtWebEngine. A profile of its own that keeps
// nothing on disk, no pop-up windows, no downloads, no permissions, no WebRTC;
// every navigation is asked of a policy (the window's handshake state plus the
// card folder rule); the page's "Dashcam" is installed at document creation
// over a QWebChannel. The process must have been prepared with
// WebEngineProcess::prepare().
class WebSettingWebPage : public QWebEnginePage, public WebSettingPage {
    Q_OBJECT
public:
    using NavigationPolicy = std::function<bool(const QUrl& url, bool isMainFrame)>;

    // `htmlFolder` is the card's SETTING/html. The profile comes from
    // makeProfile() and must outlive the page (delete the page first).
    WebSettingWebPage(const QString& htmlFolder, QWebEngineProfile* profile, QObject* parent);

    // A profile of its own for the card's page: off the record, requests
    // outside the html folder refused, downloads cancelled.
    static QWebEngineProfile* makeProfile(const QString& htmlFolder, QObject* parent);
    ~WebSettingWebPage() override;

    void setNavigationPolicy(NavigationPolicy policy) { m_policy = std::move(policy); }
    // Registers the bridge as "Dashcam" for the page (not owned).
    void setDashcam(WebDashcam* dashcam);

    void loadPage(const QUrl& url) override;
    void evaluate(const QString& script, Answer answer = {}) override;

    const CardPageAccess& access() const { return m_access; }
    int refusedNavigations() const { return m_refusedNavigations; }

protected:
    bool acceptNavigationRequest(const QUrl& url, NavigationType type, bool isMainFrame) override;
    QWebEnginePage* createWindow(WebWindowType type) override;
    void javaScriptConsoleMessage(JavaScriptConsoleMessageLevel level, const QString& message,
        int lineNumber, const QString& sourceID) override;

private:
    CardPageAccess m_access;
    NavigationPolicy m_policy;
    QWebChannel* m_channel = nullptr;
    int m_refusedNavigations = 0;
    std::shared_ptr<int> m_alive = std::make_shared<int>(0);
};
