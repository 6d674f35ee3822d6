#pragma once

#include <QImage>
#include <QOpenGLTextureBlitter>
#include <QWindow>

#include <functional>
#include <memory>

class QOpenGLContext;
class VideoPicture;

// The native window a player view shows its picture in. It sits inside the
// view (through a window container). When the picture fills it, the player
// draws straight into it; when it shows a part of a larger picture (zoom), it
// copies that part from the player's texture. Either way a new frame costs
// the view's own area and one buffer swap, and the rest of the main window is
// not composed again. It takes no input: presses, drags and wheel turns go through
// to the widgets beneath, as they would over any other widget.
class VideoSurfaceWindow : public QWindow {
    Q_OBJECT
public:
    // What to draw (none = black only) and whether it is shown upside down.
    // Asked for whenever the window needs its picture again.
    struct Picture {
        VideoPicture* source = nullptr;
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
    // whether a picture was drawn. The window also draws by itself when it
    // comes on screen or changes size.
    bool present();

    // The whole picture (not only the part the window shows), read back at
    // its device-pixel size; black with no texture. Works whether the window
    // is shown or not.
    QImage grabPicture();

signals:
    // A picture (not only black) reached the screen.
    void pictureShown();

protected:
    void exposeEvent(QExposeEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    bool draw();
    bool ensureContext();
    void releaseGL();
    void drawPicture(
        unsigned int texture, bool upsideDown, const QRect& target, const QSize& viewport);
    bool pictureFillsWindow() const;
    QSize toPixels(const QSize& size) const;
    QRect pictureRect() const;

    PictureSource m_source;
    QRect m_pictureRect;
    std::unique_ptr<QOpenGLContext> m_context;
    QOpenGLTextureBlitter m_blitter;
};
