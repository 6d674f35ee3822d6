#pragma once

#include <QPoint>
#include <QPointF>
#include <QWidget>

// Holds the large player view and shows it enlarged (1.0 to 5.0 times the
// area) with the visible part chosen by dragging with the mouse. At 1.0 the
// view fills the area. Until the user has dragged, the enlarged picture stays
// centred.
class ZoomableMovieArea : public QWidget {
    Q_OBJECT
public:
    explicit ZoomableMovieArea(QWidget* parent = nullptr);

    // The view shown inside (reparented here).
    void setMovieView(QWidget* view);
    QWidget* movieView() const { return m_view; }

    double scale() const { return m_scale; }
    void setScale(double scale);
    // Dragging moves the visible part (only while enlarged).
    void setScrollMode(bool enabled);
    bool isScrollMode() const { return m_scrollMode; }
    // The centre of the visible part in the view's own coordinates, 0..1.
    QPointF visibleCentre() const { return m_centre; }

signals:
    // The user moved the visible part with the mouse.
    void dragged();

protected:
    void resizeEvent(QResizeEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

private:
    void layoutView();
    void updateCursor();

    QWidget* m_view = nullptr;
    double m_scale = 1.0;
    bool m_scrollMode = false;
    bool m_dragging = false;
    QPoint m_lastPos;
    QPointF m_centre { 0.5, 0.5 };
};
