#pragma once

#include "export/RouteTrips.h"

#include <QIODevice>
#include <QString>
#include <QVector>

#include <optional>

// The documents a route export writes. Numbers are always in the C locale;
// times are UTC with milliseconds ("2024-03-15T08:15:02.100Z").
enum class RouteFormat {
    Gpx, // GPX 1.1: a <trk> per trip, a <trkseg> per clip, positions only
    Kml, // KML 2.2: a Placemark per trip, gx:Track with times, else a LineString
    GeoJson, // RFC 7946 FeatureCollection: a Feature per clip with positions
    Csv, // every sample: file,utc,t,gx,gy,gz,lat,lng,speed_kmh
};

namespace RouteWriters {

// "gpx", "kml", "geojson", "csv" (the file suffix too) and back.
QString formatName(RouteFormat format);
std::optional<RouteFormat> formatFromName(const QString& name);

// True when the trips hold something the format can show: a position for
// GPX, KML and GeoJSON, any sample for CSV.
bool hasContent(RouteFormat format, const QVector<RouteTrip>& trips);

// Writes the whole document; false when the device refused a write.
bool write(RouteFormat format, const QVector<RouteTrip>& trips, QIODevice& out);

bool writeGpx(const QVector<RouteTrip>& trips, QIODevice& out);
bool writeKml(const QVector<RouteTrip>& trips, QIODevice& out);
bool writeGeoJson(const QVector<RouteTrip>& trips, QIODevice& out);
bool writeCsv(const QVector<RouteTrip>& trips, QIODevice& out);

// Shared by the writers.
QString utcText(int64_t utcMsecs); // empty for kNoUtcMsecs
QString degreesText(double degrees); // seven decimals
QString tripName(const RouteTrip& trip);

} // namespace RouteWriters
