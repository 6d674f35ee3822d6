#pragma once

#include <QSize>

#include <memory>

struct mpv_handle;
struct mpv_render_context;
class QOffscreenSurface;
class QOpenGLContext;
class QOpenGLFramebufferObject;

// The picture of one mpv core: a render context bound to a private OpenGL
// context (shared with every widget of the application through Qt's global
// share context) that renders into a texture. The texture, not the render
// context, is what a view draws, so the media can move between views while it
// keeps playing: a render context belongs to the GL context it was made in.
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
    // Renders when mpv has a new frame (NewFrame) or the size changed
    // (Redrawn: the current picture, or black before the first frame).
    // Never waits for the frame's display time.
    Result render();

    // 0 until the first render.
    unsigned int texture() const;

private:
    bool makeCurrent();
    void ensureFramebuffer();

    std::unique_ptr<QOpenGLContext> m_context;
    std::unique_ptr<QOffscreenSurface> m_surface;
    std::unique_ptr<QOpenGLFramebufferObject> m_fbo;
    mpv_render_context* m_render = nullptr;
    QSize m_size { 16, 16 };
    bool m_dirty = true;
};
