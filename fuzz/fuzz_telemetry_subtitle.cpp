// Feeds arbitrary bytes to the parser of the SubRip text extracted from an MP4's subtitle track.
#include "TelemetryFuzzCheck.h"
#include "telemetry/TolmSubtitleParser.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    return fuzzTelemetryParser<TolmSubtitleParser>(data, size);
}
