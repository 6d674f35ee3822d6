#pragma once

#include <QSlider>

// A horizontal slider that jumps to where it is clicked (the seek and volume
// sliders of the transport row) instead of stepping a page at a time.
class SeekSlider : public QSlider {
    Q_OBJECT
public:
    explicit SeekSlider(QWidget* parent = nullptr);
};
