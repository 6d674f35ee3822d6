#include "app/session/SettingsRouter.h"

#include "config/KelSettingManager.h"
#include "config/ModelCatalogue.h"
#include "config/TolmSettingManager.h"
#include "config/VolumeUtils.h"

#include <QFileInfo>
#include <QUrl>

namespace {

TolmSettingManager& card()
{
    return *TolmSettingManager::SharedTolmSettingManager();
}

bool opensWebSettings(qint64 modelType)
{
    return ModelCatalogue::editorForModelType(modelType) == ModelCatalogue::EditorKind::Web;
}

} // namespace

SettingsRouter::SettingsRouter(SettingsPageOpener& opener, Hooks hooks)
    : m_opener(opener)
    , m_hooks(std::move(hooks))
{
}

void SettingsRouter::updateModelInfo()
{
    if (m_hooks.updateModelInfo)
        m_hooks.updateModelInfo();
}

QList<SettingsPageOpener::Card> SettingsRouter::externalCards()
{
    QList<SettingsPageOpener::Card> cards;
    for (const VolumeInfo& volume : Utils::volumeSource().volumes()) {
        if (!volume.isLocal || !volume.isRemovable)
            continue;
        QString root = volume.rootPath;
        while (root.size() > 1 && root.endsWith(u'/'))
            root.chop(1);
        cards.append({ QFileInfo(root).fileName(), volume.rootPath });
    }
    return cards;
}

void SettingsRouter::settingButtonTouched()
{
    if (m_hooks.pauseVideo)
        m_hooks.pauseVideo();
    TolmSettingManager& manager = card();
    if (!Utils::isEXteranlMemoryWithURL(QUrl::fromLocalFile(manager.settingDirPath()))) {
        showSelectFlashMemoryWindow();
        return;
    }
    manager.loadVersionInfo();
    const qint64 type = manager.modelType();
    if (type == ModelCatalogue::kUnknownModelType) {
        showSelectModelWindow();
    } else if (type == ModelCatalogue::kSelfDescribingModelType) {
        // The camera's own page needs only its language list.
        manager.loadLanguages();
        showWebSettingWindow();
    } else if (type == ModelCatalogue::kWennaModelType) {
        KelSettingManager::SharedKelSettingManager()->loadData();
        updateModelInfo();
        showSettingWindow_Kel();
    } else {
        manager.loadData();
        updateModelInfo();
        showSettingWindow();
    }
}

void SettingsRouter::showSelectFlashMemoryWindow()
{
    const QList<SettingsPageOpener::Card> cards = externalCards();
    const std::optional<int> chosen = m_opener.showSelectFlashMemoryWindow(cards);
    if (!chosen || *chosen < 0 || *chosen >= cards.size())
        return;
    TolmSettingManager& manager = card();
    manager.setSettingDirPath(cards[*chosen].path);
    // Identification rescans the volumes, as at start-up.
    manager.loadVersionInfo();
    const qint64 type = manager.modelType();
    if (type == ModelCatalogue::kUnknownModelType) {
        showSelectModelWindow();
    } else if (type == ModelCatalogue::kWennaModelType) {
        KelSettingManager::SharedKelSettingManager()->loadData();
        updateModelInfo();
        showSettingWindow_Kel();
    } else {
        manager.loadData();
        updateModelInfo();
        showSettingWindow();
    }
}

void SettingsRouter::showSelectModelWindow()
{
    TolmSettingManager& manager = card();
    const std::optional<qint64> chosen
        = m_opener.showSelectModelWindow(TolmSettingManager::modelNameList());
    if (!chosen || *chosen < 0 || *chosen >= TolmSettingManager::modelNameList().size()) {
        manager.setSettingDirPath(QString());
        return;
    }
    manager.setModelType(*chosen);
    if (*chosen == ModelCatalogue::kWennaModelType) {
        KelSettingManager::SharedKelSettingManager()->loadData();
        showSettingWindow_Kel();
        return;
    }
    if (*chosen == ModelCatalogue::kDraviUkModelType)
        manager.setLocalID(ModelCatalogue::kDraviUkLocalID);
    else if (*chosen == ModelCatalogue::kDraviModelType)
        manager.setLocalID(0);
    // The model's defaults when the card has no setup.cfg.
    manager.loadData();
    showSettingWindow();
}

void SettingsRouter::showSettingWindow()
{
    const qint64 type = card().modelType();
    if (opensWebSettings(type)) {
        showWebSettingWindow();
        return;
    }
    if (m_opener.showNativeSettingWindow(type) == 1)
        updateModelInfo();
}

void SettingsRouter::showWebSettingWindow()
{
    const TolmSettingManager& manager = card();
    m_opener.showWebSettingWindow(m_parentWindow, manager.settingDirPath(), manager.languages());
}

void SettingsRouter::showSettingWindow_Kel()
{
    if (m_opener.showSettingWindow_Kel() == 1)
        updateModelInfo();
}
