#pragma once

#include <QObject>
#include <QPointer>
#include <QString>
#include <QWebEngineView>

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

    // Shows the map in `webView` (not owned).
    void initWithWebView(QWebEngineView* webView);
    // Drives any page, e.g. a recording double in tests.
    void initWithPage(std::unique_ptr<MapPage> page);
    QWebEngineView* webView() const { return m_webView; }

    // Loads the map page and asks it to initialise; the page receives the call
    // once it has loaded.
    void load();
    void run(const QString& script);
    void moveToLat(float lat, float lng);
    void addRoute(const TavroClipData& clipData);
    // The note the page shows when map tiles cannot be loaded (offline).
    void setOfflineText(const QString& text);

    // The tile URL template in use: environment, then settings, then OpenStreetMap.
    static QString tileUrl();

private:
    QPointer<QWebEngineView> m_webView;
    std::unique_ptr<MapPage> m_page;
};
