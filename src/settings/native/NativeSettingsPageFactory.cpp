#include "settings/SettingsPages.h"
#include "settings/native/NativeSettingsPage.h"

#include "config/ModelCatalogue.h"

std::unique_ptr<SettingsPageModel> createNativeSettingsPageModel(qint64 modelType)
{
    if (ModelCatalogue::editorForModelType(modelType) != ModelCatalogue::EditorKind::Native)
        return nullptr;
    // The hand-picked DVR models open the page too, but it has no family for
    // them: it shows nothing and OK writes nothing.
    return std::make_unique<NativeSettingsPage>(modelType, nativeFamilyForModelType(modelType));
}
