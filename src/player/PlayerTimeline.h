#pragma once

#include <QSize>
#include <QString>
#include <QVector>

// Several files played as one: the address a player view loads to show them
// back to back on a single timeline, each for a given length, so that the
// picture runs on from one file into the next without a stop (mpv's "edl://"
// timelines). A segment without a file shows black for its length, so that
// the timelines of two cameras stay in step where one has nothing.
//
// The timeline's streams are those of one of its files, and every file's
// first video stream is shown on its one video stream (a two-camera AVI
// shows its front camera). The timeline has sound only when every file has
// some: a file without sound in between would stop the picture while the
// player waits for sound that never comes.
namespace PlayerTimeline {

struct Segment {
    QString path; // empty: black
    double seconds = 0;
    QSize blankSize; // the black picture's size (a segment without a file)
    int videoStreams = 1;
    int audioStreams = 0;
};

QString url(const QVector<Segment>& segments);

// True for an address made by url().
bool isTimeline(const QString& path);

} // namespace PlayerTimeline
