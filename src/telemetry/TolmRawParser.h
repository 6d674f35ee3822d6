#pragma once

#include "telemetry/TelemetryParser.h"

// Tolm-family records stored as zero-terminated text after a "02tx" or
// "03tx" tag anywhere in the clip's bytes (no container walk): the tag, one
// more byte, any zero bytes, then up to 119 bytes of text up to a zero byte.
// Records as in TolmRecordReader, without "CAR"/"dummy" and without RMC
// sentences appended to "gsensori".
class TolmRawParser : public TelemetryParser {
public:
    static constexpr qsizetype kMaxTextLength = 119;

    int parse(QByteArrayView bytes, TavroClipData& record) const override;

private:
    // Position of the next "0?tx" tag (? being '2' or '3') at or after `from`, or -1.
    static qsizetype findTag(QByteArrayView bytes, qsizetype from);
};
