#pragma once

#include "trips/Trip.h"

#include <QString>
#include <QVector>

#include <optional>

// What a cut of a trip is made of: the stretch of each clip that lies in the
// range, for the camera (or both) the output shows.
namespace CutPlan {

enum class Camera { Front, Rear };
enum class Compose { None, PictureInPicture, SideBySide };

struct Request {
    double from = 0; // seconds from the trip's start
    double to = 0; // seconds from the trip's start, the end left out
    Camera camera = Camera::Front;
    Compose compose = Compose::None;
    bool overlay = false;
    bool miles = false; // the overlay's speed in mph instead of km/h

    // A stream copy unless the pictures must be drawn anew.
    bool reencodes() const { return compose != Compose::None || overlay; }
};

// One video stream of a file.
struct Source {
    QString path;
    int stream = 0; // index among the file's video streams

    bool isValid() const { return !path.isEmpty(); }
};

// The part [inpoint, outpoint) of one clip, in seconds of that clip's video.
struct Segment {
    int clip = 0; // index into the trip's clips
    double inpoint = 0;
    double outpoint = 0;
    Source main; // the camera asked for (the front one when composing)
    Source inset; // the rear camera when composing; invalid where the clip has none
    bool mainHasAudio = false;

    double length() const { return outpoint - inpoint; }
};

// Where the rear camera of a clip is: its partner file, or the second video
// stream of a two-camera file; invalid when it has none.
Source rearSource(const TripClip& clip);

// The segments of [from, to) in the trip's order. Gaps between clips are
// left out (nothing was recorded there); so are clips that cannot be played,
// and, for the rear camera alone, clips without one. Empty when nothing of
// the range was recorded.
QVector<Segment> segments(const Trip& trip, const Request& request);

double totalLength(const QVector<Segment>& segments);

} // namespace CutPlan
