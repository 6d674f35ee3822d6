#pragma once

#include "telemetry/TavroClipData.h"

#include <vector>

// Records as a parser leaves them: samples from index 0, clipDataCount = the
// samples, gpsDataCount = the samples with a position.
struct GSample {
    int x = 0, y = 0, z = 0;
};
struct GpsPoint {
    float lat = 0.0f, lng = 0.0f;
};

inline TavroClipData makeGRecord(const std::vector<GSample>& samples)
{
    TavroClipData data;
    for (size_t i = 0; i < samples.size(); ++i)
        data.storeG(int(i), int16_t(samples[i].x), int16_t(samples[i].y), int16_t(samples[i].z));
    data.setClipDataCount(int(samples.size()));
    data.setGpsDataCount(0);
    return data;
}

inline TavroClipData makeGpsRecord(const std::vector<GpsPoint>& points)
{
    TavroClipData data;
    int withFix = 0;
    for (size_t i = 0; i < points.size(); ++i) {
        data.storeG(int(i), 0, 0, 128);
        data.storeGps(int(i), points[i].lat, points[i].lng);
        data.storeSpeed(int(i), 0);
        withFix += points[i].lat != 0.0f || points[i].lng != 0.0f;
    }
    data.setClipDataCount(int(points.size()));
    data.setGpsDataCount(withFix);
    return data;
}
