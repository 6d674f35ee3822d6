// Rules shared by the real and the scripted player view, and the status names.
#include "player/PlayerRules.h"
#include "player/TavroAVViewStatus.h"

#include <QSet>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <vector>

namespace {

void expectSteps(float start, float (*next)(float), const std::vector<float>& expected)
{
    float rate = start;
    for (float want : expected) {
        rate = next(rate);
        EXPECT_FLOAT_EQ(rate, want) << "from " << start;
    }
}

} // namespace

TEST(PlayerRules, FastForwardAndRewindStepByTwo)
{
    expectSteps(0.0f, PlayerRules::nextFastForwardRate, { 2, 4, 6, 8, 10, 12 });
    expectSteps(1.0f, PlayerRules::nextFastForwardRate, { 2, 4 });
    expectSteps(-4.0f, PlayerRules::nextFastForwardRate, { 2, 4 });
    expectSteps(1.99f, PlayerRules::nextFastForwardRate, { 2 });
    expectSteps(
        std::numeric_limits<float>::quiet_NaN(), PlayerRules::nextFastForwardRate, { 2, 4 });
    expectSteps(1.0f, PlayerRules::nextRewindRate, { -2, -4, -6 });
    expectSteps(6.0f, PlayerRules::nextRewindRate, { -2, -4 });
    expectSteps(-1.5f, PlayerRules::nextRewindRate, { -2 });
    expectSteps(std::numeric_limits<float>::quiet_NaN(), PlayerRules::nextRewindRate, { -2 });
}

TEST(PlayerRules, SeeksLandOnWholeSeconds)
{
    const std::pair<double, double> cases[] = {
        { 12.7, 13 },
        { 12.5, 13 },
        { 12.49, 12 },
        { 0.0, 0 },
        { 0.4, 0 },
        { 59.99, 60 },
        { 3.0, 3 },
        { std::numeric_limits<double>::quiet_NaN(), 0 },
        { std::numeric_limits<double>::infinity(), 0 },
    };
    for (const auto& [in, out] : cases)
        EXPECT_EQ(PlayerRules::wholeSecondSeekTarget(in), out) << in;
}

TEST(PlayerRules, TimeSlotsAndSnapshotTime)
{
    EXPECT_EQ(PlayerRules::timeObserverSlot(0.0), 0);
    EXPECT_EQ(PlayerRules::timeObserverSlot(0.09), 0);
    EXPECT_EQ(PlayerRules::timeObserverSlot(0.1), 1);
    EXPECT_EQ(PlayerRules::timeObserverSlot(0.3), 3); // 0.3 * 10 is 2.9999999999999996
    EXPECT_EQ(PlayerRules::timeObserverSlot(12.34), 123);
    // The whole seconds of the duration, counted in microseconds.
    EXPECT_DOUBLE_EQ(PlayerRules::snapshotTime(60.5), 60e-6);
    EXPECT_DOUBLE_EQ(PlayerRules::snapshotTime(4.5), 4e-6);
    EXPECT_DOUBLE_EQ(PlayerRules::snapshotTime(0.0), 0.0);
    EXPECT_DOUBLE_EQ(PlayerRules::snapshotTime(std::nan("")), 0.0);
}

TEST(PlayerRules, StatusNamesAreDistinctAndOutsideValuesReadAsUnknown)
{
    QSet<QString> names;
    for (int i = 0; i < 8; ++i) {
        const QString name = TavroAVViewStatusName(i);
        EXPECT_TRUE(name.startsWith(QStringLiteral("TavroAVViewStatus"))) << qPrintable(name);
        EXPECT_EQ(TavroAVViewStatusName(TavroAVViewStatus(i)), name);
        names.insert(name);
    }
    EXPECT_EQ(names.size(), 8);
    const QString unknown = TavroAVViewStatusName(TavroAVViewStatus::Unknown);
    for (int outside : { -1, 8, 100, -2147483647 })
        EXPECT_EQ(TavroAVViewStatusName(outside), unknown);
}
