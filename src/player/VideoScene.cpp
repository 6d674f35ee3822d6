#include "player/VideoScene.h"

#include "player/TavroAVView.h"
#include "player/VideoPicture.h"
#include "player/VideoSceneWindow.h"

#include <QEvent>
#include <QPainter>

namespace {

// What changes a layer's looks: the scene draws again when one happens.
bool changesLooks(QEvent::Type type)
{
    switch (type) {
    case QEvent::Paint:
    case QEvent::Show:
    case QEvent::Hide:
    case QEvent::Move:
    case QEvent::Resize:
    case QEvent::ZOrderChange:
        return true;
    default:
        return false;
    }
}

QRect toPixels(const QRect& rect, qreal ratio)
{
    const QPoint topLeft = (QPointF(rect.topLeft()) * ratio).toPoint();
    const QPoint bottomRight
        = (QPointF(rect.topLeft() + QPoint(rect.width(), rect.height())) * ratio).toPoint();
    return { topLeft, bottomRight - QPoint(1, 1) };
}

} // namespace

VideoScene::VideoScene(QWidget* host)
    : QWidget(host)
    , m_host(host)
{
    setObjectName(QStringLiteral("videoScene"));
    // Input goes to the widgets under the scene.
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setFocusPolicy(Qt::NoFocus);
    m_window = new VideoSceneWindow([this] {
        QList<VideoSceneWindow::Item> items;
        const qreal ratio = m_window->devicePixelRatio();
        for (Layer& layer : m_layers) {
            QWidget* widget = layer.widget;
            if (!widget || !widget->isVisibleTo(m_host))
                continue;
            // In the scene's own coordinates.
            const QRect place = placeOf(*widget).translated(-pos());
            const QRect clip = visiblePart(*widget).translated(-pos());
            if (clip.isEmpty())
                continue;
            VideoSceneWindow::Item item;
            item.target = toPixels(place, ratio);
            item.clip = toPixels(clip, ratio);
            if (layer.view) {
                // Black where the view has no picture, then the picture.
                items.append(item);
                if (VideoPicture* picture = layer.view->shownPicture()) {
                    item.texture = picture->texture();
                    item.upsideDown = layer.view->upsideDown();
                    items.append(item);
                    item.texture = 0;
                }
            }
            render(layer);
            if (!layer.rendering.isNull()) {
                item.image = &layer.rendering;
                item.imageKey = reinterpret_cast<quintptr>(&layer);
                item.imageVersion = layer.version;
                items.append(item);
            }
        }
        return items;
    });
    connect(m_window, &VideoSceneWindow::drawn, this, &VideoScene::notePresented);
    m_container = QWidget::createWindowContainer(m_window, this);
    m_container->setObjectName(QStringLiteral("videoSceneWindow"));
    m_container->setAttribute(Qt::WA_TransparentForMouseEvents);
    m_container->setFocusPolicy(Qt::NoFocus);
    m_host->installEventFilter(this);
    if (m_host->parentWidget())
        m_host->parentWidget()->installEventFilter(this);
    followHost();
    raise();
}

// A native window is not clipped by the widgets it lies in: the scene covers
// only the part of the host that its ancestors show (an enlarged view shows
// only what its area shows).
void VideoScene::followHost()
{
    QRect shown = m_host->rect();
    for (const QWidget* w = m_host; !w->isWindow() && w->parentWidget(); w = w->parentWidget()) {
        const QWidget* parent = w->parentWidget();
        shown &= QRect(m_host->mapFrom(parent, QPoint(0, 0)), parent->size());
    }
    setGeometry(shown);
    m_container->setGeometry(rect());
    scheduleUpdate();
}

VideoScene::~VideoScene()
{
    m_host->removeEventFilter(this);
    if (m_host->parentWidget())
        m_host->parentWidget()->removeEventFilter(this);
}

void VideoScene::setLayers(const QList<QWidget*>& layers)
{
    for (Layer& layer : m_layers) {
        if (layer.view)
            disconnect(layer.view, nullptr, this, nullptr);
    }
    m_layers.clear();
    m_layers.reserve(size_t(layers.size()));
    for (QWidget* widget : layers) {
        Layer layer;
        layer.widget = widget;
        layer.view = qobject_cast<TavroAVView*>(widget);
        m_layers.push_back(std::move(layer));
        watch(widget);
        if (TavroAVView* view = m_layers.back().view) {
            view->useScene(this);
            connect(view, &TavroAVView::pictureChanged, this, &VideoScene::scheduleUpdate);
            connect(view, &TavroAVView::overlayChanged, this, [this, view] {
                if (Layer* layer = layerOf(view))
                    layer->stale = true;
                scheduleUpdate();
            });
        }
    }
    scheduleUpdate();
}

void VideoScene::scheduleUpdate()
{
    m_window->requestUpdate();
}

void VideoScene::watch(QObject* object)
{
    object->installEventFilter(this);
    for (QObject* child : object->children()) {
        if (child->isWidgetType() && child != this)
            watch(child);
    }
}

VideoScene::Layer* VideoScene::layerOf(QObject* object)
{
    for (; object; object = object->parent()) {
        for (Layer& layer : m_layers) {
            if (layer.widget == object)
                return &layer;
        }
    }
    return nullptr;
}

bool VideoScene::eventFilter(QObject* watched, QEvent* event)
{
    const bool hostOrParent = watched == m_host || watched == m_host->parentWidget();
    if (hostOrParent && (event->type() == QEvent::Resize || event->type() == QEvent::Move))
        followHost();
    if (watched != m_host && hostOrParent)
        return false;
    if (event->type() == QEvent::ChildAdded) {
        QObject* child = static_cast<QChildEvent*>(event)->child();
        if (child->isWidgetType() && child != this)
            watch(child);
        return false;
    }
    if (m_rendering || !changesLooks(event->type()))
        return false;
    if (Layer* layer = layerOf(watched)) {
        layer->stale = true;
        scheduleUpdate();
    }
    return false;
}

// Where the widget lies in the host (the host itself, or a widget in it).
QRect VideoScene::placeOf(const QWidget& widget) const
{
    if (&widget == m_host)
        return m_host->rect();
    if (!m_host->isAncestorOf(&widget))
        return {};
    return { widget.mapTo(m_host, QPoint(0, 0)), widget.size() };
}

// Where the widget shows within the host: widgets are clipped by every
// widget they lie in (an enlarged view by its area).
QRect VideoScene::visiblePart(const QWidget& widget) const
{
    QRect part = placeOf(widget);
    if (part.isNull())
        return {};
    for (const QWidget* w = &widget; w != m_host; w = w->parentWidget())
        part &= placeOf(*w);
    return part & m_host->rect();
}

// A widget's rendering as it would look on screen; for a player view only
// its own widgets over the picture (the loading animation, notices), as its
// background is the picture.
void VideoScene::render(Layer& layer)
{
    if (!layer.stale)
        return;
    layer.stale = false;
    ++layer.version;
    QWidget* widget = layer.widget;
    const qreal ratio = m_window->devicePixelRatio();
    QList<QWidget*> shown;
    if (layer.view) {
        for (QObject* child : widget->children()) {
            auto* overlay = qobject_cast<QWidget*>(child);
            if (overlay && overlay->isVisibleTo(widget) && !qobject_cast<VideoScene*>(overlay))
                shown.append(overlay);
        }
        if (shown.isEmpty()) {
            layer.rendering = QImage();
            return;
        }
    }
    QImage image((QSizeF(widget->size()) * ratio).toSize(), QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(ratio);
    image.fill(Qt::transparent);
    m_rendering = true;
    {
        QPainter painter(&image);
        if (layer.view) {
            for (QWidget* overlay : shown)
                overlay->render(&painter, overlay->pos(), QRegion(), QWidget::DrawChildren);
        } else {
            widget->render(&painter, QPoint(), QRegion(),
                QWidget::DrawWindowBackground | QWidget::DrawChildren);
        }
    }
    m_rendering = false;
    layer.rendering = image;
}

// The views whose new picture reached the screen count it.
void VideoScene::notePresented()
{
    for (Layer& layer : m_layers) {
        if (!layer.view || !layer.widget || !layer.widget->isVisibleTo(m_host))
            continue;
        const qint64 serial = layer.view->pictureSerial();
        if (layer.view->shownPicture() && serial != layer.presentedSerial) {
            layer.presentedSerial = serial;
            layer.view->notePicturePresented();
        }
    }
}
