#include "player/VideoSurfaceWindow.h"

#include "player/PlayerLogging.h"
#include "player/VideoPicture.h"

#include <QExposeEvent>
#include <QOpenGLContext>
#include <QOpenGLFramebufferObject>
#include <QOpenGLFunctions>
#include <QSurfaceFormat>

VideoSurfaceWindow::VideoSurfaceWindow(PictureSource source)
    : m_source(std::move(source))
{
    setSurfaceType(QSurface::OpenGLSurface);
    // Clicks, drags and the wheel belong to the widgets under the picture
    // (zoom and drag, the full-screen click); the window never takes focus.
    setFlags(Qt::WindowTransparentForInput | Qt::WindowDoesNotAcceptFocus);
    QSurfaceFormat format = QSurfaceFormat::defaultFormat();
    // A swap never waits for the display's refresh: the GUI thread keeps
    // serving the other view and the controls, and mpv paces the frames.
    format.setSwapInterval(0);
    setFormat(format);
}

VideoSurfaceWindow::~VideoSurfaceWindow()
{
    releaseGL();
}

bool VideoSurfaceWindow::ensureContext()
{
    if (m_context)
        return m_context->isValid();
    QOpenGLContext* share = QOpenGLContext::globalShareContext();
    m_context = std::make_unique<QOpenGLContext>();
    // The picture is a texture of mpv's own GL context: share with it.
    m_context->setShareContext(share);
    m_context->setFormat(requestedFormat());
    if (!share || !m_context->create()) {
        qCWarning(lcPlayer, "cannot create the video window's OpenGL context");
        return false;
    }
    if (!m_context->makeCurrent(this))
        return false;
    m_blitter.create();
    return true;
}

void VideoSurfaceWindow::releaseGL()
{
    if (!m_context)
        return;
    if (m_blitter.isCreated() && handle() && m_context->makeCurrent(this)) {
        m_blitter.destroy();
        m_context->doneCurrent();
    }
    m_context.reset();
}

void VideoSurfaceWindow::setPictureRect(const QRect& rect)
{
    if (rect == m_pictureRect)
        return;
    m_pictureRect = rect;
    present();
}

QRect VideoSurfaceWindow::pictureRect() const
{
    return m_pictureRect.isValid() ? m_pictureRect : QRect(QPoint(0, 0), size());
}

QSize VideoSurfaceWindow::toPixels(const QSize& size) const
{
    return (QSizeF(size) * devicePixelRatio()).toSize().expandedTo(QSize(1, 1));
}

// `target` is where the picture goes, in pixels of `viewport` counted from its
// top left; whatever lies outside the viewport is clipped.
void VideoSurfaceWindow::drawPicture(
    unsigned int texture, bool upsideDown, const QRect& target, const QSize& viewport)
{
    QOpenGLFunctions* gl = m_context->functions();
    gl->glViewport(0, 0, viewport.width(), viewport.height());
    gl->glClearColor(0.0f, 0.0f, 0.0f, 1.0f);
    gl->glClear(GL_COLOR_BUFFER_BIT);
    if (texture == 0 || !m_blitter.isCreated())
        return;
    const QMatrix4x4 transform
        = QOpenGLTextureBlitter::targetTransform(QRectF(target), QRect(QPoint(0, 0), viewport));
    // The texture is stored bottom row first; reading it top row first mirrors
    // the picture vertically, which is what upside-down display means here.
    const auto origin = upsideDown ? QOpenGLTextureBlitter::OriginTopLeft
                                   : QOpenGLTextureBlitter::OriginBottomLeft;
    m_blitter.bind();
    m_blitter.blit(texture, transform, origin);
    m_blitter.release();
}

bool VideoSurfaceWindow::pictureFillsWindow() const
{
    return pictureRect() == QRect(QPoint(0, 0), size());
}

bool VideoSurfaceWindow::present()
{
    const bool shown = draw();
    if (shown)
        emit pictureShown();
    return shown;
}

bool VideoSurfaceWindow::draw()
{
    if (!isExposed())
        return false;
    const Picture picture = m_source ? m_source() : Picture {};
    // The usual case costs no copy: the player draws into the window itself.
    if (picture.source && pictureFillsWindow())
        return picture.source->drawInto(*this, toPixels(size()), picture.upsideDown);
    // The player's texture first: drawing it may take another context.
    const unsigned int texture = picture.source ? picture.source->texture() : 0;
    if (!ensureContext() || !m_context->makeCurrent(this))
        return false;
    const qreal ratio = devicePixelRatio();
    const QRect picturePixels = pictureRect();
    drawPicture(texture, picture.upsideDown,
        QRect((QPointF(picturePixels.topLeft()) * ratio).toPoint(), toPixels(picturePixels.size())),
        toPixels(size()));
    m_context->swapBuffers(this);
    m_context->doneCurrent();
    return texture != 0;
}

QImage VideoSurfaceWindow::grabPicture()
{
    if (!handle())
        create();
    const Picture picture = m_source ? m_source() : Picture {};
    const unsigned int texture = picture.source ? picture.source->texture() : 0;
    if (!ensureContext() || !m_context->makeCurrent(this))
        return {};
    const QSize pixels = toPixels(pictureRect().size());
    QImage image;
    {
        QOpenGLFramebufferObject fbo(pixels);
        fbo.bind();
        drawPicture(texture, picture.upsideDown, QRect(QPoint(0, 0), pixels), pixels);
        fbo.release();
        image = fbo.toImage();
    }
    m_context->doneCurrent();
    return image;
}

void VideoSurfaceWindow::exposeEvent(QExposeEvent*)
{
    present();
}

void VideoSurfaceWindow::resizeEvent(QResizeEvent*)
{
    present();
}
