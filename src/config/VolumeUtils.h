#pragma once

#include "config/VolumeSource.h"

#include <QString>
#include <QUrl>

#include <memory>

// Volume helpers of the viewer's static helper namespace.
namespace Utils {

// True only when the URL is on a volume that is both local and removable (a
// memory card). An empty or non-file URL, or a path on no known volume, is
// false.
bool isEXteranlMemoryWithURL(const QUrl& url);

// The name of the volume holding the URL, or an empty string.
QString volumeNameWithURL(const QUrl& url);

// The volume list every card lookup uses: by default the system's mounted
// volumes; tests and the --card option install a FolderVolumeSource.
const VolumeSource& volumeSource();
void setVolumeSource(std::shared_ptr<const VolumeSource> source);

} // namespace Utils
