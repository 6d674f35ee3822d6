#pragma once

#include <QImage>
#include <QRect>
#include <QString>

class QWidget;

// What the display server shows, read from outside the application, and
// where a widget lies in it. tools/screen.sh says how to read the screen:
//  - TAVRO_SCREEN_XWD: Xvfb's framebuffer file (its -fbdir), the very
//    memory the X server shows;
//  - TAVRO_SCREEN_COMMAND: a command printing the screen as a PNG on its
//    standard output (grim on Wayland).
// Everything is in device pixels of the whole screen.
namespace ScreenReader {

bool isConfigured();
bool isWayland();

// The whole screen as it is now; null (and `error` says why) when it
// cannot be read.
QImage grab(QString* error = nullptr);

// Where the widget is on the screen. On X11 the server's own window
// positions; on Wayland, where clients never learn where their windows are,
// the compositor's (sway's) tree. Null when the window is not found.
QRect placeOf(const QWidget& widget);

// Saves the image as <TAVRO_SCREEN_SHOTS>/<name>.png when that is set.
void save(const QImage& screen, const QString& name);

} // namespace ScreenReader
