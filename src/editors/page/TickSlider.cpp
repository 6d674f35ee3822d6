#include "editors/page/TickSlider.h"
#include "style/TavroStyle.h"

#include "editors/page/EditorStyle.h"

#include <QPainter>
#include <QStyle>
#include <QStyleOptionSlider>

namespace {
constexpr int kHandleWidth = 12;
constexpr int kTickLength = 5;
} // namespace

TickSlider::TickSlider(QWidget* parent)
    : QSlider(Qt::Horizontal, parent)
{
    setMinimumHeight(30);
    setMinimumWidth(160);
    setPageStep(1);
    setSingleStep(1);
}

QList<int> TickSlider::tickPositions() const
{
    QList<int> ticks;
    const int span = width() - kHandleWidth;
    for (int v = minimum(); v <= maximum(); ++v)
        ticks << kHandleWidth / 2
                + QStyle::sliderPositionFromValue(minimum(), maximum(), v, span, false);
    return ticks;
}

void TickSlider::paintEvent(QPaintEvent* event)
{
    QSlider::paintEvent(event);
    QPainter painter(this);
    painter.setPen(isEnabled() ? TavroStyle::kSecondaryText : TavroStyle::kSeparator);
    const int y = height() - kTickLength - 1;
    for (int x : tickPositions())
        painter.drawLine(x, y, x, y + kTickLength);
}
