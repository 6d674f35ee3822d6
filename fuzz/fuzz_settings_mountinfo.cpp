// Feeds arbitrary text to the mount-table parser the card format decides on,
// and looks up the mount holding each parsed mount point: every entry must
// have an absolute mount point and a type, and each point must find a mount.
#include "settings/format/MountTable.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const QByteArray bytes(reinterpret_cast<const char*>(data), qsizetype(size));
    const QList<MountEntry> mounts = MountTable::parse(bytes);
    for (const MountEntry& entry : mounts) {
        if (!entry.mountPoint.startsWith(u'/') || entry.fsType.isEmpty())
            std::abort();
        const auto holder = MountTable::mountHolding(mounts, entry.mountPoint);
        if (!holder || !MountTable::pathIsUnder(entry.mountPoint, holder->mountPoint))
            std::abort();
        entry.isFuse();
    }
    return 0;
}
