// Feeds arbitrary bytes to the parser of text records after "02tx"/"03tx" tags in a clip's raw
// bytes.
#include "TelemetryFuzzCheck.h"
#include "telemetry/TolmRawParser.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    return fuzzTelemetryParser<TolmRawParser>(data, size);
}
