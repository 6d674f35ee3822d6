// Rules shared by the real and the scripted player view.
#include "player/PlayerRules.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

TEST(PlayerRules, RatesSeeksAndTimeSlots)
{
    const float nan = std::numeric_limits<float>::quiet_NaN();
    // From below 2 (or NaN) fast forward starts at 2, then adds 2; rewind mirrors it.
    const std::tuple<float, float, float> rates[] = { { 0.0f, 2.0f, -2.0f }, { 1.99f, 2.0f, -2.0f },
        { 2.0f, 4.0f, -2.0f }, { 10.0f, 12.0f, -2.0f }, { -1.99f, 2.0f, -2.0f },
        { -2.0f, 2.0f, -4.0f }, { -6.0f, 2.0f, -8.0f }, { nan, 2.0f, -2.0f } };
    for (const auto& [rate, forward, backward] : rates) {
        EXPECT_EQ(PlayerRules::nextFastForwardRate(rate), forward) << rate;
        EXPECT_EQ(PlayerRules::nextRewindRate(rate), backward) << rate;
    }
    const double inf = std::numeric_limits<double>::infinity();
    const std::pair<double, double> seeks[] = { { 12.7, 13 }, { 12.5, 13 }, { 12.49, 12 },
        { 0.4, 0 }, { 59.99, 60 }, { nan, 0 }, { inf, 0 } };
    for (const auto& [in, out] : seeks)
        EXPECT_EQ(PlayerRules::wholeSecondSeekTarget(in), out) << in;
    const std::pair<double, long long> tenths[]
        = { { 0.0, 0 }, { 0.09, 0 }, { 0.1, 1 }, { 0.3, 3 }, { 12.34, 123 }, { -inf, 0 } };
    for (const auto& [in, out] : tenths) // 0.3 * 10 is 2.9999999999999996
        EXPECT_EQ(PlayerRules::timeObserverSlot(in), out) << in;
    // The whole seconds of the duration, counted in microseconds.
    EXPECT_DOUBLE_EQ(PlayerRules::snapshotTime(60.5), 60e-6);
    EXPECT_EQ(PlayerRules::snapshotTime(0.0), 0.0);
    EXPECT_EQ(PlayerRules::snapshotTime(-3.0), 0.0);
    EXPECT_EQ(PlayerRules::snapshotTime(nan), 0.0);
}
