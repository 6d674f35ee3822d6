// Feeds arbitrary bytes to the parser of the text block after an AVI's video ("ETKLP1" and its
// lines).
#include "TelemetryFuzzCheck.h"
#include "telemetry/AviTailParser.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    return fuzzTelemetryParser<AviTailParser>(data, size);
}
