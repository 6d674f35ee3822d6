#pragma once

#include <QString>

// A camera clip made with ffmpeg's test source whose mov_text subtitle track
// carries the camera's telemetry: ten "gsensor" records a second and one
// "GPRMC" fix a second, driving north-east at a changing speed. Free of the
// test framework so that benchmarks can use it too.
namespace DriveClip {

// The SubRip text of that telemetry; `tag` goes into the G values so that a
// front and a rear clip differ.
QString telemetrySrt(int seconds, int tag);

// Writes the H.264 MP4 (width x height at fps); false when ffmpeg fails.
bool make(const QString& path, int seconds, int width, int height, int fps, int tag);

} // namespace DriveClip
