#pragma once

#include "export/ClipTelemetryLoad.h"
#include "export/RouteWriters.h"

#include <QIODevice>
#include <QString>
#include <QStringList>

#include <atomic>

// A whole route export: read the clips, group them (into trips or one track
// per clip), write the document to a file atomically or to a device.
namespace RouteExport {

enum class Status {
    Written,
    NoContent, // the clips hold no position (no sample at all for CSV); nothing written
    Cancelled, // nothing written
    WriteFailed, // the file could not be written; an older file of that name is intact
};

struct Request {
    QStringList clips;
    RouteFormat format = RouteFormat::Gpx;
    bool asTrips = true;
};

struct Result {
    Status status = Status::Written;
    int clips = 0; // clips read
    int trips = 0; // tracks written
    int points = 0; // positions written
    QString error; // why the write failed
};

// Groups loaded timelines as the request asks; as trips, file-name times are
// first put on the GPS clock (RouteTrips::alignCameraClock).
QVector<RouteTrip> group(QVector<ClipTimeline>& timelines, bool asTrips);

// Reads the clips and writes the document to `path` through a temporary file
// that replaces it only when complete. Nothing is written when there is
// nothing to show or when cancelled.
Result exportToFile(const Request& request, const QString& path,
    const std::atomic_bool* cancel = nullptr, const ClipTelemetryLoad::Progress& progress = {});

// The same for an open device (standard output); the document is written
// even when it has nothing to show, and the status says so.
Result exportToDevice(const Request& request, QIODevice& out);

// Writes already grouped trips to a file atomically.
Result writeFile(RouteFormat format, const QVector<RouteTrip>& trips, const QString& path);

} // namespace RouteExport
