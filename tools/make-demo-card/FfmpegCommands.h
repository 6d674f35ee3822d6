#pragma once

#include <QSize>
#include <QString>
#include <QStringList>

// ffmpeg argument lists for the demo pictures, sound and encoders.
namespace FfmpegCommands {

// One camera's picture: a moving test pattern with the camera's name and
// its clock burnt in, as the cameras stamp their video.
struct Picture {
    QSize size;
    int fps = 15;
    bool rear = false;
    QString label; // e.g. "TOLM FRONT"; letters, digits and blanks only
    qint64 clockStart = 0; // the camera's local wall time at the first frame, as epoch seconds
    int clockScale = 1; // real seconds per second of video (time-lapse)
};

// The first TrueType font found in the usual Debian places, or empty (the
// pictures then carry no text).
QString fontFile();

QStringList start(); // quiet, overwrite, no stdin
QStringList pictureInput(const Picture& picture, int seconds);
QString pictureFilter(const Picture& picture);
QStringList soundInput(int seconds); // a running engine, 16 kHz mono
QStringList h264(int fps);
QStringList hevc(int fps);
QStringList pcmSound();
// Identical bytes from identical input: no encoder version strings or dates.
QStringList reproducible();

} // namespace FfmpegCommands
