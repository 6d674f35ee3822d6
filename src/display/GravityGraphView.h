#pragma once

#include "display/GravityGraphPoints.h"

#include <QWidget>

class TavroClipData;

// The G-sensor graph of the telemetry row: the whole clip's x, y and z
// magnitudes as red, yellow and blue lines hanging from a zero line. Static
// per clip: the points are computed when the record is handed over.
class GravityGraphView : public QWidget {
    Q_OBJECT
public:
    explicit GravityGraphView(QWidget* parent = nullptr);

    // Takes the zero line at half the current height. Runs by itself the first
    // time the view gets a non-empty size; later resizes keep the zero line.
    void awakeFromNib();
    bool isSetUp() const { return m_setUp; }

    // The record stays owned by the caller and must outlive the view's use of
    // it (the main window keeps one record for the whole session).
    void setClipData(const TavroClipData* clipData);
    const TavroClipData* clipData() const { return m_clipData; }

    void generatePoints();

    float baseYPoint() const { return m_baseYPoint; }
    const QList<QPointF>& gxPointList() const { return m_points.gxPointList; }
    const QList<QPointF>& gyPointList() const { return m_points.gyPointList; }
    const QList<QPointF>& gzPointList() const { return m_points.gzPointList; }

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void drawBackground(QPainter& painter) const;
    void drawAxis(QPainter& painter, const QList<QPointF>& points, const QColor& colour) const;

    const TavroClipData* m_clipData = nullptr;
    GravityGraphPoints m_points;
    float m_baseYPoint = 0.0f;
    bool m_setUp = false;
};
