#pragma once

#include "DriveClip.h"

#include <QString>

class QWidget;

// Helpers shared by the viewer's window tests.
namespace ViewerTestSupport {

// Gives this test binary settings of its own: test binaries run in parallel,
// and others clear the shared store at will. Call first in SetUp.
void useOwnSettings(const char* binaryName);

// Switches the viewer language the way the menu does and lets the windows
// re-apply their texts.
void useLanguage(const QString& code);

// Saves a grab of the widget's window as <TAVRO_SCREENSHOT_DIR>/<name>.png
// when that variable is set (to look at the windows); returns the path or "".
QString saveScreenshot(QWidget& widget, const QString& name);

// A card clip of `seconds` seconds from ffmpeg's test source (H.264 MP4,
// width x height) whose subtitle track carries the camera's telemetry: ten
// G-sensor records a second and a GPS fix a second, driving north-east at a
// changing speed. `tag` makes front and rear differ; `drive` places the clip
// in a drive (its GPS clock, where on the route, a knock). False when ffmpeg
// fails.
bool makeTelemetryClip(const QString& path, int seconds, int width, int height, int tag,
    const DriveClip::Drive& drive = {});

} // namespace ViewerTestSupport
