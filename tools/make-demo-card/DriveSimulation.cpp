#include "DriveSimulation.h"

#include "DemoRandom.h"
#include "DemoRoute.h"

#include <algorithm>
#include <cmath>
#include <tuple>
#include <utility>

namespace {

constexpr double kGravity = 9.81;
constexpr double kUnitsPerG = 128.0;
constexpr double kCornerMetres = 25.0; // a turn is spread over this distance either side
constexpr double kLookAheadMetres = 700.0;
constexpr double kComfortBrake = 1.8; // m/s² when slowing for a slower road
constexpr double kStopBrake = 2.2; // m/s² when stopping at a light
constexpr double kMaxJerk = 5.0; // m/s³
constexpr double kHardBrake = 6.5; // m/s², an emergency stop
constexpr double kHardStopSeconds = 1.4; // braking before the knock

double headingDeg(const RoutePoint& a, const RoutePoint& b)
{
    const double dy = b.lat - a.lat;
    const double dx = (b.lng - a.lng) * std::cos(a.lat * M_PI / 180.0);
    const double deg = std::atan2(dx, dy) * 180.0 / M_PI;
    return deg < 0 ? deg + 360.0 : deg;
}

double angleBlend(double from, double to, double f)
{
    double delta = std::fmod(to - from + 540.0, 360.0) - 180.0;
    double result = from + delta * f;
    return std::fmod(result + 360.0, 360.0);
}

double angleDelta(double from, double to)
{
    return std::fmod(to - from + 540.0, 360.0) - 180.0;
}

// The route as a line with distances along it.
struct RoutePath {
    QVector<RoutePoint> points;
    QVector<double> along; // distance of each point from the start
    QVector<double> heading; // heading of the segment that starts at each point

    RoutePath()
        : points(DemoRoute::points())
    {
        along.push_back(0);
        for (int i = 1; i < points.size(); ++i)
            along.push_back(along.back()
                + DemoRoute::distanceMetres(
                    points[i - 1].lat, points[i - 1].lng, points[i].lat, points[i].lng));
        for (int i = 0; i + 1 < points.size(); ++i)
            heading.push_back(headingDeg(points[i], points[i + 1]));
        heading.push_back(heading.back());
    }
    int last() const { return int(points.size()) - 1; }
    double length() const { return along.back(); }
    int segmentAt(double s) const
    {
        const auto it = std::upper_bound(along.begin(), along.end(), s);
        return std::clamp(int(it - along.begin()) - 1, 0, last() - 1);
    }
    // Latitude and longitude `s` metres along the route.
    std::pair<double, double> position(double s) const
    {
        const int i = segmentAt(s);
        const double span = along[i + 1] - along[i];
        const double f = span > 0 ? std::clamp((s - along[i]) / span, 0.0, 1.0) : 0.0;
        return { points[i].lat + (points[i + 1].lat - points[i].lat) * f,
            points[i].lng + (points[i + 1].lng - points[i].lng) * f };
    }
    double course(double s) const
    {
        const int i = segmentAt(s);
        if (i > 0 && s - along[i] < kCornerMetres)
            return angleBlend(
                heading[i - 1], heading[i], 0.5 + (s - along[i]) / (2 * kCornerMetres));
        if (i + 1 < last() && along[i + 1] - s < kCornerMetres)
            return angleBlend(
                heading[i], heading[i + 1], 0.5 - (along[i + 1] - s) / (2 * kCornerMetres));
        return heading[i];
    }
};

// How long the car waits at each point: the red lights. The first light is
// always red, so every drive has a stop early on.
QVector<double> redLightWaits(const RoutePath& path, DemoRandom& random)
{
    QVector<double> waits(path.points.size(), 0.0);
    bool first = true;
    for (int i = 0; i < path.points.size(); ++i) {
        if (path.points[i].trafficLight && (first || random.unit() < 0.55))
            waits[i] = random.between(8.0, 20.0);
        first = first && !path.points[i].trafficLight;
    }
    return waits;
}

// The next point where the car must stand: a red light ahead, or the end.
int nextStop(const RoutePath& path, const QVector<double>& waits, double s)
{
    for (int i = path.segmentAt(s) + 1; i < path.points.size(); ++i)
        if (waits[i] > 0 && path.along[i] > s - 0.5)
            return i;
    return path.last();
}

// What the driver asks of the car: the road's limit (a little under it, as
// drivers do), slowing in time for slower roads, and braking to stand
// `gap` metres ahead.
double wantedAcceleration(const RoutePath& path, double s, double v, double gap, double wobble)
{
    const int seg = path.segmentAt(s);
    double target = path.points[seg].limitKmh / 3.6 * wobble;
    for (int j = seg + 1; j < path.points.size() && path.along[j] - s < kLookAheadMetres; ++j) {
        const double vj = path.points[j].limitKmh / 3.6;
        target = std::min(target, std::sqrt(vj * vj + 2 * kComfortBrake * (path.along[j] - s)));
    }
    const double maxAccel = std::max(0.6, 2.3 - v / 14.0);
    double wanted = std::clamp((target - v) * 0.7, -3.5, maxAccel);
    // The deceleration that ends exactly at the line: brake once it is
    // needed and keep it up until the car stands.
    const double needed = gap > 0.05 ? v * v / (2 * gap) : 4.0;
    if (needed >= kStopBrake)
        wanted = std::min(wanted, -std::min(needed, 4.5));
    else if (gap < 4.0)
        wanted = std::min(wanted, 0.5 - v); // creep up to the line
    return wanted;
}

// What the sensors feel: turning pushes sideways, speeding up and braking
// along the car, and the road shakes it more the faster it goes.
DriveState sensorState(
    const RoutePath& path, double s, double v, double a, double yawRate, DemoRandom& random)
{
    DriveState state;
    std::tie(state.lat, state.lng) = path.position(s);
    state.speedKmh = v * 3.6;
    state.courseDeg = path.course(s);
    const double shake = 0.6 + v / 6.0;
    state.gx = v * yawRate / kGravity * kUnitsPerG + random.between(-shake, shake);
    state.gy = a / kGravity * kUnitsPerG + random.between(-shake, shake);
    state.gz = kUnitsPerG + random.between(-1.5 * shake, 1.5 * shake);
    return state;
}

} // namespace

DriveSimulation::DriveSimulation(std::uint64_t seed, const QVector<double>& hardStops)
{
    simulate(seed, hardStops);
}

void DriveSimulation::simulate(std::uint64_t seed, const QVector<double>& hardStops)
{
    const RoutePath path;
    DemoRandom random(seed);
    QVector<double> waits = redLightWaits(path, random);
    const double wobblePhase = random.between(0, 6.28);
    const double dt = kStepSeconds;
    double s = 0, v = 0, a = 0, t = 0, holdUntil = -1;
    double lastCourse = path.course(0);
    // 20 steps a second until the car parks (an hour at most, as a safety net).
    while (t < 3600) {
        const int stopAt = nextStop(path, waits, s);
        const double gap = path.along[stopAt] - s - 1.5; // stand a metre and a half before the line
        if (t >= holdUntil && gap < 1.0 && v < 0.3) {
            if (stopAt == path.last())
                break;
            v = a = 0;
            holdUntil = t + waits[stopAt];
            waits[stopAt] = 0; // once green, drive on
        }
        double wanted = t < holdUntil
            ? 0.0
            : wantedAcceleration(path, s, v, gap, 0.955 + 0.045 * std::sin(t / 13.0 + wobblePhase));
        for (const double stopTime : hardStops)
            if (t >= stopTime - kHardStopSeconds && t < stopTime + 0.2)
                wanted = -kHardBrake;
        // Pedals move smoothly, except when the driver brakes for a line.
        a = wanted < -kStopBrake ? wanted
                                 : std::clamp(wanted, a - kMaxJerk * dt, a + kMaxJerk * dt);
        v = std::max(0.0, v + a * dt);
        if (v == 0 && a < 0)
            a = 0;
        s = std::min(path.length(), s + v * dt);
        t += dt;
        const double course = path.course(s);
        const double yawRate = angleDelta(lastCourse, course) * M_PI / 180.0 / dt;
        lastCourse = course;
        m_states.push_back(sensorState(path, s, v, a, yawRate, random));
    }
    m_parked.lat = path.points.back().lat;
    m_parked.lng = path.points.back().lng;
    m_parked.courseDeg = path.heading.back();
}

DriveState DriveSimulation::stateAt(double seconds) const
{
    const qsizetype index = qsizetype(std::floor(seconds / kStepSeconds + 0.5));
    if (index >= 0 && index < m_states.size())
        return m_states[index];
    if (index < 0 && !m_states.isEmpty()) {
        DriveState start = m_states.front();
        start.speedKmh = 0;
        start.gx = start.gy = 0;
        start.gz = 128;
        return start;
    }
    // Parked: the body barely moves; a fixed pattern keeps the output stable.
    DriveState parked = m_parked;
    parked.gx = std::sin(double(index) * 0.7);
    parked.gy = std::cos(double(index) * 1.3);
    parked.gz = 128 + std::sin(double(index) * 2.1);
    return parked;
}
