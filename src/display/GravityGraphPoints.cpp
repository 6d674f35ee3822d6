#include "display/GravityGraphPoints.h"

#include "telemetry/TavroClipData.h"

#include <algorithm>
#include <cmath>

namespace {

// Positive and negative accelerations hang on the same side of the zero line:
// the graph shows how hard the car was shaken on each axis, not the direction.
float magnitudeY(int raw, float baseYPoint)
{
    const float y = baseYPoint - std::fabs(static_cast<float>(raw) * 20.0f / 200.0f);
    return y < 0.0f ? 0.0f : y;
}

} // namespace

GravityGraphPoints GravityGraphPoints::generatePoints(
    const TavroClipData& clipData, float baseYPoint)
{
    GravityGraphPoints points;
    const int count = clipData.clipDataCount();
    if (count <= 0)
        return points;
    const int n = std::min(count, TavroClipData::kCapacity);
    points.gxPointList.reserve(n);
    points.gyPointList.reserve(n);
    points.gzPointList.reserve(n);
    for (int i = 0; i < n; ++i) {
        const float x = static_cast<float>(i + 1) / static_cast<float>(count);
        points.gxPointList.append(QPointF(x, magnitudeY(clipData.getGx(i), baseYPoint)));
        points.gyPointList.append(QPointF(x, magnitudeY(clipData.getGy(i), baseYPoint)));
        points.gzPointList.append(QPointF(x, magnitudeY(clipData.getGz(i), baseYPoint)));
    }
    return points;
}
