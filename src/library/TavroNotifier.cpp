#include "library/TavroNotifier.h"

TavroNotifier& TavroNotifier::shared()
{
    static TavroNotifier* instance = new TavroNotifier; // lives until process exit
    return *instance;
}

void TavroNotifier::post(const QString& name)
{
    if (name == QLatin1String(kRefreshLanguageNotification))
        emit refreshLanguage();
    else if (name == QLatin1String(kRefreshSpeedUnitNotification))
        emit refreshSpeedUnit();
}
