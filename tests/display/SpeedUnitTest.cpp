// The speed-unit preference: menu marks, storing, the notification and the
// speedometer's redraw, with the user settings in a scratch folder.
#include "display/SpeedUnit.h"
#include "library/TavroNotifier.h"

#include <QSettings>
#include <QSignalSpy>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <vector>

namespace {

class FakeSpeedometer : public SpeedUnitDisplay {
public:
    int speed() const override { return m_speed; }
    void setSpeed(int kmh) override
    {
        m_speed = kmh;
        shown.push_back(kmh);
    }
    int m_speed = 0;
    std::vector<int> shown;
};

class SpeedUnitTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        ASSERT_TRUE(m_dir.isValid());
        QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, m_dir.path());
        QSettings().clear();
    }

    static QString storedText()
    {
        QSettings settings;
        QFile file(settings.fileName());
        return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
    }

    static void store(int unit) { QSettings().setValue(SpeedUnit::kSpeedUnitKey, unit); }

    QTemporaryDir m_dir;
};

} // namespace

TEST_F(SpeedUnitTest, AbsentSettingMeansKilometres)
{
    SpeedUnit unit;
    QSignalSpy marked(&unit, &SpeedUnit::speedUnitItemMarked);
    EXPECT_EQ(SpeedUnit::storedSpeedUnit(), SpeedUnit::kKmph);
    unit.markCurrentSpeedUnit();
    ASSERT_EQ(marked.size(), 1);
    EXPECT_EQ(marked[0][0].toInt(), SpeedUnit::kKmph);
}

TEST_F(SpeedUnitTest, MarksMphOnlyForOne)
{
    const struct {
        QVariant stored;
        int marked;
    } cases[] = { { 1, SpeedUnit::kMph }, { 0, SpeedUnit::kKmph }, { 2, SpeedUnit::kKmph },
        { QStringLiteral("mph"), SpeedUnit::kKmph } };
    for (const auto& c : cases) {
        QSettings().setValue(SpeedUnit::kSpeedUnitKey, c.stored);
        SpeedUnit unit;
        QSignalSpy marked(&unit, &SpeedUnit::speedUnitItemMarked);
        unit.markCurrentSpeedUnit();
        ASSERT_EQ(marked.size(), 1) << c.stored.toString().toStdString();
        EXPECT_EQ(marked[0][0].toInt(), c.marked) << c.stored.toString().toStdString();
    }
}

TEST_F(SpeedUnitTest, ChoosingMphStoresItNotifiesAndRedrawsTheSpeedometer)
{
    FakeSpeedometer speedometer;
    speedometer.m_speed = 105;
    SpeedUnit unit;
    unit.setSpeedometer(&speedometer);
    QSignalSpy marked(&unit, &SpeedUnit::speedUnitItemMarked);
    QSignalSpy posted(&TavroNotifier::shared(), &TavroNotifier::refreshSpeedUnit);

    unit.onMenuSpeedMph();

    ASSERT_EQ(marked.size(), 1);
    EXPECT_EQ(marked[0][0].toInt(), SpeedUnit::kMph);
    EXPECT_EQ(posted.size(), 1);
    EXPECT_EQ(SpeedUnit::storedSpeedUnit(), SpeedUnit::kMph);
    // Written to disk at once, not at exit.
    EXPECT_TRUE(storedText().contains(QStringLiteral("TavroViewerSpeedUnit=1")))
        << storedText().toStdString();
    // The notification redraws the last speed (km/h) in the new unit.
    EXPECT_EQ(speedometer.shown, std::vector<int> { 105 });

    unit.onMenuSpeedKmph();
    EXPECT_EQ(marked.size(), 2);
    EXPECT_EQ(marked[1][0].toInt(), SpeedUnit::kKmph);
    EXPECT_EQ(posted.size(), 2);
    EXPECT_EQ(SpeedUnit::storedSpeedUnit(), SpeedUnit::kKmph);
    EXPECT_TRUE(storedText().contains(QStringLiteral("TavroViewerSpeedUnit=0")));
    EXPECT_EQ(speedometer.shown, (std::vector<int> { 105, 105 }));
}

TEST_F(SpeedUnitTest, ChoosingTheStoredUnitPostsNothing)
{
    FakeSpeedometer speedometer;
    SpeedUnit unit;
    unit.setSpeedometer(&speedometer);
    QSignalSpy posted(&TavroNotifier::shared(), &TavroNotifier::refreshSpeedUnit);
    QSignalSpy marked(&unit, &SpeedUnit::speedUnitItemMarked);

    unit.onMenuSpeedKmph(); // absent counts as km/h
    store(SpeedUnit::kMph);
    unit.onMenuSpeedMph();
    unit.setSpeedUnit(SpeedUnit::kMph);

    EXPECT_EQ(posted.size(), 0);
    EXPECT_TRUE(speedometer.shown.empty());
    // The menu item is still marked each time it is chosen.
    EXPECT_EQ(marked.size(), 2);
}

TEST_F(SpeedUnitTest, ANotificationFromElsewhereRedrawsToo)
{
    FakeSpeedometer speedometer;
    speedometer.m_speed = 42;
    SpeedUnit unit;
    unit.setSpeedometer(&speedometer);
    TavroNotifier::shared().post(TavroNotifier::kRefreshSpeedUnitNotification);
    EXPECT_EQ(speedometer.shown, std::vector<int> { 42 });
}
