#pragma once

#include <QString>

// The texts the playback session writes into the main window.
namespace SessionTexts {

// "mm:ss/mm:ss": minutes and seconds of the play time and of the duration,
// truncated; minutes are not wrapped at 60 (a 75-minute clip shows 75:00).
QString playTimeText(double time, double duration);
// A G value in g with three decimals ("0.500", "-1.000").
QString gText(float g);
// A coordinate in degrees with four decimals ("37.5665").
QString coordinateText(float degrees);

} // namespace SessionTexts
