#include "editors/web/WebSettingWindow.h"
#include "style/TavroStyle.h"

#include "config/AlertSink.h"
#include "editors/EditorsLogging.h"
#include "editors/web/WebSettingCard.h"
#include "editors/web/WebSettingWebPage.h"
#include "editors/web/WebSettingWindowController.h"
#include "i18n/LanguageRefreshObserver.h"
#include "i18n/LocalizationKeys.h"
#include "i18n/TavroLanguages.h"

#include <QChildEvent>
#include <QCloseEvent>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QMessageBox>
#include <QPushButton>
#include <QScreen>
#include <QShortcut>
#include <QVBoxLayout>
#include <QWebEngineProfile>
#include <QWebEngineView>

namespace {

constexpr QSize kWindowSize(1040, 720);

constexpr const char* kBarStyle = R"(
#webSettingBar { background: @panel; border-top: 1px solid @separator; }
#webSettingBar QPushButton { color: @text; background: @separator; border: 1px solid @raised;
    border-radius: 4px; padding: 6px 18px; min-width: 84px; }
#webSettingBar QPushButton:hover { border-color: @accent; }
#webSettingBar QPushButton:disabled { color: @secondary; }
#webSettingBar QPushButton#saveButton { background: @accent; color: @window; border-color: @accent; }
)";

QString localized(const char* key)
{
    return TavroLanguages::SharedTavroLanguages().localized(key);
}

} // namespace

QWidget* WebSettingWindowController::showWebSettingWindow(
    QWidget* mainWindow, const QString& settingDirPath, const CameraLanguageList& languages)
{
    if (instance())
        return nullptr;
    // A window of the main window's: desktops keep it over the main window,
    // and tiling compositors float it over the main window instead of
    // squeezing both side by side.
    auto* window = new WebSettingWindow(settingDirPath, languages, mainWindow);
    window->centerInWindow(mainWindow);
    window->controller()->beginModal();
    window->show();
    window->raise();
    window->activateWindow();
    return window;
}

WebSettingWindow::WebSettingWindow(
    const QString& folder, const CameraLanguageList& languages, QWidget* parent)
    : QWidget(parent, Qt::Window)
{
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowModality(Qt::ApplicationModal);
    setObjectName(QStringLiteral("WebSettingWindowController"));
    resize(kWindowSize);

    const QString htmlFolder = WebSettingCard::htmlFolder(folder);
    m_profile = WebSettingWebPage::makeProfile(htmlFolder, this);
    m_page = new WebSettingWebPage(htmlFolder, m_profile, this);
    m_webView = new QWebEngineView(this);
    m_webView->setContextMenuPolicy(Qt::NoContextMenu);
    m_webView->setPage(m_page);

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(m_webView, 1);
    layout->addWidget(buildButtonBar());

    m_controller = std::make_unique<WebSettingWindowController>(folder, languages, *m_page, *this);
    m_page->setDashcam(m_controller->webDashcam());
    m_page->setNavigationPolicy([this](const QUrl& url, bool) {
        return m_controller && m_controller->acceptsFurtherLoads() && m_page->access().allows(url);
    });
    connect(m_page, &QWebEnginePage::loadFinished, m_controller.get(),
        &WebSettingWindowController::mainFrameDidFinishLoad);
    connect(m_backButton, &QPushButton::clicked, m_controller.get(),
        &WebSettingWindowController::onBtnBack);
    connect(m_resetButton, &QPushButton::clicked, m_controller.get(),
        &WebSettingWindowController::onBtnReset);
    connect(m_cancelButton, &QPushButton::clicked, m_controller.get(),
        &WebSettingWindowController::onBtnCancel);
    connect(m_saveButton, &QPushButton::clicked, m_controller.get(),
        &WebSettingWindowController::onBtnSave);
    installShortcuts();
    watchKeys(m_webView);
    watchKeys(m_webView->focusProxy());

    m_languageObserver = new LanguageRefreshObserver([this] { applyLanguageSettings(); }, this);
    applyLanguageSettings();
    m_controller->windowDidLoad();
}

WebSettingWindow::~WebSettingWindow()
{
    // The controller talks to the page and to this window: it goes first,
    // then the view, the page and last the profile the page runs in.
    if (m_notificationBox)
        delete m_notificationBox;
    m_controller.reset();
    delete m_webView;
    delete m_page;
    delete m_profile;
}

QWidget* WebSettingWindow::buildButtonBar()
{
    auto* bar = new QWidget(this);
    bar->setObjectName(QStringLiteral("webSettingBar"));
    bar->setAttribute(Qt::WA_StyledBackground);
    bar->setStyleSheet(TavroStyle::withPalette(QString::fromLatin1(kBarStyle)));
    m_backButton = new QPushButton(bar);
    m_resetButton = new QPushButton(bar);
    m_cancelButton = new QPushButton(bar);
    m_saveButton = new QPushButton(bar);
    m_backButton->setObjectName(QStringLiteral("backButton"));
    m_resetButton->setObjectName(QStringLiteral("resetButton"));
    m_cancelButton->setObjectName(QStringLiteral("cancelButton"));
    m_saveButton->setObjectName(QStringLiteral("saveButton"));
    for (QPushButton* button : { m_backButton, m_resetButton, m_cancelButton, m_saveButton }) {
        button->setAutoDefault(false);
        button->setFocusPolicy(Qt::TabFocus);
    }
    auto* row = new QHBoxLayout(bar);
    row->setContentsMargins(16, 10, 16, 10);
    row->setSpacing(10);
    row->addWidget(m_backButton);
    row->addStretch(1);
    row->addWidget(m_resetButton);
    row->addSpacing(24);
    row->addWidget(m_cancelButton);
    row->addWidget(m_saveButton);
    return bar;
}

void WebSettingWindow::installShortcuts()
{
    // Window-wide, so they also work while the page has the keyboard.
    auto* save = new QShortcut(QKeySequence(Qt::CTRL | Qt::Key_S), this);
    auto* cancel = new QShortcut(QKeySequence(Qt::Key_Escape), this);
    save->setContext(Qt::WindowShortcut);
    cancel->setContext(Qt::WindowShortcut);
    connect(save, &QShortcut::activated, this, &WebSettingWindow::saveFromKeyboard);
    connect(cancel, &QShortcut::activated, m_controller.get(),
        &WebSettingWindowController::onBtnCancel);
}

// The page's view takes every key it is offered before the window's
// shortcuts see it; Ctrl+S and Esc are left to the window instead.
void WebSettingWindow::watchKeys(QObject* object)
{
    if (object)
        object->installEventFilter(this);
}

bool WebSettingWindow::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == m_webView && event->type() == QEvent::ChildAdded)
        watchKeys(static_cast<QChildEvent*>(event)->child());
    if (event->type() != QEvent::ShortcutOverride && event->type() != QEvent::KeyPress)
        return QWidget::eventFilter(watched, event);
    const QKeyCombination combination = static_cast<QKeyEvent*>(event)->keyCombination();
    const bool save = combination == QKeyCombination(Qt::ControlModifier, Qt::Key_S);
    const bool cancel = combination == QKeyCombination(Qt::NoModifier, Qt::Key_Escape);
    if (!save && !cancel)
        return QWidget::eventFilter(watched, event);
    if (event->type() == QEvent::ShortcutOverride) {
        // Not the page's: let the window's shortcut have it.
        event->ignore();
        return true;
    }
    // No shortcut took it (the window is not the active one): act here.
    if (save)
        saveFromKeyboard();
    else
        m_controller->onBtnCancel();
    return true;
}

void WebSettingWindow::saveFromKeyboard()
{
    if (m_saveButton->isEnabled())
        m_controller->onBtnSave();
}

void WebSettingWindow::applyLanguageSettings()
{
    setWindowTitle(localized(LocalizationKeys::kDashcamSettings));
    m_backButton->setText(localized(LocalizationKeys::kBack));
    m_resetButton->setText(localized(LocalizationKeys::kResetSettings));
    m_cancelButton->setText(localized(LocalizationKeys::kCancel));
    m_saveButton->setText(localized(LocalizationKeys::kSave));
}

QPoint WebSettingWindow::centeredOrigin(const QRect& other, const QSize& ownSize)
{
    return other.topLeft()
        + QPoint((other.width() - ownSize.width()) / 2, (other.height() - ownSize.height()) / 2);
}

void WebSettingWindow::centerInWindow(const QWidget* other)
{
    QRect area;
    if (other)
        area = other->frameGeometry();
    else if (const QScreen* screen = QGuiApplication::primaryScreen())
        area = screen->availableGeometry();
    if (area.isValid())
        move(centeredOrigin(area, frameGeometry().size()));
}

void WebSettingWindow::setBackButtonVisible(bool visible)
{
    m_backButton->setVisible(visible);
}

void WebSettingWindow::setExchangeButtonsEnabled(bool enabled)
{
    m_backButton->setEnabled(enabled);
    m_resetButton->setEnabled(enabled);
    m_saveButton->setEnabled(enabled);
}

void WebSettingWindow::closeWindow()
{
    close();
}

void WebSettingWindow::showNotification(
    const QString& title, const QString& message, const QStringList& buttonKeys)
{
    auto* box = new QMessageBox(this);
    box->setIcon(QMessageBox::Information);
    box->setText(title);
    box->setInformativeText(message);
    box->setWindowModality(Qt::WindowModal);
    QList<QAbstractButton*> buttons;
    for (qsizetype i = 0; i < buttonKeys.size(); ++i) {
        // The first button is the "no" of a question (or the only button).
        const auto role
            = i == 0 && buttonKeys.size() > 1 ? QMessageBox::NoRole : QMessageBox::YesRole;
        buttons.append(box->addButton(
            TavroLanguages::SharedTavroLanguages().localized(buttonKeys.at(i)), role));
    }
    // Return and Escape answer with the first button: "아니오" on a question.
    // The page may be asking to delete or reset something, and only the page
    // knows what; "예" takes a click.
    box->setEscapeButton(buttons.first());
    box->setDefaultButton(qobject_cast<QPushButton*>(buttons.first()));
    connect(box, &QMessageBox::finished, this, [this, box, buttons] {
        const qsizetype chosen = buttons.indexOf(box->clickedButton());
        box->deleteLater();
        m_controller->yesNoAlertDidSelected(
            AlertSink::kFirstButtonReturn + int(std::max<qsizetype>(chosen, 0)));
    });
    m_notificationBox = box;
    box->open();
}

void WebSettingWindow::showMessage(const QString& titleKey, const QString& messageKey)
{
    const TavroLanguages& languages = TavroLanguages::SharedTavroLanguages();
    auto* box = new QMessageBox(QMessageBox::Warning, languages.localized(titleKey),
        languages.localized(titleKey), QMessageBox::Ok, this);
    box->setInformativeText(languages.localized(messageKey));
    box->setWindowModality(Qt::WindowModal);
    box->setAttribute(Qt::WA_DeleteOnClose);
    m_messageBox = box;
    box->open();
}

void WebSettingWindow::closeEvent(QCloseEvent* event)
{
    if (m_controller)
        m_controller->endModalSession();
    QWidget::closeEvent(event);
}
