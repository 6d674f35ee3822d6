#include "player/LoadingSpinner.h"

#include <QPainter>

#include <cmath>
#include <numbers>

namespace {

constexpr int kDots = 12;
constexpr int kIntervalMs = 80;
constexpr int kSide = 40;

} // namespace

LoadingSpinner::LoadingSpinner(QWidget* parent)
    : QWidget(parent)
{
    setFixedSize(kSide, kSide);
    setAttribute(Qt::WA_TransparentForMouseEvents);
    m_timer.setInterval(kIntervalMs);
    connect(&m_timer, &QTimer::timeout, this, [this] {
        m_step = (m_step + 1) % kDots;
        update();
        emit stepped();
    });
}

void LoadingSpinner::startAnimation()
{
    m_timer.start();
}

void LoadingSpinner::stopAnimation()
{
    m_timer.stop();
}

void LoadingSpinner::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    const QPointF centre(width() / 2.0, height() / 2.0);
    const double radius = kSide * 0.36;
    for (int i = 0; i < kDots; ++i) {
        // The dot at the current step is brightest; the others fade behind it.
        const int age = (m_step - i + kDots) % kDots;
        QColor colour(0xf2, 0xf2, 0xf2);
        colour.setAlphaF(1.0 - 0.8 * age / double(kDots));
        painter.setBrush(colour);
        const double angle = 2.0 * std::numbers::pi * i / kDots;
        const QPointF at = centre + QPointF(std::sin(angle), -std::cos(angle)) * radius;
        painter.drawEllipse(at, kSide * 0.06, kSide * 0.06);
    }
}
