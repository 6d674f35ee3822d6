#include "display/SpeedReadout.h"

#include <cmath>

namespace {

constexpr float kMilesPerKilometre = 0.621371f;
// Below this many km/h the digits stay dark (a car creeping in a car park);
// the test is on km/h in both units.
constexpr int kFirstShownKmh = 9;

} // namespace

int SpeedReadout::shownSpeed(int kmh, int speedUnit)
{
    if (speedUnit == 0)
        return kmh;
    return static_cast<int>(std::lround(static_cast<float>(kmh) * kMilesPerKilometre));
}

int SpeedReadout::gaugeSegmentsFor(int shown)
{
    const double tens = std::trunc(shown / 10.0);
    if (tens <= 0.0)
        return 0;
    return tens >= kGaugeSegments ? kGaugeSegments : static_cast<int>(tens);
}

SpeedReadout SpeedReadout::forSpeed(int kmh, int speedUnit)
{
    SpeedReadout readout;
    readout.shown = shownSpeed(kmh, speedUnit);
    readout.mph = speedUnit != 0;
    readout.gaugeSegments = gaugeSegmentsFor(readout.shown);
    if (kmh < kFirstShownKmh)
        return readout;

    // Remainders truncate toward zero as integer division does; only the last
    // three digits fit the instrument (1234 shows as 234).
    const int d1 = readout.shown % 10;
    const int t = static_cast<int>(static_cast<float>(readout.shown) / 10.0f);
    const int d10 = t % 10;
    const int d100 = static_cast<int>(static_cast<float>(t) / 10.0f) % 10;
    readout.number1 = d1;
    if (d10 == 0 && d100 == 0)
        return readout;
    readout.number10 = d10;
    if (!(d10 != 0 && d100 == 0))
        readout.number100 = d100;
    return readout;
}
