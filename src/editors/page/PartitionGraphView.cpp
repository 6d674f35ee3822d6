#include "editors/page/PartitionGraphView.h"
#include "style/TavroStyle.h"

#include "editors/page/EditorStyle.h"
#include "i18n/TavroLanguages.h"

#include <QPainter>

#include <algorithm>

namespace {
constexpr int kRowHeight = 22;
constexpr int kBarHeight = 12;
constexpr int kGap = 10;
} // namespace

PartitionGraphView::PartitionGraphView(QWidget* parent)
    : QWidget(parent)
{
    setObjectName(QStringLiteral("partitionGraph"));
}

void PartitionGraphView::setBars(const QList<PartitionBar>& bars)
{
    m_bars = bars;
    applyLanguageSettings();
}

void PartitionGraphView::applyLanguageSettings()
{
    m_captions.clear();
    for (const PartitionBar& bar : m_bars)
        m_captions << TavroLanguages::SharedTavroLanguages().localized(
            bar.caption.isEmpty() ? bar.key : bar.caption);
    updateGeometry();
    update();
}

int PartitionGraphView::barWidth(int percent, int fullWidth)
{
    return percent * fullWidth / 100;
}

int PartitionGraphView::captionWidth() const
{
    int width = 0;
    for (const QString& caption : m_captions)
        width = std::max(width, fontMetrics().horizontalAdvance(caption));
    return width;
}

QRect PartitionGraphView::barRect(int index) const
{
    if (index < 0 || index >= m_bars.size())
        return {};
    const int x = captionWidth() + kGap;
    const int y = index * kRowHeight + (kRowHeight - kBarHeight) / 2;
    return QRect(x, y, barWidth(m_bars[index].percent, kFullBarWidth), kBarHeight);
}

QString PartitionGraphView::barLabel(int index) const
{
    return index >= 0 && index < m_bars.size() ? QStringLiteral("%1%").arg(m_bars[index].percent)
                                               : QString();
}

QSize PartitionGraphView::sizeHint() const
{
    const int labelWidth = fontMetrics().horizontalAdvance(QStringLiteral("100%"));
    return QSize(
        captionWidth() + kGap + kFullBarWidth + kGap + labelWidth, int(m_bars.size()) * kRowHeight);
}

void PartitionGraphView::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    for (int i = 0; i < m_bars.size(); ++i) {
        const QRect bar = barRect(i);
        const QRect row(0, i * kRowHeight, width(), kRowHeight);
        painter.setPen(TavroStyle::kSecondaryText);
        painter.drawText(QRect(0, row.y(), captionWidth(), kRowHeight),
            Qt::AlignVCenter | Qt::AlignLeft, m_captions.value(i));
        // The full width faintly, the share in colour.
        painter.setPen(Qt::NoPen);
        painter.setBrush(TavroStyle::kSeparator);
        painter.drawRoundedRect(QRect(bar.x(), bar.y(), kFullBarWidth, kBarHeight), 3, 3);
        painter.setBrush(EditorStyle::barColour(i));
        painter.drawRoundedRect(bar, 3, 3);
        painter.setPen(TavroStyle::kText);
        painter.drawText(QRect(bar.x() + kFullBarWidth + kGap, row.y(), width(), kRowHeight),
            Qt::AlignVCenter | Qt::AlignLeft, barLabel(i));
    }
}
