#include "export/RouteTrips.h"

#include "library/ClipNaming.h"

#include <QFileInfo>
#include <QHash>
#include <QUrl>

#include <algorithm>

int RouteTrip::fixCount() const
{
    int count = 0;
    for (const ClipTimeline* clip : clips)
        count += clip->fixCount();
    return count;
}

int RouteTrip::sampleCount() const
{
    int count = 0;
    for (const ClipTimeline* clip : clips)
        count += int(clip->samples.size());
    return count;
}

bool RouteTrip::hasTimes() const
{
    return std::all_of(
        clips.cbegin(), clips.cend(), [](const ClipTimeline* clip) { return clip->hasTimes(); });
}

int64_t RouteTrip::startUtc() const
{
    return clips.isEmpty() ? kNoUtcMsecs : clips.constFirst()->startUtc();
}

namespace RouteTrips {

namespace {

QString urlString(const QString& file)
{
    return ClipNaming::absoluteUrlString(QUrl::fromLocalFile(QFileInfo(file).absoluteFilePath()));
}

// A rear clip whose front partner is in the list with telemetry. In a pair,
// the front's URL string is the smaller ("F" sorts before "R").
QVector<const ClipTimeline*> withoutRearPartners(const QVector<ClipTimeline>& clips)
{
    QHash<QString, const ClipTimeline*> byUrl;
    for (const ClipTimeline& clip : clips)
        byUrl.insert(urlString(clip.file), &clip);
    QVector<const ClipTimeline*> kept;
    for (const ClipTimeline& clip : clips) {
        const QString own = urlString(clip.file);
        const QUrl url(own);
        const QString partner = ClipNaming::conversionPartnerString(url);
        const ClipTimeline* front = partner.isEmpty() ? nullptr : byUrl.value(partner);
        const bool isRear = front && front != &clip && partner < own && !front->samples.isEmpty();
        if (!isRear)
            kept.append(&clip);
    }
    return kept;
}

} // namespace

void alignCameraClock(QVector<ClipTimeline>& clips)
{
    QVector<int64_t> offsets;
    for (const ClipTimeline& clip : clips) {
        if (clip.timeSource != ClipTimeline::TimeSource::Gps || clip.samples.isEmpty())
            continue;
        const int64_t named = clip.fileNameUtc != kNoUtcMsecs
            ? clip.fileNameUtc
            : ClipTimeline::fileNameTime(QFileInfo(clip.file).fileName());
        if (named != kNoUtcMsecs)
            offsets.append(clip.startUtc() - named);
    }
    if (offsets.isEmpty())
        return;
    std::nth_element(offsets.begin(), offsets.begin() + offsets.size() / 2, offsets.end());
    const int64_t median = offsets[offsets.size() / 2];
    const int64_t offset = (median >= 0 ? median + 500 : median - 500) / 1000 * 1000;
    for (ClipTimeline& clip : clips) {
        if (clip.timeSource != ClipTimeline::TimeSource::FileName)
            continue;
        for (RouteSample& sample : clip.samples)
            sample.utcMsecs += offset;
        if (clip.fileNameUtc != kNoUtcMsecs)
            clip.fileNameUtc += offset;
    }
}

QVector<RouteTrip> perClip(const QVector<ClipTimeline>& clips)
{
    QVector<RouteTrip> trips;
    for (const ClipTimeline& clip : clips)
        trips.append(RouteTrip { { &clip } });
    return trips;
}

QVector<RouteTrip> plan(const QVector<ClipTimeline>& clips, int64_t maxGapMsecs)
{
    QVector<const ClipTimeline*> timed;
    QVector<const ClipTimeline*> untimed;
    for (const ClipTimeline* clip : withoutRearPartners(clips))
        (clip->startUtc() != kNoUtcMsecs ? timed : untimed).append(clip);
    std::stable_sort(timed.begin(), timed.end(),
        [](const ClipTimeline* a, const ClipTimeline* b) { return a->startUtc() < b->startUtc(); });

    QVector<RouteTrip> trips;
    int64_t tripEnd = 0;
    for (const ClipTimeline* clip : timed) {
        if (trips.isEmpty() || clip->startUtc() - tripEnd > maxGapMsecs)
            trips.append(RouteTrip {});
        trips.last().clips.append(clip);
        // Overlapping clips (an event copied out of continuous recording)
        // never move the end back.
        const int64_t end = clip->recordingEndUtc();
        tripEnd = trips.last().clips.size() == 1 ? end : std::max(tripEnd, end);
    }
    for (const ClipTimeline* clip : untimed)
        trips.append(RouteTrip { { clip } });
    return trips;
}

} // namespace RouteTrips
