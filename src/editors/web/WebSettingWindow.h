#pragma once

#include "config/CameraLanguages.h"
#include "editors/web/WebSettingPage.h"

#include <QMessageBox>
#include <QPointer>
#include <QWidget>

#include <memory>

class LanguageRefreshObserver;
class QPushButton;
class QWebEngineProfile;
class QWebEngineView;
class WebSettingWebPage;
class WebSettingWindowController;

// The window of the camera's settings page: the page above a bar with Back
// (left, shown when the page asks), Reset, Cancel and Save. Ctrl+S saves,
// Esc cancels, also while the page has the keyboard. The page's
// notifications appear as message boxes over this window. Built and opened
// through WebSettingWindowController::showWebSettingWindow().
class WebSettingWindow : public QWidget, public WebSettingWindowView {
    Q_OBJECT
public:
    WebSettingWindow(
        const QString& folder, const CameraLanguageList& languages, QWidget* parent = nullptr);
    ~WebSettingWindow() override;

    WebSettingWindowController* controller() const { return m_controller.get(); }
    WebSettingWebPage* page() const { return m_page; }
    QWebEngineView* webView() const { return m_webView; }
    QPushButton* backButton() const { return m_backButton; }
    QPushButton* resetButton() const { return m_resetButton; }
    QPushButton* cancelButton() const { return m_cancelButton; }
    QPushButton* saveButton() const { return m_saveButton; }
    QMessageBox* notificationBox() const { return m_notificationBox; }

    // Moves this window so that its centre is the centre of `other`.
    void centerInWindow(const QWidget* other);
    // The origin that puts a window of `ownSize` in the middle of `other`.
    static QPoint centeredOrigin(const QRect& other, const QSize& ownSize);

    // WebSettingWindowView
    void setBackButtonVisible(bool visible) override;
    void setExchangeButtonsEnabled(bool enabled) override;
    void closeWindow() override;
    void showNotification(
        const QString& title, const QString& message, const QStringList& buttonKeys) override;
    void showMessage(const QString& titleKey, const QString& messageKey) override;
    QMessageBox* messageBox() const { return m_messageBox; }

protected:
    void closeEvent(QCloseEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QWidget* buildButtonBar();
    void applyLanguageSettings();
    void installShortcuts();
    void watchKeys(QObject* object);
    void saveFromKeyboard();

    QWebEngineProfile* m_profile = nullptr;
    WebSettingWebPage* m_page = nullptr;
    QWebEngineView* m_webView = nullptr;
    QPushButton* m_backButton = nullptr;
    QPushButton* m_resetButton = nullptr;
    QPushButton* m_cancelButton = nullptr;
    QPushButton* m_saveButton = nullptr;
    QPointer<QMessageBox> m_notificationBox;
    QPointer<QMessageBox> m_messageBox;
    LanguageRefreshObserver* m_languageObserver = nullptr;
    std::unique_ptr<WebSettingWindowController> m_controller;
};
