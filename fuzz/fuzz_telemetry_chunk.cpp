// Feeds arbitrary bytes to the parser of the telemetry chunks of an AVI's chunk stream.
#include "TelemetryFuzzCheck.h"
#include "telemetry/AviChunkParser.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    return fuzzTelemetryParser<AviChunkParser>(data, size);
}
