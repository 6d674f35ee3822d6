#pragma once

#include <QWidget>

class QLabel;

// The splash window shown while the viewer starts: the product image, centred
// on the screen, without a frame.
class SplashWindowController : public QWidget {
    Q_OBJECT
public:
    static constexpr int kSplashMs = 2000;

    explicit SplashWindowController(QWidget* parent = nullptr);

    QLabel* splashImagView() const { return m_splashImagView; }
    void showCentred();

private:
    QLabel* m_splashImagView = nullptr;
};
