#include "settings/SettingsPages.h"

#include "config/ModelCatalogue.h"

std::unique_ptr<SettingsPageModel> createSettingsPageModel(qint64 modelType)
{
    using ModelCatalogue::EditorKind;
    switch (ModelCatalogue::editorForModelType(modelType)) {
    case EditorKind::Kel:
        return createKelSettingsPageModel(modelType);
    case EditorKind::Native:
        return createNativeSettingsPageModel(modelType);
    case EditorKind::Web:
    case EditorKind::ModelPage:
        break;
    }
    return nullptr;
}
