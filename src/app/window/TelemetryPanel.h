#pragma once

#include <QWidget>

class GravityGraphView;
class MapController;
class MapWindow;
class QLabel;
class QStackedWidget;
class SpeedMeterView;

// The telemetry row: the G-sensor graph with its X/Y/Z read-outs, the
// speedometer with the shock, earth and GPS indicators, and the map with the
// position read-outs (or the map's cover image when there is no position).
class TelemetryPanel : public QWidget {
    Q_OBJECT
public:
    explicit TelemetryPanel(QWidget* parent = nullptr);
    ~TelemetryPanel() override;

    // Creates the map page and starts loading it (once).
    void loadMap();
    void applyLanguageSettings();

    void setSensorTexts(const QString& gx, const QString& gy, const QString& gz, const QString& lat,
        const QString& lng);
    void setIndicatorImages(const QString& shockImage, const QString& earthImage);
    void setIndicatorsVisible(bool visible);
    void setGpsIndicatorVisible(bool visible);
    void setMapCovered(bool covered);
    bool isMapCovered() const;

    GravityGraphView* gravityGraphView() const { return m_gravityGraphView; }
    SpeedMeterView* speedMeterView() const { return m_speedMeterView; }
    MapController* mapController() const { return m_mapController; }
    // The map page's window, shown inside the panel through a window container.
    MapWindow* mapWindow() const { return m_mapWindow; }

private:
    QWidget* buildGraphColumn();
    QWidget* buildSpeedColumn();
    QWidget* buildMapColumn();
    QLabel* readout(const char* objectName);
    void showIndicator(QLabel* label, const QString& imageName);

    GravityGraphView* m_gravityGraphView = nullptr;
    SpeedMeterView* m_speedMeterView = nullptr;
    QLabel* m_gLabels[3] = {};
    QLabel* m_gxTextField = nullptr;
    QLabel* m_gyTextField = nullptr;
    QLabel* m_gzTextField = nullptr;
    QLabel* m_latLabel = nullptr;
    QLabel* m_lngLabel = nullptr;
    QLabel* m_latTextField = nullptr;
    QLabel* m_lngTextField = nullptr;
    QLabel* m_shockCarImageView = nullptr;
    QLabel* m_earthImageView = nullptr;
    QLabel* m_gpsImageView = nullptr;
    QStackedWidget* m_mapStack = nullptr;
    MapWindow* m_mapWindow = nullptr; // owned by m_mapView
    QWidget* m_mapView = nullptr;
    QLabel* m_mapCoverView = nullptr;
    MapController* m_mapController = nullptr;
    bool m_mapLoaded = false;
    bool m_indicatorsVisible = false;
    bool m_gpsVisible = false;
};
