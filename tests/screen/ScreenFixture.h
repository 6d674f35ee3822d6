#pragma once

#include <QColor>
#include <QImage>
#include <QRect>
#include <QString>
#include <QTemporaryDir>

#include <functional>
#include <memory>

class AppDelegate;
class MainWindow;
class QWidget;

// What the on-screen tests play and open: three camera cards (a binary-record
// camera, a Kel-family camera and a camera with its own settings page), each
// holding the same front/rear pair of solid-colour clips made with ffmpeg.
// The front camera is red with a white square in the middle (16:9), the rear
// camera plain blue (4:3), so that each picture can be told apart and
// measured on the screen.
namespace ScreenScene {

inline const QColor kFront { 255, 0, 0 };
inline const QColor kFrontSquare { 255, 255, 255 };
inline const QColor kRear { 0, 0, 255 };
constexpr double kFrontAspect = 16.0 / 9.0;
constexpr double kRearAspect = 4.0 / 3.0;
// The white square is this share of the front picture's width and height.
constexpr int kSquareShare = 8;

struct Cards {
    QTemporaryDir dir;
    QString native;
    QString kel;
    QString web;
    QString error;
};

// Writes the cards once per run; `error` is set when ffmpeg or a write fails.
const Cards& cards();

// A drive of three clips, front (16:9) and rear (4:3), each clip in colours
// of its own, the first two continuous recordings, the last an event
// recording with a knock; their telemetry continues one route.
inline const QColor kTripFront[] { { 255, 0, 0 }, { 0, 255, 0 }, { 255, 255, 0 } };
inline const QColor kTripRear[] { { 0, 0, 255 }, { 255, 0, 255 }, { 0, 255, 255 } };
constexpr int kTripClipSeconds = 4;
// The folder holding it, written once per run; empty when ffmpeg fails.
QString tripCard();

// A lossless clip of `size` (even) whose every frame is a checkerboard of
// single black and white pixels, the top left one black.
bool makeCheckerboardClip(const QString& path, const QSize& size);

// Waits as long as the screen needs, stretched under sanitizers.
int waitMs(int milliseconds);

// Reads the screen until `check` finds nothing wrong (returns "") or the
// time is up; the last screenshot is kept as <name>.png. Adds a test
// failure naming what was wrong, and returns whether it passed.
bool expectScreen(
    const QString& name, const std::function<QString(const QImage&)>& check, int ms = 12000);

// Where the widget is on the screen (a test failure when it is not found).
QRect placeOf(const QWidget& widget);

// The whole screen's rectangle, in device pixels.
QRect screenRect();

// A press, a move in steps and a release with the left button, from `from`
// by `by` (screen pixels): through the display server where it takes
// synthetic input (xdotool on X11), otherwise as Qt events to the widget.
void drag(QWidget& widget, const QPoint& from, const QPoint& by);

} // namespace ScreenScene
