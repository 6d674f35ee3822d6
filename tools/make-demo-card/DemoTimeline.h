#pragma once

#include "DriveSimulation.h"

#include <QDateTime>
#include <QVector>

#include <cstdint>
#include <optional>

// A knock the G-sensor feels: a hard stop, a pothole, a car bumping into
// ours while it is parked.
struct Impact {
    double atSeconds = 0;
    double strength = 300; // peak in 1/128 g
    bool hardStop = false; // the driver brakes hard just before it
};

// The day of the demo card: the drive with its clock and the knocks of the
// event clips. Every clip is cut from this one timeline, so consecutive clips
// continue each other's route.
class DemoTimeline {
public:
    explicit DemoTimeline(std::uint64_t seed);

    // Drive state plus the knocks felt at that moment.
    DriveState at(double seconds) const;
    void addImpact(const Impact& impact);

    // The camera's clock (local time) and the GPS clock (UTC).
    QDateTime localTimeAt(double seconds) const;
    QDateTime utcAt(double seconds) const;
    double driveSeconds() const { return drive().driveSeconds(); }

    static constexpr int kUtcOffsetSeconds = 9 * 3600;

private:
    // The drive is simulated on first use, with the hard stops known by then.
    const DriveSimulation& drive() const;

    std::uint64_t m_seed;
    mutable std::optional<DriveSimulation> m_drive;
    QVector<Impact> m_impacts;
    QDateTime m_departureUtc;
};
