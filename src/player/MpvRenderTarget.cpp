#include "player/MpvRenderTarget.h"

#include "player/PlayerLogging.h"

#include <QGuiApplication>
#include <QOffscreenSurface>
#include <QOpenGLContext>
#include <QOpenGLFramebufferObject>
#include <QOpenGLFunctions>

#include <mpv/render_gl.h>

namespace {

void* procAddress(void*, const char* name)
{
    QOpenGLContext* context = QOpenGLContext::currentContext();
    return context ? reinterpret_cast<void*>(context->getProcAddress(name)) : nullptr;
}

} // namespace

MpvRenderTarget::MpvRenderTarget(mpv_handle* mpv, void (*updateCallback)(void*), void* callbackData)
{
    QOpenGLContext* share = QOpenGLContext::globalShareContext();
    if (!share) {
        qCCritical(lcPlayer,
            "no global share context: set Qt::AA_ShareOpenGLContexts before QApplication");
        return;
    }
    m_context = std::make_unique<QOpenGLContext>();
    m_context->setShareContext(share);
    m_context->setFormat(share->format());
    if (!m_context->create()) {
        qCWarning(lcPlayer, "cannot create the render OpenGL context");
        return;
    }
    m_surface = std::make_unique<QOffscreenSurface>();
    m_surface->setFormat(m_context->format());
    m_surface->create();
    if (!makeCurrent())
        return;

    mpv_opengl_init_params glInit { &procAddress, nullptr };
    mpv_render_param params[] = {
        { MPV_RENDER_PARAM_API_TYPE, const_cast<char*>(MPV_RENDER_API_TYPE_OPENGL) },
        { MPV_RENDER_PARAM_OPENGL_INIT_PARAMS, &glInit },
        { MPV_RENDER_PARAM_INVALID, nullptr },
    };
    if (mpv_render_context_create(&m_render, mpv, params) < 0) {
        qCWarning(lcPlayer, "mpv_render_context_create failed");
        m_render = nullptr;
    } else {
        mpv_render_context_set_update_callback(m_render, updateCallback, callbackData);
    }
    m_context->doneCurrent();
}

MpvRenderTarget::~MpvRenderTarget()
{
    if (m_render) {
        // The render context must go with its GL context current, and before
        // the core it belongs to is destroyed (the owner destroys it later).
        mpv_render_context_set_update_callback(m_render, nullptr, nullptr);
        const bool current = makeCurrent();
        mpv_render_context_free(m_render);
        m_fbo.reset();
        if (current)
            m_context->doneCurrent();
    }
}

bool MpvRenderTarget::makeCurrent()
{
    return m_context && m_surface && m_context->makeCurrent(m_surface.get());
}

void MpvRenderTarget::setSize(const QSize& devicePixels)
{
    const QSize size = devicePixels.expandedTo(QSize(1, 1));
    if (size == m_size)
        return;
    m_size = size;
    m_textureStale = true;
}

void MpvRenderTarget::ensureFramebuffer()
{
    if (m_fbo && m_fbo->size() == m_size)
        return;
    m_fbo.reset();
    m_fbo = std::make_unique<QOpenGLFramebufferObject>(m_size);
}

MpvRenderTarget::Result MpvRenderTarget::update()
{
    // mpv runs work it queued for the render thread here, GL calls among
    // it: the context must be current.
    if (!m_render || !makeCurrent())
        return Result::Nothing;
    const bool newFrame = mpv_render_context_update(m_render) & MPV_RENDER_UPDATE_FRAME;
    m_context->doneCurrent();
    if (newFrame) {
        m_framePending = true;
        m_textureStale = true;
        return Result::NewFrame;
    }
    return m_textureStale ? Result::Redrawn : Result::Nothing;
}

// With the context current: the current picture into `framebuffer` (0 = the
// current surface's own), at `pixels`.
void MpvRenderTarget::renderTo(int framebuffer, const QSize& pixels, bool flipY)
{
    mpv_opengl_fbo fbo { framebuffer, pixels.width(), pixels.height(), 0 };
    int flip = flipY ? 1 : 0;
    int block = 0;
    mpv_render_param params[] = {
        { MPV_RENDER_PARAM_OPENGL_FBO, &fbo },
        { MPV_RENDER_PARAM_FLIP_Y, &flip },
        { MPV_RENDER_PARAM_BLOCK_FOR_TARGET_TIME, &block },
        { MPV_RENDER_PARAM_INVALID, nullptr },
    };
    mpv_render_context_render(m_render, params);
    m_framePending = false;
}

unsigned int MpvRenderTarget::texture()
{
    if (!m_render)
        return 0;
    if (m_textureStale || !m_fbo) {
        if (!makeCurrent())
            return 0;
        ensureFramebuffer();
        // Stored the way the default framebuffer wants it (origin bottom
        // left); a view mirrors it when it shows the picture upside down.
        renderTo(static_cast<int>(m_fbo->handle()), m_size, true);
        m_context->functions()->glFlush();
        m_context->doneCurrent();
        m_textureStale = false;
    }
    return m_fbo->texture();
}

QImage MpvRenderTarget::image()
{
    if (texture() == 0 || !makeCurrent())
        return {};
    QImage picture = m_fbo->toImage();
    m_context->doneCurrent();
    return picture;
}

void MpvRenderTarget::finishFrame()
{
    if (m_framePending)
        texture();
}
