#pragma once

#include "telemetry/TelemetryParser.h"

class SampleWriter;
class SecondBuffer;
struct GpsFix;

// Telemetry chunks ("02tx"/"03tx") interleaved with the video of an AVI clip.
// The first data byte gives the record:
//   'M'        one raw G sample: 128 minus each of bytes 1..3, in 1/128 g
//   'T'        end of a second without GPS
//   '$' / 'G'  end of a second with an RMC sentence ("$GPRMC"/"G$GPRMC")
// Each second's G samples are spread to ten samples with that second's GPS.
class AviChunkParser : public TelemetryParser {
public:
    int parse(QByteArrayView bytes, TavroClipData& record) const override;

    // An RMC sentence in a chunk's data: its fix, or nothing when the chunk
    // holds no RMC sentence. Shared with the Kel-family chunk parser.
    static bool readRmcChunk(QByteArrayView data, GpsFix& fix);
};
