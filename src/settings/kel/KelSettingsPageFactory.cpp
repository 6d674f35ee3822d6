#include "settings/SettingsPages.h"

#include "config/ModelCatalogue.h"
#include "settings/kel/KelSettingViewController.h"

// The Kel page edits the shared KelSettingManager's lines.
std::unique_ptr<SettingsPageModel> createKelSettingsPageModel(qint64 modelType)
{
    if (modelType != ModelCatalogue::kWennaModelType)
        return nullptr;
    return std::make_unique<KelSettingViewController>(modelType);
}
