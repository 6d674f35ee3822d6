#include "display/SpeedMeterView.h"

#include <QHash>
#include <QPainter>
#include <QSvgRenderer>
#include <algorithm>

namespace {

// The face is drawn on a 240 x 120 grid and scaled to the view, centred.
constexpr qreal kFaceWidth = 240.0;
constexpr qreal kFaceHeight = 120.0;
const QRectF kFaceRect(0, 0, kFaceWidth, kFaceHeight);
// Digit slots, hundreds first.
constexpr qreal kDigitTop = 10.0;
constexpr qreal kDigitWidth = 40.0;
constexpr qreal kDigitHeight = 64.0;
constexpr std::array<qreal, 3> kDigitLeft { 24.0, 66.0, 108.0 };
const QRectF kUnitLabelRect(160, 52, 60, 26);
// The telemetry panel behind the face's rounded corners.
const QColor kPanelColour(0x1f, 0x22, 0x26);

const QString kPanelImage = QStringLiteral("speed_panel");
const QString kUnlitDigitImage = QStringLiteral("speed_digit_off");
const QString kMphImage = QStringLiteral("speed_mph");
const QString kGaugeImage = QStringLiteral("speed_gauge");
const QString kGaugeOffElement = QStringLiteral("gauge_off");

QString digitImageName(int digit)
{
    return digit == SpeedReadout::kNoDigit ? QString() : QString::asprintf("%d", digit);
}

QString gaugeElement(int segment)
{
    return QString::asprintf("gauge%02d", segment);
}

} // namespace

struct SpeedMeterView::Images {
    QHash<QString, QSvgRenderer*> renderers;
    ~Images() { qDeleteAll(renderers); }
};

SpeedMeterView::SpeedMeterView(QWidget* parent)
    : QWidget(parent)
    , m_images(std::make_unique<Images>())
{
    QSizePolicy policy(QSizePolicy::Preferred, QSizePolicy::Preferred);
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
    setAttribute(Qt::WA_OpaquePaintEvent);
}

SpeedMeterView::~SpeedMeterView() = default;

void SpeedMeterView::setSpeed(int kmh)
{
    m_speed = kmh;
    const SpeedReadout readout = SpeedReadout::forSpeed(kmh, SpeedUnit::storedSpeedUnit());
    m_speedUnitImageVisible = readout.mph;
    setSpeedGauge(readout.shown);
    m_number1 = digitImageName(readout.number1);
    m_number10 = digitImageName(readout.number10);
    m_number100 = digitImageName(readout.number100);
    update();
}

void SpeedMeterView::setSpeedGauge(int shown)
{
    const int lit = SpeedReadout::gaugeSegmentsFor(shown);
    for (int k = 1; k <= kGaugeCount; ++k)
        m_gaugeList[k - 1] = k <= lit;
    update();
}

bool SpeedMeterView::isGaugeVisible(int segment) const
{
    return segment >= 1 && segment <= kGaugeCount && m_gaugeList[segment - 1];
}

int SpeedMeterView::visibleGaugeCount() const
{
    return static_cast<int>(std::count(m_gaugeList.begin(), m_gaugeList.end(), true));
}

QSize SpeedMeterView::sizeHint() const
{
    return { 240, 120 };
}

QSize SpeedMeterView::minimumSizeHint() const
{
    return { 160, 80 };
}

QSvgRenderer* SpeedMeterView::renderer(const QString& imageName) const
{
    auto it = m_images->renderers.constFind(imageName);
    if (it != m_images->renderers.constEnd())
        return it.value();
    auto* svg = new QSvgRenderer(QStringLiteral(":/images/%1.svg").arg(imageName));
    m_images->renderers.insert(imageName, svg);
    return svg;
}

void SpeedMeterView::drawImage(
    QPainter& painter, const QString& imageName, const QRectF& rect) const
{
    QSvgRenderer* svg = renderer(imageName);
    if (svg->isValid())
        svg->render(&painter, rect);
}

void SpeedMeterView::drawDigit(QPainter& painter, const QString& imageName, int slot) const
{
    const QRectF rect(kDigitLeft[slot], kDigitTop, kDigitWidth, kDigitHeight);
    drawImage(painter, kUnlitDigitImage, rect);
    if (!imageName.isEmpty())
        drawImage(painter, imageName, rect);
}

void SpeedMeterView::drawGauge(QPainter& painter) const
{
    QSvgRenderer* svg = renderer(kGaugeImage);
    if (!svg->isValid())
        return;
    // The gauge artwork shares the face's grid, so element bounds are face units.
    svg->render(&painter, kGaugeOffElement, svg->boundsOnElement(kGaugeOffElement));
    for (int k = 1; k <= kGaugeCount; ++k) {
        if (m_gaugeList[k - 1])
            svg->render(&painter, gaugeElement(k), svg->boundsOnElement(gaugeElement(k)));
    }
}

void SpeedMeterView::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.fillRect(rect(), kPanelColour);
    painter.setRenderHint(QPainter::Antialiasing);
    const qreal scale = std::min(width() / kFaceWidth, height() / kFaceHeight);
    painter.translate((width() - kFaceWidth * scale) / 2.0, (height() - kFaceHeight * scale) / 2.0);
    painter.scale(scale, scale);

    drawImage(painter, kPanelImage, kFaceRect);
    drawDigit(painter, m_number100, 0);
    drawDigit(painter, m_number10, 1);
    drawDigit(painter, m_number1, 2);
    if (m_speedUnitImageVisible)
        drawImage(painter, kMphImage, kUnitLabelRect);
    drawGauge(painter);
}
