#include "telemetry/RmcSentence.h"

#include "telemetry/TavroClipData.h"

#include <cmath>
#include <limits>

namespace RmcSentence {

int32_t truncateToInt32(double value)
{
    if (std::isnan(value))
        return 0;
    if (value >= 2147483647.0)
        return std::numeric_limits<int32_t>::max();
    if (value <= -2147483648.0)
        return std::numeric_limits<int32_t>::min();
    return static_cast<int32_t>(value);
}

int32_t knotsToKmh(float knots)
{
    const float kmh = static_cast<float>(static_cast<double>(knots) * 1.852);
    return truncateToInt32(static_cast<double>(kmh) + 0.5);
}

GpsFix read(const TelemetryText::FieldList& fields, qsizetype first)
{
    GpsFix fix;
    if (fields.field(first + 2) != QByteArrayView("A"))
        return fix;
    const QByteArrayView latitudeLetter = fields.field(first + 4);
    const QByteArrayView longitudeLetter = fields.field(first + 6);
    fix.latitudeE6 = TavroClipData::cal_string(fields.field(first + 3));
    fix.latitudeLetter = latitudeLetter.isEmpty() ? '\0' : latitudeLetter.front();
    fix.longitudeE6 = TavroClipData::cal_string(fields.field(first + 5));
    fix.longitudeLetter = longitudeLetter.isEmpty() ? '\0' : longitudeLetter.front();
    fix.speedKmh = knotsToKmh(fields.floatField(first + 7));
    return fix;
}

} // namespace RmcSentence
