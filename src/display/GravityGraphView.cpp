#include "display/GravityGraphView.h"

#include "telemetry/TavroClipData.h"

#include <QPainter>
#include <QPainterPath>
#include <QResizeEvent>

namespace {

const QColor kPanelColour(0x1f, 0x22, 0x26);
const QColor kGridColour(0x2c, 0x30, 0x36);
const QColor kZeroLineColour(0x4a, 0x50, 0x57);
// 1 g hangs 12.8 units below the zero line; faint guides every 2 g.
constexpr qreal kGuideStep = 25.6;

} // namespace

GravityGraphView::GravityGraphView(QWidget* parent)
    : QWidget(parent)
{
    setAttribute(Qt::WA_OpaquePaintEvent);
    setMinimumSize(120, 60);
}

void GravityGraphView::awakeFromNib()
{
    m_points = {};
    m_baseYPoint = static_cast<float>(height()) / 2.0f;
    m_setUp = true;
    // A record handed over before the view had its size is laid out again
    // against the real zero line.
    if (m_clipData)
        generatePoints();
}

void GravityGraphView::setClipData(const TavroClipData* clipData)
{
    m_clipData = clipData;
    generatePoints();
    update();
}

void GravityGraphView::generatePoints()
{
    m_points = m_clipData ? GravityGraphPoints::generatePoints(*m_clipData, m_baseYPoint)
                          : GravityGraphPoints {};
}

QSize GravityGraphView::sizeHint() const
{
    return { 320, 120 };
}

void GravityGraphView::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    if (!m_setUp && !event->size().isEmpty())
        awakeFromNib();
}

void GravityGraphView::drawBackground(QPainter& painter) const
{
    painter.fillRect(rect(), kPanelColour);
    const qreal zeroY = height() - m_baseYPoint;
    painter.setPen(QPen(kGridColour, 1.0));
    for (qreal y = zeroY + kGuideStep; y < height(); y += kGuideStep)
        painter.drawLine(QPointF(0, y), QPointF(width(), y));
    painter.setPen(QPen(kZeroLineColour, 1.0));
    painter.drawLine(QPointF(0, zeroY), QPointF(width(), zeroY));
}

// The stored y counts upwards from the bottom edge; the widget's counts down.
void GravityGraphView::drawAxis(
    QPainter& painter, const QList<QPointF>& points, const QColor& colour) const
{
    const qreal w = width();
    const qreal h = height();
    QPainterPath path(QPointF(0.0, h - m_baseYPoint));
    for (const QPointF& point : points)
        path.lineTo(point.x() * w, h - point.y());
    painter.setPen(QPen(colour, 1.0));
    painter.drawPath(path);
}

void GravityGraphView::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    drawBackground(painter);
    painter.setRenderHint(QPainter::Antialiasing, false);
    painter.setBrush(Qt::NoBrush);
    drawAxis(painter, m_points.gxPointList, QColor::fromRgbF(1, 0, 0));
    drawAxis(painter, m_points.gyPointList, QColor::fromRgbF(1, 1, 0));
    drawAxis(painter, m_points.gzPointList, QColor::fromRgbF(0, 0, 1));
}
