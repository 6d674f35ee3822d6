#pragma once

#include <QString>

// Writes the subtitle track of an MP4 clip as SubRip text with ffmpeg
// (`ffmpeg -i CLIP -vn -an -c:s text OUT.srt`).
namespace TelemetrySubtitleExtract {

struct Result {
    bool ffmpegFound = false;
    bool written = false; // false also when the clip has no subtitle track
    QString message; // ffmpeg's complaint when nothing was written
};

Result extract(const QString& clipPath, const QString& srtPath);

// True when ffmpeg is on PATH.
bool ffmpegAvailable();

} // namespace TelemetrySubtitleExtract
