#pragma once

#include <QWidget>

// Covers a player view whose file has sound but no picture: a dark panel with
// a speaker symbol, so the user sees that the clip plays without video.
class NoVideoView : public QWidget {
    Q_OBJECT
public:
    explicit NoVideoView(QWidget* parent = nullptr);

protected:
    void paintEvent(QPaintEvent* event) override;
};
