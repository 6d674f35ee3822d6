#pragma once

#include <QImage>
#include <QSize>

#include <memory>

struct mpv_handle;
struct mpv_render_context;
class QOffscreenSurface;
class QOpenGLContext;
class QOpenGLFramebufferObject;

// The picture of one mpv core: a render context bound to a private OpenGL
// context (shared with every window of the application through Qt's global
// share context), rendering into a texture that any scene can show. Nothing
// ties the media to one view, so it can move between views while it keeps
// playing.
class MpvRenderTarget {
public:
    // updateCallback is called by mpv on one of its own threads when a new
    // frame is due; it must only schedule render() on the GUI thread.
    MpvRenderTarget(mpv_handle* mpv, void (*updateCallback)(void*), void* callbackData);
    ~MpvRenderTarget();
    MpvRenderTarget(const MpvRenderTarget&) = delete;
    MpvRenderTarget& operator=(const MpvRenderTarget&) = delete;

    bool isValid() const { return m_render != nullptr; }

    // Size of the texture in device pixels (the host view's size).
    void setSize(const QSize& devicePixels);
    QSize size() const { return m_size; }

    enum class Result { Nothing, Redrawn, NewFrame };
    // What mpv has to show: a new frame (NewFrame), or the current picture
    // again because the size changed (Redrawn; black before the first frame).
    // Draws nothing yet: texture() or finishFrame() do. Nothing here ever
    // waits for a frame's display time.
    Result update();

    // The current picture as a texture at size(), drawn first if it is out
    // of date; 0 when it cannot be drawn.
    unsigned int texture();
    // The texture read back, top row first; null when it cannot be drawn.
    QImage image();

    // A new frame nobody has drawn (its view is hidden) is drawn into the
    // texture, so that mpv's frames keep flowing.
    void finishFrame();

private:
    bool makeCurrent();
    void ensureFramebuffer();
    void renderTo(int framebuffer, const QSize& pixels, bool flipY);

    std::unique_ptr<QOpenGLContext> m_context;
    std::unique_ptr<QOffscreenSurface> m_surface;
    std::unique_ptr<QOpenGLFramebufferObject> m_fbo;
    mpv_render_context* m_render = nullptr;
    QSize m_size { 16, 16 };
    bool m_textureStale = true;
    bool m_framePending = false;
};
