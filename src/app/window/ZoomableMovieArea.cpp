#include "app/window/ZoomableMovieArea.h"

#include <QMouseEvent>

#include <algorithm>

ZoomableMovieArea::ZoomableMovieArea(QWidget* parent)
    : QWidget(parent)
{
    setAttribute(Qt::WA_StyledBackground);
    setObjectName(QStringLiteral("bigMovieScrollView"));
    setStyleSheet(QStringLiteral("background: #000000;"));
}

void ZoomableMovieArea::setMovieView(QWidget* view)
{
    m_view = view;
    if (m_view) {
        m_view->setParent(this);
        // The player view ignores left-button presses and moves; they reach
        // this area, which does the dragging.
        m_view->setMouseTracking(false);
        m_view->show();
    }
    layoutView();
}

void ZoomableMovieArea::setScale(double scale)
{
    m_scale = std::clamp(scale, 1.0, 5.0);
    if (m_scale <= 1.0)
        m_centre = QPointF(0.5, 0.5);
    layoutView();
    updateCursor();
}

void ZoomableMovieArea::setScrollMode(bool enabled)
{
    m_scrollMode = enabled;
    updateCursor();
}

void ZoomableMovieArea::updateCursor()
{
    if (m_scrollMode && m_scale > 1.0)
        setCursor(m_dragging ? Qt::ClosedHandCursor : Qt::OpenHandCursor);
    else
        unsetCursor();
}

void ZoomableMovieArea::layoutView()
{
    if (!m_view)
        return;
    const QSize size(qRound(width() * m_scale), qRound(height() * m_scale));
    // Keep the visible part inside the picture.
    const double halfW = 0.5 / m_scale;
    const double halfH = 0.5 / m_scale;
    m_centre.setX(std::clamp(m_centre.x(), halfW, 1.0 - halfW));
    m_centre.setY(std::clamp(m_centre.y(), halfH, 1.0 - halfH));
    const QPoint topLeft(qRound(width() / 2.0 - m_centre.x() * size.width()),
        qRound(height() / 2.0 - m_centre.y() * size.height()));
    m_view->setGeometry(QRect(topLeft, size));
}

void ZoomableMovieArea::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    layoutView();
}

void ZoomableMovieArea::mousePressEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton && m_scale > 1.0) {
        m_dragging = true;
        m_lastPos = event->position().toPoint();
        updateCursor();
        event->accept();
        return;
    }
    QWidget::mousePressEvent(event);
}

void ZoomableMovieArea::mouseMoveEvent(QMouseEvent* event)
{
    if (!m_dragging || !m_view) {
        QWidget::mouseMoveEvent(event);
        return;
    }
    const QPoint pos = event->position().toPoint();
    const QPoint delta = pos - m_lastPos;
    m_lastPos = pos;
    m_centre -= QPointF(double(delta.x()) / m_view->width(), double(delta.y()) / m_view->height());
    layoutView();
    emit dragged();
}

void ZoomableMovieArea::mouseReleaseEvent(QMouseEvent* event)
{
    if (m_dragging && event->button() == Qt::LeftButton) {
        m_dragging = false;
        updateCursor();
        return;
    }
    QWidget::mouseReleaseEvent(event);
}
