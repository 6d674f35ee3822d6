#pragma once

#include <array>

// What the speedometer shows for one speed: up to three digit images, the
// number of lit gauge segments and whether the mph label is on. Computed
// without widgets so the rules can be checked on their own.
struct SpeedReadout {
    static constexpr int kNoDigit = -1;
    static constexpr int kGaugeSegments = 24;

    int shown = 0; // the speed in the chosen unit
    bool mph = false; // mph label visible
    int gaugeSegments = 0; // segments 1..gaugeSegments are lit
    // Digit per slot, kNoDigit where the slot is cleared.
    int number1 = kNoDigit;
    int number10 = kNoDigit;
    int number100 = kNoDigit;

    // `kmh` is the sample's speed; any non-zero `speedUnit` means mph.
    static SpeedReadout forSpeed(int kmh, int speedUnit);
    // The number of lit segments for a shown speed: one per 10 units, at most 24.
    static int gaugeSegmentsFor(int shown);
    // The shown speed: km/h unchanged, mph = km/h x 0.621371 rounded half away from zero.
    static int shownSpeed(int kmh, int speedUnit);
};
