#pragma once

#include <QSize>

class QWindow;

// A video picture a window can show: drawn straight into the window, or as a
// texture of the application's shared OpenGL contexts.
class VideoPicture {
public:
    virtual ~VideoPicture() = default;

    // Draws the current picture to fill `window` (`pixels` in device pixels)
    // and shows it; mirrored vertically when `upsideDown`. False when nothing
    // could be drawn.
    virtual bool drawInto(QWindow& window, const QSize& pixels, bool upsideDown) = 0;
    // The current picture as a texture (stored bottom row first); 0 when there
    // is none.
    virtual unsigned int texture() = 0;
};
