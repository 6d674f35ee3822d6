// The G-sensor graph and the speedometer as widgets, and the speed-unit
// preference that redraws the speedometer.
#include "ClipDataBuilder.h"
#include "display/GravityGraphView.h"
#include "display/SpeedMeterView.h"
#include "display/SpeedUnit.h"
#include "library/TavroNotifier.h"

#include <QSettings>
#include <QSignalSpy>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace {

QImage render(QWidget& widget)
{
    return widget.grab().toImage().convertToFormat(QImage::Format_RGB32);
}

// Whether column x shows the colour within a row of `row`.
bool shows(const QImage& image, int x, int row, QRgb colour)
{
    for (int y = row - 1; y <= row + 1; ++y)
        if ((image.pixel(x, y) & 0xffffff) == (colour & 0xffffff))
            return true;
    return false;
}

} // namespace

TEST(GravityGraphViewTest, CurvesHangFromTheZeroLineTakenAtSetUp)
{
    // Zero line 50 units up a 100 high view; x hangs 30 units, y 10, z none.
    // Widget rows count down from the top: 50 up is row 50, 20 up is row 80.
    // A record handed over before the view has its size is laid out on the
    // real zero line, taken once at set-up.
    const TavroClipData one = makeGRecord({ { -300, 100, 0 } });
    GravityGraphView view;
    view.setClipData(&one);
    EXPECT_FALSE(view.isSetUp());
    view.resize(301, 100);
    view.show();
    ASSERT_TRUE(view.isSetUp());
    ASSERT_EQ(view.gxPointList().size(), 1);
    EXPECT_FLOAT_EQ(float(view.gxPointList()[0].y()), 20.0f);
    const QImage image = render(view);
    EXPECT_TRUE(shows(image, 300, 80, qRgb(255, 0, 0)));
    EXPECT_TRUE(shows(image, 300, 60, qRgb(255, 255, 0)));
    EXPECT_TRUE(shows(image, 300, 50, qRgb(0, 0, 255)));
    EXPECT_TRUE(shows(image, 0, 50, qRgb(0, 0, 255))); // all start there; blue is drawn last
    // An empty record leaves no curve of the last one.
    const TavroClipData empty = makeGRecord({});
    view.setClipData(&empty);
    GravityGraphView fresh;
    fresh.resize(301, 100);
    fresh.show();
    EXPECT_EQ(render(view), render(fresh));
    view.resize(301, 180);
    EXPECT_FLOAT_EQ(view.baseYPoint(), 50.0f);
}

TEST(SpeedMeterViewTest, DigitsGaugeAndUnitFollowTheStoredUnit)
{
    QTemporaryDir settingsDir;
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, settingsDir.path());
    SpeedMeterView view;
    view.resize(240, 120);
    view.show();
    SpeedUnit unit;
    unit.setSpeedometer(&view);
    QSignalSpy marks(&unit, &SpeedUnit::speedUnitItemMarked);
    QSignalSpy posted(&TavroNotifier::shared(), &TavroNotifier::refreshSpeedUnit);
    const auto digits
        = [&] { return view.number100() + '|' + view.number10() + '|' + view.number1(); };
    unit.onMenuSpeedKmph();
    view.setSpeed(240);
    EXPECT_EQ(digits(), "2|4|0");
    EXPECT_EQ(view.visibleGaugeCount(), 24);
    EXPECT_TRUE(view.isGaugeVisible(24));
    EXPECT_FALSE(view.isSpeedUnitImageVisible());
    unit.onMenuSpeedMph(); // redraws the last speed: 149 mph
    EXPECT_EQ(digits(), "1|4|9");
    EXPECT_EQ(view.visibleGaugeCount(), 14);
    EXPECT_FALSE(view.isGaugeVisible(15));
    EXPECT_TRUE(view.isSpeedUnitImageVisible());
    view.setSpeed(8); // dark: every slot cleared
    EXPECT_EQ(digits(), "||");
    EXPECT_EQ(view.visibleGaugeCount(), 0);
    // A change is stored at once and posted once; the menu item is marked each time.
    QFile file(QSettings().fileName());
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_TRUE(file.readAll().contains("TavroViewerSpeedUnit=1"));
    EXPECT_EQ(posted.size(), 1);
    EXPECT_EQ(marks.size(), 2);
    // Another window switching to mph redraws the speed here.
    view.setSpeed(105);
    const QImage mph105 = render(view);
    unit.onMenuSpeedKmph();
    EXPECT_NE(render(view), mph105);
    QSettings().setValue(SpeedUnit::kSpeedUnitKey, SpeedUnit::kMph);
    TavroNotifier::shared().post(TavroNotifier::kRefreshSpeedUnitNotification);
    EXPECT_EQ(render(view), mph105);
    // The menu marks mph only for a stored 1.
    for (const QVariant& value : { QVariant(2), QVariant("mph"), QVariant(1), QVariant() }) {
        QSettings().setValue(SpeedUnit::kSpeedUnitKey, value);
        unit.markCurrentSpeedUnit();
        EXPECT_EQ(
            marks.last().at(0).toInt(), value == QVariant(1) ? SpeedUnit::kMph : SpeedUnit::kKmph);
    }
}
