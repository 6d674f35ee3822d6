#include "DemoRoute.h"

#include <cmath>

namespace DemoRoute {

const QVector<RoutePoint>& points()
{
    // Town streets, then the arterial road south, the expressway, and the
    // streets of the next town. A light at most junctions.
    static const QVector<RoutePoint> kPoints {
        { 37.393950, 126.956420, QStringLiteral("Parking lot"), 15, false },
        { 37.393650, 126.956050, QStringLiteral("Simin-daero"), 50, false },
        { 37.391200, 126.959400, QStringLiteral("Simin-daero"), 50, true },
        { 37.386500, 126.958800, QStringLiteral("Gwanpyeong-ro"), 60, true },
        { 37.381900, 126.962100, QStringLiteral("Gwanpyeong-ro"), 60, false },
        { 37.377200, 126.962400, QStringLiteral("Gyeongsu-daero"), 70, true },
        { 37.369500, 126.965300, QStringLiteral("Gyeongsu-daero"), 70, false },
        { 37.362600, 126.968100, QStringLiteral("Expressway on-ramp"), 50, true },
        { 37.360900, 126.970400, QStringLiteral("Expressway"), 100, false },
        { 37.346200, 126.972400, QStringLiteral("Expressway"), 100, false },
        { 37.332500, 126.978600, QStringLiteral("Expressway"), 100, false },
        { 37.318400, 126.986100, QStringLiteral("Expressway"), 100, false },
        { 37.301800, 126.996400, QStringLiteral("Expressway off-ramp"), 50, false },
        { 37.298700, 126.999900, QStringLiteral("Suseong-ro"), 60, true },
        { 37.288300, 127.006900, QStringLiteral("Suseong-ro"), 60, true },
        { 37.279400, 127.013700, QStringLiteral("Jangan-ro"), 50, true },
        { 37.271800, 127.018600, QStringLiteral("Jangan-ro"), 50, false },
        { 37.268600, 127.022900, QStringLiteral("Hwaseomun-ro"), 40, true },
        { 37.266200, 127.025200, QStringLiteral("Market street"), 30, false },
        { 37.264900, 127.027300, QStringLiteral("Car park"), 10, false },
        { 37.264700, 127.027700, QStringLiteral("Car park"), 10, false },
    };
    return kPoints;
}

double distanceMetres(double lat1, double lng1, double lat2, double lng2)
{
    constexpr double kMetresPerDegree = 111320.0;
    const double midLat = (lat1 + lat2) / 2 * M_PI / 180.0;
    const double dy = (lat2 - lat1) * kMetresPerDegree;
    const double dx = (lng2 - lng1) * kMetresPerDegree * std::cos(midLat);
    return std::hypot(dx, dy);
}

} // namespace DemoRoute
