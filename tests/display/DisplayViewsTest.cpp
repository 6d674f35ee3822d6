// The G-sensor graph and the speedometer as widgets: what they draw and what
// their image views show. Set TAVRO_SCREENSHOT_DIR to keep PNGs of each view.
#include "ClipDataBuilder.h"
#include "display/GravityGraphView.h"
#include "display/SpeedMeterView.h"
#include "display/SpeedReadout.h"
#include "display/SpeedUnit.h"

#include <QDir>
#include <QImage>
#include <QPainter>
#include <QSettings>
#include <QSvgRenderer>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <vector>

namespace {

void keepScreenshot(QWidget& widget, const QString& name)
{
    const QString dir = qEnvironmentVariable("TAVRO_SCREENSHOT_DIR");
    if (!dir.isEmpty())
        widget.grab().save(QDir(dir).filePath(name));
}

QImage render(QWidget& widget)
{
    return widget.grab().toImage().convertToFormat(QImage::Format_RGB32);
}

int countColour(const QImage& image, QRgb colour)
{
    int n = 0;
    for (int y = 0; y < image.height(); ++y) {
        const auto* line = reinterpret_cast<const QRgb*>(image.constScanLine(y));
        for (int x = 0; x < image.width(); ++x)
            n += (line[x] & 0xffffff) == (colour & 0xffffff);
    }
    return n;
}

// Rows of column x holding the colour.
std::vector<int> rowsWithColour(const QImage& image, int x, QRgb colour)
{
    std::vector<int> rows;
    for (int y = 0; y < image.height(); ++y) {
        if ((image.pixel(x, y) & 0xffffff) == (colour & 0xffffff))
            rows.push_back(y);
    }
    return rows;
}

const QRgb kRed = qRgb(255, 0, 0);
const QRgb kYellow = qRgb(255, 255, 0);
const QRgb kBlue = qRgb(0, 0, 255);

} // namespace

TEST(GravityGraphViewTest, ZeroLineIsTakenOnceAtSetUp)
{
    GravityGraphView view;
    view.resize(300, 100);
    view.show();
    ASSERT_TRUE(view.isSetUp());
    EXPECT_FLOAT_EQ(view.baseYPoint(), 50.0f);
    view.resize(300, 180);
    EXPECT_FLOAT_EQ(view.baseYPoint(), 50.0f);
}

TEST(GravityGraphViewTest, RecordHandedOverBeforeSetUpUsesTheRealZeroLine)
{
    const TavroClipData data = makeGRecord({ { 128, 0, 0 } });
    GravityGraphView view;
    view.setClipData(&data);
    EXPECT_EQ(view.clipData(), &data);
    view.resize(200, 80);
    view.show();
    ASSERT_EQ(view.gxPointList().size(), 1);
    EXPECT_FLOAT_EQ(static_cast<float>(view.gxPointList()[0].y()), 40.0f - 12.8f);
}

TEST(GravityGraphViewTest, EmptyRecordDrawsNoCurve)
{
    const TavroClipData data = makeGRecord({});
    GravityGraphView view;
    view.resize(300, 100);
    view.show();
    view.setClipData(&data);
    const QImage image = render(view);
    EXPECT_EQ(countColour(image, kRed), 0);
    EXPECT_EQ(countColour(image, kYellow), 0);
    EXPECT_EQ(countColour(image, kBlue), 0);
}

TEST(GravityGraphViewTest, OneSampleDrawsALineFromTheZeroLineToTheRightEdge)
{
    // Zero line 50 units up a 100 high view; x hangs 30 units, y 10, z none.
    const TavroClipData data = makeGRecord({ { -300, 100, 0 } });
    GravityGraphView view;
    view.resize(301, 100);
    view.show();
    view.setClipData(&data);
    const QImage image = render(view);
    keepScreenshot(view, QStringLiteral("gravity-one-sample.png"));

    // Widget rows count down from the top: 50 up is row 50, 20 up is row 80.
    const int right = image.width() - 1;
    auto near = [](const std::vector<int>& rows, int row) {
        return !rows.empty() && std::abs(rows.front() - row) <= 1
            && std::abs(rows.back() - row) <= 1;
    };
    EXPECT_TRUE(near(rowsWithColour(image, right, kRed), 80));
    EXPECT_TRUE(near(rowsWithColour(image, right, kYellow), 60));
    EXPECT_TRUE(near(rowsWithColour(image, right, kBlue), 50));
    // All three start at the zero line on the left; blue is drawn last.
    EXPECT_TRUE(near(rowsWithColour(image, 0, kBlue), 50));
}

TEST(GravityGraphViewTest, DrivingClipDrawsThreeCurves)
{
    std::vector<GSample> samples;
    for (int i = 0; i < 600; ++i) {
        const int bump = (i > 300 && i < 320) ? 200 : 0;
        samples.push_back(
            { (i % 13 - 6) * 4 + bump, (i % 7 - 3) * 6 - bump / 2, 128 + (i % 5) - 2 });
    }
    const TavroClipData data = makeGRecord(samples);
    GravityGraphView view;
    view.resize(320, 120);
    view.show();
    view.setClipData(&data);
    const QImage image = render(view);
    keepScreenshot(view, QStringLiteral("gravity-driving.png"));
    EXPECT_GT(countColour(image, kRed), 100);
    EXPECT_GT(countColour(image, kYellow), 100);
    EXPECT_GT(countColour(image, kBlue), 100);
    // Nothing is drawn above the zero line (row 60).
    for (int y = 0; y < 59; ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const QRgb p = image.pixel(x, y) & 0xffffff;
            ASSERT_TRUE(
                p != (kRed & 0xffffff) && p != (kYellow & 0xffffff) && p != (kBlue & 0xffffff))
                << x << "," << y;
        }
    }
}

// ---------------------------------------------------------------- speedometer

namespace {

class SpeedMeterViewTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        ASSERT_TRUE(m_dir.isValid());
        QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, m_dir.path());
        QSettings().clear();
        m_view.resize(240, 120);
        m_view.show();
    }

    static void useUnit(int unit) { QSettings().setValue(SpeedUnit::kSpeedUnitKey, unit); }

    QTemporaryDir m_dir;
    SpeedMeterView m_view;
};

} // namespace

TEST_F(SpeedMeterViewTest, ImagesShowTheReadoutInEitherUnit)
{
    // The digits, the gauge and the unit label are the readout's (whose
    // conversion the logic tests check), in the unit the user chose.
    const auto digit
        = [](int d) { return d == SpeedReadout::kNoDigit ? QString() : QString::number(d); };
    for (const int unit : { SpeedUnit::kKmph, SpeedUnit::kMph }) {
        useUnit(unit);
        for (const int kmh : { 0, 8, 9, 55, 100, 105, 161, 1024 }) {
            const SpeedReadout readout = SpeedReadout::forSpeed(kmh, unit);
            m_view.setSpeed(kmh);
            const std::string what = std::to_string(kmh) + " km/h, unit " + std::to_string(unit);
            EXPECT_EQ(m_view.speed(), kmh) << what;
            EXPECT_EQ(m_view.number100(), digit(readout.number100)) << what;
            EXPECT_EQ(m_view.number10(), digit(readout.number10)) << what;
            EXPECT_EQ(m_view.number1(), digit(readout.number1)) << what;
            EXPECT_EQ(m_view.visibleGaugeCount(), readout.gaugeSegments) << what;
            EXPECT_EQ(m_view.isSpeedUnitImageVisible(), unit == SpeedUnit::kMph) << what;
        }
    }
}

TEST_F(SpeedMeterViewTest, GaugeLightsOneSegmentPerTenUnits)
{
    const struct {
        int shown;
        int lit;
    } cases[] = { { -5, 0 }, { 0, 0 }, { 9, 0 }, { 10, 1 }, { 19, 1 }, { 125, 12 }, { 239, 23 },
        { 240, 24 }, { 5000, 24 } };
    for (const auto& c : cases) {
        m_view.setSpeedGauge(c.shown);
        EXPECT_EQ(m_view.visibleGaugeCount(), c.lit) << c.shown;
        EXPECT_EQ(m_view.isGaugeVisible(c.lit), c.lit > 0) << c.shown;
        EXPECT_FALSE(m_view.isGaugeVisible(c.lit + 1)) << c.shown;
    }
}

TEST_F(SpeedMeterViewTest, SwitchingTheUnitRedrawsFromTheStoredSpeed)
{
    SpeedUnit unit;
    unit.setSpeedometer(&m_view);
    m_view.setSpeed(105);
    keepScreenshot(m_view, QStringLiteral("speed-105-kmh.png"));
    const QImage kmh = render(m_view);

    unit.onMenuSpeedMph();
    EXPECT_EQ(m_view.speed(), 105);
    EXPECT_EQ(m_view.number10().toStdString(), "6");
    EXPECT_EQ(m_view.number1().toStdString(), "5");
    EXPECT_TRUE(m_view.isSpeedUnitImageVisible());
    keepScreenshot(m_view, QStringLiteral("speed-105-as-mph.png"));
    const QImage mph = render(m_view);
    EXPECT_NE(kmh, mph);

    unit.onMenuSpeedKmph();
    EXPECT_EQ(m_view.number100().toStdString(), "1");
    EXPECT_FALSE(m_view.isSpeedUnitImageVisible());
    EXPECT_EQ(render(m_view), kmh);
}

TEST_F(SpeedMeterViewTest, ArtworkIsDrawn)
{
    // Dark digits and an unlit gauge look different from a lit instrument,
    // and the lit gauge's last segment is the warm end of the scale.
    m_view.setSpeed(0);
    const QImage dark = render(m_view);
    m_view.setSpeed(240);
    const QImage lit = render(m_view);
    keepScreenshot(m_view, QStringLiteral("speed-240-kmh.png"));
    ASSERT_FALSE(dark.isNull());
    EXPECT_NE(dark, lit);

    auto isLight = [](QRgb p) { return qRed(p) > 200 && qGreen(p) > 200 && qBlue(p) > 200; };
    int lightDark = 0;
    int lightLit = 0;
    for (int y = 0; y < 80; ++y) {
        for (int x = 0; x < 160; ++x) {
            lightDark += isLight(dark.pixel(x, y));
            lightLit += isLight(lit.pixel(x, y));
        }
    }
    EXPECT_EQ(lightDark, 0);
    EXPECT_GT(lightLit, 300);

    const QRgb firstSegment = lit.pixel(15, 107);
    const QRgb lastSegment = lit.pixel(222, 100);
    EXPECT_GT(qBlue(firstSegment), qRed(firstSegment));
    EXPECT_GT(qRed(lastSegment), qBlue(lastSegment));
    EXPECT_NE(dark.pixel(222, 100), lastSegment);

    m_view.resize(480, 240);
    m_view.setSpeed(188);
    keepScreenshot(m_view, QStringLiteral("speed-188-kmh-large.png"));
}

TEST(TelemetryArtworkTest, EveryImageNameResolvesAndDrawsSomething)
{
    const char* names[]
        = { "0", "1", "2", "3", "4", "5", "6", "7", "8", "9", "speed_digit_off", "speed_gauge",
              "speed_mph", "speed_panel", "shock_gage1", "shock_gage2", "earth1", "earth2" };
    QImage sheet(64 * 6, 64 * 3, QImage::Format_RGB32);
    sheet.fill(qRgb(0x1f, 0x22, 0x26));
    QPainter sheetPainter(&sheet);
    int slot = 0;
    for (const char* name : names) {
        QSvgRenderer svg(QStringLiteral(":/images/%1.svg").arg(QLatin1String(name)));
        ASSERT_TRUE(svg.isValid()) << name;
        QImage image(svg.defaultSize(), QImage::Format_ARGB32);
        image.fill(Qt::transparent);
        QPainter painter(&image);
        svg.render(&painter);
        painter.end();
        int opaque = 0;
        for (int y = 0; y < image.height(); ++y)
            for (int x = 0; x < image.width(); ++x)
                opaque += qAlpha(image.pixel(x, y)) > 0;
        EXPECT_GT(opaque, image.width() * image.height() / 50) << name;
        const QSize fit = image.size().scaled(60, 60, Qt::KeepAspectRatio);
        sheetPainter.drawImage(QRect(QPoint(slot % 6 * 64 + 2, slot / 6 * 64 + 2), fit), image);
        ++slot;
    }
    sheetPainter.end();
    const QString dir = qEnvironmentVariable("TAVRO_SCREENSHOT_DIR");
    if (!dir.isEmpty())
        sheet.save(QDir(dir).filePath(QStringLiteral("artwork.png")));
}
