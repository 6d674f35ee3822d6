#include "player/VideoSceneWindow.h"

#include "player/PlayerLogging.h"

#include <QExposeEvent>
#include <QOffscreenSurface>
#include <QOpenGLContext>
#include <QOpenGLFunctions>
#include <QOpenGLTexture>
#include <QPlatformSurfaceEvent>
#include <QSurfaceFormat>

#include <unordered_set>

VideoSceneWindow::VideoSceneWindow(ItemSource source)
    : m_source(std::move(source))
{
    setSurfaceType(QSurface::OpenGLSurface);
    setFlags(Qt::WindowTransparentForInput | Qt::WindowDoesNotAcceptFocus);
    QSurfaceFormat format = QSurfaceFormat::defaultFormat();
    // A swap never waits for the display's refresh: the GUI thread keeps
    // serving the players and the controls, and mpv paces the frames.
    format.setSwapInterval(0);
    setFormat(format);
}

VideoSceneWindow::~VideoSceneWindow()
{
    releaseGL();
}

bool VideoSceneWindow::ensureContext()
{
    if (m_context)
        return m_context->isValid();
    QOpenGLContext* share = QOpenGLContext::globalShareContext();
    m_context = std::make_unique<QOpenGLContext>();
    // The pictures are textures of the players' own contexts: share with them.
    m_context->setShareContext(share);
    m_context->setFormat(requestedFormat());
    if (!share || !m_context->create()) {
        qCWarning(lcPlayer, "cannot create the video scene's OpenGL context");
        return false;
    }
    if (!m_context->makeCurrent(this))
        return false;
    m_blitter.create();
    return true;
}

// Textures and the blitter go with the context current: on the window while
// it still has its surface, otherwise on a surface of their own.
void VideoSceneWindow::releaseGL()
{
    if (!m_context)
        return;
    QOffscreenSurface spare;
    bool current = handle() && m_context->makeCurrent(this);
    if (!current) {
        spare.setFormat(m_context->format());
        spare.create();
        current = m_context->makeCurrent(&spare);
    }
    if (current) {
        m_images.clear();
        if (m_blitter.isCreated())
            m_blitter.destroy();
        m_context->doneCurrent();
    } else {
        // No way to free them: leave them to the context's own end.
        for (auto& [key, image] : m_images)
            (void)image.texture.release();
        m_images.clear();
    }
    m_context.reset();
}

unsigned int VideoSceneWindow::imageTexture(const Item& item)
{
    ImageTexture& cached = m_images[item.imageKey];
    if (!cached.texture || cached.version != item.imageVersion) {
        cached.texture
            = std::make_unique<QOpenGLTexture>(item.image->convertToFormat(QImage::Format_RGBA8888),
                QOpenGLTexture::DontGenerateMipMaps);
        cached.texture->setMinificationFilter(QOpenGLTexture::Linear);
        cached.texture->setMagnificationFilter(QOpenGLTexture::Linear);
        cached.version = item.imageVersion;
    }
    return cached.texture->textureId();
}

void VideoSceneWindow::drawItem(const Item& item, const QSize& viewport)
{
    const QRect clip = item.clip & QRect(QPoint(0, 0), viewport);
    if (clip.isEmpty() || item.target.isEmpty())
        return;
    QOpenGLFunctions* gl = m_context->functions();
    // The scissor counts rows from the bottom.
    gl->glScissor(
        clip.x(), viewport.height() - clip.y() - clip.height(), clip.width(), clip.height());
    if (!item.image && item.texture == 0) {
        // Neither picture nor image: black.
        gl->glClear(GL_COLOR_BUFFER_BIT);
        return;
    }
    const QMatrix4x4 transform = QOpenGLTextureBlitter::targetTransform(
        QRectF(item.target), QRect(QPoint(0, 0), viewport));
    if (item.image) {
        // Over what lies below, with its own transparency.
        gl->glEnable(GL_BLEND);
        gl->glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
        m_blitter.blit(imageTexture(item), transform, QOpenGLTextureBlitter::OriginTopLeft);
        gl->glDisable(GL_BLEND);
        return;
    }
    // The texture is stored bottom row first; reading it top row first
    // mirrors the picture vertically, which is what upside down means here.
    m_blitter.blit(item.texture, transform,
        item.upsideDown ? QOpenGLTextureBlitter::OriginTopLeft
                        : QOpenGLTextureBlitter::OriginBottomLeft);
}

bool VideoSceneWindow::draw()
{
    if (!isExposed())
        return false;
    // The players' textures first: bringing one up to date takes its own
    // context.
    const QList<Item> items = m_source ? m_source() : QList<Item>();
    if (!ensureContext() || !m_context->makeCurrent(this))
        return false;
    const QSize viewport = (QSizeF(size()) * devicePixelRatio()).toSize().expandedTo(QSize(1, 1));
    QOpenGLFunctions* gl = m_context->functions();
    gl->glViewport(0, 0, viewport.width(), viewport.height());
    gl->glDisable(GL_SCISSOR_TEST);
    gl->glClearColor(0.0f, 0.0f, 0.0f, 1.0f);
    gl->glClear(GL_COLOR_BUFFER_BIT);
    gl->glEnable(GL_SCISSOR_TEST);
    std::unordered_set<quintptr> imagesInUse;
    m_blitter.bind();
    for (const Item& item : items) {
        if (item.image)
            imagesInUse.insert(item.imageKey);
        drawItem(item, viewport);
    }
    m_blitter.release();
    gl->glDisable(GL_SCISSOR_TEST);
    std::erase_if(m_images, [&](const auto& entry) { return !imagesInUse.contains(entry.first); });
    m_context->swapBuffers(this);
    m_context->doneCurrent();
    emit drawn();
    return true;
}

void VideoSceneWindow::exposeEvent(QExposeEvent*)
{
    draw();
}

bool VideoSceneWindow::event(QEvent* event)
{
    if (event->type() == QEvent::UpdateRequest) {
        draw();
        return true;
    }
    if (event->type() == QEvent::PlatformSurface
        && static_cast<QPlatformSurfaceEvent*>(event)->surfaceEventType()
            == QPlatformSurfaceEvent::SurfaceAboutToBeDestroyed)
        releaseGL();
    return QWindow::event(event);
}
