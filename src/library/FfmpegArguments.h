#pragma once

#include <QString>
#include <QStringList>

// The ffmpeg command lines of the clip conversion. They are kept exactly as
// the conversion was validated with, odd differences between the variants
// included (only the "avc1" variant quiets ffmpeg with "-v 10"; "-y" sits at
// different places).
namespace FfmpegArguments {

// Codec tag option for a codec type of Utils::GetAviType: none for type 0,
// "-vtag hvc1" for type 2, "-vtag avc1" for types 1 and 3.
QStringList tagArguments(int aviType);

// One video stream ("0:0" front, "0:1" rear) of a two-camera file, with the
// audio stream "0:2" when the file has audio.
QStringList dualStreamArguments(const QString& input, const QString& stream, bool withAudio,
    int aviType, const QString& output);

// A file holding one camera, re-muxed as a whole.
QStringList singleStreamArguments(const QString& input, int aviType, const QString& output);

// The subtitle track (the camera's telemetry records) written as plain text.
QStringList subtitleArguments(const QString& input, const QString& srtOutput);

} // namespace FfmpegArguments
