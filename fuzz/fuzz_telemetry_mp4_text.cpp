// Feeds arbitrary bytes to the reader of an MP4's subtitle (text) track:
// ISO-BMFF boxes, sample tables and the text samples they point at.
#include "TelemetryFuzzCheck.h"
#include "telemetry/Mp4TextTrackParser.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    return fuzzTelemetryParser<Mp4TextTrackParser>(data, size);
}
