#include "export/ClipTelemetryLoad.h"

#include "telemetry/TavroClipData.h"
#include "telemetry/TelemetryLoaderChoice.h"

#include <QThread>

#include <algorithm>
#include <memory>
#include <mutex>
#include <thread>
#include <vector>

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
    ClipTimeline timeline = ClipTimeline::fromRecord(path, *record);
    timeline.media = ClipMediaInfo::read(path);
    return timeline;
}

QVector<ClipTimeline> loadAll(
    const QStringList& paths, const std::atomic_bool* cancel, const Progress& progress)
{
    QVector<ClipTimeline> timelines(paths.size());
    const int total = int(paths.size());
    std::atomic_int next = 0;
    int done = 0;
    std::mutex progressLock;
    // A few workers take the clips in turn; each writes only the slots of the
    // clips it took, and joining them hands every slot back to this thread.
    auto work = [&] {
        for (int i = next++; i < total; i = next++) {
            if (cancel && cancel->load())
                timelines[i].file = paths[i];
            else
                timelines[i] = load(paths[i]);
            // One report at a time, in order: the caller's function need not
            // be safe to call from several threads at once.
            const std::lock_guard lock(progressLock);
            ++done;
            if (progress)
                progress(done, total);
        }
    };
    const int workers = std::clamp(QThread::idealThreadCount(), 1, std::max(1, total));
    std::vector<std::thread> threads;
    threads.reserve(size_t(workers));
    for (int w = 0; w < workers; ++w)
        threads.emplace_back(work);
    for (std::thread& thread : threads)
        thread.join();
    return timelines;
}

} // namespace ClipTelemetryLoad
