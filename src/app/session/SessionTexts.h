#pragma once

#include <QString>

#include <cstdint>

struct Trip;

// The texts the playback session writes into the main window.
namespace SessionTexts {

// "mm:ss/mm:ss": minutes and seconds of the play time and of the duration,
// truncated; minutes are not wrapped at 60 (a 75-minute clip shows 75:00).
QString playTimeText(double time, double duration);
// A G value in g with three decimals ("0.500", "-1.000").
QString gText(float g);
// A coordinate in degrees with four decimals ("37.5665").
QString coordinateText(float degrees);
// What a mark of a trip stands for, then the time of day it happened (this
// computer's clock) and where it lies on the trip's timeline:
// "Impact 1.92 g\n08:17:26 · 02:26".
QString tripMarkText(const QString& what, int64_t utcMsecs, double position);
// A trip's row in the Trips view, two lines: its date, start and end time
// and duration ("2026-05-14  08:15–08:25  10:12"), then its distance, top
// speed, impacts and event marks ("8.2 km · top 71 km/h · impacts: 1 ·
// events: 3"), in miles when `miles` is set. Times in this computer's zone.
QString tripRowText(const Trip& trip, bool miles);

} // namespace SessionTexts
