#pragma once

#include "export/ClipTimeline.h"

#include <QPointF>
#include <QString>
#include <QVector>

#include <cstdint>
#include <memory>
#include <optional>

// One clip of a drive: the front camera's file (or the only one) with its
// rear partner, where it sits in the drive and the telemetry it carries.
struct TripClip {
    // The card folder the clip was recorded into.
    enum class Source { Continuous, Event, Manual, Motion, Parking, Other };

    QString path;
    QString rear; // empty when the clip has no rear partner
    Source source = Source::Other;
    double offset = 0; // seconds from the trip's start to the clip's start
    double duration = 0; // seconds of video (of telemetry when the container says nothing)
    // Never null; its media tells the container's length, streams and size.
    std::shared_ptr<const ClipTimeline> telemetry;

    bool isPlayable() const { return telemetry->media.isKnown(); }
};

// A mark on a drive's timeline: an event or manual recording starts, or the
// G-sensor felt a knock.
struct TripEvent {
    enum class Kind { Impact, EventClip, ManualClip };

    Kind kind = Kind::Impact;
    double offset = 0; // seconds from the trip's start
    // Impacts: the largest G magnitude within their window, in g.
    std::optional<double> peakG;
    int clip = 0; // index of the clip the mark lies in

    // "impact", "event-clip", "manual-clip".
    static QString kindName(Kind kind);
};

// A drive: clips that follow each other in time, with what a driver asks of
// it (how long, how far, how fast, how many knocks) and its marks.
struct Trip {
    // An impact: the magnitude of (x, y, z - 1), in g as the viewer shows the
    // sensor (raw / 128), goes above this...
    static constexpr double kImpactG = 0.5;
    // ...and is not counted again within this many seconds; its peak is the
    // largest magnitude within them.
    static constexpr double kImpactWindowSeconds = 10.0;

    int64_t startUtc = kNoUtcMsecs; // the first clip's start
    int64_t endUtc = kNoUtcMsecs; // where the last recording ends
    QVector<TripClip> clips; // in time order
    QVector<TripEvent> events; // in time order
    double distanceKm = 0; // great-circle legs between consecutive fixes
    std::optional<int> maxSpeedKmh; // none without a fix

    double duration() const { return (endUtc - startUtc) / 1000.0; }
    int impactCount() const;
    // Every fix of the drive as (longitude, latitude), a point repeating the
    // one before left out.
    QVector<QPointF> route() const;

    // Places the clips (given in time order, each with its telemetry timed)
    // on one timeline and works out the statistics and the marks.
    static Trip fromClips(QVector<TripClip> clips);
};
