#pragma once

#include "telemetry/TelemetryParser.h"

// Telemetry chunks of the Kel camera family's AVI clips. Same chunk stream
// and RMC sentences as the general chunk parser, another G record:
//   'M' b1 b2 b3 1 1 1   x = 10 * b1 - 1280 (likewise y, z); a record whose
//                        bytes 4..6 are not all 1 is dropped
// There is no end-of-second record without GPS: G samples wait in the
// second's buffer (at most 60) for the next RMC sentence.
class KelChunkParser : public TelemetryParser {
public:
    int parse(QByteArrayView bytes, TavroClipData& record) const override;
};
