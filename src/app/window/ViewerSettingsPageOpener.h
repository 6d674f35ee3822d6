#pragma once

#include "app/session/SettingsRouter.h"

class SettingsPageWidget;
class ViewerLanguage;

// The viewer's settings pages, each run modally in a SettingWindow over the
// main window: the card and model choice pages with a title bar, the editors
// without. An editor that is not part of this build (no page model for the
// model type, or the web settings window) is reported with an alert instead.
class ViewerSettingsPageOpener final : public SettingsPageOpener {
public:
    ViewerSettingsPageOpener(QWidget* mainWindow, ViewerLanguage* mainWindowLanguage);

    std::optional<int> showSelectFlashMemoryWindow(const QList<Card>& cards) override;
    std::optional<qint64> showSelectModelWindow(const QStringList& modelNames) override;
    int showSettingWindow_Kel() override;
    int showNativeSettingWindow(qint64 modelType) override;
    int showWebSettingWindow(QWidget* parentWindow, const QString& settingDirPath,
        const CameraLanguageList& languages) override;

private:
    int showEditor(qint64 modelType);
    static void addCardOperations(SettingsPageWidget& page);

    QWidget* m_mainWindow;
    ViewerLanguage* m_language;
};
