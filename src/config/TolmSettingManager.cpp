#include "config/TolmSettingManager.h"

#include "config/AlertSink.h"
#include "config/CardFiles.h"
#include "config/ConfigLog.h"
#include "config/ModelCatalogue.h"
#include "config/SetupRecordCodec.h"

#include <QFileInfo>

namespace {

const QString kSetupFile = QStringLiteral("setup.cfg");
const QString kDefaultFile = QStringLiteral("default.cfg");

// One object for the life of the process: holders of the shared model keep a
// plain pointer to it, so a replacement must never pull it from under them.
TolmSettingManager& sharedManager()
{
    static TolmSettingManager manager;
    return manager;
}

} // namespace

TolmSettingManager::TolmSettingManager() = default;

TolmSettingManager* TolmSettingManager::SharedTolmSettingManager()
{
    return &sharedManager();
}

TolmSettingManager* TolmSettingManager::ChagneTolmSettingManager(
    std::unique_ptr<TolmSettingManager> manager)
{
    TolmSettingManager& shared = sharedManager();
    if (!manager)
        shared = TolmSettingManager();
    else if (manager.get() != &shared)
        shared = std::move(*manager);
    else
        (void)manager.release(); // the shared instance itself is never freed
    return &shared;
}

const QStringList& TolmSettingManager::modelNameList()
{
    return ModelCatalogue::modelNameList();
}

qint32 TolmSettingManager::getSettingVariableCount() const
{
    return ModelCatalogue::settingVariableCount(m_modelType, m_firmwareVersionInt);
}

qint32 TolmSettingManager::getSaveDataSize() const
{
    const qint32 count = getSettingVariableCount();
    return count < 1 ? 0 : SetupRecordLayout::recordSize(count);
}

qint32 TolmSettingManager::offsetFromValue(SetupField field)
{
    return SetupRecordLayout::offsetOfIndex(SetupRecordLayout::index(field));
}

QList<SetupField> TolmSettingManager::settingVariableList()
{
    QList<SetupField> fields;
    for (int i = 0; i < SetupRecordLayout::kFieldCount; ++i)
        fields.append(SetupField(i));
    return fields;
}

QList<qint32> TolmSettingManager::settingByteSizeList()
{
    QList<qint32> widths;
    for (const SetupFieldInfo& field : SetupRecordLayout::kFields)
        widths.append(field.width);
    widths.append(SetupRecordLayout::kTrailingWidth);
    return widths;
}

void TolmSettingManager::loadData()
{
    const QString path = CardFiles::findSettingFile(m_settingDirPath, kSetupFile);
    if (m_settingDirPath.isEmpty() || path.isEmpty()) {
        // No record on the card: factory values, written only when the user
        // saves from an editor.
        loadDefaultValue();
        return;
    }
    loadLanguages();
    QByteArray bytes;
    if (!CardFiles::readWhole(path, bytes)) {
        qCWarning(lcConfig) << "cannot read" << path;
        return;
    }
    SetupRecordCodec::decode(bytes, getSettingVariableCount(), m_values);
    // Every successful load rewrites the record in this model's layout, which
    // brings an older or shorter file up to the length the camera expects.
    saveData();
}

bool TolmSettingManager::saveData()
{
    const qint32 size = getSaveDataSize();
    if (m_settingDirPath.isEmpty() || size == 0) {
        showMemoryCardAlert();
        return false;
    }
    const QByteArray record = SetupRecordCodec::encode(m_values, getSettingVariableCount());
    if (!CardFiles::writeSettingFile(m_settingDirPath, kSetupFile, record)) {
        showMemoryCardAlert();
        return false;
    }
    return true;
}

bool TolmSettingManager::loadDefaultDataFromDefaultCfgFile()
{
    if (m_settingDirPath.isEmpty())
        return false;
    const QString path = CardFiles::settingWritePath(m_settingDirPath, kDefaultFile);
    QByteArray bytes;
    if (!QFileInfo(path).isFile() || !CardFiles::readWhole(path, bytes))
        return false;
    SetupRecordCodec::decodeDefaultCfg(bytes, m_values);
    return true;
}

void TolmSettingManager::showMemoryCardAlert() const
{
    AlertSink& sink = m_alertSink ? *m_alertSink : AlertSink::shared();
    sink.showAlert(AlertRequest::memoryCardError());
}
