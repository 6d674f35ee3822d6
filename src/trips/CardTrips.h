#pragma once

#include "export/ClipTelemetryLoad.h"
#include "export/RouteTrips.h"
#include "trips/Trip.h"

#include <QLatin1StringView>
#include <QList>
#include <QString>
#include <QVector>

#include <atomic>
#include <optional>

// The drives on a card: the clips of its recording folders, front and rear
// paired, read on all cores and grouped into trips. `tavro trips`, `tavro
// export DIR` and the viewer's Trips view all take their trips from here, so
// they never disagree.
namespace CardTrips {

// The folders whose clips make drives (not the camera's exports, nor
// time-lapse recordings, whose clock runs faster than their video).
inline const QList<QLatin1StringView> kTripFolders {
    QLatin1StringView("cont_rec"),
    QLatin1StringView("evt_rec"),
    QLatin1StringView("manual_rec"),
    QLatin1StringView("motion_rec"),
    QLatin1StringView("parking_rec"),
};

// A clip of the card with its rear partner (same name but "F." for "R.",
// or "F_BC." for "R_BC."), which is never a clip of its own.
struct CardClip {
    QString path;
    QString rear;
    TripClip::Source source = TripClip::Source::Other;
};

// The clips of the recording folders; a folder that has none of them (a
// folder of copied clips) gives the clips lying directly in it.
QVector<CardClip> scan(const QString& folder);

// The clips with their telemetry (and container info), timelines[i] being
// clips[i]'s. A clip without telemetry whose rear partner has some takes the
// rear's: both cameras record the same GPS.
struct Loaded {
    QVector<CardClip> clips;
    QVector<ClipTimeline> timelines;
};
Loaded load(const QString& folder, const std::atomic_bool* cancel = nullptr,
    const ClipTelemetryLoad::Progress& progress = {});

// Puts the clips timed by their file names on the GPS clock of the card
// (RouteTrips::alignCameraClock) and groups them (RouteTrips::plan); the
// trips point into `loaded`, which must outlive them.
QVector<RouteTrip> routeTrips(Loaded& loaded, int64_t maxGapMsecs = RouteTrips::kMaxGapMsecs);

// The timed trips of routeTrips as drives, in time order (clips without any
// time belong to none).
QVector<Trip> trips(Loaded& loaded, int64_t maxGapMsecs = RouteTrips::kMaxGapMsecs);

// One clip (either camera's file) with its partner as a trip of its own, as
// the viewer exports the clip it shows; none when the clip has no time at all.
std::optional<Trip> clipTrip(const QString& path);

// All of it for a folder.
QVector<Trip> read(const QString& folder, int64_t maxGapMsecs = RouteTrips::kMaxGapMsecs,
    const std::atomic_bool* cancel = nullptr, const ClipTelemetryLoad::Progress& progress = {});

} // namespace CardTrips
