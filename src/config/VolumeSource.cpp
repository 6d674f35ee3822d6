#include "config/VolumeSource.h"

#include <QDir>
#include <QFileInfo>

namespace {

QString normalised(const QString& path)
{
    const QFileInfo info(path);
    const QString canonical = info.canonicalFilePath();
    return QDir::cleanPath(canonical.isEmpty() ? info.absoluteFilePath() : canonical);
}

bool contains(const QString& root, const QString& path)
{
    if (root == QLatin1String("/"))
        return path.startsWith(u'/');
    return path == root || path.startsWith(root + u'/');
}

} // namespace

std::optional<VolumeInfo> VolumeSource::volumeForPath(const QString& path) const
{
    if (path.isEmpty())
        return std::nullopt;
    const QString target = normalised(path);
    std::optional<VolumeInfo> best;
    qsizetype bestLength = -1;
    for (const VolumeInfo& volume : volumes()) {
        const QString root = normalised(volume.rootPath);
        if (contains(root, target) && root.size() > bestLength) {
            best = volume;
            bestLength = root.size();
        }
    }
    return best;
}
