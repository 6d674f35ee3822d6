#include "cut/CutPlan.h"

#include "library/ClipMediaInfo.h"

#include <algorithm>

namespace CutPlan {

namespace {

// Pieces shorter than this (a rounding remainder at a clip's end) are no
// picture worth a segment.
constexpr double kShortestSegment = 0.01;

} // namespace

Source rearSource(const TripClip& clip)
{
    if (!clip.rear.isEmpty())
        return { clip.rear, 0 };
    if (clip.telemetry->media.videoStreams >= 2)
        return { clip.path, 1 };
    return {};
}

QVector<Segment> segments(const Trip& trip, const Request& request)
{
    QVector<Segment> result;
    for (int i = 0; i < trip.clips.size(); ++i) {
        const TripClip& clip = trip.clips[i];
        if (!clip.isPlayable())
            continue;
        const double begin = std::max(request.from, clip.offset);
        const double end = std::min(request.to, clip.offset + clip.duration);
        if (end - begin < kShortestSegment)
            continue;
        Segment segment;
        segment.clip = i;
        segment.inpoint = begin - clip.offset;
        segment.outpoint = end - clip.offset;
        const Source front { clip.path, 0 };
        const Source rear = rearSource(clip);
        const bool rearAlone = request.camera == Camera::Rear && request.compose == Compose::None;
        segment.main = rearAlone ? rear : front;
        if (!segment.main.isValid())
            continue;
        if (request.compose != Compose::None)
            segment.inset = rear;
        segment.mainHasAudio = segment.main.path == clip.path
            ? clip.telemetry->media.audioStreams > 0
            : ClipMediaInfo::read(segment.main.path).audioStreams > 0;
        result.append(segment);
    }
    return result;
}

double totalLength(const QVector<Segment>& segments)
{
    double total = 0;
    for (const Segment& segment : segments)
        total += segment.length();
    return total;
}

} // namespace CutPlan
