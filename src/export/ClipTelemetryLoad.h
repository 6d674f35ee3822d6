#pragma once

#include "export/ClipTimeline.h"

#include <QStringList>
#include <QVector>

#include <atomic>
#include <functional>

class TavroClipData;

// Reading the telemetry of many clips for an export, without ffmpeg: MP4
// clips through their own text track, Kel-family AVI clips through the Kel
// loader, everything else through the general loader (as the viewer picks).
namespace ClipTelemetryLoad {

void loadRecord(const QString& path, TavroClipData& record);
// The clip's timeline, with what its container says (ClipTimeline::media).
ClipTimeline load(const QString& path);

// Called from the worker threads, one call at a time and in order, with the
// number of clips read so far.
using Progress = std::function<void(int done, int total)>;

// Reads every clip on all cores; the timelines come back in the order of
// `paths`. When `cancel` becomes true, clips not yet started are skipped
// (their timelines stay empty) and the call returns soon.
QVector<ClipTimeline> loadAll(const QStringList& paths, const std::atomic_bool* cancel = nullptr,
    const Progress& progress = {});

} // namespace ClipTelemetryLoad
