#pragma once

#include "cut/CutPlan.h"

#include <QString>

#include <cstdint>
#include <functional>

class ProcessRunner;

// Writes a stretch of a trip as one MP4 through ffmpeg: a stream copy of one
// camera from the key frame at or before the start, or a re-encode exact to
// the frame with both cameras in one picture and the telemetry drawn on it.
// The file is written under a temporary name beside the output and renamed
// when complete; a failed or cancelled cut (ProcessRunner::cancel) leaves
// nothing behind. Runs on the calling thread until ffmpeg is done.
namespace VideoCut {

struct Result {
    enum class Status {
        Done,
        NothingRecorded, // no clip of the camera covers any of the range
        CannotWrite, // the output's folder cannot take the file
        Failed, // ffmpeg or ffprobe failed, or the run was cancelled
    };
    Status status = Status::Failed;
    QString message; // why it failed, for a person
    QString output; // the absolute path written
    int64_t startUtc = 0; // where the output really starts
    double duration = 0; // seconds of output
    bool reencoded = false;

    bool ok() const { return status == Status::Done; }
};

// Seconds written so far out of the total, as ffmpeg reports them.
using Progress = std::function<void(double done, double total)>;

Result cut(const Trip& trip, const CutPlan::Request& request, const QString& output,
    ProcessRunner& runner, const Progress& progress = {});

// ffprobe beside the ffmpeg in use (Utils::GetFFMPEGPath), else on PATH.
QString ffprobePath();

} // namespace VideoCut
