#pragma once

#include "display/SpeedReadout.h"
#include "display/SpeedUnit.h"

#include <QString>
#include <QWidget>

#include <array>
#include <memory>

class QSvgRenderer;

// The speedometer of the telemetry row: three seven-segment digits, a 24-step
// bar gauge and the unit label, drawn from the application's SVG images. It
// is handed the current sample's speed in km/h and shows it in the user's unit.
class SpeedMeterView : public QWidget, public SpeedUnitDisplay {
    Q_OBJECT
public:
    static constexpr int kGaugeCount = SpeedReadout::kGaugeSegments;

    explicit SpeedMeterView(QWidget* parent = nullptr);
    ~SpeedMeterView() override;

    void setSpeed(int kmh) override;
    int speed() const override { return m_speed; }
    // Lights segments 1..(shown / 10), at most all 24.
    void setSpeedGauge(int shown);

    // What the image views show: the digit image names ("0".."9") or an empty
    // name where the image is cleared, and the segment / label visibility.
    QString number1() const { return m_number1; }
    QString number10() const { return m_number10; }
    QString number100() const { return m_number100; }
    bool isSpeedUnitImageVisible() const { return m_speedUnitImageVisible; }
    bool isGaugeVisible(int segment) const; // segment 1..24
    int visibleGaugeCount() const;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;
    bool hasHeightForWidth() const override { return true; }
    int heightForWidth(int width) const override { return width / 2; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QSvgRenderer* renderer(const QString& imageName) const;
    void drawImage(QPainter& painter, const QString& imageName, const QRectF& rect) const;
    void drawDigit(QPainter& painter, const QString& imageName, int slot) const;
    void drawGauge(QPainter& painter) const;

    int m_speed = 0;
    QString m_number1;
    QString m_number10;
    QString m_number100;
    bool m_speedUnitImageVisible = false;
    std::array<bool, kGaugeCount> m_gaugeList {};
    struct Images;
    std::unique_ptr<Images> m_images;
};
