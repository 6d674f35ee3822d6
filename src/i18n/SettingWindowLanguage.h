#pragma once

#include "i18n/ViewerLanguage.h"

// The language actions of the settings window (the window that hosts one modal
// page at a time). Each first runs the main window's action of the same name,
// which marks the main menu, switches and writes the settings to disk, and then
// its own languageChange with the same code, which by then finds the code
// stored and does nothing. The order is kept so that the main window's menu
// and the settings on disk are always settled first.
class SettingWindowLanguage {
public:
    explicit SettingWindowLanguage(ViewerLanguage& mainWindowLanguage);

    void languageChangeToEnglish();
    void languageChangeToFrench();
    void languageChangeToPortuguese();
    void languageChangeToJapanese();

    // As the main window's, except that it leaves writing the settings to disk
    // to the main window. Returns true when the language changed.
    bool languageChange(const QString& code);

    // The entry checked in the window's own menu follows the main window's.
    ViewerLanguage::Item markedItem() const { return m_mainWindowLanguage.markedItem(); }

private:
    ViewerLanguage& m_mainWindowLanguage;
};
