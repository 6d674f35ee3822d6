#pragma once

#include <QString>
#include <QVector>

// The drive the demo card was recorded on: from a parking lot in one town,
// through its streets, over an arterial road and an expressway, to a street
// in the next town, where the car parks.
struct RoutePoint {
    double lat = 0;
    double lng = 0;
    QString road; // the road that starts at this point
    double limitKmh = 50; // the speed limit of that road
    bool trafficLight = false; // the car may have to stop here
};

namespace DemoRoute {

// The way points in driving order; the last one is where the car parks.
const QVector<RoutePoint>& points();

// Flat-earth metres between two points (good enough over a few kilometres).
double distanceMetres(double lat1, double lng1, double lat2, double lng2);

} // namespace DemoRoute
