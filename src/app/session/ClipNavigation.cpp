#include "app/session/ClipNavigation.h"

#include "library/ClipNaming.h"

namespace ClipNavigation {

int previousRow(const QList<QUrl>& rows, int selected)
{
    const int count = int(rows.size());
    if (selected <= 0 || selected >= count)
        return -1;
    const int target = selected - 1;
    if (ClipNaming::isMp4Partner(rows[selected], rows[target]) || target < 1)
        return target;
    // The previous row is a rear clip (or unpaired): go to the front clip of
    // its pair when that stands right before it.
    const QString previous = ClipNaming::absoluteUrlString(rows[target]);
    if (!previous.contains(QLatin1String("F."))) {
        QString front = previous;
        front.replace(QLatin1String("R."), QLatin1String("F."));
        if (front == ClipNaming::absoluteUrlString(rows[target - 1]))
            return target - 1;
    }
    return target;
}

int nextRow(const QList<QUrl>& rows, int selected)
{
    const int count = int(rows.size());
    if (selected < 0 || count == 0)
        return -1;
    const int target = selected + 1;
    if (target >= count)
        return 0;
    if (selected < count && ClipNaming::isMp4Partner(rows[selected], rows[target]))
        return count > selected + 2 ? selected + 2 : 0;
    return target;
}

} // namespace ClipNavigation
