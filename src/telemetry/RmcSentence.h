#pragma once

#include "telemetry/GpsFix.h"
#include "telemetry/TelemetryText.h"

// An NMEA RMC sentence ("$GPRMC,time,status,lat,N,lng,E,knots,...") read from
// a field list. `first` is the index of the sentence's own first field, so a
// sentence appended to another record can be read in place.
namespace RmcSentence {

// The fix the sentence reports: coordinates and speed when the status is
// "A", otherwise the no-fix values. Missing fields read as empty.
GpsFix read(const TelemetryText::FieldList& fields, qsizetype first);

// The UTC time of an RMC time field ("hhmmss" or "hhmmss.sss") on the day of
// its date field ("ddmmyy", years 2000-2099), in milliseconds since 1970;
// kNoUtcMsecs when either is missing or not a valid date or time.
int64_t utcMsecs(QByteArrayView time, QByteArrayView date);

// Knots to whole km/h, rounded half up.
int32_t knotsToKmh(float knots);

// A float or double truncated toward zero into int32, saturating at the
// limits; NaN becomes 0.
int32_t truncateToInt32(double value);

} // namespace RmcSentence
