#pragma once

#include <QImage>
#include <QString>

// Takes one decoded frame of a video file at a given time with a private,
// picture-less mpv core, independent of any player that shows the file.
namespace FrameGrabber {

// The frame shown at `seconds` (exact seek) of video stream `videoTrack`
// (1 = first); a null image when the file has no such frame or mpv does not
// answer within timeoutMs. Waits for mpv, so keep it to user-requested stills.
QImage grab(const QString& path, double seconds, int videoTrack = 1, int timeoutMs = 5000);

} // namespace FrameGrabber
