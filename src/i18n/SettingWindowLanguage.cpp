#include "i18n/SettingWindowLanguage.h"

SettingWindowLanguage::SettingWindowLanguage(ViewerLanguage& mainWindowLanguage)
    : m_mainWindowLanguage(mainWindowLanguage)
{
}

void SettingWindowLanguage::languageChangeToEnglish()
{
    m_mainWindowLanguage.languageChangeToEnglish();
    languageChange(ViewerLanguage::codeForItem(ViewerLanguage::Item::English));
}

void SettingWindowLanguage::languageChangeToFrench()
{
    m_mainWindowLanguage.languageChangeToFrench();
    languageChange(ViewerLanguage::codeForItem(ViewerLanguage::Item::French));
}

void SettingWindowLanguage::languageChangeToPortuguese()
{
    m_mainWindowLanguage.languageChangeToPortuguese();
    languageChange(ViewerLanguage::codeForItem(ViewerLanguage::Item::Portuguese));
}

void SettingWindowLanguage::languageChangeToJapanese()
{
    m_mainWindowLanguage.languageChangeToJapanese();
    languageChange(ViewerLanguage::codeForItem(ViewerLanguage::Item::Japanese));
}

bool SettingWindowLanguage::languageChange(const QString& code)
{
    return ViewerLanguage::storeLanguage(code, ViewerLanguage::DiskWrite::LeftToCaller);
}
