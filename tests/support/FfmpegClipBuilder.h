#pragma once

#include <QString>
#include <QStringList>

// Generates small real clips with ffmpeg's test sources (lavfi), H.264 via
// libx264, for tests that run the real ffmpeg. Each returns false (and leaves
// ffmpeg's output in lastLog()) when ffmpeg fails.
namespace FfmpegClipBuilder {

// An AVI holding the front (64x48) and the rear (32x24) camera as two video
// streams, with a mono PCM audio stream as the third when withAudio is set.
bool makeDualStreamAvi(const QString& path, bool withAudio);

// An MP4 of one camera (width x 48) whose subtitle track (mov_text) holds the
// blocks of `srtText`.
bool makeSubtitledMp4(const QString& path, const QString& srtText, int width = 64);

// ffprobe's view of a file's streams, one entry per stream:
// "video WxH", "audio" or "subtitle".
QStringList streams(const QString& path);

QString lastLog();

} // namespace FfmpegClipBuilder
