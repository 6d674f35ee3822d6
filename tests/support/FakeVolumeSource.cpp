#include "FakeVolumeSource.h"

#include <QFileInfo>

FakeVolumeSource& FakeVolumeSource::add(const QString& rootPath, bool isLocal, bool isRemovable,
    const QString& name, const QString& device)
{
    VolumeInfo volume;
    volume.rootPath = rootPath;
    volume.name = name.isEmpty() ? QFileInfo(rootPath).fileName() : name;
    volume.isLocal = isLocal;
    volume.isRemovable = isRemovable;
    volume.device = device;
    m_volumes.append(volume);
    return *this;
}

void FakeVolumeSource::remove(const QString& rootPath)
{
    m_volumes.removeIf([&](const VolumeInfo& volume) { return volume.rootPath == rootPath; });
}
