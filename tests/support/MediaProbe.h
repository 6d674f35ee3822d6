#pragma once

#include <QString>

// What ffprobe and ffmpeg see in a video file the tests made.
namespace MediaProbe {

// "key=value" lines: the first video stream's width, height and packets,
// then the file's duration and number of streams.
QString describe(const QString& file);

// The file's duration in seconds; -1 when ffprobe cannot tell.
double duration(const QString& file);

// The colour of the pixel (x, y) in the frame at `seconds` of a file
// `width` pixels wide: "red", "blue", "black", "other", or "none" without
// such a frame.
QString colourAt(const QString& file, double seconds, int x, int y, int width);

} // namespace MediaProbe
