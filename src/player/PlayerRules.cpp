#include "player/PlayerRules.h"

#include <cmath>

namespace PlayerRules {

float nextFastForwardRate(float rate)
{
    if (!(rate >= 2.0f))
        return 2.0f;
    return rate + 2.0f;
}

float nextRewindRate(float rate)
{
    if (!(rate <= -2.0f))
        return -2.0f;
    return rate - 2.0f;
}

double wholeSecondSeekTarget(double seconds)
{
    if (!std::isfinite(seconds))
        return 0.0;
    return std::round(seconds);
}

long long timeObserverSlot(double seconds)
{
    if (!std::isfinite(seconds))
        return 0;
    return static_cast<long long>(std::floor(seconds * 10.0 + 1e-6));
}

double snapshotTime(double durationSeconds)
{
    if (!std::isfinite(durationSeconds) || durationSeconds <= 0.0)
        return 0.0;
    return std::trunc(durationSeconds) / 1000000.0;
}

} // namespace PlayerRules
