#include "player/NoVideoView.h"
#include "style/TavroStyle.h"

#include <QPainter>
#include <QPainterPath>

NoVideoView::NoVideoView(QWidget* parent)
    : QWidget(parent)
{
    setAttribute(Qt::WA_TransparentForMouseEvents);
}

void NoVideoView::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.fillRect(rect(), TavroStyle::kPanel);
    painter.setRenderHint(QPainter::Antialiasing);
    const double side = qMin(width(), height()) * 0.25;
    if (side < 8.0)
        return;
    const QPointF origin(width() / 2.0 - side / 2.0, height() / 2.0 - side / 2.0);
    // A speaker: a box and a cone, then two sound waves.
    QPainterPath speaker;
    speaker.moveTo(origin + QPointF(0, side * 0.35));
    speaker.lineTo(origin + QPointF(side * 0.25, side * 0.35));
    speaker.lineTo(origin + QPointF(side * 0.55, side * 0.1));
    speaker.lineTo(origin + QPointF(side * 0.55, side * 0.9));
    speaker.lineTo(origin + QPointF(side * 0.25, side * 0.65));
    speaker.lineTo(origin + QPointF(0, side * 0.65));
    speaker.closeSubpath();
    painter.fillPath(speaker, TavroStyle::kSecondaryText);
    QPen wave(TavroStyle::kSecondaryText, qMax(2.0, side * 0.06), Qt::SolidLine, Qt::RoundCap);
    painter.setPen(wave);
    for (int i = 1; i <= 2; ++i) {
        const double r = side * 0.2 * i;
        const QRectF arc(origin.x() + side * 0.6 - r, origin.y() + side * 0.5 - r, 2 * r, 2 * r);
        painter.drawArc(arc, -45 * 16, 90 * 16);
    }
}
