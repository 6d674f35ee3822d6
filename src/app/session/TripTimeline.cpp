#include "app/session/TripTimeline.h"

#include <algorithm>

namespace {

// A position this close past a mark is on it (a seek lands within a frame).
constexpr double kOnMark = 0.05;

} // namespace

TripTimeline::TripTimeline(const Trip& trip)
{
    QVector<int> segmentOf(trip.clips.size(), -1);
    double at = 0;
    for (int c = 0; c < trip.clips.size(); ++c) {
        const TripClip& clip = trip.clips[c];
        if (!clip.isPlayable())
            continue;
        segmentOf[c] = int(m_segments.size());
        m_segments.append({ c, at, clip.duration });
        at += clip.duration;
    }
    for (int e = 0; e < trip.events.size(); ++e) {
        const TripEvent& event = trip.events[e];
        const int s = segmentOf.value(event.clip, -1);
        if (s < 0)
            continue;
        const Segment& segment = m_segments[s];
        const double into = event.offset - trip.clips[event.clip].offset;
        m_marks.append({ segment.start + std::clamp(into, 0.0, segment.length), e });
    }
    std::stable_sort(m_marks.begin(), m_marks.end(),
        [](const Mark& a, const Mark& b) { return a.position < b.position; });
}

double TripTimeline::duration() const
{
    return m_segments.isEmpty() ? 0.0 : m_segments.last().start + m_segments.last().length;
}

TripTimeline::Place TripTimeline::locate(double position) const
{
    if (m_segments.isEmpty())
        return {};
    // The last segment starting at or before the position.
    const auto after = std::upper_bound(m_segments.cbegin(), m_segments.cend(), position,
        [](double p, const Segment& segment) { return p < segment.start; });
    const int index = std::max(0, int(after - m_segments.cbegin()) - 1);
    return { index, std::max(0.0, position - m_segments[index].start) };
}

int TripTimeline::nextMark(double position) const
{
    for (int i = 0; i < m_marks.size(); ++i) {
        if (m_marks[i].position > position + kOnMark)
            return i;
    }
    return -1;
}

int TripTimeline::previousMark(double position, double slack) const
{
    for (int i = int(m_marks.size()) - 1; i >= 0; --i) {
        if (m_marks[i].position < position - slack)
            return i;
    }
    return -1;
}

int TripTimeline::nextSegment(double position) const
{
    const Place place = locate(position);
    if (place.segment < 0 || place.segment + 1 >= m_segments.size())
        return -1;
    return place.segment + 1;
}

int TripTimeline::previousSegment(double position, double slack) const
{
    const Place place = locate(position);
    if (place.segment < 0)
        return -1;
    // Well into a clip, back to its start; near its start, to the clip before.
    if (place.inClip > slack)
        return place.segment;
    return place.segment > 0 ? place.segment - 1 : 0;
}
