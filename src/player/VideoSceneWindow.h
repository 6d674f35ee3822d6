#pragma once

#include <QImage>
#include <QList>
#include <QOpenGLTextureBlitter>
#include <QRect>
#include <QWindow>

#include <functional>
#include <memory>
#include <unordered_map>

class QOpenGLContext;
class QOpenGLTexture;

// The native OpenGL window of a VideoScene. It draws what the scene hands
// it, bottom first, and shows it with one buffer swap. It takes no input
// and never takes the focus: presses, drags and the wheel go to the widgets
// beneath, as they would over any other widget.
class VideoSceneWindow : public QWindow {
    Q_OBJECT
public:
    // One thing to draw, in the window's device pixels, shown only within
    // `clip`: a picture (a texture of the shared OpenGL contexts, stored
    // bottom row first), an image (a widget's rendering, drawn over what
    // lies below), or, with neither, black.
    struct Item {
        QRect target;
        QRect clip;
        unsigned int texture = 0;
        bool upsideDown = false;
        // An image is uploaded again only when its version changes.
        const QImage* image = nullptr;
        quintptr imageKey = 0;
        qint64 imageVersion = 0;
    };
    // Asked for what to draw whenever the window draws.
    using ItemSource = std::function<QList<Item>()>;

    explicit VideoSceneWindow(ItemSource source);
    ~VideoSceneWindow() override;

    // Draws now if the window is on screen; false when nothing was drawn.
    bool draw();

signals:
    // A drawing reached the screen (the buffer was swapped).
    void drawn();

protected:
    void exposeEvent(QExposeEvent* event) override;
    bool event(QEvent* event) override;

private:
    bool ensureContext();
    void releaseGL();
    unsigned int imageTexture(const Item& item);
    void drawItem(const Item& item, const QSize& viewport);

    struct ImageTexture {
        std::unique_ptr<QOpenGLTexture> texture;
        qint64 version = -1;
    };

    ItemSource m_source;
    std::unique_ptr<QOpenGLContext> m_context;
    QOpenGLTextureBlitter m_blitter;
    std::unordered_map<quintptr, ImageTexture> m_images;
};
