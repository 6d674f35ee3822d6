#pragma once

#include <QImage>

// A video picture a scene can show: a texture of the application's shared
// OpenGL contexts, rendered at the size its view asked for.
class VideoPicture {
public:
    virtual ~VideoPicture() = default;

    // The current picture as a texture (stored bottom row first); 0 when there
    // is none.
    virtual unsigned int texture() = 0;
    // The current picture read back, top row first; null when there is none.
    virtual QImage image() = 0;
};
