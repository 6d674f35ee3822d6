#include "settings/format/CardFormatPlan.h"

QString describeRefusal(FormatRefusal refusal)
{
    switch (refusal) {
    case FormatRefusal::None:
        return QStringLiteral("the card may be formatted");
    case FormatRefusal::NotAMountPoint:
        return QStringLiteral("the folder is not the root of a mounted volume");
    case FormatRefusal::NoBlockDevice:
        return QStringLiteral(
            "the volume is not on a disk (network, memory or virtual file system)");
    case FormatRefusal::NotRemovable:
        return QStringLiteral("the volume is not on a removable memory card");
    case FormatRefusal::SystemVolume:
        return QStringLiteral(
            "the volume holds the system, the home folders or the viewer's cache");
    case FormatRefusal::UntitledVolume:
        return QStringLiteral("the volume's name begins with \"Untitled\"");
    case FormatRefusal::MountedElsewhere:
        return QStringLiteral("the volume is mounted at more than one place");
    case FormatRefusal::UnsupportedFileSystem:
        return QStringLiteral("the volume is neither FAT nor exFAT");
    case FormatRefusal::NoPermission:
        return QStringLiteral("formatting needs root, or UDisks2 on the system bus");
    }
    return {};
}
