// Fields to controls on the Orlo family (Orlo 5, Velt 10, Holta 18) and the
// Dravi family (Dravi 3, Dravi UK 4, Sarn 9): every rule with its fallback and
// its "untouched" case. A fresh page has every control at its lowest
// position, so "untouched" shows as that position.
#include "NativePageFixture.h"

#include "config/TolmSettingManager.h"

namespace {

struct ApplyCase {
    const char* what;
    qint64 modelType;
    int firmware;
    std::initializer_list<FieldValue> record;
    const char* control;
    int position;
};

class OrloDraviApply : public NativePageTest {
protected:
    void check(const ApplyCase& c)
    {
        SCOPED_TRACE(c.what);
        open(c.modelType, typicalRecord(c.modelType, c.firmware, c.record), c.firmware);
        EXPECT_EQ(value(QString::fromLatin1(c.control)), c.position) << c.what;
    }
};

constexpr qint64 kOrlo = 5, kVelt = 10, kHolta = 18, kDravi = 3, kDraviUk = 4, kSarn = 9;

} // namespace

TEST_F(OrloDraviApply, EachFieldSelectsItsPositionOrFallback)
{
    const ApplyCase cases[] = {
        { "brightness 0 is the right end", kOrlo, 0, { { At::front_brightness, 0 } },
            "commonFrontBrightnessSlider", 2 },
        { "brightness 2 is the left end", kVelt, 0, { { At::rear_brightness, 2 } },
            "commonRearBrightnessSlider", 0 },
        { "brightness 3 untouched", kOrlo, 0, { { At::front_brightness, 3 } },
            "commonFrontBrightnessSlider", 0 },
        { "voice volume", kHolta, 0, { { At::audio_ment_volume, 3 } }, "commonVoiceMentSlider", 3 },
        { "voice off wins", kOrlo, 0, { { At::audio_ment_volume, 3 }, { At::voice_ment, 0 } },
            "commonVoiceMentSlider", 0 },
        { "voice volume 9 untouched", kDravi, 0, { { At::audio_ment_volume, 9 } },
            "commonVoiceMentSlider", 0 },
        { "gmt 570 is UTC+09:30", kOrlo, 0, { { At::gmt_offset, 570 } }, "commonGMTComboBox", 30 },
        { "gmt 100 falls back to UTC", kVelt, 0, { { At::gmt_offset, 100 } }, "commonGMTComboBox",
            15 },
        { "gmt -570 is UTC-09:30", kDravi, 0, { { At::gmt_offset, -570 } }, "commonGMTComboBox",
            3 },
        { "Dravi gmt 100 has no selection", kDravi, 0, { { At::gmt_offset, 100 } },
            "commonGMTComboBox", -1 },
        { "Sarn gmt 100 has no selection", kSarn, 0, { { At::gmt_offset, 100 } },
            "commonGMTComboBox", -1 },
        { "daylight 1 is row 0", kOrlo, 0, { { At::daylight_offset, 1 } }, "commonDSTRadioGroup",
            0 },
        { "daylight 60 is row 1", kDravi, 0, { { At::daylight_offset, 60 } }, "commonDSTRadioGroup",
            1 },
        { "unit 1 is mph", kOrlo, 0, { { At::measurement_unit, 1 } }, "commonSpeedUnitRadioGroup",
            1 },
        { "unit 7 is km", kDraviUk, 0, { { At::measurement_unit, 7 } }, "commonSpeedUnitRadioGroup",
            0 },
        { "speed stamp 0 is row 1", kVelt, 0, { { At::speed_stamp, 0 } },
            "commonSpeedStampRadioGroup", 1 },
        { "speed stamp 4 is row 0", kSarn, 0, { { At::speed_stamp, 4 } },
            "commonSpeedStampRadioGroup", 0 },
        { "front 3 is column 1", kOrlo, 0, { { At::front_resolution, 3 } },
            "alwaysRadioGroupFrontResolution", 1 },
        { "rear 2 is column 0", kOrlo, 0, { { At::rear_resolution, 2 } },
            "alwaysRadioGroupRearResolution", 0 },
        { "rear 0 is column 1", kDravi, 0, { { At::rear_resolution, 0 } },
            "alwaysRadioGroupRearResolution", 1 },
        { "front 2 forces the rear", kVelt, 0,
            { { At::front_resolution, 2 }, { At::rear_resolution, 3 } },
            "alwaysRadioGroupRearResolution", 0 },
        { "shock 5", kOrlo, 0, { { At::acceleration_sensor, 5 } }, "alwaysShockSensitivitySlider",
            5 },
        { "shock 6 untouched", kDravi, 0, { { At::acceleration_sensor, 6 } },
            "alwaysShockSensitivitySlider", 1 },
        { "driving guide 0 is row 1", kOrlo, 0, { { At::enable_driving_guide, 0 } },
            "alwaysDrivingGuideRadioGroup", 1 },
        { "wdr 2 is row 1", kDravi, 0, { { At::wdr, 2 } }, "alwaysWDRRadioGroup", 1 },
        { "vehicle 2 is truck", kOrlo, 0, { { At::adas_car_high, 2 } },
            "alwaysVehicleTypeRadioGroup", 2 },
        { "vehicle 5 is sedan", kVelt, 0, { { At::adas_car_high, 5 } },
            "alwaysVehicleTypeRadioGroup", 0 },
        { "lane 0 is row 1", kOrlo, 0, { { At::ldws_onoff, 0 } }, "alwaysLDWSRadioGroup", 1 },
        { "lane 3 is row 0", kVelt, 0, { { At::ldws_onoff, 3 } }, "alwaysLDWSRadioGroup", 0 },
        { "Orlo's one lane slider reads the old field", kOrlo, 0,
            { { At::ldws_depart_Sensitivity, 2 }, { At::ldws_left_depart_Sensitivity, 0 } },
            "alwaysLDWSSensitivitySlider", 2 },
        { "Velt's left lane capped at 2", kVelt, 0, { { At::ldws_left_depart_Sensitivity, 9 } },
            "alwaysLDWSSensitivitySlider", 2 },
        { "Holta's right lane", kHolta, 0, { { At::ldws_right_depart_Sensitivity, 0 } },
            "alwaysLDWSRightSensitivitySlider", 0 },
        { "lane speed 3", kOrlo, 0, { { At::ldws_depart_speed, 3 } }, "alwaysLDWSSpeedRadioGroup",
            3 },
        { "lane speed 4 falls back to 2", kVelt, 0, { { At::ldws_depart_speed, 4 } },
            "alwaysLDWSSpeedRadioGroup", 2 },
        { "collision 0 is row 1", kOrlo, 0, { { At::fcws_onoff, 0 } }, "alwaysFCWSRadioGroup", 1 },
        { "collision sensitivity 3 falls back to 2", kOrlo, 0,
            { { At::fcws_frontal_sensitivity, 3 } }, "alwaysFCWSSensitivitySlider", 2 },
        { "two-row parking on", kOrlo, 0, { { At::parking_mode_set, 1 } }, "parkingModeRadioGroup",
            0 },
        { "two-row parking 2 is off", kOrlo, 0, { { At::parking_mode_set, 2 } },
            "parkingModeRadioGroup", 1 },
        { "three-row parking 2 is time-lapse", kVelt, 0, { { At::parking_mode_set, 2 } },
            "parkingModeRadioGroup", 1 },
        { "three-row parking 0 is off", kHolta, 0, { { At::parking_mode_set, 0 } },
            "parkingModeRadioGroup", 2 },
        { "Sarn parks in three rows", kSarn, 0, { { At::parking_mode_set, 0 } },
            "parkingModeRadioGroup", 2 },
        { "night vision 3 is row 0", kVelt, 0, { { At::parking_night_vision, 3 } },
            "parkingSuperNightVisionRadioGroup", 0 },
        { "night vision 0 is row 1", kSarn, 0, { { At::parking_night_vision, 0 } },
            "parkingSuperNightVisionRadioGroup", 1 },
        { "parking shock 10", kOrlo, 0, { { At::parking_acceleration_sensor, 10 } },
            "parkingShockSensitivitySlider", 10 },
        { "parking shock 11 untouched", kDravi, 0, { { At::parking_acceleration_sensor, 11 } },
            "parkingShockSensitivitySlider", 1 },
        { "motion 5 is 3", kOrlo, 0, { { At::parking_motion_sensitivity, 5 } },
            "parkingMotionSlider", 3 },
        { "motion 2 shows 2", kOrlo, 0, { { At::parking_motion_sensitivity, 2 } },
            "parkingMotionSlider", 2 },
        { "motion 4 shows 2", kDravi, 0, { { At::parking_motion_sensitivity, 4 } },
            "parkingMotionSlider", 2 },
        { "time 48 is 4", kOrlo, 0, { { At::parking_time_limit, 48 } },
            "parkingTimeLimitSlider_36x", 4 },
        { "time 36 untouched", kVelt, 0, { { At::parking_time_limit, 36 } },
            "parkingTimeLimitSlider_36x", 0 },
        { "12 V 7", kOrlo, 0, { { At::battery_12v_R_off, 7 } }, "parkingBatteryOff12VSlider", 7 },
        { "24 V 8 untouched", kDravi, 0, { { At::battery_24v_R_off, 8 } },
            "parkingBatteryOff24VSlider", 0 },
        { "overwrite 2 is unchecked", kOrlo, 0, { { At::record_cevent_overwrite, 2 } },
            "etcOverwriteAlwaysShockCheckBox", 0 },
        { "overwrite 1 is checked", kDravi, 0, { { At::record_manual_overwrite, 1 } },
            "etcOverwriteManualCheckBox", 1 },
        { "continuous always checked", kOrlo, 0, {}, "etcOverwriteAlwaysCheckBox", 1 },
        { "LED 0 is row 3", kOrlo, 0, { { At::security_led_mode, 0 } }, "etcSecurityLEDRadioGroup",
            3 },
        { "LED 3 is row 2", kDravi, 0, { { At::security_led_mode, 3 } }, "etcSecurityLEDRadioGroup",
            2 },
        { "LED 4 untouched", kVelt, 0, { { At::security_led_mode, 4 } }, "etcSecurityLEDRadioGroup",
            0 },
        { "partition 3 is C", kOrlo, 0, { { At::partition_type, 3 } },
            "etcMemoryPartitionRadioGroup", 2 },
        { "partition 0 untouched", kDravi, 0, { { At::partition_type, 0 } },
            "etcMemoryPartitionRadioGroup", 0 },
        { "LCD brightness 2", kDravi, 0, { { At::lcd_brightness, 2 } }, "commonLCDBrighnessSlider",
            2 },
        { "LCD brightness 5 untouched", kDraviUk, 0, { { At::lcd_brightness, 5 } },
            "commonLCDBrighnessSlider", 0 },
        { "LCD 10 minutes", kDravi, 0, { { At::lcd_off_timer, 600000 } },
            "commonLCDOffTimerRadioGroup", 1 },
        { "LCD 5 minutes is never off", kSarn, 0, { { At::lcd_off_timer, 300000 } },
            "commonLCDOffTimerRadioGroup", 2 },
        { "FVDW 0 is row 1", kSarn, 0, { { At::fcmd_onoff, 0 } }, "alwaysFVDWRadioGroup", 1 },
        { "FVDW 2 is row 0", kDravi, 17, { { At::fcmd_onoff, 2 } }, "alwaysFVDWRadioGroup", 0 },
    };
    for (const ApplyCase& c : cases)
        check(c);
}

TEST_F(OrloDraviApply, SwitchesEnableTheControlsTheyGovern)
{
    open(kVelt, typicalRecord(kVelt, 0, { { At::ldws_onoff, 0 }, { At::fcws_onoff, 0 } }));
    for (const char* lane : { "alwaysLDWSSensitivitySlider", "alwaysLDWSRightSensitivitySlider",
             "alwaysLDWSSpeedRadioGroup", "alwaysFCWSSensitivitySlider" })
        EXPECT_FALSE(enabled(QString::fromLatin1(lane))) << lane;

    // Orlo has one lane slider; its right slider is not on the page.
    open(kOrlo, typicalRecord(kOrlo, 0, { { At::ldws_onoff, 0 } }));
    EXPECT_FALSE(enabled(QStringLiteral("alwaysLDWSSensitivitySlider")));
    EXPECT_FALSE(shown(QStringLiteral("alwaysLDWSRightSensitivitySlider")));

    // A lane value other than 0 and 1 selects "on" and leaves the enabling.
    open(kOrlo, typicalRecord(kOrlo, 0, { { At::ldws_onoff, 5 } }));
    EXPECT_TRUE(enabled(QStringLiteral("alwaysLDWSSpeedRadioGroup")));

    // The front group at column 0 locks the rear group; column 1 frees it.
    open(kOrlo, typicalRecord(kOrlo, 0, { { At::front_resolution, 2 } }));
    EXPECT_FALSE(enabled(QStringLiteral("alwaysRadioGroupRearResolution")));
    open(kOrlo, typicalRecord(kOrlo, 0, { { At::front_resolution, 3 } }));
    EXPECT_TRUE(enabled(QStringLiteral("alwaysRadioGroupRearResolution")));
}

TEST_F(OrloDraviApply, ParkingModeEnablesItsSliders)
{
    struct Case {
        qint64 type;
        qint64 stored;
        bool shock, motion, time;
    };
    const Case cases[] = {
        { kOrlo, 1, true, true, true },
        { kOrlo, 0, false, false, false },
        { kVelt, 1, true, true, true },
        { kVelt, 2, true, false, true },
        { kHolta, 0, false, false, false },
        { kSarn, 2, true, false, true },
        { kDravi, 3, false, false, false },
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(testing::Message() << "type " << c.type << " stored " << c.stored);
        open(c.type, typicalRecord(c.type, 0, { { At::parking_mode_set, c.stored } }));
        EXPECT_EQ(enabled(QStringLiteral("parkingShockSensitivitySlider")), c.shock);
        EXPECT_EQ(enabled(QStringLiteral("parkingMotionSlider")), c.motion);
        EXPECT_EQ(enabled(QStringLiteral("parkingTimeLimitSlider_36x")), c.time);
        EXPECT_EQ(enabled(QStringLiteral("parkingBatteryOff12VSlider")), c.time);
        EXPECT_EQ(enabled(QStringLiteral("parkingBatteryOff24VSlider")), c.time);
    }
}

TEST_F(OrloDraviApply, EachModelShowsItsOwnControls)
{
    struct Case {
        qint64 type;
        bool speedStamp, rightLane, nightVision, lcd, threeRows;
    };
    const Case cases[] = {
        { kOrlo, false, false, false, false, false },
        { kVelt, true, true, true, false, true },
        { kHolta, true, true, true, false, true },
        { kDravi, false, true, false, true, false },
        { kDraviUk, false, true, false, true, false },
        { kSarn, true, true, true, true, true },
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(testing::Message() << "type " << c.type);
        open(c.type, typicalRecord(c.type));
        EXPECT_EQ(shown(QStringLiteral("commonSpeedStampRadioGroup")), c.speedStamp);
        EXPECT_EQ(shown(QStringLiteral("alwaysLDWSRightSensitivitySlider")), c.rightLane);
        EXPECT_EQ(shown(QStringLiteral("parkingSuperNightVisionRadioGroup")), c.nightVision);
        EXPECT_EQ(shown(QStringLiteral("commonLCDBrighnessSlider")), c.lcd);
        EXPECT_EQ(shown(QStringLiteral("commonLCDOffTimerRadioGroup")), c.lcd);
        EXPECT_EQ(shown(QStringLiteral("alwaysFVDWRadioGroup")), c.lcd);
        EXPECT_EQ(
            m_page->control(QStringLiteral("parkingModeRadioGroup"))->maximum, c.threeRows ? 2 : 1);
        // Every control sits on one of the four tabs.
        QStringList tabs;
        for (const SettingControl& control : m_page->controls()) {
            EXPECT_TRUE(control.visible);
            EXPECT_FALSE(control.caption.isEmpty()) << qPrintable(control.name);
            if (!tabs.contains(control.section))
                tabs.append(control.section);
        }
        EXPECT_EQ(tabs,
            (QStringList { QStringLiteral("공통"), QStringLiteral("상시모드"),
                QStringLiteral("주차모드"), QStringLiteral("부가기능") }));
    }
}

TEST_F(OrloDraviApply, LaneSpeedRowsFollowTheSpeedUnit)
{
    const QStringList km { QStringLiteral("50km"), QStringLiteral("60km"), QStringLiteral("80km"),
        QStringLiteral("100km") };
    const QStringList mph { QStringLiteral("30mph"), QStringLiteral("40mph"),
        QStringLiteral("50mph"), QStringLiteral("65mph") };
    open(kOrlo, typicalRecord(kOrlo, 0, { { At::measurement_unit, 1 } }));
    EXPECT_EQ(m_page->control(QStringLiteral("alwaysLDWSSpeedRadioGroup"))->titles, mph);
    EXPECT_TRUE(m_page->control(QStringLiteral("alwaysLDWSSpeedRadioGroup"))->titlesFollowState);
    open(kDravi, typicalRecord(kDravi, 17, { { At::measurement_unit, 0 } }), 17);
    EXPECT_EQ(m_page->control(QStringLiteral("alwaysLDWSSpeedRadioGroup"))->titles, km);
}

TEST_F(OrloDraviApply, DraviDriverAssistanceNeedsFirmware17OrSarn)
{
    // Below firmware 17 the record is 464 bytes and has no assistance fields;
    // whatever the model holds for them is not shown.
    for (const int firmware : { 16, 17 }) {
        SCOPED_TRACE(firmware);
        TolmSettingManager::ChagneTolmSettingManager(nullptr);
        TolmSettingManager* model = TolmSettingManager::SharedTolmSettingManager();
        model->setAdas_car_high(2);
        model->setLdws_onoff(0);
        model->setFcmd_onoff(0);
        open(kDravi,
            typicalRecord(kDravi, firmware,
                { { At::adas_car_high, 2 }, { At::ldws_onoff, 0 }, { At::fcmd_onoff, 0 } }),
            firmware);
        const bool gated = firmware < 17;
        EXPECT_EQ(value(QStringLiteral("alwaysVehicleTypeRadioGroup")), gated ? 0 : 2);
        EXPECT_EQ(value(QStringLiteral("alwaysLDWSRadioGroup")), gated ? 0 : 1);
        EXPECT_EQ(enabled(QStringLiteral("alwaysLDWSSpeedRadioGroup")), gated);
        EXPECT_EQ(value(QStringLiteral("alwaysFVDWRadioGroup")), gated ? 0 : 1);
        EXPECT_EQ(savedRecord().size(), gated ? 464 : 504);
    }
    // Sarn always has them.
    open(kSarn, typicalRecord(kSarn, 0, { { At::adas_car_high, 2 } }), 0);
    EXPECT_EQ(value(QStringLiteral("alwaysVehicleTypeRadioGroup")), 2);
}
