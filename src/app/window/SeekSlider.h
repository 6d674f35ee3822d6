#pragma once

#include "app/session/SessionView.h"

#include <QSlider>
#include <QVector>

class QPainter;

// A horizontal slider that jumps to where it is clicked (the seek and volume
// sliders of the transport row) instead of stepping a page at a time. While a
// trip plays, the seek slider shows where its clips begin (thin lines) and its
// event marks (impacts red, event recordings amber, manual recordings blue),
// each with its tooltip; on a clip or a trip, the in and out marks of the
// span to export, the span shaded between them.
class SeekSlider : public QSlider {
    Q_OBJECT
public:
    explicit SeekSlider(QWidget* parent = nullptr);

    // Marks in seconds on a slider that counts milliseconds; none clears them.
    void setMarks(const QVector<SeekMark>& marks);
    const QVector<SeekMark>& marks() const { return m_marks; }
    // Where a mark is drawn, in the slider's coordinates.
    int markX(const SeekMark& mark) const;
    // The mark whose tooltip shows at x: an event mark before a clip start;
    // -1 when none lies within a few pixels.
    int markAt(int x) const;

protected:
    void paintEvent(QPaintEvent* event) override;
    bool event(QEvent* event) override;

private:
    void paintSpan(QPainter& painter) const;

    QVector<SeekMark> m_marks;
};
