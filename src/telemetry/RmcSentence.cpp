#include "telemetry/RmcSentence.h"

#include "telemetry/TavroClipData.h"

#include <QDate>

#include <cmath>
#include <limits>

namespace RmcSentence {

namespace {

// Two decimal digits at `pos`, or -1.
int twoDigits(QByteArrayView text, qsizetype pos)
{
    if (pos + 1 >= text.size())
        return -1;
    const char tens = text[pos];
    const char ones = text[pos + 1];
    if (tens < '0' || tens > '9' || ones < '0' || ones > '9')
        return -1;
    return (tens - '0') * 10 + (ones - '0');
}

// Milliseconds of the fraction after "hhmmss": ".s", ".ss", ".sss" (more digits dropped).
int fractionMsecs(QByteArrayView rest)
{
    if (rest.isEmpty() || rest.front() != '.')
        return rest.isEmpty() ? 0 : -1;
    int msecs = 0;
    int scale = 100;
    for (qsizetype i = 1; i < rest.size(); ++i) {
        if (rest[i] < '0' || rest[i] > '9')
            return -1;
        msecs += (rest[i] - '0') * scale;
        scale /= 10;
    }
    return msecs;
}

} // namespace

int64_t utcMsecs(QByteArrayView time, QByteArrayView date)
{
    // A sentence ending at the date field carries its "*hh" checksum there.
    if (const qsizetype star = date.indexOf('*'); star >= 0)
        date = date.first(star);
    if (time.size() < 6 || date.size() != 6)
        return kNoUtcMsecs;
    const int hours = twoDigits(time, 0);
    const int minutes = twoDigits(time, 2);
    const int seconds = twoDigits(time, 4);
    const int msecs = fractionMsecs(time.sliced(6));
    if (hours < 0 || hours > 23 || minutes < 0 || minutes > 59 || seconds < 0 || seconds > 59
        || msecs < 0)
        return kNoUtcMsecs;
    const int day = twoDigits(date, 0);
    const int month = twoDigits(date, 2);
    const int year = twoDigits(date, 4);
    const QDate when(2000 + year, month, day);
    if (year < 0 || !when.isValid())
        return kNoUtcMsecs;
    constexpr int64_t kJulianDayOf1970 = 2440588;
    const int64_t days = when.toJulianDay() - kJulianDayOf1970;
    return ((days * 24 + hours) * 60 + minutes) * 60000 + seconds * 1000 + msecs;
}

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
    fix.utcMsecs = utcMsecs(fields.field(first + 1), fields.field(first + 9));
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
