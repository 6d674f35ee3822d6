#pragma once

#include <QImage>
#include <QOpenGLTextureBlitter>
#include <QWindow>

#include <functional>
#include <memory>

class QOpenGLContext;

// The native window a player view shows its picture in. It sits inside the
// view (through a window container) and draws one texture of the shared GL
// contexts straight into its own surface: a new frame costs one blit and one
// buffer swap of the view's own area, and the rest of the main window is not
// composed again. It takes no input: presses, drags and wheel turns go through
// to the widgets beneath, as they would over any other widget.
class VideoSurfaceWindow : public QWindow {
    Q_OBJECT
public:
    // What to draw: the texture (0 = black only) and whether it is shown
    // upside down. Asked for whenever the window needs its picture again.
    struct Picture {
        unsigned int texture = 0;
        bool upsideDown = false;
    };
    using PictureSource = std::function<Picture()>;

    explicit VideoSurfaceWindow(PictureSource source);
    ~VideoSurfaceWindow() override;

    // Where the whole picture lies, in the window's coordinates. The window
    // may show only a part of it (an enlarged view inside its area); by
    // default the picture fills the window.
    void setPictureRect(const QRect& rect);

    // Draws the current picture now if the window is on screen; returns
    // whether a texture was drawn.
    bool present();

    // The whole picture (not only the part the window shows), read back at
    // its device-pixel size; black with no texture. Works whether the window
    // is shown or not.
    QImage grabPicture();

protected:
    void exposeEvent(QExposeEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    bool ensureContext();
    void releaseGL();
    void drawPicture(const Picture& picture, const QRect& target, const QSize& viewport);
    QSize toPixels(const QSize& size) const;
    QRect pictureRect() const;

    PictureSource m_source;
    QRect m_pictureRect;
    std::unique_ptr<QOpenGLContext> m_context;
    QOpenGLTextureBlitter m_blitter;
};
