#pragma once

#include "telemetry/TelemetryParser.h"

#include <optional>

// The text block some cameras append after the AVI's video, introduced by
// "ETKLP1": one line per tenth of a second,
//   counter,latitude,longitude,speed km/h,gx,gy,gz
// with signed decimal degrees. The marker is looked for only in the last
// kWindow bytes; without it the text is taken from offset 6, which ordinary
// video data fails to decode as UTF-8.
class AviTailParser : public TelemetryParser {
public:
    static constexpr qsizetype kWindow = 33006;

    int parse(QByteArrayView bytes, TavroClipData& record) const override;

private:
    static qsizetype textStart(QByteArrayView bytes);
    // The line's sample at `index`; nothing when it is not a sample line,
    // otherwise whether it carries a position.
    static std::optional<bool> storeLine(QByteArrayView line, int index, TavroClipData& record);
};
