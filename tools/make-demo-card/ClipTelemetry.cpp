#include "ClipTelemetry.h"

#include "DemoTimeline.h"

#include <cmath>

namespace {
constexpr double kKnotsPerKmh = 1.0 / 1.852;
}

ClipTelemetry ClipTelemetry::record(const DemoTimeline& timeline, double start, int seconds,
    int gRate, int fixFromSecond, double timeScale)
{
    ClipTelemetry clip;
    clip.seconds = seconds;
    clip.gRate = gRate;
    for (int second = 0; second < seconds; ++second) {
        for (int k = 0; k < gRate; ++k) {
            const double t = second + double(k) / gRate;
            const DriveState state = timeline.at(start + t * timeScale);
            clip.g.push_back({ t, int(std::lround(state.gx)), int(std::lround(state.gy)),
                int(std::lround(state.gz)) });
        }
        // The fix of this second is reported just before the next one begins.
        const double fixTime = second + 1.0 - 0.5 / gRate;
        const double fixAt = start + (second + 1.0) * timeScale;
        const DriveState state = timeline.at(fixAt);
        GpsReading fix;
        fix.t = fixTime;
        fix.valid = second >= fixFromSecond;
        fix.lat = state.lat;
        fix.lng = state.lng;
        fix.knots = state.speedKmh * kKnotsPerKmh;
        fix.courseDeg = state.courseDeg;
        fix.utc = timeline.utcAt(fixAt);
        clip.fixes.push_back(fix);
    }
    return clip;
}

QVector<GReading> ClipTelemetry::readingsOfSecond(int second) const
{
    QVector<GReading> result;
    for (const GReading& reading : g)
        if (reading.t >= second && reading.t < second + 1)
            result.push_back(reading);
    return result;
}
