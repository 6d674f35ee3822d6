#pragma once

#include "telemetry/TelemetryParser.h"

// The SubRip text extracted from a Tolm-family MP4's subtitle track: blocks of
// a counter line, a "start --> end" line and payload lines, separated by an
// empty line. Each payload is one telemetry record (see TolmRecordReader);
// its time stamps are not used: order and the ten-per-second rule place it.
// "a,b;c,d" payloads read as the fields a, b, c, d (later ";" parts dropped).
class TolmSubtitleParser : public TelemetryParser {
public:
    int parse(QByteArrayView bytes, TavroClipData& record) const override;
};
