#include "config/VolumeWatcher.h"

#include "config/ConfigLog.h"

#include <QSet>

namespace {

// mountinfo escapes blanks, tabs, newlines and backslashes as \ooo.
QString decodeMountPath(const QByteArray& field)
{
    QByteArray out;
    out.reserve(field.size());
    for (qsizetype i = 0; i < field.size(); ++i) {
        const char c = field[i];
        if (c == '\\' && i + 3 < field.size()) {
            bool ok = false;
            const int code = field.mid(i + 1, 3).toInt(&ok, 8);
            if (ok && code >= 0 && code < 256) {
                out.append(char(code));
                i += 3;
                continue;
            }
        }
        out.append(c);
    }
    return QString::fromUtf8(out);
}

} // namespace

VolumeWatcher::VolumeWatcher(QObject* parent)
    : VolumeWatcher(QStringLiteral("/proc/self/mountinfo"), parent)
{
}

VolumeWatcher::VolumeWatcher(const QString& mountInfoPath, QObject* parent)
    : QObject(parent)
    , m_file(mountInfoPath)
{
    if (!m_file.open(QIODevice::ReadOnly | QIODevice::Unbuffered)) {
        qCWarning(lcConfig) << "cannot watch" << mountInfoPath;
        return;
    }
    m_mountPoints = readMountPoints();
    if (mountInfoPath.startsWith(QLatin1String("/proc/"))) {
        m_notifier = std::make_unique<QSocketNotifier>(m_file.handle(), QSocketNotifier::Exception);
        connect(m_notifier.get(), &QSocketNotifier::activated, this, &VolumeWatcher::rescan);
    }
}

VolumeWatcher::~VolumeWatcher() = default;

QStringList VolumeWatcher::parseMountPoints(const QByteArray& mountInfo)
{
    QStringList points;
    for (const QByteArray& line : mountInfo.split('\n')) {
        const QList<QByteArray> fields = line.split(' ');
        if (fields.size() > 4 && !fields[4].isEmpty())
            points.append(decodeMountPath(fields[4]));
    }
    return points;
}

QStringList VolumeWatcher::readMountPoints()
{
    if (!m_file.isOpen())
        return {};
    // The mount table must be read from the start each time; a kernel table
    // can't be mapped or sized in advance.
    m_file.seek(0);
    QByteArray text;
    while (true) {
        const QByteArray chunk = m_file.read(64 * 1024);
        if (chunk.isEmpty())
            break;
        text += chunk;
    }
    return parseMountPoints(text);
}

void VolumeWatcher::rescan()
{
    const QStringList current = readMountPoints();
    const QSet<QString> before(m_mountPoints.cbegin(), m_mountPoints.cend());
    const QSet<QString> after(current.cbegin(), current.cend());
    const QStringList previous = m_mountPoints;
    m_mountPoints = current;
    QSet<QString> reported;
    for (const QString& point : previous) {
        if (!after.contains(point) && !reported.contains(point)) {
            reported.insert(point);
            emit volumeUnmounted(point);
        }
    }
    for (const QString& point : current) {
        if (!before.contains(point) && !reported.contains(point)) {
            reported.insert(point);
            emit volumeMounted(point);
        }
    }
}
