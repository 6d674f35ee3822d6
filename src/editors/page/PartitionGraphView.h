#pragma once

#include "settings/SettingsPageModel.h"

#include <QWidget>

// The memory-partition graph: one row per recording kind with its caption,
// a coloured bar of percent x full width / 100 and the label "N%".
class PartitionGraphView : public QWidget {
    Q_OBJECT
public:
    // The full bar width, taken when the page is built.
    static constexpr int kFullBarWidth = 300;

    explicit PartitionGraphView(QWidget* parent = nullptr);

    void setBars(const QList<PartitionBar>& bars);
    // Re-reads the captions in the viewer's language.
    void applyLanguageSettings();

    static int barWidth(int percent, int fullWidth);
    int originPartitionGraphWidth() const { return kFullBarWidth; }
    // Geometry and text of bar i, as drawn.
    QRect barRect(int index) const;
    QString barLabel(int index) const;
    int barCount() const { return int(m_bars.size()); }

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    int captionWidth() const;

    QList<PartitionBar> m_bars;
    QStringList m_captions;
};
