#pragma once

#include <cstdint>
#include <limits>

// A sample whose second carried no RMC date and time.
inline constexpr int64_t kNoUtcMsecs = std::numeric_limits<int64_t>::min();

// The GPS values current while a second of G samples is collected: the
// coordinates as NMEA gives them (millionths of a degree, unsigned, with the
// hemisphere letters) and the speed in km/h. No fix is 0, 'N', 0, 'E', 0.
// utcMsecs is the sentence's own date and time (milliseconds since 1970 UTC),
// kept even without a fix since the receiver's clock runs on; kNoUtcMsecs when
// the sentence has no valid date or time.
struct GpsFix {
    int32_t latitudeE6 = 0;
    char latitudeLetter = 'N';
    int32_t longitudeE6 = 0;
    char longitudeLetter = 'E';
    int32_t speedKmh = 0;
    int64_t utcMsecs = kNoUtcMsecs;
};

// One raw G-sensor sample in 1/128 g, before the per-second distribution.
struct RawGSample {
    int16_t x = 0;
    int16_t y = 0;
    int16_t z = 0;
};
