#pragma once

#include <QSlider>

// A horizontal slider with a tick mark under each position (styled sliders
// draw none of their own).
class TickSlider : public QSlider {
    Q_OBJECT
public:
    explicit TickSlider(QWidget* parent = nullptr);

    // The x of each position's tick, left to right.
    QList<int> tickPositions() const;

protected:
    void paintEvent(QPaintEvent* event) override;
};
