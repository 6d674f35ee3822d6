#include "editors/web/WebSettingWebPage.h"

#include "editors/EditorsLogging.h"
#include "editors/web/NoWebRtcScript.h"
#include "editors/web/WebDashcam.h"
#include "editors/web/WebDashcamShim.h"

#include <QWebChannel>
#include <QWebEngineDownloadRequest>
#include <QWebEngineProfile>
#include <QWebEngineScript>
#include <QWebEngineScriptCollection>
#include <QWebEngineSettings>

CardPageInterceptor::CardPageInterceptor(const CardPageAccess& access, QObject* parent)
    : QWebEngineUrlRequestInterceptor(parent)
    , m_access(access)
{
}

void CardPageInterceptor::interceptRequest(QWebEngineUrlRequestInfo& info)
{
    if (m_access.allows(info.requestUrl()))
        return;
    qCDebug(lcEditors) << "settings page request refused:" << info.requestUrl();
    info.block(true);
}

QWebEngineProfile* WebSettingWebPage::makeProfile(const QString& htmlFolder, QObject* parent)
{
    // Off the record: the card's page leaves no cookies, storage or cache behind.
    auto* profile = new QWebEngineProfile(parent);
    profile->setUrlRequestInterceptor(new CardPageInterceptor(CardPageAccess(htmlFolder), profile));
    profile->setHttpCacheType(QWebEngineProfile::MemoryHttpCache);
    profile->setPersistentCookiesPolicy(QWebEngineProfile::NoPersistentCookies);
    QObject::connect(profile, &QWebEngineProfile::downloadRequested, profile,
        [](QWebEngineDownloadRequest* download) { download->cancel(); });
    return profile;
}

WebSettingWebPage::WebSettingWebPage(
    const QString& htmlFolder, QWebEngineProfile* profile, QObject* parent)
    : QWebEnginePage(profile, parent)
    , m_access(htmlFolder)
{
    QWebEngineSettings* s = settings();
    s->setAttribute(QWebEngineSettings::LocalContentCanAccessRemoteUrls, false);
    s->setAttribute(QWebEngineSettings::LocalContentCanAccessFileUrls, true);
    s->setAttribute(QWebEngineSettings::JavascriptCanOpenWindows, false);
    s->setAttribute(QWebEngineSettings::JavascriptCanAccessClipboard, false);
    s->setAttribute(QWebEngineSettings::PluginsEnabled, false);
    s->setAttribute(QWebEngineSettings::PdfViewerEnabled, false);
    s->setAttribute(QWebEngineSettings::ScreenCaptureEnabled, false);
    s->setAttribute(QWebEngineSettings::AllowGeolocationOnInsecureOrigins, false);
    s->setAttribute(QWebEngineSettings::LocalStorageEnabled, true);
    s->setAttribute(QWebEngineSettings::WebRTCPublicInterfacesOnly, true);
    connect(this, &QWebEnginePage::featurePermissionRequested, this,
        [this](const QUrl& origin, Feature feature) {
            setFeaturePermission(origin, feature, PermissionDeniedByUser);
        });

    m_channel = new QWebChannel(this);
    setWebChannel(m_channel, QWebEngineScript::MainWorld);

    QWebEngineScript shim;
    shim.setName(QStringLiteral("tavro-dashcam"));
    shim.setSourceCode(WebDashcamShim::documentCreationScript());
    shim.setInjectionPoint(QWebEngineScript::DocumentCreation);
    shim.setWorldId(QWebEngineScript::MainWorld);
    shim.setRunsOnSubFrames(false);

    QWebEngineScript noWebRtc;
    noWebRtc.setName(QStringLiteral("tavro-no-webrtc"));
    noWebRtc.setSourceCode(NoWebRtcScript::source());
    noWebRtc.setInjectionPoint(QWebEngineScript::DocumentCreation);
    noWebRtc.setWorldId(QWebEngineScript::MainWorld);
    noWebRtc.setRunsOnSubFrames(true);
    scripts().insert(noWebRtc);
    scripts().insert(shim);
}

WebSettingWebPage::~WebSettingWebPage()
{
    m_alive.reset();
}

void WebSettingWebPage::setDashcam(WebDashcam* dashcam)
{
    m_channel->registerObject(QStringLiteral("Dashcam"), dashcam);
}

void WebSettingWebPage::loadPage(const QUrl& url)
{
    load(url);
}

void WebSettingWebPage::evaluate(const QString& script, Answer answer)
{
    std::weak_ptr<int> alive = m_alive;
    runJavaScript(script, QWebEngineScript::MainWorld, [alive, answer](const QVariant& result) {
        if (!alive.expired() && answer)
            answer(result);
    });
}

bool WebSettingWebPage::acceptNavigationRequest(const QUrl& url, NavigationType, bool isMainFrame)
{
    const bool accepted = m_policy ? m_policy(url, isMainFrame) : m_access.allows(url);
    if (!accepted) {
        ++m_refusedNavigations;
        qCDebug(lcEditors) << "settings page navigation refused:" << url;
    }
    return accepted;
}

QWebEnginePage* WebSettingWebPage::createWindow(WebWindowType)
{
    return nullptr;
}

void WebSettingWebPage::javaScriptConsoleMessage(
    JavaScriptConsoleMessageLevel, const QString& message, int lineNumber, const QString& sourceID)
{
    qCDebug(lcEditors) << "settings page:" << sourceID << lineNumber << message;
}
