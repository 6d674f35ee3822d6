#include "ClipDataBuilder.h"

#include <cstdint>

TavroClipData makeGRecord(const std::vector<GSample>& samples)
{
    TavroClipData data;
    int index = 0;
    for (const GSample& s : samples) {
        data.storeG(index++, static_cast<int16_t>(s.x), static_cast<int16_t>(s.y),
            static_cast<int16_t>(s.z));
    }
    data.setClipDataCount(index);
    data.setGpsDataCount(0);
    return data;
}

TavroClipData makeGpsRecord(const std::vector<GpsPoint>& points)
{
    TavroClipData data;
    int index = 0;
    int withFix = 0;
    for (const GpsPoint& p : points) {
        data.storeG(index, 0, 0, 128);
        data.storeGps(index, p.lat, p.lng);
        data.storeSpeed(index, 0);
        if (p.lat != 0.0f || p.lng != 0.0f)
            ++withFix;
        ++index;
    }
    data.setClipDataCount(index);
    data.setGpsDataCount(withFix);
    return data;
}
