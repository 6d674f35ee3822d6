#include "SettingsPages.h"

// Placeholder until the native editor's page model lands.
std::unique_ptr<SettingsPageModel> createNativeSettingsPageModel(qint64)
{
    return nullptr;
}
