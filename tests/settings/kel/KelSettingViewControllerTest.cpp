// The Kel camera's settings page without a window: what each control writes
// into blackbox.cfg, what the page shows for the file's values, sliders,
// the clock group, and the OK / Cancel / Reset buttons against the card.
#include "KelPageFixture.h"

#include "UnreadableFile.h"
#include "settings/SettingsPages.h"
#include "settings/kel/KelSettingViewController.h"

#include <QDateTime>

namespace {

using Change = SettingsPageModel::Change;
const QDateTime kNow(QDate(2016, 3, 7), QTime(14, 5, 9));

class KelPageTest : public KelPageFixture {
protected:
    KelSettingViewController& openPage()
    {
        m_page = std::make_unique<KelSettingViewController>(6, nullptr, [] { return kNow; });
        m_page->applySettingData();
        return *m_page;
    }
    int value(const QString& name) const { return m_page->control(name)->value; }
    bool enabled(const QString& name) const { return m_page->control(name)->enabled; }
    QStringList lines() const
    {
        return KelSettingManager::SharedKelSettingManager()->linedSettings();
    }

    std::unique_ptr<KelSettingViewController> m_page;
};

using Page = KelSettingViewController;

} // namespace

TEST_F(KelPageTest, FactoryBuildsTheKelPageOnlyForTheWenna)
{
    EXPECT_EQ(createSettingsPageModel(6)->family(), QStringLiteral("Kel"));
    EXPECT_EQ(createKelSettingsPageModel(5), nullptr);
    EXPECT_EQ(createSettingsPageModel(26), nullptr);
    EXPECT_EQ(createSettingsPageModel(-1), nullptr);
}

// Each control's change replaces exactly its own line, in place.
TEST_F(KelPageTest, EachControlWritesOnlyItsLine)
{
    struct Case {
        QString control;
        int value;
        QString key;
        QString written;
    };
    const Case cases[] = {
        { Page::kVoiceGuidance, 1, QStringLiteral("voice_out="), QStringLiteral("0") },
        { Page::kParkingMode, 0, QStringLiteral("park_mode="), QStringLiteral("1") },
        { Page::kDst, 0, QStringLiteral("summer_time="), QStringLiteral("1") },
        { Page::kVoiceRecord, 1, QStringLiteral("mic_in="), QStringLiteral("0") },
        { Page::kLanguage, 1, QStringLiteral("language="), QStringLiteral("fr") },
        { Page::kSpeedUnit, 1, QStringLiteral("osd_speed="), QStringLiteral("2") },
        { Page::kSecurityLed, 1, QStringLiteral("front_led="), QStringLiteral("0") },
        { Page::kVoiceVolume, 6, QStringLiteral("voice_volume="), QStringLiteral("6") },
        { Page::kImpact, 2, QStringLiteral("acc_level="), QStringLiteral("2") },
        { Page::kMotion, 1, QStringLiteral("motion_level="), QStringLiteral("1") },
        { Page::kTimeZone, 10, QStringLiteral("local_time="), QStringLiteral("9.500000") },
        { Page::kTimeZone, 0, QStringLiteral("local_time="), QStringLiteral("-10.000000") },
        { Page::kTimeZone, 7, QStringLiteral("local_time="), QStringLiteral("0.000000") },
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.control.toStdString() + " " + std::to_string(c.value));
        // Parking mode on, so the voltage group can be used below.
        const QStringList before = with(defaultLines(), QStringLiteral("park_mode="), "1");
        cardWith(before);
        KelSettingViewController& page = openPage();
        ASSERT_EQ(page.userChange(c.control, c.value), Change::Applied);
        EXPECT_EQ(lines(), with(before, c.key, c.written));
    }
}

TEST_F(KelPageTest, CutOffVoltageColumns)
{
    const QStringList written[] = { { "0" }, { "11800" }, { "12000" }, { "12200" } };
    for (int column = 0; column < 4; ++column) {
        const QStringList before = with(defaultLines(), QStringLiteral("park_mode="), "1");
        cardWith(before);
        KelSettingViewController& page = openPage();
        ASSERT_EQ(page.userChange(Page::kParkingVoltage, column), Change::Applied);
        EXPECT_EQ(lines(), with(before, QStringLiteral("power_off_vlt="), written[column][0]));
        // Reading the line back selects the same column.
        page.applySettingData();
        EXPECT_EQ(value(Page::kParkingVoltage), column);
    }
}

TEST_F(KelPageTest, MemoryPartitionWritesFourLinesAndRedrawsTheGraph)
{
    const QStringList before = defaultLines();
    cardWith(before);
    KelSettingViewController& page = openPage();
    EXPECT_EQ(value(Page::kMemoryPartition), 0); // 60/22/4/9 is type A
    ASSERT_EQ(page.userChange(Page::kMemoryPartition, 1), Change::Applied);
    QStringList expected = with(before, QStringLiteral("const="), QStringLiteral("35"));
    expected = with(expected, QStringLiteral("event="), QStringLiteral("17"));
    expected = with(expected, QStringLiteral("park="), QStringLiteral("4"));
    expected = with(expected, QStringLiteral("manual="), QStringLiteral("39"));
    EXPECT_EQ(lines(), expected);

    const QList<PartitionBar> bars = page.partitionGraph();
    ASSERT_EQ(bars.size(), 4);
    const QStringList kinds { "continuous", "event", "park", "manual" };
    const int percents[] = { 35, 17, 4, 39 };
    for (int i = 0; i < 4; ++i) {
        EXPECT_EQ(bars[i].key, kinds[i]);
        EXPECT_EQ(bars[i].percent, percents[i]);
        EXPECT_FALSE(bars[i].caption.isEmpty());
    }
}

// Values that no position stands for are shown as "no selection" (or the
// slider's nearest end) and never rewritten unless the user touches them.
TEST_F(KelPageTest, UnknownValuesShowNoSelectionAndSurviveOk)
{
    QStringList odd = with(defaultLines(), QStringLiteral("power_off_vlt="), "13000");
    odd = with(odd, QStringLiteral("local_time="), QStringLiteral("5.750000"));
    odd = with(odd, QStringLiteral("const="), QStringLiteral("50"));
    odd = with(odd, QStringLiteral("voice_volume="), QStringLiteral("9"));
    odd = with(odd, QStringLiteral("language="), QStringLiteral("de"));
    odd = with(odd, QStringLiteral("park_mode="), QStringLiteral("1"));
    cardWith(odd);
    const QByteArray onCard = cardFile();
    KelSettingViewController& page = openPage();
    EXPECT_EQ(value(Page::kParkingVoltage), -1);
    EXPECT_EQ(value(Page::kTimeZone), -1);
    EXPECT_EQ(value(Page::kMemoryPartition), -1);
    EXPECT_EQ(value(Page::kLanguage), -1);
    EXPECT_EQ(value(Page::kVoiceVolume), 6);
    // The graph shows what the file holds: 50/22/4/9.
    const QList<PartitionBar> bars = page.partitionGraph();
    ASSERT_EQ(bars.size(), 4);
    EXPECT_EQ(bars[0].percent, 50);
    EXPECT_EQ(bars[3].percent, 9);

    ASSERT_TRUE(page.pressOk());
    EXPECT_EQ(cardFile(), onCard);
}

TEST_F(KelPageTest, MissingKeysWriteNothing)
{
    QStringList lines = defaultLines();
    lines.removeIf([](const QString& line) {
        return line.startsWith(QLatin1String("voice_out="))
            || line.startsWith(QLatin1String("const="))
            || line.startsWith(QLatin1String("acc_level="));
    });
    cardWith(lines);
    KelSettingViewController& page = openPage();
    EXPECT_EQ(value(Page::kVoiceGuidance), -1);
    EXPECT_EQ(page.userChange(Page::kVoiceGuidance, 0), Change::Applied);
    EXPECT_EQ(page.userChange(Page::kMemoryPartition, 2), Change::Applied);
    EXPECT_EQ(page.userChange(Page::kImpact, 4), Change::Applied);
    // Only the three lines of the partition that are there change.
    QStringList expected = with(lines, QStringLiteral("event="), QStringLiteral("19"));
    expected = with(expected, QStringLiteral("park="), QStringLiteral("14"));
    expected = with(expected, QStringLiteral("manual="), QStringLiteral("9"));
    EXPECT_EQ(this->lines(), expected);
}

TEST_F(KelPageTest, DependentControlsFollowTheirSwitch)
{
    QStringList lines = with(defaultLines(), QStringLiteral("voice_out="), "0");
    lines = with(lines, QStringLiteral("park_mode="), "0");
    cardWith(lines);
    KelSettingViewController& page = openPage();
    EXPECT_FALSE(enabled(Page::kVoiceVolume));
    EXPECT_FALSE(enabled(Page::kParkingVoltage));
    EXPECT_EQ(page.userChange(Page::kVoiceVolume, 5), Change::OutOfRange);
    EXPECT_EQ(page.userChange(Page::kParkingVoltage, 1), Change::OutOfRange);
    EXPECT_EQ(this->lines(), lines);

    page.userChange(Page::kVoiceGuidance, 0);
    page.userChange(Page::kParkingMode, 0);
    EXPECT_TRUE(enabled(Page::kVoiceVolume));
    EXPECT_TRUE(enabled(Page::kParkingVoltage));
    page.userChange(Page::kParkingMode, 1);
    EXPECT_FALSE(enabled(Page::kParkingVoltage));
}

TEST_F(KelPageTest, UsageErrors)
{
    cardWith(defaultLines());
    KelSettingViewController& page = openPage();
    EXPECT_EQ(page.userChange(QStringLiteral("noSuchControl"), 0), Change::UnknownControl);
    EXPECT_EQ(page.userChange(Page::kImpact, 5), Change::OutOfRange);
    EXPECT_EQ(page.userChange(Page::kVoiceVolume, 0), Change::OutOfRange);
    EXPECT_EQ(page.userChange(Page::kTimeZone, 12), Change::OutOfRange);
    EXPECT_EQ(page.userChange(Page::kMemoryPartition, -1), Change::OutOfRange);
    EXPECT_EQ(lines(), defaultLines());
}

TEST_F(KelPageTest, SlidersWriteOnlyWhilePressed)
{
    const QStringList before = defaultLines();
    cardWith(before);
    KelSettingViewController& page = openPage();
    // The page moving a slider itself writes nothing and shows no guide.
    EXPECT_EQ(page.sliderMoved(Page::kMotion, 6), Change::Applied);
    EXPECT_EQ(value(Page::kMotion), 6);
    EXPECT_EQ(lines(), before);
    EXPECT_TRUE(page.sliderGuide(Page::kMotion).isEmpty());

    // Pressed: every move writes, with the guide of its third of the range.
    page.sliderPressed(Page::kVoiceVolume);
    const struct {
        int value;
        const char* guide;
    } moves[] = { { 1, "낮음" }, { 2, "낮음" }, { 3, "보통" }, { 4, "보통" }, { 5, "높음" },
        { 6, "높음" } };
    for (const auto& move : moves) {
        page.sliderMoved(Page::kVoiceVolume, move.value);
        EXPECT_EQ(lines(), with(before, "voice_volume=", QString::number(move.value)));
        EXPECT_EQ(page.sliderGuide(Page::kVoiceVolume), QString::fromUtf8(move.guide));
    }
    // Another slider moved meanwhile writes nothing.
    page.sliderMoved(Page::kImpact, 4);
    EXPECT_EQ(lines(), with(before, "voice_volume=", "6"));
    page.sliderReleased(Page::kVoiceVolume);
    EXPECT_TRUE(page.sliderGuide(Page::kVoiceVolume).isEmpty());
    EXPECT_EQ(lines(), with(before, "voice_volume=", "6"));

    // Impact sensitivity: one guide per position 2, 3, 4.
    page.sliderPressed(Page::kImpact);
    page.sliderMoved(Page::kImpact, 2);
    EXPECT_EQ(page.sliderGuide(Page::kImpact), QStringLiteral("낮음"));
    page.sliderMoved(Page::kImpact, 4);
    EXPECT_EQ(page.sliderGuide(Page::kImpact), QStringLiteral("높음"));
    page.sliderReleased(Page::kImpact);
    EXPECT_EQ(KelSettingManager::SharedKelSettingManager()->valueForKey("acc_level="), "4");
}

TEST_F(KelPageTest, ClockBoxWritesSetLineAndOkWritesTheClock)
{
    const QStringList before = defaultLines();
    cardWith(before);
    KelSettingViewController& page = openPage();
    EXPECT_FALSE(page.clock().checked);
    EXPECT_EQ(page.clock().value, kNow);
    EXPECT_EQ(value(Page::kDateTime), 0);

    ASSERT_EQ(page.userChange(Page::kDateTime, 1), Change::Applied);
    EXPECT_TRUE(page.clock().checked);
    EXPECT_EQ(lines(), with(before, "set=", "1"));
    ASSERT_TRUE(page.pressOk());

    const QStringList saved = KelSettingManager::linesFromText(cardFile());
    const qsizetype set = saved.indexOf(QStringLiteral("set=1"));
    ASSERT_GE(set, 0);
    EXPECT_EQ(saved.mid(set + 1, 6),
        QStringList({ "year=2016", "month=3", "day=7", "hour=14", "min=5", "sec=9" }));
    EXPECT_EQ(saved.size(), before.size());
}

TEST_F(KelPageTest, ClockBoxWithoutSetLineOverwritesTheFirstLine)
{
    QStringList lines = defaultLines();
    lines.removeIf([](const QString& line) { return line.startsWith(QLatin1String("set=")); });
    cardWith(lines);
    KelSettingViewController& page = openPage();
    page.setClock({ true, QDateTime(QDate(2020, 12, 31), QTime(23, 59, 58)) });
    EXPECT_EQ(value(Page::kDateTime), 1);
    QStringList expected = lines;
    expected[0] = QStringLiteral("set=1");
    EXPECT_EQ(this->lines(), expected);
    page.setClock({ false, kNow });
    expected[0] = QStringLiteral("set=0");
    EXPECT_EQ(this->lines(), expected);
}

TEST_F(KelPageTest, CancelWritesNothingToTheCard)
{
    cardWith(with(defaultLines(), "park_mode=", "1"));
    const QByteArray onCard = cardFile();
    KelSettingViewController& page = openPage();
    page.userChange(Page::kMemoryPartition, 2);
    page.userChange(Page::kParkingVoltage, 3);
    page.userChange(Page::kDateTime, 1);
    page.pressCancel();
    EXPECT_EQ(cardFile(), onCard);
    EXPECT_EQ(m_alerts.sink().requests().size(), 0);
}

TEST_F(KelPageTest, ResetShowsDefaultsAndOkWritesThem)
{
    QStringList edited = with(defaultLines(), "voice_out=", "0");
    edited = with(edited, "language=", "fr");
    edited = with(edited, "const=", "35");
    cardWith(edited);
    const QByteArray onCard = cardFile();
    KelSettingViewController& page = openPage();
    EXPECT_EQ(value(Page::kLanguage), 1);

    page.pressReset();
    EXPECT_EQ(value(Page::kLanguage), 0);
    EXPECT_EQ(value(Page::kVoiceGuidance), 0);
    EXPECT_TRUE(enabled(Page::kVoiceVolume));
    EXPECT_EQ(value(Page::kMemoryPartition), 0);
    EXPECT_EQ(cardFile(), onCard); // nothing written yet

    ASSERT_TRUE(page.pressOk());
    EXPECT_EQ(cardFile(), KelSettingManager::defaultFileText());
}

TEST_F(KelPageTest, ResetForAnotherModelKeepsTheLines)
{
    QStringList edited = with(defaultLines(), "language=", "fr");
    cardWith(edited);
    TolmSettingManager::SharedTolmSettingManager()->setModelType(5);
    KelSettingViewController& page = openPage();
    page.pressReset();
    EXPECT_EQ(lines(), edited);
    EXPECT_EQ(value(Page::kLanguage), 1);
}

TEST_F(KelPageTest, FailedWriteReportsTheMemoryCardAlert)
{
    cardWith(defaultLines());
    KelSettingViewController& page = openPage();
    TolmSettingManager::SharedTolmSettingManager()->setSettingDirPath(QString());
    EXPECT_FALSE(page.pressOk());
    EXPECT_EQ(m_alerts.sink().memoryCardErrors(), 1);
}

TEST_F(KelPageTest, UnreadableCardFileIsKeptAndOkAlerts)
{
    cardWith(with(defaultLines(), "language=", "fr"));
    const QByteArray onCard = cardFile();
    {
        const UnreadableFile unreadable(m_card.path(QStringLiteral("blackbox.cfg")));
        if (!unreadable.holds())
            GTEST_SKIP() << "this system reads the file whatever its mode";
        KelSettingManager::SharedKelSettingManager()->loadData();
        KelSettingViewController& page = openPage();
        page.userChange(Page::kDateTime, 1);
        // OK: the memory-card alert, and the camera's file stays as it was.
        EXPECT_FALSE(page.pressOk());
        EXPECT_EQ(m_alerts.sink().memoryCardErrors(), 1);
    }
    EXPECT_EQ(cardFile(), onCard);
    // Read again, it saves as before.
    KelSettingManager::SharedKelSettingManager()->loadData();
    EXPECT_TRUE(openPage().pressOk());
    EXPECT_EQ(cardFile(), onCard);
}
