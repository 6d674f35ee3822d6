#include "display/SpeedUnit.h"

#include "display/DisplayLogging.h"
#include "library/TavroNotifier.h"

#include <QSettings>

SpeedUnit::SpeedUnit(QObject* parent)
    : QObject(parent)
{
    connect(&TavroNotifier::shared(), &TavroNotifier::refreshSpeedUnit, this,
        &SpeedUnit::refreshSpeedUnitHandler);
}

int SpeedUnit::storedSpeedUnit()
{
    bool ok = false;
    const int unit = QSettings().value(kSpeedUnitKey, kKmph).toInt(&ok);
    return ok ? unit : kKmph;
}

void SpeedUnit::onMenuSpeedKmph()
{
    emit speedUnitItemMarked(kKmph);
    setSpeedUnit(kKmph);
}

void SpeedUnit::onMenuSpeedMph()
{
    emit speedUnitItemMarked(kMph);
    setSpeedUnit(kMph);
}

void SpeedUnit::setSpeedUnit(int unit)
{
    if (storedSpeedUnit() == unit)
        return;
    QSettings settings;
    settings.setValue(kSpeedUnitKey, unit);
    settings.sync();
    if (settings.status() != QSettings::NoError)
        qCWarning(lcDisplay) << "could not store the speed unit in" << settings.fileName();
    TavroNotifier::shared().post(TavroNotifier::kRefreshSpeedUnitNotification);
}

void SpeedUnit::markCurrentSpeedUnit()
{
    emit speedUnitItemMarked(storedSpeedUnit() == kMph ? kMph : kKmph);
}

void SpeedUnit::refreshSpeedUnitHandler()
{
    if (m_speedometer)
        m_speedometer->setSpeed(m_speedometer->speed());
}
