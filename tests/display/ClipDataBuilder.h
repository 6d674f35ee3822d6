#pragma once

#include "telemetry/TavroClipData.h"

#include <vector>

// Fills a telemetry record the way a parser leaves it: samples from index 0,
// clipDataCount = number of samples, gpsDataCount = samples with a position
// (unless the test sets another count afterwards).
struct GSample {
    int x = 0;
    int y = 0;
    int z = 0;
};

struct GpsPoint {
    float lat = 0.0f;
    float lng = 0.0f;
};

TavroClipData makeGRecord(const std::vector<GSample>& samples);
TavroClipData makeGpsRecord(const std::vector<GpsPoint>& points);
