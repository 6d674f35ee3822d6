// Feeds arbitrary bytes to the parser of the telemetry chunks of an AVI's chunk stream.
#include "telemetry/AviChunkParser.h"
#include "telemetry/TavroClipData.h"

#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    static TavroClipData record;
    const int count
        = AviChunkParser().parse(QByteArrayView(data, static_cast<qsizetype>(size)), record);
    record.setClipDataCount(count);
    if (count < 0 || count > TavroClipData::kCapacity || record.gpsDataCount() > count)
        std::abort();
    // Every valid sample must be readable.
    static volatile unsigned sink = 0;
    for (int i = 0; i < count; ++i)
        sink = sink ^ static_cast<unsigned>(record.getGx(i))
            ^ static_cast<unsigned>(record.getGpsSpeed(i));
    return 0;
}
