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
    m_dirty = true;
}

void MpvRenderTarget::ensureFramebuffer()
{
    if (m_fbo && m_fbo->size() == m_size)
        return;
    m_fbo.reset();
    m_fbo = std::make_unique<QOpenGLFramebufferObject>(m_size);
}

MpvRenderTarget::Result MpvRenderTarget::render()
{
    if (!m_render || !makeCurrent())
        return Result::Nothing;
    const bool newFrame = mpv_render_context_update(m_render) & MPV_RENDER_UPDATE_FRAME;
    if (!newFrame && !m_dirty) {
        m_context->doneCurrent();
        return Result::Nothing;
    }
    ensureFramebuffer();
    m_dirty = false;
    mpv_opengl_fbo fbo { static_cast<int>(m_fbo->handle()), m_size.width(), m_size.height(), 0 };
    // Rendered the way the default framebuffer wants it (origin bottom left);
    // the view mirrors it when it is asked to show the picture upside down.
    int flipY = 1;
    int block = 0;
    mpv_render_param params[] = {
        { MPV_RENDER_PARAM_OPENGL_FBO, &fbo },
        { MPV_RENDER_PARAM_FLIP_Y, &flipY },
        { MPV_RENDER_PARAM_BLOCK_FOR_TARGET_TIME, &block },
        { MPV_RENDER_PARAM_INVALID, nullptr },
    };
    mpv_render_context_render(m_render, params);
    m_context->functions()->glFlush();
    m_context->doneCurrent();
    return newFrame ? Result::NewFrame : Result::Redrawn;
}

unsigned int MpvRenderTarget::texture() const
{
    return m_fbo ? m_fbo->texture() : 0;
}
