#pragma once

#include <QDateTime>
#include <QString>

// A camera clip made with ffmpeg's test source whose mov_text subtitle track
// carries the camera's telemetry: ten "gsensor" records a second and one
// "GPRMC" fix a second, driving north-east at a changing speed. Free of the
// test framework so that benchmarks can use it too.
namespace DriveClip {

// Where and when a clip of a drive is: its fixes carry the date and time
// from `startUtc` on (without one, 2016-03-07 00:00 plus the second within a
// minute), and start `fromSecond` seconds into the drive, so that consecutive
// clips continue one route. A knock of 2 g sideways is felt at `knockAtTenth`
// (tenths of a second into the clip) when it is not negative.
struct Drive {
    QDateTime startUtc;
    int fromSecond = 0;
    int knockAtTenth = -1;
};

// What the clip shows and sounds like: the test pattern without sound, or
// one colour (a name ffmpeg knows) and a tone.
struct Look {
    QString colour;
    bool sound = false;
    // Converted with the BT.709 matrix and tagged so, so that a player turns
    // the colours back exactly as they were drawn.
    bool bt709 = false;
};

// The SubRip text of that telemetry; `tag` goes into the G values so that a
// front and a rear clip differ.
QString telemetrySrt(int seconds, int tag, const Drive& drive = {});

// Writes the H.264 MP4 (width x height at fps); false when ffmpeg fails.
bool make(const QString& path, int seconds, int width, int height, int fps, int tag,
    const Drive& drive = {}, const Look& look = {});

} // namespace DriveClip
