#pragma once

#include "cut/CutPlan.h"

#include <QByteArray>
#include <QSize>
#include <QString>
#include <QStringList>

#include <optional>

// The ffmpeg and ffprobe command lines of a cut, and what is read back from
// them.
namespace CutCommandLines {

// The encoder settings of a re-encoded cut: libx264 at this preset and
// constant quality reaches real time for 1080p30 with both cameras and the
// telemetry on two cores.
inline constexpr const char* kPreset = "veryfast";
inline constexpr int kQuality = 23; // crf
// The frame rate of the black picture standing in for a missing rear camera.
inline constexpr int kFillerRate = 30;

// ffprobe's list of the key frames of a video stream up to `upTo` seconds.
QStringList keyFrameProbe(const CutPlan::Source& source, double upTo);
// The last key frame at or before `at` in that list; 0 when there is none.
double keyFrameAtOrBefore(const QByteArray& probeOutput, double at);

// ffprobe's "WIDTHxHEIGHT" of a video stream, and its reading.
QStringList frameSizeProbe(const CutPlan::Source& source);
QSize frameSize(const QByteArray& probeOutput);

// The concat demuxer's list for a copy: the first segment from `start` (its
// key frame), the last up to its end, whole clips between.
QString concatList(const QVector<CutPlan::Segment>& segments, double start);
// Copies the stream of the list's files (with their sound) into an MP4.
QStringList copyArguments(
    const QString& listPath, const QVector<CutPlan::Segment>& segments, const QString& output);

// Decodes each segment exactly, joins them, draws the second camera and the
// telemetry (the script at `assPath`, when not empty) and encodes an MP4.
// `mainSize` is the main camera's picture.
QStringList reencodeArguments(const QVector<CutPlan::Segment>& segments,
    const CutPlan::Request& request, QSize mainSize, const QString& assPath, const QString& output);
// The size of a re-encoded cut's picture.
QSize outputSize(const CutPlan::Request& request, QSize mainSize);

// A file path as a filter option's value inside a filter graph.
QString filterPath(const QString& path);

// The seconds of output written so far, from a line of ffmpeg's "-progress"
// report ("out_time_us=…").
std::optional<double> progressSeconds(const QByteArray& line);

} // namespace CutCommandLines
