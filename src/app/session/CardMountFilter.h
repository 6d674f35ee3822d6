#pragma once

#include "config/VolumeSource.h"

#include <QHash>
#include <QList>
#include <QString>

// Tells which changes of the mount table concern the memory card. Only the
// arrival or the removal of a local removable volume (or of a volume that a
// folder given with --card lies on) does; bind mounts of a card that is
// already there, containers, network shares and other disks do not.
class CardMountFilter {
public:
    // Takes the volumes listed now as the known ones.
    void remember(const QList<VolumeInfo>& volumes);

    // A volume was mounted at `point`; `volumes` is the list after it.
    bool isCardArrival(const QString& point, const QList<VolumeInfo>& volumes);
    // The volume at `point` went; `cardPath` is the card identified before
    // (empty when none).
    bool isCardRemoval(
        const QString& point, const QList<VolumeInfo>& volumes, const QString& cardPath);

    // `path` is `root` itself or lies inside it.
    static bool isSameOrInside(const QString& path, const QString& root);

private:
    // Card volumes known, root path to device ("" for a folder).
    QHash<QString, QString> m_cards;
};
