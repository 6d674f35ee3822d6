#pragma once

#include "settings/SettingsPageModel.h"

#include <memory>

// The page model of the editor the viewer opens for a model type: the Kel
// page for 6, the native page for the binary-record models (those without a
// settings web page of their own), null for the web-configured models and
// for an unknown model. The page is built with every control at its starting
// state; call applySettingData() after the configuration is loaded.
std::unique_ptr<SettingsPageModel> createSettingsPageModel(qint64 modelType);

// The two families' factories (each in its own folder); null when the model
// type is not theirs.
std::unique_ptr<SettingsPageModel> createKelSettingsPageModel(qint64 modelType);
std::unique_ptr<SettingsPageModel> createNativeSettingsPageModel(qint64 modelType);
