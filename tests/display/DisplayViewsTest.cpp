// The G-sensor graph and the speedometer as widgets, and the speed-unit
// preference that redraws the speedometer: what they draw and store. Set
// TAVRO_SCREENSHOT_DIR to keep PNGs of each view.
#include "ClipDataBuilder.h"
#include "display/GravityGraphView.h"
#include "display/SpeedMeterView.h"
#include "display/SpeedUnit.h"
#include "library/TavroNotifier.h"

#include <QDir>
#include <QSettings>
#include <QSignalSpy>
#include <QSvgRenderer>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace {

QImage render(QWidget& widget, const char* screenshot)
{
    const QString dir = qEnvironmentVariable("TAVRO_SCREENSHOT_DIR");
    if (!dir.isEmpty())
        widget.grab().save(QDir(dir).filePath(QLatin1String(screenshot)));
    return widget.grab().toImage().convertToFormat(QImage::Format_RGB32);
}

// The first and last row of column x in the colour, and the pixels in it above row `above`.
std::tuple<int, int, int> colourAt(const QImage& image, int x, QRgb colour, int above = 0)
{
    int first = -1, last = -1, high = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int column = 0; column < image.width(); ++column) {
            if ((image.pixel(column, y) & 0xffffff) != (colour & 0xffffff))
                continue;
            high += y < above;
            if (column == x)
                last = first < 0 ? (first = y) : y;
        }
    }
    return { first, last, high };
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
    QImage image = render(view, "gravity-one-sample.png");
    const QRgb red = qRgb(255, 0, 0), yellow = qRgb(255, 255, 0), blue = qRgb(0, 0, 255);
    const auto at = [&](int x, QRgb colour, int row) {
        const auto [first, last, high] = colourAt(image, x, colour);
        return std::abs(first - row) <= 1 && std::abs(last - row) <= 1;
    };
    EXPECT_TRUE(at(300, red, 80));
    EXPECT_TRUE(at(300, yellow, 60));
    EXPECT_TRUE(at(300, blue, 50));
    EXPECT_TRUE(at(0, blue, 50)); // all start there; blue is drawn last

    std::vector<GSample> samples;
    for (int i = 0; i < 600; ++i) {
        const int bump = (i > 300 && i < 320) ? 200 : 0;
        samples.push_back({ (i % 13 - 6) * 4 + bump, (i % 7 - 3) * 6 - bump / 2, 126 + i % 5 });
    }
    const TavroClipData driving = makeGRecord(samples);
    view.setClipData(&driving);
    image = render(view, "gravity-driving.png");
    for (const QRgb colour : { red, yellow, blue }) {
        const auto [first, last, high] = colourAt(image, 160, colour, 49);
        EXPECT_GE(first, 50) << std::hex << colour;
        EXPECT_EQ(high, 0) << std::hex << colour;
    }
    const TavroClipData empty = makeGRecord({});
    view.setClipData(&empty);
    image = render(view, "gravity-empty.png");
    for (const QRgb colour : { red, yellow, blue })
        EXPECT_EQ(std::get<2>(colourAt(image, 0, colour, 100)), 0) << std::hex << colour;
    view.resize(301, 180);
    EXPECT_FLOAT_EQ(view.baseYPoint(), 50.0f);
}

TEST(SpeedMeterViewTest, DigitsGaugeUnitAndArtworkFollowTheStoredUnit)
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
    const auto stored = [] {
        QFile file(QSettings().fileName());
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    };
    const struct {
        int kmh;
        bool mph;
        const char *hundreds, *tens, *units; // "" = cleared
        int gauge;
    } cases[] = { { 105, false, "1", "0", "5", 10 }, { 105, true, "", "6", "5", 6 },
        { 8, true, "", "", "", 0 }, { 9, false, "", "", "9", 0 }, { 239, false, "2", "3", "9", 23 },
        { 240, false, "2", "4", "0", 24 }, { 1024, true, "6", "3", "6", 24 } };
    for (const auto& c : cases) {
        c.mph ? unit.onMenuSpeedMph() : unit.onMenuSpeedKmph(); // redraws the last speed
        view.setSpeed(c.kmh);
        EXPECT_EQ(QStringList({ view.number100(), view.number10(), view.number1() }),
            QStringList({ c.hundreds, c.tens, c.units }))
            << c.kmh;
        EXPECT_EQ(std::vector<int>({ view.visibleGaugeCount(), view.isGaugeVisible(c.gauge),
                      view.isGaugeVisible(c.gauge + 1), view.isSpeedUnitImageVisible() }),
            std::vector<int>({ c.gauge, c.gauge > 0, false, c.mph }))
            << c.kmh;
    }
    // A change is stored at once and posted once; the menu item is marked each time.
    EXPECT_TRUE(stored().contains("TavroViewerSpeedUnit=1")) << stored().constData();
    EXPECT_EQ(posted.size(), 3);
    EXPECT_EQ(marks.size(), 7);
    // Switching redraws the stored speed, also when another window switches.
    view.setSpeed(105);
    const QImage mph105 = render(view, "speed-105-as-mph.png");
    unit.onMenuSpeedKmph();
    EXPECT_NE(render(view, "speed-105-kmh.png"), mph105);
    // The lit gauge runs from the cold to the warm end of the scale.
    view.setSpeed(0);
    const QImage dark = render(view, "speed-0-kmh.png");
    view.setSpeed(240);
    const QImage lit = render(view, "speed-240-kmh.png");
    EXPECT_GT(qBlue(lit.pixel(15, 107)), qRed(lit.pixel(15, 107)));
    EXPECT_GT(qRed(lit.pixel(222, 100)), qBlue(lit.pixel(222, 100)));
    EXPECT_NE(dark.pixel(222, 100), lit.pixel(222, 100));
    // Every image the views and the main window draw is there.
    for (const char* name :
        { "0", "1", "2", "3", "4", "5", "6", "7", "8", "9", "speed_digit_off", "speed_gauge",
            "speed_mph", "speed_panel", "shock_gage1", "shock_gage2", "earth1", "earth2" })
        EXPECT_TRUE(
            QSvgRenderer(QStringLiteral(":/images/%1.svg").arg(QLatin1String(name))).isValid())
            << name;
    view.setSpeed(105);
    QSettings().setValue(SpeedUnit::kSpeedUnitKey, SpeedUnit::kMph);
    TavroNotifier::shared().post(TavroNotifier::kRefreshSpeedUnitNotification);
    EXPECT_EQ(render(view, "speed-105-mph-again.png"), mph105);

    // The menu marks mph only for a stored 1.
    for (const QVariant& value : { QVariant(2), QVariant("mph"), QVariant(1), QVariant() }) {
        QSettings().setValue(SpeedUnit::kSpeedUnitKey, value);
        unit.markCurrentSpeedUnit();
        EXPECT_EQ(
            marks.last().at(0).toInt(), value == QVariant(1) ? SpeedUnit::kMph : SpeedUnit::kKmph);
    }
}
