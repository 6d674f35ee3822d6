#include "config/FolderVolumeSource.h"

#include <QFileInfo>

FolderVolumeSource::FolderVolumeSource(QList<Folder> folders)
    : m_folders(std::move(folders))
{
}

void FolderVolumeSource::addFolder(const QString& path, const QString& name)
{
    m_folders.append({ path, name });
}

QList<VolumeInfo> FolderVolumeSource::volumes() const
{
    QList<VolumeInfo> list;
    for (const Folder& folder : m_folders) {
        VolumeInfo volume;
        volume.rootPath = QFileInfo(folder.path).absoluteFilePath();
        volume.name = folder.name.isEmpty() ? QFileInfo(folder.path).fileName() : folder.name;
        volume.fileSystemType = QStringLiteral("folder");
        volume.isLocal = true;
        volume.isRemovable = true;
        list.append(volume);
    }
    return list;
}
