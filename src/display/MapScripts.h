#pragma once

#include <QPointF>
#include <QString>
#include <QUrl>
#include <QVector>

class TavroClipData;

// The script texts the viewer sends to its map page, and the page's address.
// The page offers initialize(), addPolyLine(points, colour, width, opacity)
// and MapMoveToAuto(lng, lat, zoom); points travel as "lng,lat|lng,lat|...".
namespace MapScripts {

inline constexpr const char* kInitializeScript = "initialize()";
inline constexpr const char* kMapPageUrl = "qrc:/map/mapview.html";
inline constexpr const char* kDefaultTileUrl = "https://tile.openstreetmap.org/{z}/{x}/{y}.png";

// "MapMoveToAuto(<lng>,<lat>,-1)" with six decimals, longitude first.
QString moveToScript(float lat, float lng);

// The route of a clip as one addPolyLine call in red, width 4, opacity 0.5.
// It walks the first gpsDataCount samples and drops a point only when it
// equals the one before, so the camera's no-fix samples at the start (0, 0)
// vanish and a route that comes back to a place repeats it.
QString routeScript(const TavroClipData& clipData);
// The same call for points given as (longitude, latitude): a trip's route.
QString routeScript(const QVector<QPointF>& points);

// "setOfflineText(<text as a script string>)": the note the page shows when
// no map tile can be loaded.
QString offlineTextScript(const QString& text);

// The page address; a tile URL template other than the default travels as
// the "tiles" query item.
QUrl pageUrl(const QString& tileUrl = QString());

} // namespace MapScripts
