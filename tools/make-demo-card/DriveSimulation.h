#pragma once

#include <QVector>

#include <cstdint>

// What the camera's sensors see at one moment of the drive.
struct DriveState {
    double lat = 0;
    double lng = 0;
    double speedKmh = 0;
    double courseDeg = 0;
    // Acceleration in 1/128 g: x across the car (right positive), y along it
    // (forward positive), z up (gravity reads +128).
    double gx = 0;
    double gy = 0;
    double gz = 128;
};

// Drives the demo route once, 20 steps a second: accelerates to each road's
// limit, slows for slower roads and for red lights, waits at the lights, and
// parks at the end. Lights, waits and road vibration come from the seed.
class DriveSimulation {
public:
    static constexpr double kStepSeconds = 0.05;

    // `hardStops`: moments at which the driver stamps on the brake (an
    // emergency stop that ends in a knock).
    DriveSimulation(std::uint64_t seed, const QVector<double>& hardStops);

    // The state at `seconds` after departure; after arrival the car stands
    // parked (engine off, GPS still fixed) for ever.
    DriveState stateAt(double seconds) const;
    double driveSeconds() const { return m_states.size() * kStepSeconds; }

private:
    void simulate(std::uint64_t seed, const QVector<double>& hardStops);

    QVector<DriveState> m_states;
    DriveState m_parked;
};
