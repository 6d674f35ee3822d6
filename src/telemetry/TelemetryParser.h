#pragma once

#include <QByteArrayView>

class TavroClipData;

// One telemetry format. A parser reads the clip's bytes (shared by every
// parser the loader tries), writes samples into the record, sets its
// gpsDataCount and returns the number of samples (0 when the format is absent
// or broken). It never reads outside `bytes` and leaves clipDataCount alone.
class TelemetryParser {
public:
    virtual ~TelemetryParser() = default;
    virtual int parse(QByteArrayView bytes, TavroClipData& record) const = 0;
};
