#pragma once

#include <QDateTime>
#include <QVector>

class DemoTimeline;

// One G-sensor reading in 1/128 g, at a time in the clip.
struct GReading {
    double t = 0;
    int x = 0;
    int y = 0;
    int z = 128;
};

// One GPS fix; the receiver reports once a second, near the second's end.
struct GpsReading {
    double t = 0;
    bool valid = true;
    double lat = 0;
    double lng = 0;
    double knots = 0;
    double courseDeg = 0;
    QDateTime utc;
};

// What a camera's sensors recorded during one clip: G readings at the
// camera's rate and one GPS fix per second of video.
struct ClipTelemetry {
    double seconds = 0;
    int gRate = 10;
    QVector<GReading> g;
    QVector<GpsReading> fixes;

    // Cuts the clip [start, start + seconds) out of the timeline.
    // `fixFromSecond`: seconds before it have no GPS fix yet (receiver cold).
    // `timeScale`: real seconds per second of video (a time-lapse films
    // slower than it plays).
    static ClipTelemetry record(const DemoTimeline& timeline, double start, int seconds, int gRate,
        int fixFromSecond = 0, double timeScale = 1.0);

    // The G readings of second `second` (t in [second, second + 1)).
    QVector<GReading> readingsOfSecond(int second) const;
};
