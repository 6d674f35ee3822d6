#include "settings/format/MountTable.h"

#include <QFile>

#include <algorithm>

bool MountEntry::isFuse() const
{
    return fsType == QLatin1String("fuse") || fsType == QLatin1String("fuseblk")
        || fsType.startsWith(QLatin1String("fuse."));
}

namespace MountTable {
namespace {

std::optional<MountEntry> parseLine(const QByteArray& line)
{
    const QList<QByteArray> fields = line.split(' ');
    const qsizetype separator = fields.indexOf(QByteArray("-"));
    // id, parent, major:minor, root, mount point, options [optional fields] - type [source [super]]
    if (separator < 6 || separator + 1 >= fields.size())
        return std::nullopt;
    MountEntry entry;
    bool idOk = false;
    bool parentOk = false;
    entry.mountId = fields[0].toInt(&idOk);
    entry.parentId = fields[1].toInt(&parentOk);
    const QList<QByteArray> device = fields[2].split(':');
    if (!idOk || !parentOk || device.size() != 2)
        return std::nullopt;
    bool majorOk = false;
    bool minorOk = false;
    entry.major = device[0].toUInt(&majorOk);
    entry.minor = device[1].toUInt(&minorOk);
    if (!majorOk || !minorOk)
        return std::nullopt;
    entry.root = unescape(fields[3]);
    entry.mountPoint = unescape(fields[4]);
    entry.mountOptions = QString::fromUtf8(fields[5]);
    entry.fsType = unescape(fields[separator + 1]);
    if (separator + 2 < fields.size())
        entry.source = unescape(fields[separator + 2]);
    if (separator + 3 < fields.size())
        entry.superOptions = QString::fromUtf8(fields[separator + 3]);
    if (!entry.mountPoint.startsWith(u'/') || entry.fsType.isEmpty())
        return std::nullopt;
    return entry;
}

} // namespace

// The kernel writes blanks, tabs, newlines and backslashes in paths as
// three-digit octal escapes ("\040").
QString unescape(const QByteArray& field)
{
    QByteArray out;
    out.reserve(field.size());
    for (qsizetype i = 0; i < field.size(); ++i) {
        const char c = field[i];
        if (c == '\\' && i + 3 < field.size()) {
            const QByteArray digits = field.mid(i + 1, 3);
            const bool octal = std::all_of(
                digits.begin(), digits.end(), [](char d) { return d >= '0' && d <= '7'; });
            const int value = octal ? digits.toInt(nullptr, 8) : -1;
            if (octal && value < 256) {
                out.append(char(value));
                i += 3;
                continue;
            }
        }
        out.append(c);
    }
    return QString::fromUtf8(out);
}

QList<MountEntry> parse(const QByteArray& text)
{
    QList<MountEntry> mounts;
    for (const QByteArray& line : text.split('\n')) {
        if (const std::optional<MountEntry> entry = parseLine(line.trimmed()))
            mounts.append(*entry);
    }
    return mounts;
}

QList<MountEntry> read(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    // A proc file reports no size: read until the end.
    return parse(file.readAll());
}

bool pathIsUnder(const QString& path, const QString& mountPoint)
{
    if (mountPoint == QLatin1String("/"))
        return path.startsWith(u'/');
    return path == mountPoint || path.startsWith(mountPoint + u'/');
}

std::optional<MountEntry> mountHolding(const QList<MountEntry>& mounts, const QString& path)
{
    std::optional<MountEntry> best;
    for (const MountEntry& entry : mounts) {
        if (!pathIsUnder(path, entry.mountPoint))
            continue;
        if (!best || entry.mountPoint.size() >= best->mountPoint.size())
            best = entry;
    }
    return best;
}

} // namespace MountTable
