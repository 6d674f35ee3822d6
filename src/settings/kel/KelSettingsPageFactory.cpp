#include "SettingsPages.h"

// Placeholder until the kel editor's page model lands.
std::unique_ptr<SettingsPageModel> createKelSettingsPageModel(qint64)
{
    return nullptr;
}
