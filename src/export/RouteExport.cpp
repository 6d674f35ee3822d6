#include "export/RouteExport.h"

#include <QSaveFile>

namespace RouteExport {

namespace {

Result summary(const QVector<RouteTrip>& trips, int clips)
{
    Result result;
    result.clips = clips;
    for (const RouteTrip& trip : trips) {
        const int points = trip.fixCount();
        result.points += points;
        result.trips += points > 0 ? 1 : 0;
    }
    return result;
}

} // namespace

QVector<RouteTrip> group(QVector<ClipTimeline>& timelines, bool asTrips)
{
    if (asTrips)
        RouteTrips::alignCameraClock(timelines);
    return asTrips ? RouteTrips::plan(timelines) : RouteTrips::perClip(timelines);
}

Result writeFile(RouteFormat format, const QVector<RouteTrip>& trips, const QString& path)
{
    Result result;
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly)) {
        result.status = Status::WriteFailed;
        result.error = file.errorString();
        return result;
    }
    if (!RouteWriters::write(format, trips, file) || !file.commit()) {
        result.status = Status::WriteFailed;
        result.error = file.errorString();
        file.cancelWriting();
    }
    return result;
}

Result exportToFile(const Request& request, const QString& path, const std::atomic_bool* cancel,
    const ClipTelemetryLoad::Progress& progress)
{
    QVector<ClipTimeline> timelines = ClipTelemetryLoad::loadAll(request.clips, cancel, progress);
    const QVector<RouteTrip> trips = group(timelines, request.asTrips);
    Result result = summary(trips, int(timelines.size()));
    if (cancel && cancel->load()) {
        result.status = Status::Cancelled;
        return result;
    }
    if (!RouteWriters::hasContent(request.format, trips)) {
        result.status = Status::NoContent;
        return result;
    }
    const Result written = writeFile(request.format, trips, path);
    result.status = written.status;
    result.error = written.error;
    return result;
}

Result exportToDevice(const Request& request, QIODevice& out)
{
    QVector<ClipTimeline> timelines = ClipTelemetryLoad::loadAll(request.clips);
    const QVector<RouteTrip> trips = group(timelines, request.asTrips);
    Result result = summary(trips, int(timelines.size()));
    if (!RouteWriters::write(request.format, trips, out)) {
        result.status = Status::WriteFailed;
        result.error = out.errorString();
    } else if (!RouteWriters::hasContent(request.format, trips)) {
        result.status = Status::NoContent;
    }
    return result;
}

} // namespace RouteExport
