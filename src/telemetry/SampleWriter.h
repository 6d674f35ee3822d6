#pragma once

#include "telemetry/GpsFix.h"

#include <array>

class TavroClipData;

// Appends samples to the record for the NMEA-reading parsers, stops at the
// record's capacity, and at the end turns the kept NMEA coordinates into
// signed float degrees (south and west negative) and counts the fixes.
class SampleWriter {
public:
    explicit SampleWriter(TavroClipData& record);

    // False once the record is full; the sample is then dropped.
    bool append(const RawGSample& sample, const GpsFix& fix);
    int count() const { return m_count; }
    bool isFull() const;

    // Writes the coordinates, sets gpsDataCount and returns the sample count.
    int finish();

private:
    struct KeptFix {
        int32_t latitudeE6;
        int32_t longitudeE6;
        char latitudeLetter;
        char longitudeLetter;
    };

    TavroClipData& m_record;
    std::array<KeptFix, 650> m_fixes {};
    int m_count = 0;
};
