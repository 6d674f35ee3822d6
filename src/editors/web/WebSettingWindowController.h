#pragma once

#include "config/CameraLanguages.h"
#include "editors/web/WebNotification.h"
#include "editors/web/WebSettingCard.h"

#include <QObject>
#include <QString>
#include <QVariant>

#include <functional>
#include <memory>
#include <optional>

class QWidget;
class WebDashcam;
class WebSettingPage;
class WebSettingWindowView;

// The host of the camera's own settings page (SETTING/html/index.html on the
// card of a web-configured camera): it feeds the page the card's record as
// hexadecimal text, the camera's languages, the current language and the
// stored clock request, takes the edited record back on Save and writes it to
// the card. The page talks back through its global "Dashcam" (WebDashcam).
//
// The controller holds no widget: it drives the page through WebSettingPage
// and its window through WebSettingWindowView, so it runs headless in tests.
//
// Opening the window from the viewer:
//
//     QWidget* WebSettingWindowController::showWebSettingWindow(
//         QWidget* mainWindow, const QString& settingDirPath,
//         const CameraLanguageList& languages);
//
// settingDirPath is the card's root folder (TolmSettingManager::settingDirPath),
// languages the camera's list (TolmSettingManager::languages, after
// loadLanguages()). The window is application-modal and centred over
// mainWindow (which may be null: then it is centred on the screen); the call
// returns at once with the new window, which deletes itself when closed. While
// a settings window is open (instance() is set) the call does nothing and
// returns nullptr.
class WebSettingWindowController : public QObject {
    Q_OBJECT
public:
    static QWidget* showWebSettingWindow(
        QWidget* mainWindow, const QString& settingDirPath, const CameraLanguageList& languages);

    // The controller of the settings window that is open, or none.
    static WebSettingWindowController* instance();

    // The card-format dialogues of the editors (askFormat). Until the viewer
    // installs a handler, askFormat() does nothing. No entry point of the
    // page leads there: the page's own "format" does nothing.
    using AskFormatHandler = std::function<void(QWidget* window, const QString& folder)>;
    static void setAskFormatHandler(AskFormatHandler handler);

    // How long the controller waits for a script result it needs before it
    // goes on without one (a page stuck in a loop never answers).
    static constexpr int kDefaultAnswerTimeoutMs = 5000;

    WebSettingWindowController(const QString& folder, const CameraLanguageList& languages,
        WebSettingPage& page, WebSettingWindowView& view, QObject* parent = nullptr);
    ~WebSettingWindowController() override;

    // Lifecycle.
    void beginModal();
    void endModalSession();
    // Hides the back button, turns the clock request off and loads the page.
    void windowDidLoad();
    // The main frame has finished loading (ok) or failed.
    void mainFrameDidFinishLoad(bool ok);
    // Once the handshake has run, the page stays where it is: every further
    // load, in any frame, is refused.
    bool acceptsFurtherLoads() const { return !m_didLoadHtml; }

    // The exchange with the page.
    void startWebBrowserConnection();
    void showTabs(bool showFirstView);
    void resetCfg();
    // What a save came to.
    enum class SaveOutcome {
        Written, // the clock request (when asked for) and the record went to the card
        NoRecord, // the page threw, never answered or answered with no text
        EmptyRecord, // the page handed back a record of 0 bytes
    };
    // Asks the page for its record and writes the clock request (when asked
    // for) and then setup.cfg. A page that throws, never answers or answers
    // with anything but a string leaves the card untouched. An empty record
    // never replaces the card's: the card is left as it was and the window
    // says so (it stays open).
    void saveConfig(std::function<void(SaveOutcome)> done = {});
    QString cfgString() const;
    static QString cfgStringWithData(const QByteArray& data);
    void askFormat(QWidget* window);

    // Notifications.
    void showAlertWithTitle(const QString& title, const QString& message, int notiIndex,
        const QString& notiValue, int buttonCount);
    void yesNoAlertDidSelected(int returnCode);

    // Buttons.
    void onBtnBack();
    void onBtnReset();
    void onBtnCancel();
    void onBtnSave();

    // Entry points of the page's "Dashcam" (through WebDashcam).
    void showPopup(const QString& fields);
    void setDateUse(const QString& use);
    void setDate(const QString& date);
    void setDateHour(const QString& hour);
    void setDateMin(const QString& minute);
    void adasreset();
    void docLoadComplete();
    void languageSetComplete();
    void clickedList();

    WebDashcam* webDashcam();

    // State, as the page has set it.
    QString folder() const { return m_folder; }
    bool didLoadHtml() const { return m_didLoadHtml; }
    QString modelName() const { return m_modelName; }
    qint32 cfgSize() const { return m_cfgSize; }
    QString websetting_date() const { return m_time.date; }
    QString websetting_hour() const { return m_time.hour; }
    QString websetting_min() const { return m_time.min; }
    bool websetting_date_time_use() const { return m_dateTimeUse; }
    bool isSaving() const { return m_saving; }
    bool hasOpenNotification() const { return m_yesNoAlert.has_value(); }
    int userNotificationIndex() const { return m_userNotificationIndex; }
    QString userNotificationValue() const { return m_userNotificationValue; }

    void setAnswerTimeout(int milliseconds) { m_answerTimeoutMs = milliseconds; }

private:
    using AnswerHandler = std::function<void(const QVariant& result, bool answered)>;
    void awaitAnswer(const QString& script, AnswerHandler handler);
    void sendRecordAndLanguages();
    void showNextNotification();
    SaveOutcome writeCard(const QByteArray& record);

    QString m_folder;
    CameraLanguageList m_languages;
    WebSettingPage& m_page;
    WebSettingWindowView& m_view;
    std::unique_ptr<WebDashcam> m_webDashcam;
    // The notification shown now, and those the page sent meanwhile.
    std::optional<WebNotification> m_yesNoAlert;
    QList<WebNotification> m_waitingNotifications;

    bool m_didLoadHtml = false;
    QString m_modelName;
    qint32 m_cfgSize = 0;
    WebSettingCard::TimeRequest m_time;
    bool m_dateTimeUse = false;
    bool m_saving = false;
    int m_userNotificationIndex = 0;
    QString m_userNotificationValue;
    int m_answerTimeoutMs = kDefaultAnswerTimeoutMs;
    // Answers that arrive after the controller is gone are dropped.
    std::shared_ptr<int> m_alive = std::make_shared<int>(0);
};
