#pragma once

#include <QList>
#include <QString>

#include <optional>

// One mounted volume as the viewer sees it: where it is mounted, its name,
// and the two flags that make it a memory card (local and removable).
struct VolumeInfo {
    QString rootPath;
    QString name;
    QString device;
    QString fileSystemType;
    bool isLocal = false;
    bool isRemovable = false;
};

// Lists the mounted volumes in a stable order. The desktop uses the system's
// mount table; tests and the viewer's --card option declare folders instead.
class VolumeSource {
public:
    virtual ~VolumeSource() = default;

    virtual QList<VolumeInfo> volumes() const = 0;

    // The volume holding `path` (the one with the longest root that contains
    // it), or nothing when the path is on none of the listed volumes.
    virtual std::optional<VolumeInfo> volumeForPath(const QString& path) const;
};
