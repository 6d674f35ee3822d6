#include "config/TolmSettingManager.h"

#include "config/CardFiles.h"

void TolmSettingManager::loadLanguages()
{
    QByteArray text;
    const QString path
        = CardFiles::findSettingFile(m_settingDirPath, QStringLiteral("lang/ver.dat"));
    if (!path.isEmpty())
        CardFiles::readWhole(path, text);
    const CameraLanguageList parsed = CameraLanguages::parseVerDat(text);
    m_languages = parsed.isEmpty() ? CameraLanguages::fallbackLanguages() : parsed;
}
