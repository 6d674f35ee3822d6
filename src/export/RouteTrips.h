#pragma once

#include "export/ClipTimeline.h"

#include <QVector>

// A drive: clips that follow each other, in time order. The writers make one
// track of a trip and one segment of each of its clips.
struct RouteTrip {
    QVector<const ClipTimeline*> clips;

    int fixCount() const;
    int sampleCount() const;
    bool hasTimes() const;
    int64_t startUtc() const;
};

namespace RouteTrips {

// Clips join one trip while the gap between the end of the recording so far
// and the next clip's start is no longer than this.
inline constexpr int64_t kMaxGapMsecs = 2 * 60 * 1000;

// Clips timed only by their file name carry the camera's clock, which may
// run in another time zone than this computer. Clips that have both GPS
// times and a time in their name tell the difference (their median, to the
// second); the file-name times are moved by it. Without such clips nothing
// changes.
void alignCameraClock(QVector<ClipTimeline>& clips);

// Every clip a trip of its own, in the given order.
QVector<RouteTrip> perClip(const QVector<ClipTimeline>& clips);
QVector<RouteTrip> perClip(QVector<ClipTimeline>&&) = delete; // the trips would dangle

// The clips as drives of the camera: a rear clip whose front partner (same
// name but "F." for "R.", or "F_BC." for "R_BC.") is among them with
// telemetry is left out, since both carry the same GPS; the others are put in
// time order (by startUtc) and joined while no gap is longer than
// `maxGapMsecs` (a clip's recording ends at ClipTimeline::recordingEndUtc). A
// clip without any time is a trip of its own, after the timed ones. The
// timelines must outlive the trips.
QVector<RouteTrip> plan(const QVector<ClipTimeline>& clips, int64_t maxGapMsecs = kMaxGapMsecs);
QVector<RouteTrip> plan(QVector<ClipTimeline>&&, int64_t = 0) = delete; // the trips would dangle

} // namespace RouteTrips
