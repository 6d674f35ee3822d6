#pragma once

// The check every telemetry fuzz target runs: parse arbitrary bytes, then make
// sure the counts are in range and every valid sample can be read.
#include "telemetry/TavroClipData.h"

#include <QByteArrayView>

#include <cstdint>
#include <cstdlib>

template <typename Parser>
int fuzzTelemetryParser(const uint8_t* data, size_t size)
{
    static TavroClipData record;
    const int count = Parser().parse(QByteArrayView(data, static_cast<qsizetype>(size)), record);
    record.setClipDataCount(count);
    if (count < 0 || count > TavroClipData::kCapacity || record.gpsDataCount() > count)
        std::abort();
    static volatile unsigned sink = 0;
    for (int i = 0; i < count; ++i)
        sink = sink ^ static_cast<unsigned>(record.getGx(i))
            ^ static_cast<unsigned>(record.getGpsSpeed(i));
    return 0;
}
