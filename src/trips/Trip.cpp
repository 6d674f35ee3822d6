#include "trips/Trip.h"

#include "telemetry/TavroClipData.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr double kEarthRadiusKm = 6371.0088; // the mean radius
constexpr double kGUnit = 1.0 / 128.0; // a raw 128 is 1 g

double radians(double degrees)
{
    return degrees * M_PI / 180.0;
}

double greatCircleKm(const RouteSample& a, const RouteSample& b)
{
    const double dLat = radians(b.lat - a.lat);
    const double dLng = radians(b.lng - a.lng);
    const double h = std::sin(dLat / 2) * std::sin(dLat / 2)
        + std::cos(radians(a.lat)) * std::cos(radians(b.lat)) * std::sin(dLng / 2)
            * std::sin(dLng / 2);
    return 2 * kEarthRadiusKm * std::asin(std::min(1.0, std::sqrt(h)));
}

// The G the sensor feels beyond gravity, in g: |(x, y, z - 1)|.
double knockG(const RouteSample& s)
{
    const double x = s.gx * kGUnit;
    const double y = s.gy * kGUnit;
    const double z = s.gz * kGUnit - 1.0;
    return std::sqrt(x * x + y * y + z * z);
}

void addClipMarks(Trip& trip)
{
    for (int c = 0; c < trip.clips.size(); ++c) {
        const TripClip& clip = trip.clips[c];
        if (clip.source == TripClip::Source::Event)
            trip.events.append({ TripEvent::Kind::EventClip, clip.offset, std::nullopt, c });
        else if (clip.source == TripClip::Source::Manual)
            trip.events.append({ TripEvent::Kind::ManualClip, clip.offset, std::nullopt, c });
    }
}

void addImpacts(Trip& trip)
{
    qsizetype open = -1; // the impact whose window is still running
    double windowEnd = 0;
    for (int c = 0; c < trip.clips.size(); ++c) {
        const TripClip& clip = trip.clips[c];
        const QVector<RouteSample>& samples = clip.telemetry->samples;
        for (qsizetype i = 0; i < samples.size(); ++i) {
            const double offset = clip.offset + i / double(TavroClipData::kSamplesPerSecond);
            const double g = knockG(samples[i]);
            if (open >= 0 && offset < windowEnd) {
                trip.events[open].peakG = std::max(*trip.events[open].peakG, g);
                continue;
            }
            open = -1;
            if (g > Trip::kImpactG) {
                trip.events.append({ TripEvent::Kind::Impact, offset, g, c });
                open = trip.events.size() - 1;
                windowEnd = offset + Trip::kImpactWindowSeconds;
            }
        }
    }
}

void addStatistics(Trip& trip)
{
    const RouteSample* previous = nullptr;
    for (const TripClip& clip : std::as_const(trip.clips)) {
        for (const RouteSample& sample : clip.telemetry->samples) {
            if (!sample.hasFix)
                continue;
            trip.maxSpeedKmh = std::max(trip.maxSpeedKmh.value_or(0), sample.speedKmh);
            if (previous)
                trip.distanceKm += greatCircleKm(*previous, sample);
            previous = &sample;
        }
    }
}

} // namespace

QString TripEvent::kindName(Kind kind)
{
    switch (kind) {
    case Kind::Impact:
        return QStringLiteral("impact");
    case Kind::EventClip:
        return QStringLiteral("event-clip");
    case Kind::ManualClip:
        return QStringLiteral("manual-clip");
    }
    return {};
}

int Trip::impactCount() const
{
    return int(std::count_if(events.cbegin(), events.cend(),
        [](const TripEvent& event) { return event.kind == TripEvent::Kind::Impact; }));
}

QVector<QPointF> Trip::route() const
{
    QVector<QPointF> points;
    for (const TripClip& clip : clips) {
        for (const RouteSample& sample : clip.telemetry->samples) {
            const QPointF point(sample.lng, sample.lat);
            if (sample.hasFix && (points.isEmpty() || points.constLast() != point))
                points.append(point);
        }
    }
    return points;
}

Trip Trip::fromClips(QVector<TripClip> clips)
{
    Trip trip;
    trip.clips = std::move(clips);
    if (trip.clips.isEmpty())
        return trip;
    trip.startUtc = trip.clips.constFirst().telemetry->startUtc();
    trip.endUtc = trip.startUtc;
    for (TripClip& clip : trip.clips) {
        const int64_t start = clip.telemetry->startUtc();
        clip.offset = (start - trip.startUtc) / 1000.0;
        clip.duration = clip.telemetry->seconds();
        trip.endUtc = std::max(trip.endUtc, start + int64_t(std::llround(clip.duration * 1000.0)));
    }
    addClipMarks(trip);
    addImpacts(trip);
    std::stable_sort(trip.events.begin(), trip.events.end(),
        [](const TripEvent& a, const TripEvent& b) { return a.offset < b.offset; });
    addStatistics(trip);
    return trip;
}
