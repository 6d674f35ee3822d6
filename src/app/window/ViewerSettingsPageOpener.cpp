#include "app/window/ViewerSettingsPageOpener.h"

#include "config/AlertSink.h"
#include "config/TolmSettingManager.h"
#include "editors/format/CardOperationDialog.h"
#include "editors/page/SettingsPageWidget.h"
#include "i18n/LocalizationKeys.h"
#include "settings/SettingsPages.h"

#include "editors/web/WebSettingWindowController.h"
#include "editors/window/ChoicePages.h"
#include "editors/window/SettingWindow.h"
#include <QPushButton>

namespace {

void editorMissing(const char* messageKey)
{
    AlertRequest request;
    request.titleKey = QString::fromUtf8(LocalizationKeys::kDashcamSettings);
    request.messageKey = QString::fromUtf8(messageKey);
    AlertSink::shared().showAlert(request);
}

} // namespace

ViewerSettingsPageOpener::ViewerSettingsPageOpener(
    QWidget* mainWindow, ViewerLanguage* mainWindowLanguage)
    : m_mainWindow(mainWindow)
    , m_language(mainWindowLanguage)
{
}

std::optional<int> ViewerSettingsPageOpener::showSelectFlashMemoryWindow(const QList<Card>& cards)
{
    QStringList names;
    for (const Card& card : cards)
        names << card.name;
    SettingWindow window(m_mainWindow, m_language);
    auto* page = new SelectFlashMemoryView(names);
    page->setObjectName(QStringLiteral("SelectFlashMemoryView"));
    if (window.showModalWindow(page, true) != 1 || page->selectedIndex() < 0)
        return std::nullopt;
    return page->selectedIndex();
}

std::optional<qint64> ViewerSettingsPageOpener::showSelectModelWindow(const QStringList& modelNames)
{
    SettingWindow window(m_mainWindow, m_language);
    auto* page = new SelectDeviceView(modelNames);
    page->setObjectName(QStringLiteral("SelectDeviceView"));
    if (window.showModalWindow(page, true) != 1 || page->selectedModelType() < 0)
        return std::nullopt;
    return page->selectedModelType();
}

int ViewerSettingsPageOpener::showSettingWindow_Kel()
{
    return showEditor(6);
}

int ViewerSettingsPageOpener::showNativeSettingWindow(qint64 modelType)
{
    return showEditor(modelType);
}

int ViewerSettingsPageOpener::showWebSettingWindow(
    QWidget* parent, const QString& settingDirPath, const CameraLanguageList& languages)
{
    // The camera's own page runs in an application-modal window of its own;
    // while one is open a second request does nothing. Its card format is the
    // same sequence as the native page's.
    WebSettingWindowController::setAskFormatHandler(
        [](QWidget* window, const QString& folder) { askFormat(window, folder); });
    WebSettingWindowController::showWebSettingWindow(
        parent ? parent : m_mainWindow, settingDirPath, languages);
    return 0;
}

// The binary-record cameras' page carries the two card operations: reformat
// the card and ask the camera to reset its touch calibration. Both run on the
// card the settings were read from.
void ViewerSettingsPageOpener::addCardOperations(SettingsPageWidget& page)
{
    const auto cardRoot
        = [] { return TolmSettingManager::SharedTolmSettingManager()->settingDirPath(); };
    QPushButton* format = page.addCardAction(LocalizationKeys::kFormatMemoryCard,
        [&page, cardRoot] { askFormat(page.window(), cardRoot()); });
    format->setObjectName(QStringLiteral("memoryCardFormatButton"));
    QPushButton* touch = page.addCardAction(LocalizationKeys::kResetTouch,
        [&page, cardRoot] { askTouchCalibrationReset(page.window(), cardRoot()); });
    touch->setObjectName(QStringLiteral("initializeTouchButton"));
}

int ViewerSettingsPageOpener::showEditor(qint64 modelType)
{
    std::unique_ptr<SettingsPageModel> model = createSettingsPageModel(modelType);
    if (!model) {
        editorMissing(LocalizationKeys::kSettingsEditorUnavailable);
        return 0;
    }
    model->applySettingData();
    // The Kel page is short enough for titled sections side by side; the
    // binary-record editors keep their four tabs.
    const auto layout = model->family() == QLatin1String("Kel")
        ? SettingsPageWidget::Layout::Sections
        : SettingsPageWidget::Layout::Tabs;
    SettingWindow window(m_mainWindow, m_language);
    auto* page = new SettingsPageWidget(std::move(model), layout);
    page->setObjectName(modelType == 6 ? QStringLiteral("KelSettingViewController")
                                       : QStringLiteral("TolmSettingViewController"));
    if (modelType != 6)
        addCardOperations(*page);
    return window.showModalWindow(page, false);
}
