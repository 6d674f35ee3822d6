#pragma once

// The session's own types, shared by the files that make up the session.

#include "app/session/PlaybackSession.h"
#include "library/ClipMediaInfo.h"

#include <QList>
#include <QPointF>
#include <QSize>
#include <QVector>

#include <memory>
#include <optional>

// The file each camera shows in each segment of the trip's timeline, with
// what its container says; an empty rear is black. rearSize is the rear
// camera's picture, for the black.
struct PlaybackSession::TripFiles {
    QVector<QString> fronts;
    QVector<ClipMediaInfo> frontMedia;
    QVector<QString> rears;
    QVector<ClipMediaInfo> rearMedia;
    QSize rearSize;
};

// What the worker hands back: the playable files and the clip's telemetry,
// or for a trip the file each camera shows in each of its segments.
struct PlaybackSession::Prepared {
    std::optional<QList<QUrl>> files;
    std::shared_ptr<TavroClipData> record;
    std::shared_ptr<const TripFiles> trip;
};

// What the playback session keeps while it plays a trip.
struct PlaybackSession::TripPlayback {
    explicit TripPlayback(const Trip& playing)
        : trip(playing)
        , timeline(playing)
        , route(playing.route())
    {
    }

    Trip trip;
    TripTimeline timeline;
    QVector<QPointF> route;
    int shownSegment = -1;
    // Where the last seek asked the views to go (they answer later).
    double seekTarget = 0;
    double lastRearCorrection = -1e9;
};
