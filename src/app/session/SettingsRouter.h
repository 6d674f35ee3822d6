#pragma once

#include "config/CameraLanguages.h"

#include <QList>
#include <QString>
#include <QStringList>

#include <functional>
#include <optional>

class QWidget;

// The pages the settings button can open, as the router asks for them. The
// viewer shows them as modal pages over the main window; tests record the
// calls and answer them. Each returns the page's result (1 = confirmed, 0 =
// cancelled) or the choice made.
class SettingsPageOpener {
public:
    // One memory card the user can choose: the volume's last path component
    // and its root path.
    struct Card {
        QString name;
        QString path;
    };

    virtual ~SettingsPageOpener() = default;

    // "SelectFlashMemoryView": the cards in volume order, the last one
    // pre-selected, OK disabled when there is none. The chosen card's index,
    // or nothing when cancelled.
    virtual std::optional<int> showSelectFlashMemoryWindow(const QList<Card>& cards) = 0;
    // "SelectDeviceView": every model name, the first pre-selected. The
    // chosen row (the model type), or nothing when cancelled.
    virtual std::optional<qint64> showSelectModelWindow(const QStringList& modelNames) = 0;
    // The Kel editor over the shared KelSettingManager's lines.
    virtual int showSettingWindow_Kel() = 0;
    // The native editor of a binary-record model over the shared
    // TolmSettingManager.
    virtual int showNativeSettingWindow(qint64 modelType) = 0;
    // The web settings window of the camera's own page: the window to centre
    // over, the card's folder and the camera's languages.
    virtual int showWebSettingWindow(
        QWidget* parentWindow, const QString& settingDirPath, const CameraLanguageList& languages)
        = 0;
};

// Which settings page opens when the user presses the settings button, and
// what runs around it. No widgets: the pages come from the opener.
//
//  settings folder not on a local removable volume → card choice page
//  otherwise the card is identified again, then by model type:
//    unknown → model choice page
//    26      → camera languages, web settings window
//    6       → blackbox.cfg loaded, model info refreshed, Kel editor
//    other   → setup.cfg loaded, model info refreshed, showSettingWindow
//  showSettingWindow: 16, 17, 20–26 web settings, every other type the native
//  editor; a confirmed editor refreshes the model info.
class SettingsRouter {
public:
    struct Hooks {
        std::function<void()> pauseVideo;
        std::function<void()> updateModelInfo;
    };

    SettingsRouter(SettingsPageOpener& opener, Hooks hooks);

    // The window the web settings window centres over.
    void setParentWindow(QWidget* window) { m_parentWindow = window; }

    void settingButtonTouched();
    void showSelectFlashMemoryWindow();
    void showSelectModelWindow();
    void showSettingWindow();
    void showWebSettingWindow();
    void showSettingWindow_Kel();

    // The volumes that are local and removable, in volume order.
    static QList<SettingsPageOpener::Card> externalCards();

private:
    void updateModelInfo();

    SettingsPageOpener& m_opener;
    Hooks m_hooks;
    QWidget* m_parentWindow = nullptr;
};
