#include "app/session/SessionTexts.h"

#include <cmath>
#include <cstdint>
#include <limits>

namespace {

// Truncates toward zero to a 32-bit integer; values out of range (or NaN)
// give 0 rather than undefined behaviour.
int32_t truncated(double value)
{
    if (!std::isfinite(value) || value >= double(std::numeric_limits<int32_t>::max())
        || value <= double(std::numeric_limits<int32_t>::min()))
        return 0;
    return int32_t(value);
}

} // namespace

namespace SessionTexts {

QString playTimeText(double time, double duration)
{
    return QString::asprintf("%02d:%02d/%02d:%02d", truncated(time / 60.0), truncated(time) % 60,
        truncated(duration / 60.0), truncated(duration) % 60);
}

QString gText(float g)
{
    return QString::asprintf("%.3f", double(g));
}

QString coordinateText(float degrees)
{
    return QString::asprintf("%.4f", double(degrees));
}

} // namespace SessionTexts
