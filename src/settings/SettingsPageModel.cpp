#include "settings/SettingsPageModel.h"

std::optional<SettingControl> SettingsPageModel::control(const QString& name) const
{
    for (const SettingControl& c : controls()) {
        if (c.name == name)
            return c;
    }
    return std::nullopt;
}

void SettingsPageModel::sliderPressed(const QString&) { }

SettingsPageModel::Change SettingsPageModel::sliderMoved(const QString& name, int value)
{
    return userChange(name, value);
}

void SettingsPageModel::sliderReleased(const QString&) { }

QString SettingsPageModel::sliderGuide(const QString&) const
{
    return {};
}
