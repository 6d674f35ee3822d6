#pragma once

#include "DemoOptions.h"
#include "TelemetryScripts.h"

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <QVector>

class DemoTimeline;

enum class ClipFormat {
    Mp4Pair, // front and rear files, "F." / "R." (or "F_BC." / "R_BC."), subtitle telemetry
    AviTwoStreams, // front and rear as streams 0 and 1 of one AVI, telemetry chunks
    AviOneStream, // front only with sound, telemetry text block after the video
    QuickTime, // a .mov with tagged text records
    Mp4Plain // an exported front clip without telemetry
};

enum class ChunkFamily { General, Kel };

// One recording of the demo card.
struct DemoClip {
    QString folder; // card folder, e.g. "cont_rec"
    QStringList files; // file names: [front, rear] for a pair, else one
    QString camera; // the model label in the picture
    ClipFormat format = ClipFormat::Mp4Pair;
    double start = 0; // seconds into the day's timeline
    int seconds = 30;
    int gRate = 10; // G readings a second
    int fixFromSecond = 0; // no GPS fix before this second
    bool hevc = false;
    bool audio = false;
    TelemetryScripts::SubtitleStyle subtitleStyle = TelemetryScripts::SubtitleStyle::Gsensor;
    ChunkFamily chunkFamily = ChunkFamily::General;
    QByteArray chunkTag = "02tx"; // "03tx" where stream 2 is the sound
    bool gPrefixedRmc = false;
    double timeScale = 1.0; // real seconds per second of video (time-lapse)
};

namespace DemoClipPlan {

// Every clip of the main card, cut from the timeline (adding the knocks of
// the event clips to it).
QVector<DemoClip> plan(const DemoOptions& options, DemoTimeline& timeline);

// The clip file names ("yyyyMMdd_HHmmss") of the local time `seconds` into the day.
QString timeStamp(const DemoTimeline& timeline, double seconds);

} // namespace DemoClipPlan
