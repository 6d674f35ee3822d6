#include "editors/web/WebSettingWindowController.h"

#include "config/AlertSink.h"
#include "editors/EditorsLogging.h"
#include "editors/web/WebDashcam.h"
#include "editors/web/WebSettingPage.h"
#include "editors/web/WebSettingScripts.h"
#include "i18n/LocalizationKeys.h"

#include <QFile>
#include <QTimer>

#include <cmath>
#include <limits>

namespace {

WebSettingWindowController* s_instance = nullptr;

WebSettingWindowController::AskFormatHandler& askFormatHandler()
{
    static WebSettingWindowController::AskFormatHandler handler;
    return handler;
}

// A page that keeps sending notifications while one is open gets them shown
// one after the other, up to this many waiting.
constexpr qsizetype kMaxWaitingNotifications = 16;

// The page's "model.cfgSize" as a 32-bit integer: numbers are truncated,
// numeric text is read, anything else is 0.
qint32 integerValue(const QVariant& value)
{
    if (value.typeId() == QMetaType::QString)
        return leadingIntValue(value.toString());
    bool ok = false;
    const double number = value.toDouble(&ok);
    if (!ok || !std::isfinite(number))
        return 0;
    const double clamped = std::clamp(number, double(std::numeric_limits<qint32>::min()),
        double(std::numeric_limits<qint32>::max()));
    return qint32(clamped);
}

QString textValue(const QVariant& value)
{
    return value.isValid() && !value.isNull() ? value.toString() : QString();
}

} // namespace

WebSettingWindowController* WebSettingWindowController::instance()
{
    return s_instance;
}

void WebSettingWindowController::setAskFormatHandler(AskFormatHandler handler)
{
    askFormatHandler() = std::move(handler);
}

WebSettingWindowController::WebSettingWindowController(const QString& folder,
    const CameraLanguageList& languages, WebSettingPage& page, WebSettingWindowView& view,
    QObject* parent)
    : QObject(parent)
    , m_folder(folder)
    , m_languages(languages)
    , m_page(page)
    , m_view(view)
{
}

WebSettingWindowController::~WebSettingWindowController()
{
    endModalSession();
}

void WebSettingWindowController::beginModal()
{
    s_instance = this;
}

void WebSettingWindowController::endModalSession()
{
    if (s_instance == this)
        s_instance = nullptr;
}

WebDashcam* WebSettingWindowController::webDashcam()
{
    if (!m_webDashcam)
        m_webDashcam = std::make_unique<WebDashcam>(this);
    return m_webDashcam.get();
}

void WebSettingWindowController::windowDidLoad()
{
    m_view.setBackButtonVisible(false);
    m_dateTimeUse = false;
    m_page.loadPage(WebSettingCard::indexHtmlFilename(m_folder));
}

void WebSettingWindowController::mainFrameDidFinishLoad(bool ok)
{
    // A refused navigation also reports an unfinished load; only a page that
    // has loaded is greeted.
    if (ok)
        startWebBrowserConnection();
}

void WebSettingWindowController::awaitAnswer(const QString& script, AnswerHandler handler)
{
    auto settled = std::make_shared<bool>(false);
    std::weak_ptr<int> alive = m_alive;
    m_page.evaluate(script, [alive, settled, handler](const QVariant& result) {
        if (alive.expired() || *settled)
            return;
        *settled = true;
        handler(result, true);
    });
    QTimer::singleShot(m_answerTimeoutMs, this, [this, script, settled, handler] {
        if (*settled)
            return;
        *settled = true;
        qCDebug(lcEditors) << "settings page did not answer" << script;
        handler(QVariant(), false);
    });
}

void WebSettingWindowController::startWebBrowserConnection()
{
    if (m_didLoadHtml)
        return;
    m_didLoadHtml = true;
    awaitAnswer(
        QString::fromLatin1(WebSettingScripts::kModelName), [this](const QVariant& name, bool) {
            m_modelName = textValue(name);
            awaitAnswer(QString::fromLatin1(WebSettingScripts::kModelCfgSize),
                [this](const QVariant& size, bool) {
                    m_cfgSize = integerValue(size);
                    sendRecordAndLanguages();
                });
        });
}

void WebSettingWindowController::sendRecordAndLanguages()
{
    const QString record = cfgString();
    m_page.evaluate(WebSettingScripts::setCfg(record));
    m_page.evaluate(WebSettingScripts::setParamLanguage(m_languages));
    // A record without a language field, or an index the camera's list does
    // not have, leaves the page's own choice.
    const std::optional<quint32> index = WebSettingScripts::languageIndex(record);
    if (index && *index < quint32(m_languages.size()))
        m_page.evaluate(WebSettingScripts::setLanguage(m_languages.at(qsizetype(*index)).second));
    else
        qCDebug(lcEditors) << "no camera language for index" << index.value_or(0);

    const std::optional<WebSettingCard::TimeRequest> time
        = WebSettingCard::readTimeDat(WebSettingCard::timedateFilename(m_folder));
    if (!time) {
        m_dateTimeUse = false;
        return;
    }
    m_time = *time;
    m_dateTimeUse = true;
    m_page.evaluate(WebSettingScripts::setTimeDate(m_time.date));
    m_page.evaluate(WebSettingScripts::setTimeHour(m_time.hour));
    m_page.evaluate(WebSettingScripts::setTimeMin(m_time.min));
}

void WebSettingWindowController::showTabs(bool showFirstView)
{
    m_page.evaluate(WebSettingScripts::generateSetting(showFirstView));
    m_view.setBackButtonVisible(false);
}

QString WebSettingWindowController::cfgStringWithData(const QByteArray& data)
{
    return WebSettingScripts::cfgStringWithData(data);
}

QString WebSettingWindowController::cfgString() const
{
    return cfgStringWithData(WebSettingCard::readRecord(WebSettingCard::cfgFilename(m_folder)));
}

void WebSettingWindowController::resetCfg()
{
    // Only the page changes; the card keeps its record until Save.
    const QByteArray defaults
        = WebSettingCard::readRecord(WebSettingCard::defaultCfgFilename(m_folder));
    m_page.evaluate(WebSettingScripts::setCfg(cfgStringWithData(defaults)));
    showTabs(true);
}

void WebSettingWindowController::saveConfig(std::function<void(SaveOutcome)> done)
{
    awaitAnswer(QString::fromLatin1(WebSettingScripts::kGetCfg),
        [this, done](const QVariant& record, bool answered) {
            // A script error, no answer or an answer that is not text is not
            // a record: the card keeps what it has.
            const bool isRecord = answered && record.typeId() == QMetaType::QString;
            SaveOutcome outcome = SaveOutcome::NoRecord;
            if (isRecord)
                outcome = writeCard(WebSettingScripts::dataFromCfgString(record.toString()));
            else
                qCDebug(lcEditors) << "settings page gave no record; nothing written";
            if (done)
                done(outcome);
        });
}

WebSettingWindowController::SaveOutcome WebSettingWindowController::writeCard(
    const QByteArray& record)
{
    // A page hands back an empty record when it was given none (a card
    // without setup.cfg, or Reset on a card without default.cfg). The camera
    // can't start from an empty file: the card keeps its own.
    if (record.isEmpty()) {
        qCDebug(lcEditors) << "settings page gave an empty record; nothing written";
        m_view.showMessage(QString::fromUtf8(LocalizationKeys::kSaveFailed),
            QString::fromUtf8(LocalizationKeys::kEmptySettingsRecordKept));
        return SaveOutcome::EmptyRecord;
    }
    // The clock request goes first, then the record; failed writes pass in
    // silence, as every card write of this window does.
    if (m_dateTimeUse
        && !WebSettingCard::writeSettingFile(
            m_folder, QStringLiteral("time.dat"), WebSettingCard::timeDatText(m_time)))
        qCDebug(lcEditors) << "time.dat not written";
    if (!WebSettingCard::writeSettingFile(m_folder, QStringLiteral("setup.cfg"), record))
        qCDebug(lcEditors) << "setup.cfg not written";
    return SaveOutcome::Written;
}

void WebSettingWindowController::askFormat(QWidget* window)
{
    if (askFormatHandler())
        askFormatHandler()(window, m_folder);
}

void WebSettingWindowController::showPopup(const QString& fields)
{
    const std::optional<WebNotification> notification = WebNotification::parse(fields);
    if (!notification)
        return;
    showAlertWithTitle(notification->title, notification->message, notification->index,
        notification->value, notification->buttonCount);
}

void WebSettingWindowController::showAlertWithTitle(const QString& title, const QString& message,
    int notiIndex, const QString& notiValue, int buttonCount)
{
    WebNotification notification { title, message, notiIndex, notiValue, buttonCount };
    if (m_yesNoAlert) {
        if (m_waitingNotifications.size() < kMaxWaitingNotifications)
            m_waitingNotifications.append(notification);
        return;
    }
    m_userNotificationIndex = notiIndex;
    m_userNotificationValue = notiValue;
    m_yesNoAlert = notification;
    m_view.showNotification(title, message, notification.buttonKeys());
}

void WebSettingWindowController::yesNoAlertDidSelected(int returnCode)
{
    if (!m_yesNoAlert)
        return;
    m_yesNoAlert.reset();
    if (returnCode == AlertSink::kFirstButtonReturn)
        m_page.evaluate(WebSettingScripts::updateCancel(m_userNotificationIndex));
    else
        m_page.evaluate(
            WebSettingScripts::updateOk(m_userNotificationIndex, m_userNotificationValue));
    showNextNotification();
}

void WebSettingWindowController::showNextNotification()
{
    if (m_waitingNotifications.isEmpty())
        return;
    const WebNotification next = m_waitingNotifications.takeFirst();
    showAlertWithTitle(next.title, next.message, next.index, next.value, next.buttonCount);
}

void WebSettingWindowController::onBtnBack()
{
    showTabs(true);
}

void WebSettingWindowController::onBtnReset()
{
    resetCfg();
}

void WebSettingWindowController::onBtnCancel()
{
    m_view.closeWindow();
}

void WebSettingWindowController::onBtnSave()
{
    if (m_saving)
        return;
    m_saving = true;
    m_view.setExchangeButtonsEnabled(false);
    saveConfig([this](SaveOutcome outcome) {
        if (outcome != SaveOutcome::EmptyRecord) {
            m_view.closeWindow();
            return;
        }
        // Nothing was saved: the page stays, to be cancelled or saved again.
        m_saving = false;
        m_view.setExchangeButtonsEnabled(true);
    });
}

void WebSettingWindowController::setDateUse(const QString& use)
{
    m_dateTimeUse = use == QLatin1String("1");
}

void WebSettingWindowController::setDate(const QString& date)
{
    m_time.date = QString(date).replace(u'/', u',');
}

void WebSettingWindowController::setDateHour(const QString& hour)
{
    m_time.hour = hour;
}

void WebSettingWindowController::setDateMin(const QString& minute)
{
    m_time.min = minute;
}

void WebSettingWindowController::adasreset()
{
    // The camera recalibrates without its file; a missing one is fine.
    QFile::remove(WebSettingCard::adasFilename(m_folder));
}

void WebSettingWindowController::docLoadComplete()
{
    // Never inside the page's own call: the handshake talks to the page.
    QTimer::singleShot(0, this, &WebSettingWindowController::startWebBrowserConnection);
}

void WebSettingWindowController::languageSetComplete()
{
    QTimer::singleShot(0, this, [this] { showTabs(false); });
}

void WebSettingWindowController::clickedList()
{
    m_view.setBackButtonVisible(true);
}
