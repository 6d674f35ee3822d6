// Reset (the card's default.cfg, else the factory values of the five oldest
// models) and the clock request in SETTING/time.dat.
#include "NativePageFixture.h"
#include "ScopedTimeZone.h"

#include "config/TimeDatFile.h"
#include "config/TolmSettingManager.h"

#include <QFile>
#include <QTimeZone>

namespace {

using ResetAndClock = NativePageTest;

} // namespace

TEST_F(ResetAndClock, ResetLoadsTheCardsDefaultsAndWritesNothing)
{
    // default.cfg holds a Velt record with other settings; version fields of
    // the running camera stay.
    m_card.defaultCfg(SetupCfgBuilder(516)
                          .productName("Velt")
                          .version("0.01.01")
                          .int32(At::daylight_offset, 0)
                          .int32(At::parking_time_limit, 48)
                          .int32(At::security_led_mode, 0)
                          .int32(At::parking_mode_set, 2)
                          .bytes());
    open(10, typicalRecord(10));
    TolmSettingManager::SharedTolmSettingManager()->setFirmwareVersionInt(17);
    const QByteArray loaded = savedRecord();
    m_page->pressReset();
    EXPECT_EQ(value(QStringLiteral("commonDSTRadioGroup")), 1);
    EXPECT_EQ(value(QStringLiteral("parkingTimeLimitSlider_36x")), 4);
    EXPECT_EQ(value(QStringLiteral("etcSecurityLEDRadioGroup")), 3);
    EXPECT_EQ(value(QStringLiteral("parkingModeRadioGroup")), 1);
    EXPECT_EQ(savedRecord(), loaded);
    const TolmSettingManager* model = TolmSettingManager::SharedTolmSettingManager();
    EXPECT_EQ(model->version(), QStringLiteral("1.00.17"));
    EXPECT_EQ(model->firmwareVersionInt(), 17);
    EXPECT_EQ(model->settingDirPath(), m_card.root());
    const QByteArray saved = pressOk();
    EXPECT_EQ(int32At(saved, At::daylight_offset), 0);
    EXPECT_EQ(int32At(saved, At::parking_mode_set), 2);
    EXPECT_EQ(saved.mid(40, 7), QByteArray("1.00.17"));
}

TEST_F(ResetAndClock, ResetWithoutDefaultCfgUsesFactoryValuesOfTheOldModels)
{
    struct Case {
        qint64 type;
        bool factory; // false: the model has none and keeps its values
        int timePosition; // 48 h from the factory, else the 12 h of the card
    };
    // The Orlo and Dravi sliders count 6-48 h in four steps, the others
    // 1-48 h in seven.
    const Case cases[] = { { 0, true, 7 }, { 1, true, 7 }, { 2, true, 7 }, { 3, true, 4 },
        { 4, true, 4 }, { 5, true, 4 }, { 10, false, 2 }, { 18, false, 2 }, { 9, false, 2 },
        { 8, false, 5 }, { 11, false, 5 } };
    for (const Case& c : cases) {
        SCOPED_TRACE(testing::Message() << "type " << c.type);
        // Every factory column parks 48 hours with parking off and partition A.
        open(c.type,
            typicalRecord(c.type, 0,
                { { At::parking_time_limit, 12 }, { At::parking_mode_set, 1 },
                    { At::partition_type, 3 } }));
        const QByteArray loaded = savedRecord();
        m_page->pressReset();
        EXPECT_EQ(value(QStringLiteral("parkingTimeLimitSlider_36x")), c.timePosition);
        EXPECT_EQ(value(QStringLiteral("etcMemoryPartitionRadioGroup")), c.factory ? 0 : 2);
        EXPECT_EQ(
            TolmSettingManager::SharedTolmSettingManager()->parking_mode_set(), c.factory ? 0 : 1);
        EXPECT_EQ(savedRecord(), loaded);
    }
}

TEST_F(ResetAndClock, OrloFactoryValuesReachThePage)
{
    open(5, typicalRecord(5, 0, { { At::measurement_unit, 0 }, { At::daylight_offset, 1 } }));
    m_page->pressReset();
    // Orlo's factory camera counts in miles, without daylight saving.
    EXPECT_EQ(value(QStringLiteral("commonSpeedUnitRadioGroup")), 1);
    EXPECT_EQ(m_page->control(QStringLiteral("alwaysLDWSSpeedRadioGroup"))->titles.first(),
        QStringLiteral("30mph"));
    EXPECT_EQ(value(QStringLiteral("commonDSTRadioGroup")), 1);
    const QByteArray saved = pressOk();
    EXPECT_EQ(int32At(saved, At::measurement_unit), 1);
    EXPECT_EQ(int32At(saved, At::daylight_offset), 0);
}

TEST_F(ResetAndClock, ClockRequestOnTheCard)
{
    const ScopedTimeZone tokyo("Asia/Tokyo");
    open(5, typicalRecord(5));
    EXPECT_FALSE(m_page->clock().checked);
    EXPECT_LE(qAbs(m_page->clock().value.secsTo(QDateTime::currentDateTime())), 5);

    // Checked: OK leaves a request for the chosen instant, in this
    // computer's zone whatever zone it was chosen in.
    const QDateTime when(QDate(2016, 3, 7), QTime(14, 5, 9), QTimeZone(0));
    m_page->setClock({ true, when });
    pressOk();
    EXPECT_EQ(m_card.read(QStringLiteral("time.dat")), QByteArray("2016,03,07,23,05,09,+0900"));

    // A pending request shows checked, at its instant on this computer's clock.
    m_card.file(QStringLiteral("time.dat"), "2016,03,07,14,05,09,+0000");
    openLoaded(5);
    EXPECT_TRUE(m_page->clock().checked);
    EXPECT_EQ(m_page->clock().value, when);
    EXPECT_EQ(m_page->clock().value.time(), QTime(23, 5, 9));
    EXPECT_EQ(m_page->clock().value.offsetFromUtc(), 9 * 3600);
    // OK keeps the instant: the same request, written from here.
    pressOk();
    EXPECT_EQ(m_card.read(QStringLiteral("time.dat")), QByteArray("2016,03,07,23,05,09,+0900"));

    // Unchecked: OK withdraws it.
    m_page->setClock({ false, when });
    pressOk();
    EXPECT_FALSE(m_card.exists(QStringLiteral("time.dat")));
    pressOk();
    EXPECT_FALSE(m_card.exists(QStringLiteral("time.dat")));
}

TEST_F(ResetAndClock, GarbledRequestShowsUnchecked)
{
    const QByteArray garbled[] = {
        QByteArray("garbage"),
        QByteArray("2016,13,07,14,05,09,+0900"),
        QByteArray("2016,02,30,14,05,09,+0900"),
        QByteArray("2016,03,07,25,05,09,+0900"),
        QByteArray("2016,03,07,14,05,09"),
        QByteArray("2016,03,07,14,05,09,+0960"),
        QByteArray("\xff\xfe"
                   "2016,03,07,14,05,09,+0900"),
        QByteArray("2016,03,07,14,05,09,+0900 and more"),
        QByteArray(),
        QByteArray(100000, '1'),
    };
    open(3, typicalRecord(3));
    for (const QByteArray& bytes : garbled) {
        SCOPED_TRACE(bytes.left(40).toStdString());
        m_card.file(QStringLiteral("time.dat"), bytes);
        openLoaded(3);
        EXPECT_FALSE(m_page->clock().checked);
    }
    // A line end after the request is fine; so is a western zone (shown in
    // this computer's zone, here UTC).
    const ScopedTimeZone utc("UTC");
    m_card.file(QStringLiteral("time.dat"), "2024,12,31,23,59,59,-0330\r\n");
    openLoaded(3);
    EXPECT_TRUE(m_page->clock().checked);
    EXPECT_EQ(TimeDatFile::format(m_page->clock().value), QByteArray("2025,01,01,03,29,59,+0000"));
}

TEST_F(ResetAndClock, ClockOnTheCardsLowerCaseFolder)
{
    open(8, typicalRecord(8));
    m_card.file(QStringLiteral("time.dat"), "2020,01,02,03,04,05,+0000", QStringLiteral("setting"));
    openLoaded(8);
    EXPECT_TRUE(m_page->clock().checked);
    m_page->setClock({ false, QDateTime::currentDateTime() });
    pressOk();
    EXPECT_FALSE(m_card.exists(QStringLiteral("time.dat"), QStringLiteral("setting")));
}

TEST_F(ResetAndClock, OkWithoutACardShowsTheMemoryCardAlert)
{
    open(5, typicalRecord(5));
    TolmSettingManager::SharedTolmSettingManager()->setSettingDirPath(QString());
    m_page->setClock({ true, QDateTime::currentDateTime() });
    EXPECT_FALSE(m_page->pressOk());
    EXPECT_EQ(m_sink->memoryCardErrors(), 1);
    EXPECT_FALSE(m_card.exists(QStringLiteral("time.dat")));
}
