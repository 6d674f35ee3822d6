#include "app/session/CardMountFilter.h"

#include <QDir>

namespace {

bool isCardVolume(const VolumeInfo& volume)
{
    return volume.isLocal && volume.isRemovable;
}

} // namespace

bool CardMountFilter::isSameOrInside(const QString& path, const QString& root)
{
    if (path.isEmpty() || root.isEmpty())
        return false;
    const QString cleanPath = QDir::cleanPath(path);
    const QString cleanRoot = QDir::cleanPath(root);
    if (cleanRoot == QLatin1String("/"))
        return true;
    return cleanPath == cleanRoot
        || (cleanPath.startsWith(cleanRoot) && cleanPath.at(cleanRoot.size()) == u'/');
}

void CardMountFilter::remember(const QList<VolumeInfo>& volumes)
{
    m_cards.clear();
    for (const VolumeInfo& volume : volumes) {
        if (isCardVolume(volume))
            m_cards.insert(QDir::cleanPath(volume.rootPath), volume.device);
    }
}

bool CardMountFilter::isCardArrival(const QString& point, const QList<VolumeInfo>& volumes)
{
    const QHash<QString, QString> before = m_cards;
    remember(volumes);
    for (const VolumeInfo& volume : volumes) {
        if (!isCardVolume(volume))
            continue;
        const QString root = QDir::cleanPath(volume.rootPath);
        // The card's volume itself, or a --card folder on the new mount.
        if (root != QDir::cleanPath(point) && !isSameOrInside(root, point))
            continue;
        if (before.contains(root))
            continue; // known already: the mount is not what brought it
        // A second mount of a device already there is a bind mount, not a card.
        if (!volume.device.isEmpty() && before.values().contains(volume.device))
            continue;
        return true;
    }
    return false;
}

bool CardMountFilter::isCardRemoval(
    const QString& point, const QList<VolumeInfo>& volumes, const QString& cardPath)
{
    const QHash<QString, QString> before = m_cards;
    remember(volumes);
    if (isSameOrInside(cardPath, point))
        return true;
    for (auto it = before.cbegin(); it != before.cend(); ++it) {
        if (!isSameOrInside(it.key(), point) || m_cards.contains(it.key()))
            continue;
        // A bind mount went; the card's device is still mounted elsewhere.
        if (!it.value().isEmpty() && m_cards.values().contains(it.value()))
            continue;
        return true;
    }
    return false;
}
