#pragma once

#include "ClipTelemetry.h"

#include <QByteArray>
#include <QString>
#include <QVector>

// How each camera family writes its telemetry, as text or as chunk payloads.
namespace TelemetryScripts {

// An RMC sentence: "GPRMC,hhmmss.00,A,ddmm.mmmm,N,dddmm.mmmm,E,knots,course,ddmmyy,,,A".
// With `dollar` it starts with "$" and ends with the "*hh" checksum.
QString rmcSentence(const GpsReading& fix, const QString& talker, bool dollar);

// Subtitle telemetry of the MP4 cameras (SubRip text, muxed as mov_text).
enum class SubtitleStyle {
    Gsensor, // "gsensor,x,y,z" records and a "GPRMC" sentence each second
    GsensorCar, // as Gsensor, with a "CAR" record after every fifth reading, "GNRMC"
    GsensorScaled // "gsensori" device counts; the last of each second carries ";GNRMC,..."
};
QByteArray subtitleScript(const ClipTelemetry& clip, SubtitleStyle style);

// One telemetry chunk of an AVI clip, placed at time `t` of the video.
struct TimedChunk {
    double t = 0;
    QByteArray fourcc;
    QByteArray payload;
};

// "M" readings (one byte per axis, 128 is zero) and, at each second's end, a
// "$GPRMC" sentence (or "G$GPRMC"), or a "T" record while there is no fix.
QVector<TimedChunk> aviChunks(
    const ClipTelemetry& clip, const QByteArray& fourcc, bool gPrefixedRmc);
// The Kel family: "M" readings in steps of 10 units with bytes 4 to 6 set to
// 1, and a "$GPRMC" sentence every second.
QVector<TimedChunk> kelChunks(const ClipTelemetry& clip, const QByteArray& fourcc);

// The text block some cameras append after the video: "ETKLP1" and one line
// per tenth of a second, "n,lat,lng,kmh,x,y,z" in signed decimal degrees.
QByteArray tailBlock(const ClipTelemetry& clip);

// "02tx"-tagged text records as a camera stores them inside a QuickTime
// file: tag, 32-bit size, the text and a zero byte.
QByteArray rawRecords(const ClipTelemetry& clip);

} // namespace TelemetryScripts
