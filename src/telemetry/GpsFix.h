#pragma once

#include <cstdint>

// The GPS values current while a second of G samples is collected: the
// coordinates as NMEA gives them (millionths of a degree, unsigned, with the
// hemisphere letters) and the speed in km/h. No fix is 0, 'N', 0, 'E', 0.
struct GpsFix {
    int32_t latitudeE6 = 0;
    char latitudeLetter = 'N';
    int32_t longitudeE6 = 0;
    char longitudeLetter = 'E';
    int32_t speedKmh = 0;
};

// One raw G-sensor sample in 1/128 g, before the per-second distribution.
struct RawGSample {
    int16_t x = 0;
    int16_t y = 0;
    int16_t z = 0;
};
