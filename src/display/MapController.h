#pragma once

#include "display/MapWindow.h"

#include <QObject>
#include <QPointF>
#include <QPointer>
#include <QString>
#include <QVector>

#include <memory>

class MapPage;
class TavroClipData;

// Drives the map page of the main window: loads it, draws a clip's route and
// follows the current position during playback. It only sends script calls
// and never reads anything back; the last position sent is the playback
// session's business.
class MapController : public QObject {
    Q_OBJECT
public:
    // Settings key and environment variable for another tile server
    // ("https://host/{z}/{x}/{y}.png").
    static constexpr const char* kTileUrlKey = "TavroViewerMapTileUrl";
    static constexpr const char* kTileUrlEnvironment = "TAVRO_MAP_TILE_URL";

    explicit MapController(QObject* parent = nullptr);
    ~MapController() override;

    // Shows the map in `window` (not owned).
    void initWithMapWindow(MapWindow* window);
    // Drives any page, e.g. a recording double in tests.
    void initWithPage(std::unique_ptr<MapPage> page);
    MapWindow* mapWindow() const { return m_window; }

    // Loads the map page and asks it to initialise; the page receives the call
    // once it has loaded.
    void load();
    void run(const QString& script);
    void moveToLat(float lat, float lng);
    void addRoute(const TavroClipData& clipData);
    // A route of several clips, points as (longitude, latitude).
    void addRoute(const QVector<QPointF>& points);
    // The note the page shows when map tiles cannot be loaded (offline).
    void setOfflineText(const QString& text);

    // The tile URL template in use: environment, then settings, then OpenStreetMap.
    static QString tileUrl();

private:
    MapPage* page() const;

    QPointer<MapWindow> m_window;
    std::unique_ptr<MapPage> m_ownedPage;
};
