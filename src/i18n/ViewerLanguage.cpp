#include "i18n/ViewerLanguage.h"

#include "i18n/QtStandardTranslations.h"
#include "i18n/ViewerSettings.h"
#include "library/TavroNotifier.h"

#include <QSettings>

namespace {

void mirrorLanguage(QSettings& settings, const QString& code)
{
    settings.setValue(QLatin1String(ViewerSettings::kLanguageKey), code);
    settings.setValue(QLatin1String(ViewerSettings::kLookupLanguagesKey), QStringList { code });
}

} // namespace

ViewerLanguage::ViewerLanguage(QObject* parent)
    : QObject(parent)
{
}

QString ViewerLanguage::initializeLanguageSetting()
{
    QSettings settings;
    QString code = settings
                       .value(QLatin1String(ViewerSettings::kLanguageKey),
                           QLatin1String(ViewerSettings::kDefaultLanguage))
                       .toString();
    if (!ViewerSettings::isSupportedLanguage(code))
        code = QLatin1String(ViewerSettings::kDefaultLanguage);
    mirrorLanguage(settings, code);
    settings.sync();
    QtStandardTranslations::apply(code);
    return code;
}

QString ViewerLanguage::currentLanguage()
{
    return QSettings().value(QLatin1String(ViewerSettings::kLanguageKey)).toString();
}

void ViewerLanguage::languageChangeToEnglish()
{
    markAndChange(Item::English);
}

void ViewerLanguage::languageChangeToFrench()
{
    markAndChange(Item::French);
}

void ViewerLanguage::languageChangeToPortuguese()
{
    markAndChange(Item::Portuguese);
}

void ViewerLanguage::languageChangeToJapanese()
{
    markAndChange(Item::Japanese);
}

bool ViewerLanguage::languageChange(const QString& code)
{
    return storeLanguage(code, DiskWrite::Now);
}

void ViewerLanguage::markCurrentLanguage()
{
    const QString code = currentLanguage();
    if (code == QLatin1String("pt"))
        markRadio(Item::Portuguese);
    else if (code == QLatin1String("fr"))
        markRadio(Item::French);
    else if (code == QLatin1String("ja"))
        markRadio(Item::Japanese);
    else
        markRadio(Item::English);
}

QString ViewerLanguage::codeForItem(Item item)
{
    switch (item) {
    case Item::French:
        return QStringLiteral("fr");
    case Item::Japanese:
        return QStringLiteral("ja");
    case Item::Portuguese:
        return QStringLiteral("pt");
    case Item::English:
        break;
    }
    return QStringLiteral("en");
}

QString ViewerLanguage::menuTitle(Item item)
{
    switch (item) {
    case Item::French:
        return QStringLiteral("Français");
    case Item::Japanese:
        return QStringLiteral("日本語");
    case Item::Portuguese:
        return QStringLiteral("Português");
    case Item::English:
        break;
    }
    return QStringLiteral("English");
}

bool ViewerLanguage::storeLanguage(const QString& code, DiskWrite diskWrite)
{
    if (!ViewerSettings::isSupportedLanguage(code))
        return false;
    QSettings settings;
    if (settings.value(QLatin1String(ViewerSettings::kLanguageKey)).toString() == code)
        return false;
    mirrorLanguage(settings, code);
    QtStandardTranslations::apply(code); // before the windows re-apply their texts
    TavroNotifier::shared().post(QLatin1String(TavroNotifier::kRefreshLanguageNotification));
    if (diskWrite == DiskWrite::Now)
        settings.sync();
    return true;
}

void ViewerLanguage::markRadio(Item item)
{
    m_markedItem = item;
    emit markedItemChanged(item);
}

void ViewerLanguage::markAndChange(Item item)
{
    markRadio(item);
    languageChange(codeForItem(item));
}
