#pragma once

#include <QString>
#include <QTextStream>

class TavroClipData;

// How `tavro telemetry` prints a loaded record.
namespace TelemetryOutput {

// One JSON object on one line:
// {"file":F,"loader":L,"clipDataCount":N,"gpsDataCount":M,"samples":[[gx,gy,gz,lat,lng,speed],...]}
void writeJson(
    QTextStream& out, const QString& file, const QString& loader, const TavroClipData& data);

QString csvHeader();
// One row per sample: file, media time (i/10 s), gx, gy, gz, lat, lng, speed.
void writeCsvRows(QTextStream& out, const QString& file, const TavroClipData& data);

// A float printed so that it reads back as the same float32 ("%.9g").
QString coordinateText(float value, bool forJson);

} // namespace TelemetryOutput
