#include "config/SetupRecordLayout.h"

namespace SetupRecordLayout {

int indexOfName(const QString& name)
{
    for (int i = 0; i < kFieldCount; ++i) {
        if (name == QLatin1String(kFields[size_t(i)].name))
            return i;
    }
    return -1;
}

} // namespace SetupRecordLayout
