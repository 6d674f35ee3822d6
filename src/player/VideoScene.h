#pragma once

#include <QImage>
#include <QList>
#include <QPointer>
#include <QWidget>

#include <vector>

class TavroAVView;
class VideoSceneWindow;

// One native OpenGL window over an area (the host widget) that shows, in
// one drawing, what lies in that area: the pictures of the player views and
// the widgets over them (covers, the loading animation, a view's notices).
//
// Why one window: a picture needs a native window (drawn as a texture widget
// it would make Qt compose the whole main window through OpenGL for every
// frame and every moving slider), but native windows over each other are
// neither clipped nor stacked on X11 the way the widget tree says (an inset
// picture can end up under the large one), and on Wayland a sub-surface
// moves only when its parent commits. One window for the whole area has
// neither problem, and a new frame of any view costs one drawing and one
// swap; frames that arrive together are drawn together.
//
// The scene takes no input: presses, drags and the wheel reach the widgets
// under it, which keep their geometry, visibility and behaviour.
class VideoScene : public QWidget {
    Q_OBJECT
public:
    explicit VideoScene(QWidget* host);
    ~VideoScene() override;

    // What the scene shows, bottom first. A player view shows as its picture
    // (black without one) with its own widgets over it; any other widget as
    // it renders itself. Hidden widgets, and whatever lies outside the host,
    // do not show. The views take the scene as theirs.
    void setLayers(const QList<QWidget*>& layers);

    // Draws again soon; requests made meanwhile are drawn together.
    void scheduleUpdate();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    struct Layer {
        QPointer<QWidget> widget;
        TavroAVView* view = nullptr;
        QImage rendering;
        qint64 version = 0;
        bool stale = true;
        qint64 presentedSerial = -1;
    };

    void followHost();
    void watch(QObject* object);
    Layer* layerOf(QObject* object);
    QRect placeOf(const QWidget& widget) const;
    QRect visiblePart(const QWidget& widget) const;
    void render(Layer& layer);
    void notePresented();

    QWidget* m_host = nullptr;
    VideoSceneWindow* m_window = nullptr; // owned by its container
    QWidget* m_container = nullptr;
    std::vector<Layer> m_layers;
    bool m_rendering = false;
};
