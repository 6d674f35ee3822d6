#pragma once

#include "trips/Trip.h"

#include <QVector>

// A trip as the player plays it: its playable clips back to back, each for
// its video's length (the pauses between clips are left out), with the
// trip's marks placed on that one timeline. Maps a position of the players
// to the clip shown and the time within it, and back.
class TripTimeline {
public:
    struct Segment {
        int clip = 0; // index into the trip's clips
        double start = 0; // where it begins on the timeline, in seconds
        double length = 0;
    };
    struct Mark {
        double position = 0; // on the timeline, in seconds
        int event = 0; // index into the trip's events
    };
    struct Place {
        int segment = -1; // -1 when the timeline is empty
        double inClip = 0; // seconds into the clip
    };

    TripTimeline() = default;
    explicit TripTimeline(const Trip& trip);

    const QVector<Segment>& segments() const { return m_segments; }
    const QVector<Mark>& marks() const { return m_marks; }
    double duration() const;

    // The segment shown at `position` (the last one past the end).
    Place locate(double position) const;
    // The first mark after `position`, and the last one more than `slack`
    // seconds before it (so that a second press goes on to the mark before);
    // -1 when there is none.
    int nextMark(double position) const;
    int previousMark(double position, double slack = 1.0) const;
    // The segment after / before the one at `position`, -1 when there is none.
    int nextSegment(double position) const;
    int previousSegment(double position, double slack = 1.0) const;

private:
    QVector<Segment> m_segments;
    QVector<Mark> m_marks;
};
