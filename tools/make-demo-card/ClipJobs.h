#pragma once

#include "DemoClipPlan.h"
#include "FfmpegJobs.h"

#include <QString>

class DemoTimeline;

// Turns a planned clip into ffmpeg runs plus the finishing step that puts the
// telemetry into the file the way its camera does.
class ClipJobs {
public:
    // `workDir`: scratch space on the card's file system (subtitle scripts,
    // raw ffmpeg output); `cardRoot`: where the finished clips go.
    ClipJobs(const DemoOptions& options, const DemoTimeline& timeline, QString workDir,
        QString cardRoot);

    bool add(const DemoClip& clip, FfmpegJobs& jobs, QString& error) const;

private:
    bool addMp4Pair(const DemoClip& clip, FfmpegJobs& jobs, QString& error) const;
    void addAvi(const DemoClip& clip, FfmpegJobs& jobs) const;
    void addSingle(const DemoClip& clip, FfmpegJobs& jobs) const;

    QString finalPath(const DemoClip& clip, int file) const;
    QString scratchPath(const DemoClip& clip, int file, const QString& suffix) const;

    const DemoOptions& m_options;
    const DemoTimeline& m_timeline;
    QString m_workDir;
    QString m_cardRoot;
};
