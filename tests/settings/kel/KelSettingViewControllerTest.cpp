// The Kel camera's settings page without a window: what each control writes
// into blackbox.cfg and shows for the file's values, sliders, the clock group,
// and the OK / Cancel / Reset buttons against the card.
#include "KelPageFixture.h"

#include "UnreadableFile.h"
#include "settings/kel/KelSettingViewController.h"

namespace {

using Change = SettingsPageModel::Change;
using Page = KelSettingViewController;
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
    QStringList current() const
    {
        return KelSettingManager::SharedKelSettingManager()->linedSettings();
    }

    std::unique_ptr<KelSettingViewController> m_page;
};

} // namespace

TEST_F(KelPageTest, EachControlWritesOnlyItsLinesAndReadsThemBack)
{
    // Parking on, so that the voltage group can be used; partition type B.
    const char* const base = "park_mode=1 const=35 event=17 park=4 manual=39";
    const std::tuple<QString, int, const char*> cases[] = {
        { Page::kVoiceGuidance, 1, "voice_out=0" },
        { Page::kParkingMode, 1, "park_mode=0" },
        { Page::kDst, 0, "summer_time=1" },
        { Page::kVoiceRecord, 1, "mic_in=0" },
        { Page::kLanguage, 1, "language=fr" },
        { Page::kSpeedUnit, 1, "osd_speed=2" },
        { Page::kSecurityLed, 1, "front_led=0" },
        { Page::kVoiceVolume, 6, "voice_volume=6" },
        { Page::kImpact, 2, "acc_level=2" },
        { Page::kMotion, 1, "motion_level=1" },
        { Page::kTimeZone, 0, "local_time=-10.000000" },
        { Page::kTimeZone, 10, "local_time=9.500000" },
        { Page::kTimeZone, 11, "local_time=10.000000" },
        // The camera cuts its power at 11.8, 12.0 or 12.2 V; "0" never.
        { Page::kParkingVoltage, 0, "power_off_vlt=0" },
        { Page::kParkingVoltage, 3, "power_off_vlt=12200" },
        { Page::kMemoryPartition, 0, "const=60 event=22 park=4 manual=9" },
        { Page::kMemoryPartition, 2, "const=53 event=19 park=14 manual=9" },
    };
    for (const auto& [control, position, written] : cases) {
        SCOPED_TRACE(control.toStdString() + " " + std::to_string(position));
        cardWith(lines(base));
        ASSERT_EQ(openPage().userChange(control, position), Change::Applied);
        EXPECT_EQ(current(), lines((QByteArray(base) + ' ' + written).constData()));
        openPage();
        EXPECT_EQ(value(control), position);
    }
}

// Values no position stands for show as "no selection" (or the slider's
// nearest end) and are never rewritten unless the user touches them.
TEST_F(KelPageTest, UnknownValuesShowNoSelectionAndSurviveOk)
{
    cardWith(lines(
        "power_off_vlt=13000 local_time=5.750000 const=50 voice_volume=9 language=de park_mode=1 "
        "acc_level=1 motion_level=x voice_out=on"));
    const QByteArray onCard = cardFile();
    KelSettingViewController& page = openPage();
    for (const QString& control : { Page::kParkingVoltage, Page::kTimeZone, Page::kMemoryPartition,
             Page::kLanguage, Page::kVoiceGuidance })
        EXPECT_EQ(value(control), -1) << control.toStdString();
    EXPECT_EQ(value(Page::kVoiceVolume), 6);
    EXPECT_EQ(value(Page::kImpact), 2);
    EXPECT_EQ(value(Page::kMotion), 1);
    // The graph shows what the file holds: 50/22/4/9 (a file of a known type
    // holds that type's shares).
    QList<int> percents;
    for (const PartitionBar& bar : page.partitionGraph())
        percents << bar.percent;
    EXPECT_EQ(percents, QList<int>({ 50, 22, 4, 9 }));
    EXPECT_EQ(page.partitionGraph()[1].key, QStringLiteral("event"));
    ASSERT_TRUE(page.pressOk());
    EXPECT_EQ(cardFile(), onCard);

    // Missing keys: the control shows nothing and writes nowhere.
    QStringList missing = lines();
    missing.removeIf([](const QString& line) {
        return line.startsWith("voice_out=") || line.startsWith("const=");
    });
    cardWith(missing);
    openPage();
    EXPECT_EQ(value(Page::kVoiceGuidance), -1);
    EXPECT_EQ(m_page->userChange(Page::kVoiceGuidance, 0), Change::Applied);
    EXPECT_EQ(m_page->userChange(Page::kMemoryPartition, 2), Change::Applied);
    missing.replace(missing.indexOf("event=22"), "event=19");
    missing.replace(missing.indexOf("park=4"), "park=14");
    EXPECT_EQ(current(), missing);
}

TEST_F(KelPageTest, SwitchesGovernTheirControlsRangesHoldAndSlidersWriteWhilePressed)
{
    cardWith(lines("voice_out=0 park_mode=0"));
    KelSettingViewController& page = openPage();
    EXPECT_FALSE(enabled(Page::kVoiceVolume));
    EXPECT_FALSE(enabled(Page::kParkingVoltage));
    const std::pair<QString, int> refused[] = { { Page::kVoiceVolume, 5 },
        { Page::kParkingVoltage, 1 }, { Page::kImpact, 5 }, { Page::kImpact, 1 },
        { Page::kTimeZone, 12 }, { Page::kMemoryPartition, -1 }, { Page::kLanguage, 2 } };
    for (const auto& [control, position] : refused)
        EXPECT_EQ(page.userChange(control, position), Change::OutOfRange)
            << control.toStdString() << position;
    EXPECT_EQ(page.userChange(QStringLiteral("noSuchControl"), 0), Change::UnknownControl);
    EXPECT_EQ(current(), lines("voice_out=0 park_mode=0"));
    page.userChange(Page::kVoiceGuidance, 0);
    page.userChange(Page::kParkingMode, 0);
    EXPECT_TRUE(enabled(Page::kVoiceVolume));
    EXPECT_TRUE(enabled(Page::kParkingVoltage));
    page.userChange(Page::kParkingMode, 1);
    EXPECT_FALSE(enabled(Page::kParkingVoltage));
    // Only the Wenna has built-in lines to reset to; another model keeps its own.
    page.userChange(Page::kLanguage, 1);
    TolmSettingManager::SharedTolmSettingManager()->setModelType(5);
    page.pressReset();
    EXPECT_EQ(current(), lines("language=fr"));

    // Sliders write only while pressed, with the guide of their third. (The
    // editors' own tests drag the motion slider and press OK, Cancel and Reset.)
    cardWith(lines());
    KelSettingViewController& sliders = openPage();
    EXPECT_EQ(sliders.sliderMoved(Page::kMotion, 6), Change::Applied); // the page's own move
    EXPECT_TRUE(sliders.sliderGuide(Page::kMotion).isEmpty());
    sliders.sliderPressed(Page::kVoiceVolume);
    const std::tuple<QString, int, const char*> moves[] = { { Page::kVoiceVolume, 2, "낮음" },
        { Page::kVoiceVolume, 3, "보통" }, { Page::kVoiceVolume, 5, "높음" },
        { Page::kImpact, 2, "낮음" }, { Page::kImpact, 3, "보통" }, { Page::kImpact, 4, "높음" } };
    for (const auto& [slider, value, guide] : moves) {
        if (slider == Page::kImpact)
            sliders.sliderPressed(slider);
        sliders.sliderMoved(slider, value);
        EXPECT_EQ(sliders.sliderGuide(slider), QString::fromUtf8(guide)) << value;
    }
    sliders.sliderReleased(Page::kImpact);
    EXPECT_TRUE(sliders.sliderGuide(Page::kImpact).isEmpty());
    EXPECT_EQ(current(), lines("voice_volume=5 acc_level=4"));
}

TEST_F(KelPageTest, TheClockBoxWithoutASetLineAndAnUnreadableOrUnwritableCardFile)
{
    QStringList noSet = lines();
    noSet.removeAll("set=0");
    cardWith(noSet);
    EXPECT_EQ(openPage().clock(), (SettingClock { false, kNow }));
    m_page->setClock({ true, QDateTime(QDate(2020, 12, 31), QTime(23, 59, 58)) });
    EXPECT_EQ(value(Page::kDateTime), 1);
    noSet[0] = QStringLiteral("set=1");
    EXPECT_EQ(current(), noSet);
    m_page->setClock({ false, kNow });
    noSet[0] = QStringLiteral("set=0");
    EXPECT_EQ(current(), noSet);
    ASSERT_TRUE(m_page->pressOk());
    EXPECT_EQ(cardFile(), crlfLines(noSet));

    // An unreadable or unwritable card file is kept, and OK alerts.
    cardWith(lines("language=fr"));
    const QByteArray onCard = cardFile();
    {
        const UnreadableFile unreadable(m_card.path(QStringLiteral("blackbox.cfg")));
        if (!unreadable.holds())
            GTEST_SKIP() << "this system reads the file whatever its mode";
        KelSettingManager::SharedKelSettingManager()->loadData();
        openPage().userChange(Page::kDateTime, 1);
        // OK: the memory-card alert, and the camera's file stays as it was.
        EXPECT_FALSE(m_page->pressOk());
        EXPECT_EQ(m_alerts.sink().memoryCardErrors(), 1);
    }
    EXPECT_EQ(cardFile(), onCard);
    // Read again, it saves as before; without a card OK alerts.
    KelSettingManager::SharedKelSettingManager()->loadData();
    EXPECT_TRUE(openPage().pressOk());
    EXPECT_EQ(cardFile(), onCard);
    TolmSettingManager::SharedTolmSettingManager()->setSettingDirPath(QString());
    EXPECT_FALSE(m_page->pressOk());
    EXPECT_EQ(m_alerts.sink().memoryCardErrors(), 2);
}
