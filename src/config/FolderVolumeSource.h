#pragma once

#include "config/VolumeSource.h"

// Declares chosen folders to be memory cards: each is listed, in the order
// given, as a local removable volume with the name given (the folder's own
// name when none). Used by tests and by the viewer's --card option.
class FolderVolumeSource final : public VolumeSource {
public:
    struct Folder {
        QString path;
        QString name;
    };

    FolderVolumeSource() = default;
    explicit FolderVolumeSource(QList<Folder> folders);

    void addFolder(const QString& path, const QString& name = {});

    QList<VolumeInfo> volumes() const override;

private:
    QList<Folder> m_folders;
};
