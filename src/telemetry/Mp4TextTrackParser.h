#pragma once

#include "telemetry/TelemetryParser.h"

// The telemetry an MP4 clip of the Tolm family carries in its subtitle track,
// read from the clip itself (see Mp4TextTrack): each text sample is one record,
// read exactly as the block of the SubRip file extracted from that track
// would be, so both ways give the same samples.
class Mp4TextTrackParser : public TelemetryParser {
public:
    int parse(QByteArrayView bytes, TavroClipData& record) const override;
};
