#include "editors/window/SettingPage.h"

#include "i18n/LanguageRefreshObserver.h"

SettingPage::SettingPage(QWidget* parent)
    : QWidget(parent)
{
}

void SettingPage::observeLanguage()
{
    if (!m_languageObserver)
        m_languageObserver = new LanguageRefreshObserver([this] { applyLanguageSettings(); }, this);
}

bool SettingPage::keyDown(int key, Qt::KeyboardModifiers modifiers)
{
    if (modifiers & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier))
        return false;
    if (key == Qt::Key_Escape) {
        cancel();
        return true;
    }
    if ((key == Qt::Key_Return || key == Qt::Key_Enter) && canConfirm()) {
        confirm();
        return true;
    }
    return false;
}
