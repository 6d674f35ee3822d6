#include "FakeVolumeSource.h"

#include <QFileInfo>

FakeVolumeSource& FakeVolumeSource::add(
    const QString& rootPath, bool isLocal, bool isRemovable, const QString& name)
{
    VolumeInfo volume;
    volume.rootPath = rootPath;
    volume.name = name.isEmpty() ? QFileInfo(rootPath).fileName() : name;
    volume.isLocal = isLocal;
    volume.isRemovable = isRemovable;
    m_volumes.append(volume);
    return *this;
}
