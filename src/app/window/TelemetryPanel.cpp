#include "app/window/TelemetryPanel.h"

#include "app/window/ViewerImages.h"
#include "display/GravityGraphView.h"
#include "display/MapController.h"
#include "display/MapWindow.h"
#include "display/SpeedMeterView.h"
#include "i18n/LocalizationKeys.h"
#include "i18n/TavroLanguages.h"
#include "style/TavroStyle.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QStackedWidget>
#include <QVBoxLayout>

namespace {

constexpr int kIndicatorSize = 30;
constexpr const char* kMapCoverImage = "mapview_cover.png";

QString localized(const char* key)
{
    return TavroLanguages::SharedTavroLanguages().localized(key);
}

QWidget* panel(QWidget* parent)
{
    auto* widget = new QWidget(parent);
    widget->setObjectName(QStringLiteral("panel"));
    widget->setAttribute(Qt::WA_StyledBackground);
    return widget;
}

// A cover label that redraws its image at its own size.
class CoverLabel : public QLabel {
public:
    using QLabel::QLabel;

protected:
    void resizeEvent(QResizeEvent* event) override
    {
        QLabel::resizeEvent(event);
        setPixmap(ViewerImages::pixmap(QLatin1String(kMapCoverImage), size(), devicePixelRatioF()));
    }
};

} // namespace

TelemetryPanel::TelemetryPanel(QWidget* parent)
    : QWidget(parent)
{
    setObjectName(QStringLiteral("telemetryPanel"));
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(8);
    layout->addWidget(buildGraphColumn(), 4);
    layout->addWidget(buildSpeedColumn(), 3);
    layout->addWidget(buildMapColumn(), 5);
    setIndicatorsVisible(false);
    setGpsIndicatorVisible(false);
    applyLanguageSettings();
}

TelemetryPanel::~TelemetryPanel() = default;

QLabel* TelemetryPanel::readout(const char* objectName)
{
    auto* label = new QLabel(QStringLiteral("0.000"), this);
    label->setObjectName(QLatin1String(objectName));
    label->setFont(TavroStyle::tabularFont());
    label->setStyleSheet(TavroStyle::withPalette(QStringLiteral("color: @text;")));
    label->setMinimumWidth(label->fontMetrics().horizontalAdvance(QStringLiteral("-000.0000")));
    return label;
}

QWidget* TelemetryPanel::buildGraphColumn()
{
    QWidget* column = panel(this);
    auto* layout = new QVBoxLayout(column);
    layout->setContentsMargins(8, 8, 8, 8);
    m_gravityGraphView = new GravityGraphView(column);
    m_gravityGraphView->setObjectName(QStringLiteral("gravityGraphView"));
    layout->addWidget(m_gravityGraphView, 1);
    auto* row = new QHBoxLayout;
    const char* names[] = { "gxTextField", "gyTextField", "gzTextField" };
    const char* axes[] = { "X", "Y", "Z" };
    const char* colours[] = { "#e5484d", "#f5d90a", "#3e8ef7" };
    QLabel** fields[] = { &m_gxTextField, &m_gyTextField, &m_gzTextField };
    for (int i = 0; i < 3; ++i) {
        m_gLabels[i] = new QLabel(QLatin1String(axes[i]), column);
        m_gLabels[i]->setStyleSheet(
            QStringLiteral("color: %1; font-weight: bold;").arg(QLatin1String(colours[i])));
        *fields[i] = readout(names[i]);
        row->addWidget(m_gLabels[i]);
        row->addWidget(*fields[i]);
        row->addStretch(1);
    }
    layout->addLayout(row);
    return column;
}

QWidget* TelemetryPanel::buildSpeedColumn()
{
    QWidget* column = panel(this);
    auto* layout = new QVBoxLayout(column);
    layout->setContentsMargins(8, 8, 8, 8);
    m_speedMeterView = new SpeedMeterView(column);
    m_speedMeterView->setObjectName(QStringLiteral("speedMeterView"));
    layout->addWidget(m_speedMeterView, 1);
    auto* row = new QHBoxLayout;
    row->addStretch(1);
    for (QLabel** label : { &m_shockCarImageView, &m_earthImageView, &m_gpsImageView }) {
        *label = new QLabel(column);
        (*label)->setFixedSize(kIndicatorSize, kIndicatorSize);
        row->addWidget(*label);
        row->addSpacing(6);
    }
    row->addStretch(1);
    m_shockCarImageView->setObjectName(QStringLiteral("shockCarImageView"));
    m_earthImageView->setObjectName(QStringLiteral("earthImageView"));
    m_gpsImageView->setObjectName(QStringLiteral("gpsImageView"));
    setIndicatorImages(QStringLiteral("shock_gage1"), QStringLiteral("earth1"));
    showIndicator(m_gpsImageView, QStringLiteral("gps"));
    layout->addLayout(row);
    return column;
}

QWidget* TelemetryPanel::buildMapColumn()
{
    QWidget* column = panel(this);
    auto* layout = new QVBoxLayout(column);
    layout->setContentsMargins(8, 8, 8, 8);
    m_mapStack = new QStackedWidget(column);
    m_mapCoverView = new CoverLabel(m_mapStack);
    m_mapCoverView->setObjectName(QStringLiteral("mapCoverView"));
    m_mapCoverView->setMinimumSize(160, 90);
    m_mapCoverView->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Ignored);
    m_mapWindow = new MapWindow;
    m_mapView = QWidget::createWindowContainer(m_mapWindow, m_mapStack);
    m_mapView->setObjectName(QStringLiteral("mapWebView"));
    m_mapView->setMinimumSize(160, 90);
    m_mapStack->addWidget(m_mapCoverView);
    m_mapStack->addWidget(m_mapView);
    m_mapStack->setCurrentWidget(m_mapCoverView);
    layout->addWidget(m_mapStack, 1);
    auto* row = new QHBoxLayout;
    m_latLabel = new QLabel(column);
    m_latLabel->setProperty("secondary", true);
    m_latTextField = readout("latTextField");
    m_lngLabel = new QLabel(column);
    m_lngLabel->setProperty("secondary", true);
    m_lngTextField = readout("lngTextField");
    m_latTextField->setText(QStringLiteral("0.0000"));
    m_lngTextField->setText(QStringLiteral("0.0000"));
    row->addWidget(m_latLabel);
    row->addWidget(m_latTextField);
    row->addSpacing(12);
    row->addWidget(m_lngLabel);
    row->addWidget(m_lngTextField);
    row->addStretch(1);
    layout->addLayout(row);
    m_mapController = new MapController(this);
    return column;
}

void TelemetryPanel::loadMap()
{
    if (m_mapLoaded)
        return;
    m_mapLoaded = true;
    m_mapController->initWithMapWindow(m_mapWindow);
    m_mapController->load();
}

void TelemetryPanel::applyLanguageSettings()
{
    using namespace LocalizationKeys;
    m_gravityGraphView->setToolTip(localized(kGSensor));
    for (QLabel* label : m_gLabels)
        label->setToolTip(localized(kGSensor));
    for (QLabel* field : { m_gxTextField, m_gyTextField, m_gzTextField })
        field->setToolTip(localized(kGSensor));
    m_speedMeterView->setToolTip(localized(kSpeed));
    m_shockCarImageView->setToolTip(localized(kImpactIndicator));
    m_earthImageView->setToolTip(localized(kGpsIndicator));
    m_gpsImageView->setToolTip(localized(kGpsIndicator));
    m_latLabel->setText(localized(kLatitude));
    m_mapController->setOfflineText(localized(kMapOffline));
    m_lngLabel->setText(localized(kLongitude));
    m_latTextField->setToolTip(localized(kLatitude));
    m_lngTextField->setToolTip(localized(kLongitude));
    m_mapCoverView->setToolTip(localized(kNoPosition));
}

void TelemetryPanel::setSensorTexts(
    const QString& gx, const QString& gy, const QString& gz, const QString& lat, const QString& lng)
{
    m_gxTextField->setText(gx);
    m_gyTextField->setText(gy);
    m_gzTextField->setText(gz);
    m_latTextField->setText(lat);
    m_lngTextField->setText(lng);
}

void TelemetryPanel::showIndicator(QLabel* label, const QString& imageName)
{
    label->setPixmap(ViewerImages::pixmap(imageName, label->size(), label->devicePixelRatioF()));
    label->setProperty("imageName", imageName);
}

void TelemetryPanel::setIndicatorImages(const QString& shockImage, const QString& earthImage)
{
    showIndicator(m_shockCarImageView, shockImage);
    showIndicator(m_earthImageView, earthImage);
}

void TelemetryPanel::setIndicatorsVisible(bool visible)
{
    m_indicatorsVisible = visible;
    // Hidden indicators keep their place so that the row does not jump.
    for (QLabel* label : { m_shockCarImageView, m_earthImageView }) {
        QSizePolicy policy = label->sizePolicy();
        policy.setRetainSizeWhenHidden(true);
        label->setSizePolicy(policy);
        label->setVisible(visible);
    }
    QSizePolicy policy = m_speedMeterView->sizePolicy();
    policy.setRetainSizeWhenHidden(true);
    m_speedMeterView->setSizePolicy(policy);
    m_speedMeterView->setVisible(visible);
    setGpsIndicatorVisible(m_gpsVisible);
}

void TelemetryPanel::setGpsIndicatorVisible(bool visible)
{
    m_gpsVisible = visible;
    QSizePolicy policy = m_gpsImageView->sizePolicy();
    policy.setRetainSizeWhenHidden(true);
    m_gpsImageView->setSizePolicy(policy);
    m_gpsImageView->setVisible(visible && m_indicatorsVisible);
}

void TelemetryPanel::setMapCovered(bool covered)
{
    m_mapStack->setCurrentWidget(covered ? static_cast<QWidget*>(m_mapCoverView) : m_mapView);
}

bool TelemetryPanel::isMapCovered() const
{
    return m_mapStack->currentWidget() == m_mapCoverView;
}
