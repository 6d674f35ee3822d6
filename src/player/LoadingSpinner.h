#pragma once

#include <QTimer>
#include <QWidget>

// The busy indicator a player view shows while its file loads: a ring of
// fading dots that turns while animating.
class LoadingSpinner : public QWidget {
    Q_OBJECT
public:
    explicit LoadingSpinner(QWidget* parent = nullptr);

    void startAnimation();
    void stopAnimation();
    bool isAnimating() const { return m_timer.isActive(); }

signals:
    // The ring turned one step (for whoever draws the spinner elsewhere).
    void stepped();

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QTimer m_timer;
    int m_step = 0;
};
