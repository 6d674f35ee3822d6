#include "DemoTimeline.h"

#include <cmath>

DemoTimeline::DemoTimeline(std::uint64_t seed)
    : m_seed(seed)
    // Departure at 08:15:00 local time (UTC+9) on 14 May 2026.
    , m_departureUtc(QDate(2026, 5, 13), QTime(23, 15, 0), Qt::UTC)
{
}

void DemoTimeline::addImpact(const Impact& impact)
{
    m_impacts.push_back(impact);
    if (impact.hardStop)
        m_drive.reset(); // drive again with the new stop
}

const DriveSimulation& DemoTimeline::drive() const
{
    if (!m_drive) {
        QVector<double> hardStops;
        for (const Impact& impact : m_impacts)
            if (impact.hardStop)
                hardStops.push_back(impact.atSeconds);
        m_drive.emplace(m_seed, hardStops);
    }
    return *m_drive;
}

DriveState DemoTimeline::at(double seconds) const
{
    DriveState state = drive().stateAt(seconds);
    for (const Impact& impact : m_impacts) {
        const double dt = seconds - impact.atSeconds;
        if (dt < 0 || dt > 0.8)
            continue;
        // A sharp jolt that rings out within a fraction of a second.
        const double ring = impact.strength * std::exp(-dt * 7.0) * std::cos(2 * M_PI * 5.0 * dt);
        state.gy -= ring;
        state.gx += 0.45 * ring;
        state.gz += 0.3 * ring;
    }
    return state;
}

QDateTime DemoTimeline::utcAt(double seconds) const
{
    return m_departureUtc.addMSecs(qint64(std::floor(seconds * 1000.0)));
}

QDateTime DemoTimeline::localTimeAt(double seconds) const
{
    return utcAt(seconds).toOffsetFromUtc(kUtcOffsetSeconds);
}
