#include "export/ClipTelemetryLoad.h"

#include "telemetry/TavroClipData.h"
#include "telemetry/TelemetryLoaderChoice.h"

#include <QRunnable>
#include <QThread>
#include <QThreadPool>

#include <memory>

namespace ClipTelemetryLoad {

void loadRecord(const QString& path, TavroClipData& record)
{
    switch (TelemetryLoaderChoice::forClip(path)) {
    case TelemetryLoaderChoice::Loader::Mp4Subtitle:
        record.loadMp4TextTrack(path);
        break;
    case TelemetryLoaderChoice::Loader::Kel:
        record.loadVideoFileCilpDataFromFilePath_Kel(path);
        break;
    case TelemetryLoaderChoice::Loader::General:
        record.loadVideoFileCilpDataFromFilePath(path);
        break;
    }
}

ClipTimeline load(const QString& path)
{
    const auto record = std::make_unique<TavroClipData>();
    loadRecord(path, *record);
    return ClipTimeline::fromRecord(path, *record);
}

QVector<ClipTimeline> loadAll(
    const QStringList& paths, const std::atomic_bool* cancel, const Progress& progress)
{
    QVector<ClipTimeline> timelines(paths.size());
    std::atomic_int done = 0;
    const int total = int(paths.size());
    QThreadPool pool;
    pool.setMaxThreadCount(std::max(1, QThread::idealThreadCount()));
    for (int i = 0; i < total; ++i) {
        // Each task writes only its own slot of `timelines`.
        pool.start([&, i] {
            if (cancel && cancel->load())
                timelines[i].file = paths[i];
            else
                timelines[i] = load(paths[i]);
            const int finished = ++done;
            if (progress)
                progress(finished, total);
        });
    }
    pool.waitForDone();
    return timelines;
}

} // namespace ClipTelemetryLoad
