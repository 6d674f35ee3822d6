#pragma once

#include "library/ClipMediaInfo.h"
#include "telemetry/GpsFix.h"

#include <QString>
#include <QVector>

#include <cstdint>

class TavroClipData;

// One sample of a clip's telemetry as a route export sees it.
//   t          media time in seconds (sample i is at i/10 s)
//   gx, gy, gz 1/128 g, as the record holds them
//   lat, lng   decimal degrees, south and west negative; meaningful only with hasFix
//   speedKmh   whole km/h
//   utcMsecs   milliseconds since 1970 UTC, kNoUtcMsecs when the clip has no clock
struct RouteSample {
    double t = 0;
    int gx = 0;
    int gy = 0;
    int gz = 0;
    double lat = 0;
    double lng = 0;
    bool hasFix = false;
    int speedKmh = 0;
    int64_t utcMsecs = kNoUtcMsecs;
};

// The per-sample timeline of one clip: the record's samples with a UTC time
// for each. The time comes from the date and time of the clip's RMC sentences
// when they carry them (the ten samples of a second 0.1 s apart, samples of a
// second without a clock counted on from their neighbours), else from the
// date and time in the clip's file name (the camera's clock, read in this
// computer's time zone), else there is none. A clip without telemetry is
// still timed by its name.
struct ClipTimeline {
    enum class TimeSource { None, Gps, FileName };

    QString file;
    QVector<RouteSample> samples;
    TimeSource timeSource = TimeSource::None;
    // The file name's time (kNoUtcMsecs when it has none); with the FileName
    // source it is the clip's start, moved with the samples when the camera's
    // clock is put on the GPS clock.
    int64_t fileNameUtc = kNoUtcMsecs;
    // What the container says (length, video streams); unknown unless the
    // loader read it.
    ClipMediaInfo media;

    static ClipTimeline fromRecord(const QString& file, const TavroClipData& record);
    // The samples back into a record, as the loader would have left it.
    void fillRecord(TavroClipData& record) const;

    // "yyyyMMdd_HHmmss" (also without the "_" or with "-") anywhere in the
    // name, as local time; kNoUtcMsecs when the name holds no valid one.
    static int64_t fileNameTime(const QString& fileName);

    bool hasTimes() const { return timeSource != TimeSource::None; }
    int fixCount() const;
    // The clip's first sample time (its file name's time when it has no
    // samples), and its last sample time; kNoUtcMsecs without times.
    int64_t startUtc() const;
    int64_t endUtc() const;
    // When the recording ends: the start plus the video's length where the
    // container tells it, else the last sample's time.
    int64_t recordingEndUtc() const;
    // The video's length where known, else the telemetry's (0.1 s a sample).
    double seconds() const;
    int maxSpeedKmh() const;
    // The largest magnitude of the G vector over the clip, in g.
    double peakG() const;
};
