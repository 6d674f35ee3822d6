// Fields to controls and controls to fields on every family of the native
// page, one worked example a row: the model's typical record with some fields
// changed, what the user does, where the controls stand, what OK writes. A
// field the page leaves "untouched" shows the control's lowest position.
#include "NativePageFixture.h"

namespace {

// One stored field: the position it shows, and what OK writes back.
struct FieldRule {
    qint64 type;
    const char* field;
    int stored;
    const char* control;
    int position;
    int saved;
};

const FieldRule kFieldRules[] = {
    // The Orlo and Dravi families: brightness runs opposite to the value.
    { kOrlo, "front_brightness", 0, "FrontBrightness", 2, 0 },
    { kVelt, "rear_brightness", 2, "RearBrightness", 0, 2 },
    { kOrlo, "front_brightness", 3, "FrontBrightness", 0, 2 },
    { kHolta, "audio_ment_volume", 3, "VoiceMent", 3, 3 },
    { kDravi, "audio_ment_volume", 9, "VoiceMent", 0, 0 },
    // Zones: Orlo falls back to UTC, Dravi shows no selection and keeps the value.
    { kOrlo, "gmt_offset", 570, "GMT", 30, 570 },
    { kVelt, "gmt_offset", 100, "GMT", 15, 0 },
    { kDravi, "gmt_offset", -720, "GMT", 0, -720 },
    { kSarn, "gmt_offset", 100, "GMT", -1, 100 },
    { kDravi, "daylight_offset", 60, "DST", 1, 0 },
    { kOrlo, "measurement_unit", 1, "SpeedUnit", 1, 1 },
    { kDraviUk, "measurement_unit", 7, "SpeedUnit", 0, 0 },
    { kVelt, "speed_stamp", 0, "SpeedStamp", 1, 0 },
    { kSarn, "speed_stamp", 4, "SpeedStamp", 0, 1 },
    { kOrlo, "front_resolution", 3, "FrontResolution", 1, 3 },
    { kDravi, "rear_resolution", 0, "RearResolution", 1, 0 }, // shown, never written
    { kOrlo, "acceleration_sensor", 5, "alwaysShock", 5, 5 },
    { kDravi, "acceleration_sensor", 6, "alwaysShock", 1, 1 },
    { kOrlo, "enable_driving_guide", 0, "DrivingGuide", 1, 0 },
    { kDravi, "wdr", 2, "WDR", 1, 0 },
    { kOrlo, "adas_car_high", 2, "VehicleType", 2, 2 },
    { kVelt, "adas_car_high", 5, "VehicleType", 0, 0 },
    { kVelt, "ldws_onoff", 3, "LDWSRadio", 0, 1 },
    { kVelt, "ldws_left_depart_Sensitivity", 9, "LDWSSensitivity", 2, 2 },
    { kHolta, "ldws_right_depart_Sensitivity", 0, "LDWSRight", 0, 0 },
    { kOrlo, "ldws_depart_speed", 4, "LDWSSpeed", 2, 2 },
    { kOrlo, "fcws_frontal_sensitivity", 3, "FCWSSensitivity", 2, 2 },
    { kVelt, "parking_night_vision", 3, "NightVision", 0, 1 },
    { kOrlo, "parking_acceleration_sensor", 10, "parkingShock", 10, 10 },
    { kDravi, "parking_acceleration_sensor", 11, "parkingShock", 1, 1 },
    { kOrlo, "parking_motion_sensitivity", 5, "parkingMotion", 3, 5 },
    { kOrlo, "parking_motion_sensitivity", 2, "parkingMotion", 2, 3 },
    { kVelt, "parking_motion_sensitivity", 0, "parkingMotion", 0, 0 },
    { kHolta, "parking_motion_sensitivity", 1, "parkingMotion", 1, 1 },
    { kKimbo, "parking_motion_sensitivity", 2, "parkingMotion", 2, 3 },
    { kOrlo, "parking_time_limit", 48, "TimeLimit", 4, 48 },
    { kVelt, "parking_time_limit", 36, "TimeLimit", 0, 36 },
    { kSarn, "parking_time_limit", 6, "TimeLimit", 1, 6 },
    { kOrlo, "battery_12v_R_off", 7, "12V", 7, 7 },
    { kDravi, "battery_24v_R_off", 8, "24V", 0, 0 },
    { kOrlo, "record_cevent_overwrite", 2, "OverwriteAlwaysShock", 0, 0 },
    { kOrlo, "record_motion_overwrite", 1, "OverwriteParkingMotion", 1, 1 },
    { kDravi, "record_manual_overwrite", 1, "OverwriteManual", 1, 1 },
    { kOrlo, "security_led_mode", 0, "SecurityLED", 3, 0 },
    { kDravi, "security_led_mode", 3, "SecurityLED", 2, 3 },
    { kVelt, "security_led_mode", 4, "SecurityLED", 0, 1 },
    { kOrlo, "partition_type", 3, "MemoryPartition", 2, 3 },
    { kDravi, "partition_type", 0, "MemoryPartition", 0, 1 },
    { kDravi, "lcd_brightness", 2, "LCDBrighness", 2, 2 },
    { kDraviUk, "lcd_brightness", 5, "LCDBrighness", 0, 0 },
    { kDravi, "lcd_off_timer", 600000, "LCDOffTimer", 1, 600000 },
    { kSarn, "lcd_off_timer", 300000, "LCDOffTimer", 2, 0 },
    { kSarn, "fcmd_onoff", 0, "FVDW", 1, 0 },
    // The Ruva, Tolm, Pesk, Kimbo and Yarro families, whose rows name every
    // stored value of a control's positions and, for some, a fallback.
    { kRuva, "acceleration_sensor", 10, "alwaysShock", 10, 10 },
    { kTolm, "front_resolution", 9, "FrontResolution", 0, 2 },
    { kTolm, "parking_time_limit", 36, "TimeLimit", 0, 36 },
    { kPesk, "lcd_off_timer", 77, "LCDOffTimer", 2, 0 },
    { 7, "gmt_offset", 100, "GMT", 15, 0 },
    { kKimbo, "front_resolution", 9, "FrontResolution", 1, 3 },
    { kKimbo, "acceleration_sensor", 6, "alwaysShock", 1, 1 },
};

struct Rule {
    qint64 type;
    const char* record;
    const char* user; // "Part=position" changes, in order
    const char* controls; // see expectControls
    const char* saved;
    int firmware = 0;
};

const Rule kRules[] = {
    { kOrlo, "audio_ment_volume=3 voice_ment=0", "", "VoiceMent=0",
        "audio_ment_volume=0 voice_ment=0" },
    { kSarn, "voice_ment=0", "VoiceMent=3", "", "audio_ment_volume=3 voice_ment=1" },
    { kDraviUk, "gmt_offset=840", "GMT=29", "", "gmt_offset=540" },
    { 19, "", "GMT=29", "", "gmt_offset=540" },
    { kOrlo, "ldws_depart_speed=3", "SpeedUnit=1", "LDWSSpeed=3",
        "ldws_depart_speed=3 measurement_unit=1" },
    // A front at column 0 takes the rear there and locks it.
    { kOrlo, "rear_resolution=2", "", "FrontResolution=1 RearResolution=0 +RearResolution",
        "rear_resolution=2" },
    { kVelt, "front_resolution=2", "", "RearResolution=0 -RearResolution",
        "front_resolution=2 rear_resolution=2" },
    { kKimbo, "front_resolution=2", "", "RearResolution=0 -RearResolution", "rear_resolution=2" },
    { kVelt, "front_resolution=2", "FrontResolution=1", "", "front_resolution=3" },
    // Lane and collision switches; Orlo's one lane slider stands for three fields.
    { kOrlo, "ldws_onoff=0", "", "LDWSRadio=1 -LDWSSensitivity -LDWSSpeed", "ldws_onoff=0" },
    { kVelt, "ldws_onoff=0 fcws_onoff=0", "", "-LDWSRight -LDWSSpeed FCWSRadio=1 -FCWSSensitivity",
        "" },
    { kOrlo, "ldws_onoff=5", "", "LDWSRadio=0 +LDWSSpeed", "ldws_onoff=1" },
    { kHolta, "", "LDWSRadio=1 FCWSRadio=1", "+LDWSRight", "ldws_onoff=0 fcws_onoff=0" },
    { kOrlo, "ldws_depart_Sensitivity=2 ldws_left_depart_Sensitivity=0", "", "LDWSSensitivity=2",
        "ldws_left_depart_Sensitivity=2 ldws_right_depart_Sensitivity=2" },
    { kOrlo, "", "LDWSSensitivity=0", "",
        "ldws_depart_Sensitivity=0 ldws_left_depart_Sensitivity=0" },
    { kVelt, "ldws_depart_Sensitivity=0", "LDWSSensitivity=0 LDWSRight=1", "",
        "ldws_left_depart_Sensitivity=0 ldws_right_depart_Sensitivity=1 "
        "ldws_depart_Sensitivity=0" },
    { 14, "", "LDWSRight=0", "", "ldws_right_depart_Sensitivity=0" },
    { kSarn, "", "FCWSSensitivity=0 VehicleType=2", "",
        "fcws_frontal_sensitivity=0 adas_car_high=2" },
    // Parking: two rows on Orlo and Dravi, three on Velt, Holta and Sarn.
    { kOrlo, "", "", "parkingMode=0 +parkingShock +parkingMotion +TimeLimit +12V +24V",
        "parking_mode_set=1" },
    { kOrlo, "parking_mode_set=2", "",
        "parkingMode=1 -parkingShock -parkingMotion -TimeLimit -12V -24V", "parking_mode_set=0" },
    { kVelt, "parking_mode_set=2", "", "parkingMode=1 +parkingShock -parkingMotion +TimeLimit +24V",
        "parking_mode_set=2" },
    { kHolta, "parking_mode_set=0", "",
        "parkingMode=2 -parkingShock -parkingMotion -TimeLimit -12V", "parking_mode_set=0" },
    { kSarn, "", "", "parkingMode=0 +parkingShock +parkingMotion", "parking_mode_set=1" },
    { kDravi, "parking_mode_set=3", "", "parkingMode=1 -parkingShock -24V", "parking_mode_set=0" },
    { kYarro, "parking_mode_set=0", "", "parkingMode=1 -parkingMotion", "parking_mode_set=0" },
    { kYarro, "parking_mode_set=0", "parkingMode=0", "+parkingMotion", "parking_mode_set=1" },
    { kDravi, "", "parkingShock=9 12V=7 24V=1 TimeLimit=2", "",
        "parking_acceleration_sensor=9 battery_12v_R_off=7 battery_24v_R_off=1 "
        "parking_time_limit=12" },
    { kTolm, "parking_motion_sensitivity=4", "parkingMotion=5 TimeLimit=3", "",
        "parking_motion_sensitivity=5 parking_time_limit=4" },
    { kKimbo, "", "NightVision=1 parkingMotion=3", "",
        "parking_night_vision=0 parking_motion_sensitivity=5" },
    // Extras, the screen and the forward-vehicle alert.
    { kOrlo, "", "OverwriteAlwaysShock=0 OverwriteParkingShock=0 OverwriteParkingMotion=1",
        "OverwriteAlwaysCheck=1",
        "record_cevent_overwrite=0 record_prevent_overwrite=0 record_motion_overwrite=1" },
    { kDravi, "", "SecurityLED=1 MemoryPartition=2", "", "security_led_mode=2 partition_type=3" },
    { kDraviUk, "lcd_off_timer=0", "LCDOffTimer=0", "", "lcd_off_timer=30000" },
    { kPesk, "", "LCDOffTimer=2 LCDBrighness=5", "", "lcd_off_timer=0 lcd_brightness=5" },
    // The Dravi's assistance fields come with firmware 17 (the Sarn has them always).
    { kDravi, "", "", "LDWSRadio=0 +LDWSSpeed", "", 16 },
    { kDravi, "fcmd_onoff=2 ldws_onoff=0", "", "LDWSRadio=1 -LDWSSpeed FVDW=0", "fcmd_onoff=1",
        17 },
    { kDravi, "", "FVDW=1", "", "fcmd_onoff=0", 17 },
    { kYarro, "", "FVDW=1", "", "fcmd_onoff=0" },
    { kRuva, "", "FrontFrameRate=3 FrontQuality=2 FrontResolution=0", "",
        "front_framerate=2 front_quality=3 front_resolution=1" },
    { kRuva, "", "DateFormat=2 AudioRecord=1", "", "date_format=2 audio_record=0" },
};

class NativeRulesTest : public NativePageTest {
protected:
    void check(const Rule& r)
    {
        SCOPED_TRACE(
            testing::Message() << "type " << r.type << ": " << r.record << " | " << r.user);
        open(r.type, r.record, r.firmware);
        for (const QString& word : QString::fromLatin1(r.user).split(u' ', Qt::SkipEmptyParts))
            EXPECT_EQ(change(word.section(u'=', 0, 0), word.section(u'=', 1).toInt()),
                SettingsPageModel::Change::Applied)
                << qPrintable(word);
        expectControls(r.controls);
        expectSaved(r.saved);
    }
};

} // namespace

TEST_F(NativeRulesTest, EachStoredValueShowsItsPositionAndIsSavedAsDesigned)
{
    for (const FieldRule& r : kFieldRules) {
        SCOPED_TRACE(testing::Message() << "type " << r.type << ": " << r.field << "=" << r.stored);
        open(r.type, QStringLiteral("%1=%2").arg(r.field).arg(r.stored).toLatin1().constData());
        EXPECT_EQ(value(r.control), r.position);
        expectSaved(QStringLiteral("%1=%2").arg(r.field).arg(r.saved).toLatin1().constData());
    }
}

TEST_F(NativeRulesTest, UserChangesAndSwitchesAcrossTheFamilies)
{
    for (const Rule& rule : kRules)
        check(rule);
}
