// Feeds arbitrary bytes to the parser of the Kel-family telemetry chunks of an AVI's chunk stream.
#include "TelemetryFuzzCheck.h"
#include "telemetry/KelChunkParser.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    return fuzzTelemetryParser<KelChunkParser>(data, size);
}
