#pragma once

#include "cut/CutPlan.h"

#include <QSize>
#include <QString>

struct RouteSample;

// The telemetry drawn on a cut: one line per sample (the time of day, the
// speed and the three G values) as an ASS subtitle script on the output's
// clock, each line shown from its sample's time to the next sample's, so
// that every frame shows the sample it was recorded with. ffmpeg's "ass"
// filter burns it into the picture.
namespace TelemetryOverlay {

// "2026-05-14 08:15:03  71 km/h  G +0.12 -0.05 +1.00": local time as the
// camera's clock shows it, speed without a fix as "--".
QString sampleText(const RouteSample& sample, bool miles);

// The script for a picture of `frame` pixels, the text in its upper left
// corner (clear of the rear camera's inset in the lower right).
QString assScript(
    const Trip& trip, const QVector<CutPlan::Segment>& segments, QSize frame, bool miles);

} // namespace TelemetryOverlay
