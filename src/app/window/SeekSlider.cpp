#include "app/window/SeekSlider.h"

#include "style/TavroStyle.h"

#include <QHelpEvent>
#include <QPainter>
#include <QPainterPath>
#include <QProxyStyle>
#include <QStyleOptionSlider>
#include <QToolTip>

#include <cmath>
#include <optional>

namespace {

class JumpToClickStyle : public QProxyStyle {
public:
    using QProxyStyle::QProxyStyle;
    int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
        QStyleHintReturn* returnData) const override
    {
        if (hint == QStyle::SH_Slider_AbsoluteSetButtons)
            return Qt::LeftButton;
        return QProxyStyle::styleHint(hint, option, widget, returnData);
    }
};

constexpr int kMarkReach = 4; // pixels either side of a mark that show its tooltip
const QColor kImpactColour { 0xe5, 0x39, 0x35 };
const QColor kManualColour { 0x4f, 0xc3, 0xf7 };

QColor colourOf(SeekMark::Kind kind)
{
    switch (kind) {
    case SeekMark::Kind::Impact:
        return kImpactColour;
    case SeekMark::Kind::EventClip:
        return TavroStyle::kAccent;
    case SeekMark::Kind::ManualClip:
        return kManualColour;
    case SeekMark::Kind::SpanIn:
    case SeekMark::Kind::SpanOut:
        return TavroStyle::kText;
    case SeekMark::Kind::ClipStart:
        break;
    }
    return TavroStyle::kSecondaryText;
}

} // namespace

SeekSlider::SeekSlider(QWidget* parent)
    : QSlider(Qt::Horizontal, parent)
{
    // Without a base style the proxy makes its own copy of the application's
    // style; handing it the application's instance would transfer ownership.
    auto* style = new JumpToClickStyle;
    style->setParent(this);
    setStyle(style);
    setFocusPolicy(Qt::NoFocus);
    setCursor(Qt::PointingHandCursor);
}

void SeekSlider::setMarks(const QVector<SeekMark>& marks)
{
    m_marks = marks;
    update();
}

int SeekSlider::markX(const SeekMark& mark) const
{
    QStyleOptionSlider option;
    initStyleOption(&option);
    const QRect groove
        = style()->subControlRect(QStyle::CC_Slider, &option, QStyle::SC_SliderGroove, this);
    const QRect handle
        = style()->subControlRect(QStyle::CC_Slider, &option, QStyle::SC_SliderHandle, this);
    const int span = groove.width() - handle.width();
    const int value = int(std::lround(mark.seconds * 1000.0));
    return groove.x() + handle.width() / 2
        + QStyle::sliderPositionFromValue(minimum(), maximum(), value, span);
}

int SeekSlider::markAt(int x) const
{
    int best = -1;
    int bestDistance = kMarkReach + 1;
    for (int i = 0; i < m_marks.size(); ++i) {
        const int distance = std::abs(markX(m_marks[i]) - x);
        // An event mark wins over a clip start at the same place.
        const bool better = distance < bestDistance
            || (distance == bestDistance && best >= 0
                && m_marks[best].kind == SeekMark::Kind::ClipStart);
        if (distance <= kMarkReach && better) {
            best = i;
            bestDistance = distance;
        }
    }
    return best;
}

void SeekSlider::paintEvent(QPaintEvent* event)
{
    QSlider::paintEvent(event);
    if (m_marks.isEmpty() || maximum() <= minimum())
        return;
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const int middle = height() / 2;
    paintSpan(painter);
    for (const SeekMark& mark : std::as_const(m_marks)) {
        const int x = markX(mark);
        if (mark.kind == SeekMark::Kind::SpanIn || mark.kind == SeekMark::Kind::SpanOut) {
            // A bracket below the groove, open towards the span.
            const int toward = mark.kind == SeekMark::Kind::SpanIn ? 4 : -4;
            painter.setPen(QPen(colourOf(mark.kind), 2));
            painter.drawPolyline(QPolygonF({ QPointF(x + toward, height() - 1.0),
                QPointF(x, height() - 1.0), QPointF(x, middle - 6.0) }));
            continue;
        }
        if (mark.kind == SeekMark::Kind::ClipStart) {
            painter.setPen(QPen(colourOf(mark.kind), 1));
            painter.drawLine(QPointF(x + 0.5, middle - 5), QPointF(x + 0.5, middle + 5));
            continue;
        }
        // A small triangle above the groove, pointing down at the moment.
        QPainterPath triangle;
        triangle.moveTo(x - 4, 0);
        triangle.lineTo(x + 4, 0);
        triangle.lineTo(x, middle - 2);
        triangle.closeSubpath();
        painter.fillPath(triangle, colourOf(mark.kind));
    }
}

void SeekSlider::paintSpan(QPainter& painter) const
{
    // The stretch between the in and out marks (to the end without an out
    // mark, from the start without an in mark) shaded along the groove.
    std::optional<int> in;
    std::optional<int> out;
    for (const SeekMark& mark : std::as_const(m_marks)) {
        if (mark.kind == SeekMark::Kind::SpanIn)
            in = markX(mark);
        else if (mark.kind == SeekMark::Kind::SpanOut)
            out = markX(mark);
    }
    if (!in && !out)
        return;
    const int left = in.value_or(markX({ minimum() / 1000.0, SeekMark::Kind::SpanIn, {} }));
    const int right = out.value_or(markX({ maximum() / 1000.0, SeekMark::Kind::SpanOut, {} }));
    QColor shade = TavroStyle::kAccent;
    shade.setAlpha(90);
    painter.fillRect(QRect(left, height() / 2 + 4, right - left, height() / 2 - 5), shade);
}

bool SeekSlider::event(QEvent* event)
{
    if (event->type() == QEvent::ToolTip && !m_marks.isEmpty()) {
        auto* help = static_cast<QHelpEvent*>(event);
        const int mark = markAt(help->pos().x());
        if (mark >= 0) {
            QToolTip::showText(help->globalPos(), m_marks[mark].toolTip, this);
            return true;
        }
    }
    return QSlider::event(event);
}
